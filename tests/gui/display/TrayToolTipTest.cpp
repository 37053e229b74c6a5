#include "core/app/AppState.h"
#include "core/lyric/Lyric.h"
#include "gui/tray/AppIcon.h"

#include <gtest/gtest.h>

#include <QSystemTrayIcon>

namespace {

TEST(TrayToolTip, IsTheSongWithTheLitLineAndFollowsIt)
{
    AppState state;
    QSystemTrayIcon tray;
    AppIcon::followSong(tray, state);
    EXPECT_EQ(tray.toolTip(), "Versewick");
    state.setLyricLoaded(true);
    state.setSong(QStringLiteral("Mira Calder"), QStringLiteral("Night Tram Home"));
    EXPECT_EQ(tray.toolTip(), "Mira Calder - Night Tram Home");
    state.setLine(3, QStringLiteral("The window hums"), 12.0);
    EXPECT_EQ(tray.toolTip(), "Mira Calder - Night Tram Home\nThe window hums");
    state.setLine(4, QStringLiteral("a tune"), 14.0);
    EXPECT_EQ(tray.toolTip(), "Mira Calder - Night Tram Home\na tune");
    state.setSong({}, {});
    EXPECT_EQ(tray.toolTip(), "Versewick");
}

TEST(LineProgress, IsReadFromTheLitLinesWords)
{
    Lyric lyric;
    lyric.parseLRCcontent(QStringLiteral("[00:10.00]<00:10.00>Hold <00:11.00>me<00:12.00>\n"
                                         "[00:14.00]plain"));
    AppState state;
    state.setLyricLoaded(true);
    state.setLitLine(KaraokeLine::of(lyric.lrcItemAtIndex(0)));
    state.setLine(0, QStringLiteral("Hold me"), 11.5);
    EXPECT_NEAR(state.lineProgress(), 0.75, 1e-6);
    state.setLitLine(KaraokeLine::of(lyric.lrcItemAtIndex(1)));
    state.setLine(1, QStringLiteral("plain"), 14.5);
    EXPECT_EQ(state.lineProgress(), -1);
    state.setLyricLoaded(false);
    EXPECT_EQ(state.lineProgress(), -1);
}

} // namespace
