#include "gui/preferences/PreferenceController.h"

#include "core/app/DesktopPort.h"
#include "core/preferences/AutostartEntry.h"
#include "core/preferences/LyricAppearanceEditor.h"
#include "core/preferences/PreferenceSwitches.h"
#include "core/settings/NSFontTransformer.h"
#include "core/settings/ServiceAddresses.h"
#include "core/settings/Settings.h"
#include "core/store/LyricControl.h"
#include "gui/display/AppController.h"
#include "gui/display/LRCView.h"
#include "gui/preferences/ColorWell.h"

#include "support/QtPrinters.h"
#include "support/TempHome.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QFontDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QToolBar>

#include <gtest/gtest.h>

// Found by argument-dependent lookup, so beside the type: the parameter's name.
void PrintTo(const PreferenceSwitch& s, std::ostream* os)
{
    *os << s.property;
}

namespace {

struct RecordingDesktop : DesktopPort {
    QStringList calls;
    void openUrl(const QUrl& url) override { calls.append("url " + url.toString()); }
    void revealFile(const QString& path) override { calls.append("reveal " + path); }
    void openInTextEditor(const QString& path) override { calls.append("edit " + path); }
};

class Preferences : public ::testing::Test {
protected:
    TempHome home;
    ScopedUserFolders folders{home};
    QString file = home.filePath(QStringLiteral("Versewick.ini"));
    std::unique_ptr<Settings> settings = launch();
    bool seeded = seedHelpPage();
    ServiceAddresses addresses{std::make_unique<QSettings>(file, QSettings::IniFormat)};
    RecordingDesktop desktop;
    std::unique_ptr<PreferenceController> window = open();

