#include "gui/preferences/ReadingGroup.h"

#include "core/reading/LyricReading.h"
#include "core/reading/ReadingOptions.h"

#include <QComboBox>
#include <QFormLayout>

ReadingGroup::ReadingGroup(PLSettingsStore& store, QWidget* parent)
    : QGroupBox(tr("Reading"), parent)
    , m_store(store)
    , m_secondary(new QComboBox(this))
    , m_script(new QComboBox(this))
{
    using Secondary = ReadingOptions::Secondary;
    using Script = ReadingOptions::Script;
    m_secondary->setObjectName(QStringLiteral("secondaryLine"));
    m_secondary->addItem(tr("None"), int(Secondary::None));
    m_secondary->addItem(tr("Translation"), int(Secondary::Translation));
    m_secondary->addItem(tr("Romanization"), int(Secondary::Romanization));
    m_script->setObjectName(QStringLiteral("script"));
    m_script->addItem(tr("Original"), int(Script::Original));
    m_script->addItem(tr("Simplified"), int(Script::Simplified));
    m_script->addItem(tr("Traditional"), int(Script::Traditional));
    auto* form = new QFormLayout(this);
    form->addRow(tr("Under each line:"), m_secondary);
    form->addRow(tr("Chinese script:"), m_script);
    update();
    connect(m_secondary, &QComboBox::activated, this, &ReadingGroup::apply);
    connect(m_script, &QComboBox::activated, this, &ReadingGroup::apply);
}

void ReadingGroup::update()
{
    const ReadingOptions& options = LyricReading::shared().options();
    m_secondary->setCurrentIndex(m_secondary->findData(int(options.secondary)));
    m_script->setCurrentIndex(m_script->findData(int(options.script)));
}

void ReadingGroup::apply()
{
    ReadingOptions options;
    options.secondary = ReadingOptions::Secondary(m_secondary->currentData().toInt());
    options.script = ReadingOptions::Script(m_script->currentData().toInt());
    options.save(m_store);
    LyricReading::shared().setOptions(options);
}
