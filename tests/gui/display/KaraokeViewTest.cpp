#include "core/lyric/Lyric.h"
#include "gui/display/LRCView.h"
#include "gui/display/SingleLineView.h"

#include <gtest/gtest.h>

#include <QImage>

namespace {

// A word-timed line at 10 s ("Hold " to 10.6, "me " to 11.2, "now" to 12.0), a plain one at
// 14 s.
const char* const kLyric = "[00:10.00]<00:10.00>Hold <00:10.60>me <00:11.20>now<00:12.00>\n"
                           "[00:14.00]plain words\n";

// Columns of the band [top, bottom) holding lit (near white) and unlit (grey) text.
std::pair<int, int> litAndUnlitColumns(const QImage& image, int top, int bottom)
{
    int lit = 0, unlit = 0;
    for (int x = 0; x < image.width(); ++x) {
        int best = 0;
        for (int y = std::max(0, top); y < std::min(image.height(), bottom); ++y)
            if (qAlpha(image.pixel(x, y)) > 200)
                best = std::max(best, qGray(image.pixel(x, y)));
        lit += best > 230;
        unlit += best > 100 && best < 150;
    }
    return {lit, unlit};
}

TEST(Karaoke, TheLitRowFillsAndItsFrameTimerRunsOnlyForAWordTimedLine)
{
    Lyric lyric;
    lyric.parseLRCcontent(QString::fromLatin1(kLyric));
    LRCView view;
    view.setColorNormal(QColor(128, 128, 128));
    view.setColorHeight(Qt::white);
    view.resize(400, 300);
    view.setParser(&lyric);
    view.show();
    EXPECT_FALSE(view.karaoke().isRunning());

    view.updatePlayerTime(10.9f); // half of "me"
    EXPECT_TRUE(view.karaoke().isRunning());
    const QRectF row = view.model().rows().rectForRow(view.model().rows().rowIndexFromLRCindex(0));
    const int top = int(row.top() - view.contentOffset());
    const QImage image = view.grab().toImage().convertToFormat(QImage::Format_ARGB32);
    const auto [lit, unlit] = litAndUnlitColumns(image, top, top + int(row.height()));
    EXPECT_GT(lit, 10);   // "Hold m" is white
    EXPECT_GT(unlit, 10); // "e now" still grey

    view.updatePlayerTime(14.5f);
    EXPECT_FALSE(view.karaoke().isRunning());
    view.setParser(nullptr);
    EXPECT_FALSE(view.karaoke().isRunning());
}

TEST(Karaoke, TheStripsFrameTimerFollowsTheLine)
{
    Lyric lyric;
    lyric.parseLRCcontent(QString::fromLatin1(kLyric));
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