    std::unique_ptr<Settings> launch()
    {
        return Settings::launch(std::make_unique<QSettings>(file, QSettings::IniFormat));
    }
    bool seedHelpPage()
    {
        QSettings(file, QSettings::IniFormat)
            .setValue(ServiceAddresses::kHelpPageKey, QStringLiteral("http://127.0.0.1:9/help"));
        return true;
    }
    std::unique_ptr<PreferenceController> open()
    {
        return std::make_unique<PreferenceController>(*settings, addresses, desktop);
    }
    QAction* item(int index) const { return window->toolbar()->actions().at(index); }
    template <typename T> T* child(const char* name) const
    {
        return window->findChild<T*>(QLatin1String(name));
    }
};

TEST_F(Preferences, PanelsAreTitledAndSwitchKeepingTheTopEdge)
{
    window->move(0, 0);
    window->centerAndShow();
    EXPECT_TRUE(window->isVisible());
    const QPoint offCentre =
        window->frameGeometry().center() - window->screen()->availableGeometry().center();
    EXPECT_LE(offCentre.manhattanLength(), 16); // from the corner to the middle
    const int top = window->geometry().top();
    EXPECT_EQ(window->windowTitle(), "General");
    for (int index : {1, 2, 0}) {
        item(index)->trigger();
        EXPECT_EQ(window->windowTitle(), window->titleForPreferencePanelAt(index));
        EXPECT_EQ(window->centralWidget(), window->panelViewForPreferencePanelAt(index));
        EXPECT_EQ(window->geometry().top(), top);
    }
    EXPECT_EQ(window->windowTitle(), "General");
    EXPECT_EQ(window->prefIdentifyAry(), QStringList({"0", "1", "2"}));
}

class EverySwitch : public Preferences, public ::testing::WithParamInterface<PreferenceSwitch> {};

TEST_P(EverySwitch, WritesItsSettingAtOnce)
{
    const char* name = GetParam().property;
    window->selectPanelAtIndex(GetParam().panel);
    QCheckBox* box = window->switchFor(QString::fromLatin1(name));
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(box->isVisibleTo(window.get()));
    EXPECT_EQ(box->isChecked(), PreferenceSwitches::value(*settings, name));
    for (int i = 0; i < 2; ++i) {
        const bool before = box->isChecked();
        box->click();
        EXPECT_EQ(PreferenceSwitches::value(*settings, name), !before);
    }
    // A change made elsewhere shows when the panel is shown again.
    PreferenceSwitches::setValue(*settings, name, !box->isChecked());
    window->selectPanelAtIndex((GetParam().panel + 1) % 3);
    window->selectPanelAtIndex(GetParam().panel);
    EXPECT_EQ(box->isChecked(), PreferenceSwitches::value(*settings, name));
}

INSTANTIATE_TEST_SUITE_P(All, EverySwitch, ::testing::ValuesIn(PreferenceSwitches::all()));

TEST_F(Preferences, StartAtLoginShowsAndChangesTheAutostartEntry)
{
    const QString entry = AutostartEntry::defaultFilePath();
    QCheckBox* box = window->startAtLoginSwitch();
    EXPECT_TRUE(box->isVisibleTo(window.get()));
    EXPECT_FALSE(box->isChecked());
    box->click();
    EXPECT_TRUE(QFileInfo(entry).isFile());
    // Deleted by hand: the panel shows it off when it is shown again.
    ASSERT_TRUE(QFile::remove(entry));
    window->selectPanelAtIndex(PreferenceController::Lyric);
    window->selectPanelAtIndex(PreferenceController::General);
    EXPECT_FALSE(box->isChecked());
    // A change that cannot be made leaves the switch as the file is and says why.
    ASSERT_TRUE(QDir().mkpath(entry));
    box->click();
    EXPECT_FALSE(box->isChecked());
    EXPECT_TRUE(window->startAtLoginError()->isVisibleTo(window.get()));
    EXPECT_TRUE(window->startAtLoginError()->text().contains(entry));
}

TEST_F(Preferences, ABoldItalicFaceSurvivesARestart)
{
    ASSERT_TRUE(QFontDatabase::hasFamily(QStringLiteral("DejaVu Sans")));
    const QString before = window->fontFieldLineMode()->text();
    window->onLyricFontChoose();
    QFontDialog* dialog = window->fontDialog();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->currentFont().family(), settings->lyricFont().family());
    dialog->setCurrentFont(QFontDatabase::font("DejaVu Sans", "Bold Oblique", 17));
    EXPECT_EQ(window->fontField()->text(), "DejaVu Sans Bold Oblique 17"); // before OK
    dialog->accept();
    EXPECT_EQ(window->fontField()->text(), "DejaVu Sans Bold Oblique 17");
    EXPECT_EQ(window->fontFieldLineMode()->text(), before);
    settings->synchronize();

    window.reset();
    settings = launch();
    window = open();
    EXPECT_EQ(window->fontField()->text(), "DejaVu Sans Bold Oblique 17");
    EXPECT_TRUE(settings->lyricFont().bold());
    EXPECT_EQ(settings->lyricFont().style(), QFont::StyleOblique);

    window->onLyricFontChooseLineMode();
    window->fontDialog()->setCurrentFont(QFontDatabase::font("DejaVu Serif", "Italic", 33));
    EXPECT_EQ(window->fontFieldLineMode()->text(), "DejaVu Serif Italic 33");
    window->fontDialog()->reject(); // Cancel puts the font back
    EXPECT_EQ(window->fontFieldLineMode()->text(), before);
    window->onLyricFontChooseLineMode();
    window->fontDialog()->setCurrentFont(QFontDatabase::font("DejaVu Serif", "Italic", 33));
    window->fontDialog()->accept();
    EXPECT_EQ(window->fontFieldLineMode()->text(), "DejaVu Serif Italic 33");
    EXPECT_EQ(window->fontField()->text(), "DejaVu Sans Bold Oblique 17");
}

