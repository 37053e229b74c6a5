// The desktop application as `versewick` builds it, on a real X server, following a real mpv
// (with Debian's MPRIS plug-in) that plays a generated tone: the sync controls end to end,
// each judged on mpv's own clock, read over its IPC socket.
#include "../../core/app/MpvProcess.h"
#include "DesktopAppFixture.h"

#include "core/app/AppState.h"
#include "core/sources/MusicSourceMpris.h"
#include "gui/display/LRCView.h"

#include <QGuiApplication>
#include <QTest>

namespace {

class DesktopMpv : public DesktopAppFixture {
protected:
    std::unique_ptr<MpvProcess> mpv;
    QString stored; // the song's lyric in the lyrics folder

    void SetUp() override
    {
        if (MpvProcess::mprisPlugin().isEmpty())
            GTEST_SKIP() << "needs mpv and Debian's mpv-mpris plug-in (mpris.so)";
        if (QGuiApplication::platformName() != QLatin1String("xcb"))
            GTEST_SKIP() << "needs an X server";
        DesktopAppFixture::SetUp();
    }
    void TearDown() override
    {
        DesktopAppFixture::TearDown();
        mpv.reset();
    }
    // mpv plays a 60 s tone tagged "Ann - Rain" whose lyric is `lrc`; the application, once it
    // shows the lyric, sees mpv paused near `at` (a seek lands within a few tenths) with line
    // `line` lit.
    void start(const QByteArray& lrc, double at, int line)
    {
        const QString song = home.filePath("rain.flac");
        ASSERT_EQ(
            QProcess::execute("ffmpeg", QStringLiteral("-hide_banner -loglevel error -f lavfi "
                                                       "-i sine=duration=60 -metadata "
                                                       "artist=Ann -metadata title=Rain")
                                                .split(u' ')
                                            << song),
            0);
        stored = writeStored("Ann--Rain", lrc);
        mpv = std::make_unique<MpvProcess>(home.filePath("mpv.socket"), QStringList{song});
        ASSERT_TRUE(mpv->isConnected());
        followMpris = true;
        launchDesktop();
        ASSERT_TRUE(waitFor([&] { return controller->lrcAvailable(); }, 20000));
        ASSERT_TRUE(mpv->setPaused(true));
        seekTo(at, line);
    }
    void seekTo(double at, int line)
    {
        mpv->command({"seek", at, "absolute"});
        ASSERT_TRUE(waitFor(
            [&] {
                timers.fire();
                const AppState& state = controller->state();
                const double now = mpvAt();
                return std::fabs(now - at) < 0.3 && state.lineIndex() == line &&
                       std::fabs(state.position() - MusicSourceMpris::kPositionLead - now) < 0.05;
            },
            20000))
            << mpvAt() << " " << controller->state().position();
    }
    double mpvAt()
    {
        QElapsedTimer clock;
        clock.start();
        const auto reading = mpv->position(clock);
        return reading ? reading->position : -1;
    }
    LRCView& view() const { return *panel->window()->findChild<LRCView*>(); }
    // The line's row of the panel, in the viewport.
    QRect rowOf(int line) const
    {
        const QRectF row =
            view().model().rows().rectForRow(view().model().rows().rowIndexFromLRCindex(line));
        return row.translated(0, -view().contentOffset()).toRect();
    }
};

const QByteArray kLines = "[00:00.00]zero\n[00:20.00]one\n[00:40.00]two\n";

TEST_F(DesktopMpv, PlusOverThePanelMovesTheLitLineAndLandsInTheLyricsFolder)
{
    start(kLines, 20.5, 1);
    const double at = mpvAt();
    // A second later: line one starts at 21 s, after where mpv stands.
    for (int i = 0; i < 10; ++i)
        QTest::keyClick(panel->window(), Qt::Key_Plus);
    EXPECT_EQ(controller->state().lineIndex(), 0);
    EXPECT_EQ(mpvAt(), at);
    EXPECT_TRUE(waitFor([&] { return readFile(stored) == kLines + "\n[offset:1000]"; }))
        << readFile(stored).toStdString();
}

TEST_F(DesktopMpv, AClickOnALineOfThePanelMovesMpvThere)
{
    start(kLines, 5, 0);
    QTest::mouseClick(view().viewport(), Qt::LeftButton, {}, rowOf(2).center());
    EXPECT_TRUE(waitFor([&] { return std::fabs(mpvAt() - 40) < 0.5; }, 20000)) << mpvAt();
}

TEST_F(DesktopMpv, AWordTimedLineFillsWithTheHighlightColourAsMpvMoves)
{
    settings->setLyricHighlightColor(Qt::red);
    settings->setLyricNormalColor(Qt::green);
    start("[00:00.00]zero\n[00:10.00]<00:10.00>Hold <00:12.00>me <00:14.00>now <00:16.00>\n"
          "[00:20.00]after\n",
          11, 1);
    const double early = controller->state().lineProgress();
    seekTo(13, 1);
    EXPECT_GT(early, 0);
    EXPECT_GT(controller->state().lineProgress(), early);

    // The sung words are red, the rest still green: the fill stops inside the line.
    const QImage shot = view().viewport()->grab(rowOf(1)).toImage();
    int redRight = -1, greenRight = -1;
    for (int y = 0; y < shot.height(); ++y) {
        for (int x = 0; x < shot.width(); ++x) {
            const QColor c = shot.pixelColor(x, y);
            if (c.red() > 200 && c.green() < 60)
                redRight = std::max(redRight, x);
            else if (c.green() > 200 && c.red() < 60)
                greenRight = std::max(greenRight, x);
        }
    }
    EXPECT_GE(redRight, 0);
    EXPECT_GT(greenRight, redRight);
}

} // namespace
