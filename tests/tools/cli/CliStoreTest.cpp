#include "CliRunner.h"

#include "support/QtPrinters.h"
#include "support/TempHome.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>

#include <tuple>

#include <sys/stat.h>

#include <gtest/gtest.h>

namespace {

class CliStore : public ::testing::Test {
protected:
    TempHome home;
    QString lyric = home.write("song.lrc", "[ti:x]\n[00:01.00]Hello\r\n[00:02][00:05]World\n");
    CliResult cli(const QStringList& args, const QByteArray& input = {})
    {
        return runCliAt(home.path(), args, input);
    }
};

TEST_F(CliStore, WriteReadAndListRoundTrip)
{
    const CliResult path = cli({"store", "path"});
    EXPECT_EQ(path.json()["path"], home.path() + "/data/Versewick/lyrics.lrcs");
    EXPECT_EQ(path.json()["exists"], false);

    EXPECT_EQ(cli({"store", "write", "Ann", "Rain", lyric}).json()["written"], true);
    EXPECT_EQ(cli({"store", "write", "Ann", "Rain", home.write("b.lrc", "[00:01]other")})
                  .json()["written"],
              false);
    EXPECT_EQ(cli({"store", "read", "Ann", "Rain"}).out,
              QByteArray("[ti:x]\n[00:01.00]Hello\r\n[00:02][00:05]World\n"));
    EXPECT_EQ(cli({"store", "write", "Ann", "Rain", home.filePath("b.lrc"), "--overwrite"})
                  .json()["written"],
              true);
    EXPECT_EQ(cli({"store", "read", "Ann", "Rain"}).out, QByteArray("[00:01]other"));

    cli({"store", "write", "Bo", "Snow", lyric});
    const auto lines = cli({"store", "list"}).jsonLines();
    ASSERT_EQ(lines.size(), 2);
    QStringList names;
    for (const QJsonObject& line : lines)
        names << line["artist"].toString() + "|" + line["song"].toString() + "|" +
                     line["fileName"].toString();
    names.sort();
    EXPECT_EQ(names, QStringList({"Ann|Rain|Ann--Rain.lrc", "Bo|Snow|Bo--Snow.lrc"}));
    EXPECT_TRUE(cli({"store", "list"}).out.startsWith(R"({"artist":)"));
}

TEST_F(CliStore, RefusesWhatMustNotBeWritten)
{
    EXPECT_EQ(
        cli({"store", "write", "Ann", "Rain", home.write("blank.lrc", " \n\n")}).json()["written"],
        false);
    const CliResult missing = cli({"store", "read", "Ann", "Rain"});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_TRUE(missing.err.startsWith("versewick-cli: No readable lyric"));
    EXPECT_EQ(cli({"store", "write", "Ann"}).exitCode, 2);
    EXPECT_EQ(cli({"store", "write", "Ann", "Rain", home.filePath("nope.lrc")}).exitCode, 1);
}

TEST_F(CliStore, NamesThatCannotBeStoredSayWhy)
{
    const std::tuple<QString, QByteArray> cases[] = {
        {"a/b", R"(a name may not contain "/")"},
        {QString(300, u'x'), "its file name would be 309 bytes long"}};
    for (const auto& [title, why] : cases) {
        for (const char* command : {"write", "read"}) {
            QStringList args{"store", command, "Ann", title};
            if (QLatin1String(command) == QLatin1String("write"))
                args << lyric;
            const CliResult r = cli(args);
            EXPECT_EQ(r.exitCode, 1) << command;
            EXPECT_TRUE(r.out.isEmpty()) << command;
            EXPECT_TRUE(r.err.contains(why)) << r.err.toStdString();
        }
    }
}

TEST_F(CliStore, OperandsAfterTheSeparatorAreNeverOptions)
{
    const CliResult write = cli({"store", "write", "--", "-h", "--overwrite", lyric});
    ASSERT_EQ(write.exitCode, 0) << write.err.toStdString();
    EXPECT_EQ(write.json()["path"].toString(),
              home.path() + "/data/Versewick/lyrics.lrcs/-h----overwrite.lrc");
    EXPECT_EQ(cli({"store", "read", "--", "-h", "--overwrite"}).out,
              QByteArray("[ti:x]\n[00:01.00]Hello\r\n[00:02][00:05]World\n"));
    EXPECT_TRUE(cli({"store", "read", "-h", "x"}).out.startsWith("Usage:"));
}

TEST_F(CliStore, OnlyRegularFilesAreLyrics)
{
    cli({"store", "write", "Ann", "Rain", lyric});
    const QString folder = home.path() + "/data/Versewick/lyrics.lrcs/";
    const QString outside = home.write("outside.lrc", "[00:01]secret");
    ASSERT_TRUE(QFile::link(outside, folder + "Ann--Link.lrc"));
    ASSERT_EQ(mkfifo(QFile::encodeName(folder + "Ann--Pipe.lrc").constData(), 0600), 0);
    for (const char* title : {"Link", "Pipe"}) {
        const CliResult read = cli({"store", "read", "Ann", title});
        EXPECT_EQ(read.exitCode, 1) << title;
        EXPECT_TRUE(read.err.contains("is not a regular file")) << read.err.toStdString();
        const CliResult write = cli({"store", "write", "Ann", title, lyric, "--overwrite"});
        EXPECT_EQ(write.exitCode, 1) << title;
        EXPECT_TRUE(write.err.contains("is not a regular file")) << write.err.toStdString();
    }
    QFile kept(outside);
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), QByteArray("[00:01]secret"));
    EXPECT_TRUE(QFileInfo(folder + "Ann--Link.lrc").isSymLink());
}

