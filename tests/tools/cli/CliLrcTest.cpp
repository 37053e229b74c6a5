#include "CliRunner.h"

#include "support/TempHome.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QJsonArray>

#include <sys/stat.h>

namespace {

const QByteArray kSong = "[ti:Song]\n[offset:+500]\n[00:01.00]one\n[00:03.00][00:07.5]two\r\n"
                         "[00:05.00]\n";

class CliLrc : public ::testing::Test {
protected:
    TempHome home;
    QString song = home.write("song.lrc", kSong);
};

TEST_F(CliLrc, DumpPrintsTheParsedDocument)
{
    const CliResult r = runCli({"lrc", "dump", song});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.err.isEmpty());
    const QJsonObject doc = r.json();
    EXPECT_EQ(doc["parsed"], true);
    EXPECT_EQ(doc["lines"], 4);
    EXPECT_EQ(doc["offset"], 0.5);
    EXPECT_EQ(doc["offsetTag"], "[offset:+500]");
    const QJsonArray items = doc["items"].toArray();
    ASSERT_EQ(items.size(), 4);
    EXPECT_EQ(items[1].toObject(), QJsonObject({{"index", 1},
                                                {"start", 3.5},
                                                {"end", 5.5},
                                                {"minute", 0},
                                                {"second", 3},
                                                {"content", "two\r"}}));
    EXPECT_EQ(items[3].toObject()["end"], 999999);
    // Keys stay in the documented order.
    EXPECT_TRUE(r.out.startsWith(R"({"parsed":true,"lines":4,"offset":0.5,"offsetTag")"));
}

TEST_F(CliLrc, DumpReadsStandardInput)
{
    for (const QStringList& args : {QStringList{"lrc", "dump", "-"}, QStringList{"lrc", "dump"}}) {
        const CliResult r = runCli(args, "[00:02]x");
        ASSERT_EQ(r.exitCode, 0);
        EXPECT_EQ(r.json()["offsetTag"], QJsonValue::Null);
        EXPECT_EQ(r.json()["items"].toArray()[0].toObject()["content"], "x");
    }
}

TEST_F(CliLrc, AtAsksOneDocumentInOrder)
{
    const CliResult r = runCli({"lrc", "at", song, "0", "1.5", "3.49", "3.5", "100"});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    const auto lines = r.jsonLines();
    ASSERT_EQ(lines.size(), 5);
    EXPECT_EQ(lines[0],
              QJsonObject({{"time", 0}, {"index", QJsonValue()}, {"content", QJsonValue()}}));
    EXPECT_EQ(lines[1], QJsonObject({{"time", 1.5}, {"index", 0}, {"content", "one"}}));
    EXPECT_EQ(lines[2]["index"], 0);
    EXPECT_EQ(lines[3]["content"], "two\r");
    EXPECT_EQ(lines[4]["index"], 3);
    EXPECT_TRUE(r.out.startsWith(R"({"time":0,"index":null,"content":null})"));
}

TEST_F(CliLrc, ReadableAndOffsetPrintExactText)
{
    const CliResult readable = runCli({"lrc", "readable", song});
    ASSERT_EQ(readable.exitCode, 0);
    EXPECT_EQ(readable.out, QByteArray("one\ntwo\r\n\ntwo\r\n"));

    const CliResult offset = runCli({"lrc", "offset", song, "-1.2344"});
    ASSERT_EQ(offset.exitCode, 0);
    QByteArray expected = kSong;
    expected.replace("[offset:+500]", "[offset:-1234]");
    EXPECT_EQ(offset.out, expected);

    const QString bare = home.write("bare.lrc", "[00:01]x");
    EXPECT_EQ(runCli({"lrc", "offset", bare, "0.25"}).out, QByteArray("[00:01]x\n[offset:250]"));
}

struct ErrorCase {
    QStringList args;
    int exitCode;
    const char* stderrStart;
};

class CliErrors : public ::testing::TestWithParam<ErrorCase> {};

TEST_P(CliErrors, OneSentenceOnStandardErrorAndTheRightStatus)
{
    TempHome home;
    home.write("bad.lrc", "[00:01]\xC3\x28");
    home.write("big.lrc", QByteArray(4 * 1024 * 1024 + 1, 'x'));
    ASSERT_EQ(::mkfifo(QFile::encodeName(home.filePath("pipe.lrc")).constData(), 0600), 0);
    QStringList args = GetParam().args;
    for (QString& arg : args)
        arg.replace("HOME", home.path());
    const CliResult r = runCli(args);
    EXPECT_EQ(r.exitCode, GetParam().exitCode);
    EXPECT_TRUE(r.out.isEmpty());
    EXPECT_TRUE(r.err.startsWith(GetParam().stderrStart)) << r.err.toStdString();
    EXPECT_EQ(r.err.count('\n'), 1);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, CliErrors,
    ::testing::Values(
        ErrorCase{{"nonsense"}, 2, "versewick-cli: Unknown command"},
        ErrorCase{{"lrc", "frobnicate"}, 2, "versewick-cli: Unknown lrc command"},
        ErrorCase{{"lrc", "at", "HOME/x.lrc"}, 2, "versewick-cli: lrc at needs"},
        ErrorCase{{"lrc", "at", "HOME/bad.lrc", "soon"}, 2, "versewick-cli: A time must"},
        ErrorCase{{"lrc", "offset", "HOME/bad.lrc", "inf"}, 2, "versewick-cli: SECONDS must"},
        ErrorCase{{"lrc", "readable"}, 2, "versewick-cli: lrc readable needs"},
        ErrorCase{{"lrc", "dump", "a", "b"}, 2, "versewick-cli: lrc dump takes"},
        ErrorCase{{"lrc", "dump", "HOME/missing.lrc"}, 1, "versewick-cli: Cannot read"},
        ErrorCase{{"lrc", "dump", "HOME"}, 1, "versewick-cli: Cannot read"},
        // Refused at once: a pipe without a writer, a device, a file past the bound.
        ErrorCase{{"lrc", "dump", "HOME/pipe.lrc"}, 1, "versewick-cli: Cannot read"},
        ErrorCase{{"lrc", "readable", "/dev/zero"}, 1, "versewick-cli: Cannot read"},
        ErrorCase{{"server", "parse", "HOME/big.lrc"}, 1, "versewick-cli: Cannot read"},
        ErrorCase{{"lrc", "readable", "HOME/bad.lrc"}, 1, "versewick-cli: Cannot read"}));

TEST(CliHelp, EveryCommandAnswersHelp)
{
    for (const QStringList& args :
         {QStringList{"--help"}, QStringList{"lrc", "--help"}, QStringList{"lrc", "dump", "--help"},
          QStringList{"lrc", "at", "--help"}, QStringList{"lrc", "readable", "--help"},
          QStringList{"lrc", "offset", "--help"}}) {
        const CliResult r = runCli(args);
        EXPECT_EQ(r.exitCode, 0) << args.join(' ').toStdString();
        EXPECT_TRUE(r.out.startsWith("Usage: versewick-cli")) << args.join(' ').toStdString();
    }
}

} // namespace
