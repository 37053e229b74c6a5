#include "core/lyric/Lyric.h"
#include "gui/display/LRCView.h"
#include "gui/display/SingleLineView.h"

#include <gtest/gtest.h>

namespace {

// A word-timed line at 10 s ("Hold " to 10.6, "me " to 11.2, "now" to 12.0), a plain one at
// 14 s.
const char* const kLyric = "[00:10.00]<00:10.00>Hold <00:10.60>me <00:11.20>now<00:12.00>\n"
                           "[00:14.00]plain words\n";

TEST(Karaoke, TheFrameTimersRunOnlyForAWordTimedLine)
{
    Lyric lyric;
    lyric.parseLRCcontent(QString::fromLatin1(kLyric));
    LRCView view;
    view.resize(400, 300);
    view.setParser(&lyric);
    view.show();
    EXPECT_FALSE(view.karaoke().isRunning());

    view.updatePlayerTime(10.9f); // half of "me"
    EXPECT_TRUE(view.karaoke().isRunning());
    (void)view.grab(); // paints the fill

    view.updatePlayerTime(14.5f);
    EXPECT_FALSE(view.karaoke().isRunning());
    view.setParser(nullptr);
    EXPECT_FALSE(view.karaoke().isRunning());

    SingleLineView strip;
    strip.resize(600, 80);
    strip.show();
    strip.setString(QStringLiteral("Hold me now"));
    strip.karaoke().follow(KaraokeLine::of(lyric.lrcItemAtIndex(0)), 10.9);
    EXPECT_TRUE(strip.karaoke().isRunning());
    (void)strip.grab(); // draws the lit picture
    strip.karaoke().follow(KaraokeLine::of(lyric.lrcItemAtIndex(1)), 14.5);
    EXPECT_FALSE(strip.karaoke().isRunning());
    strip.karaoke().follow(KaraokeLine::of(nullptr), 20);
    EXPECT_FALSE(strip.karaoke().isRunning());
}

} // namespace