TEST_F(CliStore, TagEmbedRefusesLyricFilesPastTheBound)
{
    const QByteArray line = "[00:01]" + QByteArray(1016, 'x') + '\n';
    const QString fits = home.write("fits.lrc", line.repeated(4 * 1024));
    const QString over = home.write("over.lrc", line.repeated(4 * 1024) + "y");
    const CliResult embedded = cli({"tag", "embed", fits});
    ASSERT_EQ(embedded.exitCode, 0);
    EXPECT_EQ(cli({"tag", "extract"}, embedded.out).out.size(), 4 * 1024 * 1024);
    const CliResult refused = cli({"tag", "embed", over});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(refused.out.isEmpty());
    EXPECT_TRUE(refused.err.contains("4194305 bytes, more than 4194304"))
        << refused.err.toStdString();
}

TEST_F(CliStore, TagEmbedAndExtractAreExactInverses)
{
    const CliResult embed = cli({"tag", "embed", lyric});
    ASSERT_EQ(embed.exitCode, 0);
    EXPECT_TRUE(
        embed.out.startsWith("Hello\r\nWorld\nWorld\n" + QByteArray(40, '\n') + "=QVInfo="));
    EXPECT_TRUE(embed.out.endsWith("=QVEOF="));
    const CliResult extract = cli({"tag", "extract", "-"}, embed.out);
    ASSERT_EQ(extract.exitCode, 0);
    EXPECT_EQ(extract.out, QByteArray("[ti:x]\n[00:01.00]Hello\r\n[00:02][00:05]World\n"));

    EXPECT_EQ(cli({"tag", "embed", home.write("empty.lrc", "[00:01]\n[00:02] ")}).exitCode, 1);
    const CliResult none = cli({"tag", "extract"}, "plain lyrics typed by hand");
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_TRUE(none.err.startsWith("versewick-cli: The tag text holds no usable lyric block."));
}

TEST_F(CliStore, SettingsShowSeesTheApplicationsStart)
{
    const CliResult first = cli({"settings", "show"});
    ASSERT_EQ(first.exitCode, 0) << first.err.toStdString();
    EXPECT_TRUE(first.err.isEmpty()) << first.err.toStdString();
    EXPECT_TRUE(
        first.out.startsWith(R"({"traditionchinese":true,"launchAndQuitWithiTunes":false,)"));
    const QJsonObject json = first.json();
    EXPECT_EQ(json["lyricCellHeight"], 5);
    EXPECT_EQ(json["lyricFont"].toObject()["size"], 14);
    EXPECT_EQ(json["fontSingleLine"].toObject()["size"], 30);
    EXPECT_EQ(json["lyricHighlightColor"], "#ffffff");
    EXPECT_EQ(json["lyricNormalColor"], "#808080");
    EXPECT_EQ(json["PLSettings"], 7);
    EXPECT_EQ(json["PLSettingInitCount"], 1);
    EXPECT_TRUE(json["kSettingInitDate"].isString());
    EXPECT_EQ(json.size(), 15);

    const QJsonObject second = cli({"settings", "show"}).json();
    EXPECT_EQ(second["PLSettingInitCount"], 2);
    EXPECT_EQ(second["kSettingInitDate"], json["kSettingInitDate"]);
}

TEST(CliStoreHelp, EveryCommandAnswersHelp)
{
    for (const char* group : {"store", "tag", "settings"}) {
        const CliResult r = runCli({group, "--help"});
        EXPECT_EQ(r.exitCode, 0) << group;
        EXPECT_TRUE(r.out.startsWith("Usage: versewick-cli")) << group;
    }
    for (const QStringList& args :
         {QStringList{"store", "list", "--help"}, QStringList{"tag", "embed", "--help"},
          QStringList{"settings", "show", "--help"}})
        EXPECT_EQ(runCli(args).exitCode, 0);
}

} // namespace