TEST_F(Preferences, ColoursReachTheDisplaysOnlyThroughApply)
{
    // A running scrolling view, reloaded the way the application does it.
    AppController scrolling(settings.get());
    QWidget host;
    scrolling.applicationDidFinishLaunching(&host);
    int reloads = 0;
    QObject::connect(window.get(), &PreferenceController::reloadLyricViewRequested, &scrolling,
                     [&] {
                         ++reloads;
                         scrolling.updateConfigs();
                     });
    const QColor grey = settings->lyricNormalColor();
    window->selectPanelAtIndex(PreferenceController::Appearance);
    ColorWell* well = window->colorWellNormal();
    EXPECT_EQ(well->color(), grey);

    well->click();
    well->dialog()->setCurrentColor(Qt::green);
    well->dialog()->reject();
    EXPECT_EQ(well->color(), grey);
    well->click();
    well->dialog()->setCurrentColor(Qt::green);
    well->dialog()->accept();
    EXPECT_EQ(well->color(), QColor(Qt::green));
    EXPECT_EQ(settings->lyricNormalColor(), grey);
    EXPECT_EQ(reloads, 0);

    child<QPushButton>("lyricStyleApply")->click();
    EXPECT_EQ(settings->lyricNormalColor(), QColor(Qt::green));
    EXPECT_EQ(scrolling.lrcView()->colorNormal(), QColor(Qt::green));
    EXPECT_EQ(reloads, 1);

    // A pick that was never applied is gone when the panel is opened again.
    window->colorWellHighlight()->click();
    window->colorWellHighlight()->dialog()->setCurrentColor(Qt::red);
    window->colorWellHighlight()->dialog()->accept();
    window->selectPanelAtIndex(PreferenceController::General);
    window->selectPanelAtIndex(PreferenceController::Appearance);
    EXPECT_EQ(window->colorWellHighlight()->color(), settings->lyricHighlightColor());
    child<QPushButton>("lyricStyleApply")->click();
    EXPECT_NE(settings->lyricHighlightColor(), QColor(Qt::red));
}

TEST_F(Preferences, TheStripBackgroundSwitchReachesTheDisplaysThroughApply)
{
    int reloads = 0;
    QObject::connect(window.get(), &PreferenceController::reloadLyricViewRequested,
                     [&] { ++reloads; });
    window->selectPanelAtIndex(PreferenceController::Appearance);
    window->switchFor("isShowSingleLineBG")->click();
    EXPECT_FALSE(settings->isShowSingleLineBG());
    EXPECT_EQ(reloads, 0);
    child<QPushButton>("lyricStyleApply")->click();
    EXPECT_EQ(reloads, 1);
}

