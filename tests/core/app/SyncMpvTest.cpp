// The controller beside a real mpv (with Debian's MPRIS plug-in) on the private bus: a nudge
// moves the lit line at once and lands in the lyrics folder, a line's seek moves mpv.
#include "MpvProcess.h"
#include "support/app/AppFixture.h"

#include "core/app/SyncControls.h"

#include <QProcess>

namespace {

class SyncMpv : public AppFixture {
protected:
    std::unique_ptr<MpvProcess> mpv;

    void SetUp() override
    {
        if (MpvProcess::mprisPlugin().isEmpty())
            GTEST_SKIP() << "needs mpv and Debian's mpv-mpris plug-in (mpris.so)";
        AppFixture::SetUp();
    }
    void TearDown() override
    {
        AppFixture::TearDown();
        mpv.reset();
    }
    QString tone(const QString& name)
    {
        const QString path = home.filePath(name + ".flac");
        const QStringList args =
            QStringLiteral("-hide_banner -loglevel error -f lavfi -i sine=duration=60 -metadata "
                           "artist=Ann -metadata title=Rain")
                .split(u' ')
            << path;
        return QProcess::execute("ffmpeg", args) == 0 ? path : QString();
    }
    double mpvAt()
    {
        QElapsedTimer clock;
        clock.start();
        const auto reading = mpv->position(clock);
        return reading ? reading->position : -1;
    }
};

TEST_F(SyncMpv, ANudgeMovesTheLitLineAndIsSavedAndALineSeekMovesMpv)
{
    const QString song = tone("rain");
    ASSERT_FALSE(song.isEmpty()) << "ffmpeg could not make the song";
    const QString stored =
        writeStored("Ann--Rain", "[00:00.00]zero\n[00:20.00]one\n[00:40.00]two\n");
    mpv = std::make_unique<MpvProcess>(home.filePath("mpv.socket"), QStringList{song});
    ASSERT_TRUE(mpv->isConnected());
    followMpris = true;
    launch();
    ASSERT_TRUE(waitFor([&] { return app->lrcAvailable(); }, 20000));
    ASSERT_TRUE(mpv->setPaused(true));
    mpv->command({"seek", 15, "absolute"});
    ASSERT_TRUE(waitFor(
        [&] {
            timers.fire();
            return app->state().lineIndex() == 0 && std::fabs(app->state().position() - 15) < 1;
        },
        20000));

    // Line one now starts at 14 s: lit by the nudge itself, before any tick.
    app->sync().nudgeOffset(-6);
    EXPECT_EQ(app->state().lineIndex(), 1);
    EXPECT_TRUE(waitFor([&] {
        return readFile(stored) == "[00:00.00]zero\n[00:20.00]one\n[00:40.00]two\n\n[offset:-6000]";
    }));

    std::optional<bool> moved;
    app->sync().seekToLine(2, [&](bool m) { moved = m; });
    ASSERT_TRUE(waitFor([&] { return moved.has_value(); }, 20000));
    EXPECT_TRUE(*moved);
    EXPECT_TRUE(waitFor([&] { return std::fabs(mpvAt() - 34) < 0.5; }, 20000)) << mpvAt();
}

} // namespace
