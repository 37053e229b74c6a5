#include "gui/preferences/PreferenceController.h"

#include "core/app/DesktopPort.h"
#include "core/preferences/HelpPages.h"
#include "core/preferences/PreferenceSwitches.h"
#include "core/settings/Settings.h"
#include "core/store/LyricControl.h"
#include "gui/preferences/AppearancePanel.h"
#include "gui/preferences/ColorWell.h"
#include "gui/preferences/PreferenceIcons.h"
#include "gui/preferences/ReadingGroup.h"
#include "gui/windows/FrontWindow.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QFontDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {

QVBoxLayout* panelLayout(QWidget* panel)
{
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->setSpacing(10);
    return layout;
}

QPushButton* addButton(QWidget* panel, QLayout* layout, const QString& text, const char* name)
{
    auto* button = new QPushButton(text, panel);
    button->setObjectName(QLatin1String(name));
    layout->addWidget(button);
    return button;
}

} // namespace

PreferenceController::PreferenceController(Settings& settings, const ServiceAddresses& addresses,
                                           DesktopPort& desktop, QWidget* parent)
    : PLTabPreferenceControl(parent)
    , m_settings(settings)
    , m_addresses(addresses)
    , m_desktop(desktop)
    , m_editor(settings)
{
    m_prefGeneralView = buildGeneralPanel();
    m_prefAppearanceView = new AppearancePanel(this);
    m_prefAppearanceView->hide();
    auto* appearanceSwitches = new QVBoxLayout;
    addSwitches(m_prefAppearanceView, appearanceSwitches, Appearance);
    m_prefAppearanceView->form()->addRow(QString(), appearanceSwitches);
    m_prefLyric = buildLyricPanel();

    AppearancePanel* look = m_prefAppearanceView;
    connect(look->chooseFontButton(), &QPushButton::clicked, this,
            &PreferenceController::onLyricFontChoose);
    connect(look->chooseFontLineModeButton(), &QPushButton::clicked, this,
            &PreferenceController::onLyricFontChooseLineMode);
    connect(look->defaultButton(), &QPushButton::clicked, this,
            &PreferenceController::onLyricStyleDefault);
    connect(look->applyButton(), &QPushButton::clicked, this,
            &PreferenceController::onLyricStyleApply);
    // A picked colour is only remembered; Apply hands it to the settings.
    connect(look->colorWellNormal(), &ColorWell::colorPicked, this,
            [this](const QColor& c) { m_editor.setPendingNormalColor(c); });
    connect(look->colorWellHighlight(), &ColorWell::colorPicked, this,
            [this](const QColor& c) { m_editor.setPendingHighlightColor(c); });

    // One width for all panels: switching changes only the window's height.
    int width = 0;
    for (int i = 0; i < countOfPreferencePanels(); ++i)
        width = std::max(width, panelViewForPreferencePanelAt(i)->sizeHint().width());
    for (int i = 0; i < countOfPreferencePanels(); ++i)
        panelViewForPreferencePanelAt(i)->setMinimumWidth(width);

    updateSwitches();
    updateLyricAppearancePanel();
    setDelegate(this);
    windowDidLoad();
    FrontWindow::addCloseKeys(this);
}

PreferenceController::~PreferenceController() = default;

QWidget* PreferenceController::buildGeneralPanel()
{
    auto* panel = new QWidget(this);
    panel->hide();
    auto* layout = panelLayout(panel);
    addStartAtLogin(panel, layout);
    addSwitches(panel, layout, General);
    layout->addStretch(1);
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    connect(addButton(panel, row, tr("Send Feedback…"), "feedback"), &QPushButton::clicked, this,
            &PreferenceController::onFeedBack);
    layout->addLayout(row);
    return panel;
}