TEST_F(Preferences, OpensClearOfAnOnTopWindowAndEscapeCloses)
{
    const QRect screen = window->screen()->availableGeometry();
    QWidget band(nullptr, Qt::Window | Qt::WindowStaysOnTopHint | Qt::FramelessWindowHint);
    band.setGeometry(screen.x(), screen.y(), screen.width() / 4, screen.height());
    band.show();
    window->centerAndShow();
    EXPECT_FALSE(window->frameGeometry().intersects(band.frameGeometry()));
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(window->switchFor("traditionchinese"), &escape);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(Preferences, DefaultRestoresTheLookAndShowsIt)
{
    settings->setLyricStyle(1);
    settings->setLyricNormalColor(Qt::green);
    settings->setLyricFont(QFont(QStringLiteral("DejaVu Serif"), 21));
    settings->setFontSingleLine(QFont(QStringLiteral("DejaVu Serif"), 41));
    settings->setIsShowSingleLineBG(false);
    window->selectPanelAtIndex(PreferenceController::Appearance);
    EXPECT_EQ(window->fontField()->text(), "DejaVu Serif 21");
    EXPECT_FALSE(window->switchFor("isShowSingleLineBG")->isChecked());
    int reloads = 0;
    QObject::connect(window.get(), &PreferenceController::reloadLyricViewRequested,
                     [&] { ++reloads; });
    child<QPushButton>("lyricStyleDefault")->click();
    const QString system = NSFontTransformer::faceName(NSFontTransformer::systemFont());
    EXPECT_EQ(window->fontField()->text(), system + " 14");
    EXPECT_EQ(window->fontFieldLineMode()->text(), system + " 30");
    EXPECT_NE(settings->lyricNormalColor(), QColor(Qt::green));
    EXPECT_EQ(window->colorWellNormal()->color(), settings->lyricNormalColor());
    EXPECT_TRUE(window->switchFor("isShowSingleLineBG")->isChecked());
    EXPECT_EQ(settings->lyricStyle(), 1);
    EXPECT_EQ(reloads, 1);
}

struct Action {
    const char* button;
    int panel;
    const char* call; // {folder} stands for the lyrics folder
};

class Actions : public Preferences, public ::testing::WithParamInterface<Action> {};

void PrintTo(const Action& a, std::ostream* os)
{
    *os << a.button;
}

TEST_P(Actions, ReachTheDesktop)
{
    window->selectPanelAtIndex(GetParam().panel);
    auto* button = child<QPushButton>(GetParam().button);
    ASSERT_NE(button, nullptr);
    EXPECT_TRUE(button->isVisibleTo(window.get()));
    button->click();
    QString expected = QString::fromUtf8(GetParam().call);
    expected.replace("{folder}", QUrl::fromLocalFile(LyricControl::lyricsPath()).toString());
    EXPECT_EQ(desktop.calls, QStringList{expected});
    EXPECT_TRUE(LyricControl::lyricsPath().startsWith(home.path()));
}

INSTANTIATE_TEST_SUITE_P(
    Buttons, Actions,
    ::testing::Values(Action{"feedback", 0, "url http://127.0.0.1:9/help/feedback"},
                      Action{"revealLyricsFolder", 2, "url {folder}"},
                      Action{"tutorialDownloadLRC", 2,
                             "url http://127.0.0.1:9/help/download-lyrics"},
                      Action{"downloadJukora", 2, "url http://127.0.0.1:9/help/jukora"}));

TEST_F(Preferences, ThePluginInfoIsReadEachTimeTheLyricPanelOpens)
{
    settings->setLrcPluginInfo(QStringLiteral("LRCLIB v(1)"));
    window->selectPanelAtIndex(PreferenceController::Lyric);
    EXPECT_EQ(window->pluginInfoLabel()->text(), "LRCLIB v(1)");
    settings->setLrcPluginInfo(QString());
    window->selectPanelAtIndex(PreferenceController::General);
    window->selectPanelAtIndex(PreferenceController::Lyric);
    EXPECT_EQ(window->pluginInfoLabel()->text(), "No lyric plug-in is loaded.");
}

TEST_F(Preferences, ASettingsFileOfWrongTypesOpensWithoutHarm)
{
    window.reset();
    settings.reset();
    {
        QSettings damaged(file, QSettings::IniFormat);
        damaged.setValue("isSaveLRCtoDisk", QStringList{"a", "b"});
        damaged.setValue("isShowChangeSongNotify", QVariantMap{{"x", 1}});
        damaged.setValue("lyricFont", QStringLiteral("Comic"));
        damaged.setValue("fontSingleLine", QVariantMap{{"name", 5}, {"size", "big"}});
        damaged.setValue("lyricNormalColor", QByteArray("\x01\x02 not an archive"));
        damaged.setValue("lyricHighlightColor", 42);
    }
    settings = launch();
    window = open();
    window->selectPanelAtIndex(PreferenceController::Appearance);
    const QString system = LyricAppearanceEditor::fontFieldText(NSFontTransformer::systemFont());
    EXPECT_EQ(window->fontField()->text(), system);
    EXPECT_EQ(window->fontFieldLineMode()->text(), system);
    EXPECT_FALSE(window->colorWellNormal()->color().isValid());
    EXPECT_FALSE(window->switchFor("isSaveLRCtoDisk")->isChecked());
    EXPECT_FALSE(window->switchFor("isShowChangeSongNotify")->isChecked());
    // What was not damaged still shows.
    EXPECT_TRUE(window->switchFor("traditionchinese")->isChecked());
    child<QPushButton>("lyricStyleApply")->click();
    window->selectPanelAtIndex(PreferenceController::General);
    window->selectPanelAtIndex(PreferenceController::Lyric);
}

} // namespace
