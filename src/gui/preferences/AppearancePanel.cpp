#include "gui/preferences/AppearancePanel.h"

#include "gui/preferences/ColorWell.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

AppearancePanel::AppearancePanel(QWidget* parent)
    : QWidget(parent)
{
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(24, 20, 24, 20);
    outer->setSpacing(16);
    m_form = new QFormLayout;
    m_form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_form->setHorizontalSpacing(12);
    m_form->setVerticalSpacing(10);
    m_form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    outer->addLayout(m_form);

    m_fontField = fontRow(tr("Lyric font:"), &m_chooseFont);
    m_fontFieldLineMode = fontRow(tr("Single-line font:"), &m_chooseFontLineMode);

    m_colorWellNormal = new ColorWell(this);
    m_colorWellNormal->setObjectName(QStringLiteral("colorWellNormal"));
    m_colorWellHighlight = new ColorWell(this);
    m_colorWellHighlight->setObjectName(QStringLiteral("colorWellHighlight"));
    m_form->addRow(tr("Lyric colour:"), m_colorWellNormal);
    m_form->addRow(tr("Highlighted colour:"), m_colorWellHighlight);

    outer->addStretch(1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    m_default = new QPushButton(tr("Default"), this);
    m_default->setObjectName(QStringLiteral("lyricStyleDefault"));
    m_apply = new QPushButton(tr("Apply"), this);
    m_apply->setObjectName(QStringLiteral("lyricStyleApply"));
    buttons->addWidget(m_default);
    buttons->addWidget(m_apply);
    outer->addLayout(buttons);
}

QLineEdit* AppearancePanel::fontRow(const QString& label, QPushButton** choose)
{
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    auto* field = new QLineEdit(this);
    field->setReadOnly(true);
    field->setFocusPolicy(Qt::NoFocus);
    field->setMinimumWidth(field->fontMetrics().horizontalAdvance(QLatin1Char('M')) * 16);
    *choose = new QPushButton(tr("Choose…"), this);
    row->addWidget(field, 1);
    row->addWidget(*choose);
    m_form->addRow(label, row);
    return field;
}
