#include "DesktopAppFixture.h"

#include "core/store/NSArrayControllerLyric.h"
#include "gui/app/LyricManagerWindow.h"
#include "gui/windows/LyricManagerWC.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QDir>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSystemTrayIcon>

namespace {

class StatusMenuTest : public DesktopAppFixture {};

TEST_F(StatusMenuTest, LaunchShowsTheStoredModesWindowAndTicksItsItem)
{
    settings->setLyricStyle(1);
    launchDesktop();
    EXPECT_EQ(menu->toggleItem()->text(), "Hide LRC");
    EXPECT_FALSE(menu->modeStreamItem()->isChecked());
    EXPECT_TRUE(menu->modeLineItem()->isChecked());
    EXPECT_TRUE(stripShown());
    EXPECT_FALSE(panelShown());
    EXPECT_EQ(menu->sourceItem()->text(), "No Music Source");
}

TEST_F(StatusMenuTest, ModeItemsSwitchTheWindowAndAClickOnTheTickedOneKeepsIt)
{
    launchDesktop();
    ASSERT_TRUE(panelShown());
    EXPECT_TRUE(menu->modeStreamItem()->isChecked());

    menu->modeLineItem()->trigger();
    EXPECT_TRUE(menu->modeLineItem()->isChecked());
    EXPECT_FALSE(menu->modeStreamItem()->isChecked());
    EXPECT_EQ(settings->lyricStyle(), 1);
    EXPECT_TRUE(stripShown());
    EXPECT_FALSE(panelShown());

    menu->modeLineItem()->trigger(); // Qt unticks a checkable item; the controller ticks it again
    EXPECT_TRUE(menu->modeLineItem()->isChecked());
    EXPECT_FALSE(menu->modeStreamItem()->isChecked());
    EXPECT_TRUE(stripShown());
}

TEST_F(StatusMenuTest, ToggleItemHidesAndShowsThePanelAndRetitlesItself)
{
    launchDesktop();
    menu->toggleItem()->trigger();
    EXPECT_EQ(menu->toggleItem()->text(), "Show LRC");
    EXPECT_FALSE(panelShown());
    EXPECT_FALSE(controller->isLrcWindowVisible());
    menu->toggleItem()->trigger();
    EXPECT_EQ(menu->toggleItem()->text(), "Hide LRC");
    EXPECT_TRUE(panelShown());
}

TEST_F(StatusMenuTest, SourceItemNamesThePlayerThatRuns)
{
    PlayerProcess player(
        {"--as", "jukora", "--not-running", "--qqmusic-port", QString::number(qqPort)});
    player.send("launch");
    ASSERT_TRUE(player.waitEvent("launch"));
    launchDesktop();
    EXPECT_TRUE(waitFor([&] { return menu->sourceItem()->text() == "Jukora"; }));
    EXPECT_FALSE(menu->sourceItem()->isEnabled()); // a label, not an action
}

TEST_F(StatusMenuTest, WithoutATrayThePanelsContextMenuOffersEveryItem)
{
    launchDesktop();
    ASSERT_FALSE(QSystemTrayIcon::isSystemTrayAvailable()); // offscreen has none
    EXPECT_FALSE(menu->showInTray());
    EXPECT_EQ(menu->trayIcon(), nullptr);

    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(30, 60),
                            panel->window()->mapToGlobal(QPoint(30, 60)));
    QCoreApplication::sendEvent(panel->window(), &event);
    EXPECT_TRUE(event.isAccepted());
    ASSERT_TRUE(waitFor([&] { return menu->menu()->isVisible(); }, 2000));
    QStringList titles;
    for (QAction* item : menu->menu()->actions())
        if (!item->isSeparator())
            titles << item->text();
    EXPECT_EQ(titles, (QStringList{"No Music Source", "Hide LRC", "Stream Mode", "Line Mode",
                                   "Lyric Earlier", "Lyric Later", "Reset Offset",
                                   "Search Lyrics...", "Lyric Manager...", "Edit Lyric...",
                                   "Preferences...", "About Versewick", "Quit"}));
    menu->menu()->hide();

    // The items there act on the controller.
    menu->aboutItem()->trigger();
    ASSERT_NE(windows->aboutBox(), nullptr);
    EXPECT_TRUE(windows->aboutBox()->isVisible());
    windows->aboutBox()->close();
}

TEST_F(StatusMenuTest, InLineModeTheStripOffersTheMenuToo)
{
    settings->setLyricStyle(1);
    launchDesktop();
    ASSERT_TRUE(stripShown());
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), QPoint(5, 5));
    QCoreApplication::sendEvent(strip->window(), &event);
    EXPECT_TRUE(waitFor([&] { return menu->menu()->isVisible(); }, 2000));
    menu->menu()->hide();
}

TEST_F(StatusMenuTest, PanelSearchButtonSitsInTheTitleStripAndSearches)
{
    launchDesktop();
    QPushButton* button = panel->searchButton();
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->geometry(), QRect(panel->window()->width() - 20, 3, 16, 16));
    panel->window()->resize(400, 300);
    EXPECT_EQ(button->geometry().x(), 380);
    button->click();
    EXPECT_EQ(searches, 1);
}

TEST_F(StatusMenuTest, LyricManagerItemOpensOneWindowForGood)
{
    launchDesktop();
    menu->lyricManagerItem()->trigger();
    LyricManagerPort* first = controller->lyricManagerWC();
    ASSERT_NE(first, nullptr);
    menu->lyricManagerItem()->trigger();
    EXPECT_EQ(controller->lyricManagerWC(), first);
}

// Jukora is the active source, yet iTunes's current track is "the playing song".
TEST_F(StatusMenuTest, PlayingSongInTheLyricManagerIsITunesTrackFirstThenJukoras)
{
    auto playing = [&](const char* as, const char* artist, const char* title) {
        const QString list = home.write(QStringLiteral("%1.json").arg(as),
                                        QStringLiteral(R"([{"artist":"%1","title":"%2",)"
                                                       R"("duration":60}])")
                                            .arg(artist, title)
                                            .toUtf8());
        auto player = std::make_unique<PlayerProcess>(
            QStringList{"--as", as, "--playlist", list, "--qqmusic-port", QString::number(qqPort)});
        player->send("play");
        return player;
    };
    auto jukora = playing("jukora", "Bo", "Snow");
    auto tunes = playing("itunes", "Ann", "Rain");
    QDir().mkpath(LyricControl::lyricsPath());
    for (const char* name : {"Ann--Rain.lrc", "Bo--Snow.lrc"}) {
        QFile file(QDir(LyricControl::lyricsPath()).filePath(QLatin1String(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[00:01]x\n");
    }
    launchDesktop();
    ASSERT_TRUE(waitFor([&] { return controller->state().title() == "Snow"; }));

    auto selected = [&] {
        auto* manager = static_cast<LyricManagerWindow*>(controller->lyricManagerWC())->window();
        manager->arrayController()->setSelectionIndexes({});
        manager->selectLyricNowPlaying();
        const auto rows = manager->arrayController()->selectedObjects();
        return rows.empty() ? QString() : rows.back().fileName;
    };
    menu->lyricManagerItem()->trigger();
    EXPECT_EQ(selected(), "Ann--Rain.lrc");
    tunes.reset(); // iTunes gone: Jukora's song
    ASSERT_TRUE(waitFor([&] { return !desktop->itunes().currentTrack(); }));
    EXPECT_EQ(selected(), "Bo--Snow.lrc");
}

} // namespace
