#include "core/preferences/AutostartEntry.h"

#include "support/TempHome.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace {

class Autostart : public ::testing::Test {
protected:
    TempHome home;
    ScopedUserFolders folders{home};
    QString folder = folders.configHome() + QStringLiteral("/autostart");
    AutostartEntry entry{AutostartEntry::defaultFilePath(), QStringLiteral("/usr/bin/versewick")};

    QStringList folderContents() const
    {
        return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
};

TEST_F(Autostart, LivesInTheConfigHomeOrDotConfig)
{
    EXPECT_EQ(entry.filePath(), folder + QStringLiteral("/com.morvane.Versewick.desktop"));
    for (const char* value : {"", "relative/config"}) {
        qputenv("XDG_CONFIG_HOME", value);
        EXPECT_EQ(AutostartEntry::defaultFilePath(),
                  QDir::homePath() +
                      QStringLiteral("/.config/autostart/com.morvane.Versewick.desktop"));
    }
}

TEST_F(Autostart, OnWritesTheEntryAndOffRemovesIt)
{
    EXPECT_FALSE(entry.isEnabled());
    EXPECT_EQ(entry.setEnabled(false), QString()); // nothing to remove is no error
    ASSERT_EQ(entry.setEnabled(true), QString());
    EXPECT_TRUE(entry.isEnabled());
    QFile file(entry.filePath());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    EXPECT_TRUE(text.startsWith("[Desktop Entry]\nType=Application\n"));
    EXPECT_TRUE(text.contains("\nExec=/usr/bin/versewick\n"));
    EXPECT_EQ(folderContents(), QStringList{QStringLiteral("com.morvane.Versewick.desktop")});

    EXPECT_EQ(entry.setEnabled(false), QString());
    EXPECT_FALSE(entry.isEnabled());
    EXPECT_TRUE(folderContents().isEmpty());
}

TEST_F(Autostart, AFileDeletedByHandReadsAsOff)
{
    ASSERT_EQ(entry.setEnabled(true), QString());
    ASSERT_TRUE(QFile::remove(entry.filePath()));
    EXPECT_FALSE(entry.isEnabled());
    EXPECT_EQ(entry.setEnabled(true), QString());
    EXPECT_TRUE(entry.isEnabled());
}

// The tests run as root too, where permissions do not stop a write: a file where the folder
// should be, and a folder where the entry should be, fail for everyone.
TEST_F(Autostart, AFailedWriteSaysWhereAndLeavesNothingBehind)
{
    ASSERT_TRUE(QDir().mkpath(folders.configHome()));
    QFile blocker(folder);
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    QString error = entry.setEnabled(true);
    EXPECT_TRUE(error.contains(folder)) << error.toStdString();
    EXPECT_FALSE(entry.isEnabled());

    ASSERT_TRUE(QFile::remove(folder));
    ASSERT_TRUE(QDir().mkpath(entry.filePath()));
    error = entry.setEnabled(true);
    EXPECT_TRUE(error.contains(entry.filePath())) << error.toStdString();
    EXPECT_FALSE(entry.isEnabled());
    EXPECT_EQ(folderContents(), QStringList{QStringLiteral("com.morvane.Versewick.desktop")});
    EXPECT_FALSE(entry.setEnabled(false).isEmpty()); // a folder is not removed as an entry
}

struct ExecCase {
    const char* program;
    const char* exec;
};

void PrintTo(const ExecCase& c, std::ostream* os)
{
    *os << c.program;
}

class ExecLine : public ::testing::TestWithParam<ExecCase> {};

TEST_P(ExecLine, QuotesWhatTheDesktopEntryFormatWouldRead)
{
    const QByteArray expected = QByteArray("\nExec=") + GetParam().exec + "\n";
    EXPECT_TRUE(AutostartEntry::contents(QString::fromUtf8(GetParam().program)).contains(expected))
        << AutostartEntry::contents(QString::fromUtf8(GetParam().program)).toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Programs, ExecLine,
    ::testing::Values(ExecCase{"/usr/bin/versewick", "/usr/bin/versewick"},
                      ExecCase{"/opt/My Apps/versewick", R"("/opt/My Apps/versewick")"},
                      ExecCase{"/home/a/100%/$x/v", R"("/home/a/100%%/\\$x/v")"},
                      ExecCase{"/tmp/a\nb", R"("/tmp/a\nb")"}));

} // namespace