QWidget* PreferenceController::buildLyricPanel()
{
    auto* panel = new QWidget(this);
    panel->hide();
    auto* layout = panelLayout(panel);
    addSwitches(panel, layout, Lyric);
    auto* folderRow = new QHBoxLayout;
    connect(addButton(panel, folderRow, tr("Show Lyrics Folder"), "revealLyricsFolder"),
            &QPushButton::clicked, this, &PreferenceController::onRevealLyricsFolder);
    folderRow->addStretch(1);
    layout->addLayout(folderRow);
    layout->addSpacing(8);

    auto* pluginTitle = new QLabel(tr("Lyric plug-in:"), panel);
    layout->addWidget(pluginTitle);
    m_pluginInfoLabel = new QLabel(panel);
    m_pluginInfoLabel->setWordWrap(true);
    m_pluginInfoLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_pluginInfoLabel->setContentsMargins(16, 0, 0, 0);
    layout->addWidget(m_pluginInfoLabel);
    updatePluginInfo();
    layout->addSpacing(8);
    m_reading = new ReadingGroup(m_settings.store(), panel);
    layout->addWidget(m_reading);

    layout->addStretch(1);
    auto* pages = new QHBoxLayout;
    pages->addStretch(1);
    connect(addButton(panel, pages, tr("How to Download Lyrics"), "tutorialDownloadLRC"),
            &QPushButton::clicked, this, &PreferenceController::onTutorialDownloadLRC);
    connect(addButton(panel, pages, tr("Get the Jukora Player"), "downloadJukora"),
            &QPushButton::clicked, this, &PreferenceController::onDownloadJukora);
    layout->addLayout(pages);
    return panel;
}

void PreferenceController::addSwitches(QWidget* owner, QVBoxLayout* layout, int panel)
{
    for (const PreferenceSwitch& s : PreferenceSwitches::onPanel(panel)) {
        auto* box =
            new QCheckBox(QCoreApplication::translate("PreferenceController", s.label), owner);
        const QString name = QString::fromLatin1(s.property);
        box->setObjectName(name);
        const char* property = s.property;
        connect(box, &QCheckBox::toggled, this, [this, property](bool on) {
            if (PreferenceSwitches::value(m_settings, property) == on)
                return; // a refresh from the settings, not the user
            PreferenceSwitches::setValue(m_settings, property, on);
        });
        layout->addWidget(box);
        m_switches.insert(name, box);
    }
}

void PreferenceController::addStartAtLogin(QWidget* owner, QVBoxLayout* layout)
{
    m_startAtLogin = new QCheckBox(tr("Start Versewick when I log in"), owner);
    m_startAtLogin->setObjectName(QStringLiteral("startAtLogin"));
    m_startAtLoginError = new QLabel(owner);
    m_startAtLoginError->setObjectName(QStringLiteral("startAtLoginError"));
    m_startAtLoginError->setWordWrap(true);
    m_startAtLoginError->setContentsMargins(24, 0, 0, 0);
    m_startAtLoginError->hide();
    connect(m_startAtLogin, &QCheckBox::toggled, this, [this](bool on) {
        if (m_autostart.isEnabled() == on)
            return; // a refresh from the file, not the user
        const QString error = m_autostart.setEnabled(on);
        m_startAtLoginError->setText(error);
        m_startAtLoginError->setVisible(!error.isEmpty());
        updateStartAtLogin(); // a failed change shows the state the file is really in
    });
    layout->addWidget(m_startAtLogin);
    layout->addWidget(m_startAtLoginError);
}

void PreferenceController::updateStartAtLogin()
{
    m_startAtLogin->setChecked(m_autostart.isEnabled());
}

void PreferenceController::updateSwitches()
{
    updateStartAtLogin();
    for (auto it = m_switches.cbegin(); it != m_switches.cend(); ++it)
        it.value()->setChecked(PreferenceSwitches::value(m_settings, it.key().toLatin1().data()));
}

void PreferenceController::updatePluginInfo()
{
    const QString info = m_settings.lrcPluginInfo().trimmed();
    m_pluginInfoLabel->setText(info.isEmpty() ? tr("No lyric plug-in is loaded.") : info);
}

QString PreferenceController::titleForPreferencePanelAt(int index) const
{
    switch (index) {
    case General:
        return tr("General");
    case Appearance:
        return tr("Appearance");
    case Lyric:
        return tr("Lyric");
    default:
        return {};
    }
}

QIcon PreferenceController::imageForPreferencePanelAt(int index) const
{
    switch (index) {
    case General:
        return PreferenceIcons::general();
    case Appearance:
        return PreferenceIcons::appearance();
    case Lyric:
        return PreferenceIcons::lyric();
    default:
        return {};
    }
}

