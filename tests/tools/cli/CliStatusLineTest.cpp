#include "support/PlayerProcess.h"
#include "support/QtPrinters.h"
#include "support/TempHome.h"

#include <QDir>
#include <QProcess>

#include <gtest/gtest.h>

namespace {

// The status line of a follower while an MPRIS player plays a song whose lyric is in the
// lyrics folder: one line per change, an empty one while nothing plays.
TEST(CliStatusLine, FollowsTheSongLineByLine)
{
    TempHome home;
    for (const char* folder : {"config/morvane", "data/Versewick/lyrics.lrcs"})
        ASSERT_TRUE(QDir(home.path()).mkpath(folder));
    home.write("config/morvane/Versewick.ini", "[services]\nlrclibUrl=http://127.0.0.1:9\n");
    home.write("data/Versewick/lyrics.lrcs/Ann--Rain.lrc",
               "[offset:250]\n[00:00.00]First {line}\n[00:20.00]\n[00:30.00]Second\n");
    const QString playlist = home.write(
        "playlist.json", R"([{"artist":"Ann","title":"Rain","album":"Clouds","duration":60}])");
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("HOME", home.path());
    env.insert("XDG_CONFIG_HOME", home.filePath("config"));
    env.insert("XDG_DATA_HOME", home.filePath("data"));

    QProcess follow;
    follow.setProcessEnvironment(env);
    QStringList lines;
    QByteArray pending;
    QObject::connect(&follow, &QProcess::readyReadStandardOutput, [&] {
        pending += follow.readAllStandardOutput();
        for (qsizetype end; (end = pending.indexOf('\n')) >= 0; pending.remove(0, end + 1))
            lines << QString::fromUtf8(pending.left(end));
    });
    follow.start(
        QStringLiteral(VERSEWICK_CLI),
        {"follow", "--format", "{artist}|{title}|{album}|{line}|{next}|{offset}|{origin}|{{}}"});
    ASSERT_TRUE(follow.waitForStarted());
    ASSERT_TRUE(waitFor([&] { return !lines.isEmpty(); }));
    EXPECT_EQ(lines.first(), "") << "nothing plays yet";

    PlayerProcess player({"--as", "mpris", "--playlist", playlist});
    player.send("play");
    const QString sung = "Ann|Rain|Clouds|First {line}|Second|250|folder|{}";
    EXPECT_TRUE(waitFor([&] { return lines.contains(sung); }, 30000))
        << lines.join('\n').toStdString();
    player.send("stop");
    EXPECT_TRUE(waitFor([&] { return lines.size() > 2 && lines.last().isEmpty(); }, 30000))
        << lines.join('\n').toStdString();
    for (qsizetype i = 1; i < lines.size(); ++i)
        EXPECT_NE(lines[i], lines[i - 1]) << "a line is printed only when it changes";

    follow.terminate();
    ASSERT_TRUE(follow.waitForFinished(5000));
    EXPECT_EQ(follow.exitCode(), 0);
}

struct BadFormat {
    const char* format;
    const char* sentence;
};

class CliStatusLineFormat : public ::testing::TestWithParam<BadFormat> {};

// Refused before following anything: exit 2 at once, one sentence, nothing on standard output.
TEST_P(CliStatusLineFormat, IsAUsageError)
{
    QProcess follow;
    follow.start(QStringLiteral(VERSEWICK_CLI), {"follow", "--format", GetParam().format});
    ASSERT_TRUE(follow.waitForFinished(10000)) << "it follows instead of refusing";
    EXPECT_EQ(follow.exitCode(), 2);
    EXPECT_EQ(follow.readAllStandardOutput(), "");
    EXPECT_EQ(follow.readAllStandardError(),
              QByteArray("versewick-cli: ") + GetParam().sentence + "\n");
}

INSTANTIATE_TEST_SUITE_P(
    Cases, CliStatusLineFormat,
    ::testing::Values(BadFormat{"{line} {lyric}",
                                "Unknown field {lyric} in the format; the fields are {line}, "
                                "{next}, {artist}, {title}, {album}, {offset} and {origin}."},
                      BadFormat{"{line", "A { in the format is not closed; write {{ for a brace."},
                      BadFormat{"a}b", "A lone } in the format; write }} for a brace."}));

} // namespace
