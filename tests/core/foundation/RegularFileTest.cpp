#include "core/foundation/RegularFile.h"

#include "support/QtPrinters.h"
#include "support/TempHome.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

using namespace foundation;

namespace {

struct Entry {
    const char* name;
    std::function<QString(const TempHome&)> plant; // the path to read
    const char* reason;                            // empty: read
};

const qint64 kBound = 1024;

QString fifo(const TempHome& home)
{
    const QString path = home.filePath("pipe.lrc");
    EXPECT_EQ(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    return path;
}

QString linkTo(const TempHome& home, const char* target)
{
    const QString path = home.filePath("link.lrc");
    EXPECT_EQ(::symlink(target, QFile::encodeName(path).constData()), 0);
    return path;
}

class RegularFileOnly : public ::testing::TestWithParam<Entry> {};

// Each read answers at once: a pipe without a writer or a device would hang a plain read.
TEST_P(RegularFileOnly, ReadsRegularFilesWithinTheBoundAndNothingElse)
{
    TempHome home;
    const QString path = GetParam().plant(home);
    const FileRead read = readRegularFile(path, kBound);
    const QString reason = QString::fromUtf8(GetParam().reason);
    EXPECT_EQ(read.reason, reason);
    EXPECT_EQ(read.bytes.has_value(), reason.isEmpty());
    EXPECT_EQ(read.bytes.value_or(QByteArray()).size(), reason.isEmpty() ? kBound : 0);
}

INSTANTIATE_TEST_SUITE_P(
    Entries, RegularFileOnly,
    ::testing::Values(
        Entry{"regularAtTheBound",
              [](const TempHome& h) { return h.write("a.lrc", QByteArray(kBound, 'x')); }, ""},
        Entry{"overTheBound",
              [](const TempHome& h) { return h.write("a.lrc", QByteArray(kBound + 1, 'x')); },
              "1025 bytes, more than 1024"},
        Entry{"missing", [](const TempHome& h) { return h.filePath("none.lrc"); }, "missing"},
        Entry{"pipe", fifo, "a pipe"},
        Entry{"folder", [](const TempHome& h) { return h.path(); }, "a folder"},
        Entry{"linkToDevZero", [](const TempHome& h) { return linkTo(h, "/dev/zero"); },
              "a device"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(RegularFile, LinksAreRefusedWhenAskedAndRefusalsAreLoggedOnce)
{
    TempHome home;
    const QString link = linkTo(home, "/dev/null");
    EXPECT_EQ(readRegularFile(link, kBound, false).reason, "a link");
    MessageCapture log;
    EXPECT_FALSE(readLyricFile("The lyric file", fifo(home)));
    EXPECT_FALSE(readLyricFile("The lyric file", home.filePath("none.lrc")));
    EXPECT_EQ(log.lines(),
              QStringList{"The lyric file " + home.filePath("pipe.lrc") + " is not read: a pipe"});
}

} // namespace