QWidget* PreferenceController::panelViewForPreferencePanelAt(int index) const
{
    switch (index) {
    case General:
        return m_prefGeneralView;
    case Appearance:
        return m_prefAppearanceView;
    case Lyric:
        return m_prefLyric;
    default:
        return nullptr;
    }
}

void PreferenceController::prefViewWillAppear(QWidget* /*view*/, int index)
{
    // Values may have changed elsewhere (the status menu, a restore of defaults).
    updateSwitches();
    if (index == Lyric) {
        updatePluginInfo();
        if (m_reading)
            m_reading->update();
    }
}

void PreferenceController::prefViewDidAppear(QWidget* /*view*/, int index)
{
    if (index == Appearance)
        updateLyricAppearancePanel();
}

void PreferenceController::centerAndShow()
{
    FrontWindow::present(this);
}

void PreferenceController::updateLyricAppearancePanel()
{
    updateFontField();
    updateFontFieldSingleLine();
    m_editor.reload();
    colorWellNormal()->setColor(m_editor.pendingNormalColor());
    colorWellHighlight()->setColor(m_editor.pendingHighlightColor());
}

void PreferenceController::updateFontField()
{
    fontField()->setText(m_editor.lyricFontText());
}

void PreferenceController::updateFontFieldSingleLine()
{
    fontFieldLineMode()->setText(m_editor.singleLineFontText());
}

void PreferenceController::onLyricStyleDefault()
{
    m_editor.restoreDefaults();
    updateLyricAppearancePanel();
    updateSwitches();
    Q_EMIT reloadLyricViewRequested();
}

void PreferenceController::onLyricStyleApply()
{
    m_editor.apply();
    Q_EMIT reloadLyricViewRequested();
}

void PreferenceController::onLyricFontChoose()
{
    m_editor.beginFontChoice(true);
    openFontDialog();
}

void PreferenceController::onLyricFontChooseLineMode()
{
    m_editor.beginFontChoice(false);
    openFontDialog();
}

void PreferenceController::openFontDialog()
{
    if (!m_fontDialog) {
        m_fontDialog = new QFontDialog(this);
        m_fontDialog->setOption(QFontDialog::DontUseNativeDialog);
        // Each pick shows at once, as the font field's live preview; Cancel puts back the
        // font the choice began with.
        connect(m_fontDialog, &QFontDialog::currentFontChanged, this,
                &PreferenceController::changeFont);
        connect(m_fontDialog, &QFontDialog::fontSelected, this, &PreferenceController::changeFont);
        connect(m_fontDialog, &QFontDialog::rejected, this,
                [this] { changeFont(m_fontBeforeChoice); });
    }
    m_fontBeforeChoice = m_editor.fontBeingChosen();
    m_fontDialog->setCurrentFont(m_editor.fontBeingChosen());
    m_fontDialog->open();
    m_fontDialog->raise();
    m_fontDialog->activateWindow();
}

void PreferenceController::changeFont(const QFont& font)
{
    m_editor.changeFont(font);
    if (m_editor.isModifyStreamFont())
        updateFontField();
    else
        updateFontFieldSingleLine();
}

void PreferenceController::onRevealLyricsFolder()
{
    m_desktop.openUrl(QUrl::fromLocalFile(LyricControl::lyricsPath()));
}

void PreferenceController::onFeedBack()
{
    m_desktop.openUrl(HelpPages::feedback(m_addresses));
}

void PreferenceController::onDownloadJukora()
{
    m_desktop.openUrl(HelpPages::jukoraDownload(m_addresses));
}

void PreferenceController::onTutorialDownloadLRC()
{
    m_desktop.openUrl(HelpPages::lyricDownloadTutorial(m_addresses));
}

QLineEdit* PreferenceController::fontField() const
{
    return m_prefAppearanceView->fontField();
}

QLineEdit* PreferenceController::fontFieldLineMode() const
{
    return m_prefAppearanceView->fontFieldLineMode();
}

ColorWell* PreferenceController::colorWellNormal() const
{
    return m_prefAppearanceView->colorWellNormal();
}

ColorWell* PreferenceController::colorWellHighlight() const
{
    return m_prefAppearanceView->colorWellHighlight();
}
