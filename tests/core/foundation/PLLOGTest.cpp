#include "core/foundation/PLLOG.h"
#include "core/foundation/Assertion.h"
#include "core/foundation/PLLOG_File.h"

#include "support/TempHome.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <QFile>

#include <cstdio>
#include <unistd.h>

namespace {

// Captures what is written to the process's standard output.
class StdoutCapture {
public:
    StdoutCapture()
    {
        std::fflush(stdout);
        m_saved = dup(STDOUT_FILENO);
        m_file = std::tmpfile();
        dup2(fileno(m_file), STDOUT_FILENO);
    }
    ~StdoutCapture() { restore(); }
    QByteArray text()
    {
        restore();
        std::rewind(m_file);
        QByteArray bytes;
        char buffer[4096];
        while (std::size_t n = std::fread(buffer, 1, sizeof buffer, m_file))
            bytes.append(buffer, qsizetype(n));
        return bytes;
    }

private:
    void restore()
    {
        if (m_saved < 0)
            return;
        std::fflush(stdout);
        dup2(m_saved, STDOUT_FILENO);
        close(m_saved);
        m_saved = -1;
    }
    int m_saved = -1;
    std::FILE* m_file = nullptr;
};

class Logging : public ::testing::Test {
protected:
    void SetUp() override
    {
        PLLOG::resetToDefaults();
        m_previous = foundation::setAssertionHandler(
            [this](const QString& text) { m_assertions.append(text); });
    }
    void TearDown() override
    {
        foundation::setAssertionHandler(m_previous);
        PLLOG::resetToDefaults();
    }
    QStringList m_assertions;
    foundation::AssertionHandler m_previous;
};

TEST_F(Logging, DefaultStylePrintsNameMessageAndMethod)
{
    StdoutCapture out;
    PLLOG::logForEnv(PLLOG::Info, "src/x/Main.cpp", 12, "main", "%s", "hello");
    EXPECT_EQ(out.text(), QByteArray("[Info] hello\n  main\n"));
}

struct StyleCase {
    int style;
    const char* console;
    const char* file;
};

class LogStyles : public Logging, public ::testing::WithParamInterface<StyleCase> {};

TEST_P(LogStyles, FormatConsoleAndFileLines)
{
    PLLOG::setLogStyle(GetParam().style);
    const auto line = [](bool fileForm) {
        return PLLOG::formatLine(PLLOG::Net, "/a/b/Source.cpp", 42, "fetch",
                                 QStringLiteral("got 3"), fileForm);
    };
    EXPECT_EQ(line(false), GetParam().console ? QString::fromUtf8(GetParam().console) : QString());
    EXPECT_EQ(line(true), GetParam().file ? QString::fromUtf8(GetParam().file) : QString());
}

INSTANTIATE_TEST_SUITE_P(Styles, LogStyles,
                         ::testing::Values(StyleCase{0, "[Net] got 3", "[Net] got 3"},
                                           StyleCase{1, "[Net] got 3\n  fetch",
                                                     "[Net] got 3\n  fetch"},
                                           StyleCase{2, "[Net]Source.cpp:42 fetch got 3",
                                                     "[Net]Source.cpp:42 fetch got 3\n"},
                                           StyleCase{3, nullptr, nullptr}));

TEST_F(Logging, SwitchesSilenceEnvironmentsAndEverything)
{
    const auto lineFor = [](std::uint32_t env) {
        return PLLOG::formatLine(env, "f", 1, "m", QStringLiteral("x"), false);
    };
    PLLOG::setLogState(PLLOG::Net, false);
    EXPECT_TRUE(lineFor(PLLOG::Net).isNull());
    EXPECT_FALSE(lineFor(PLLOG::Info).isNull());

    PLLOG::setLogState(PLLOG::GlobalSwitch, false);
    EXPECT_TRUE(lineFor(PLLOG::Info).isNull());
    PLLOG::setLogState(PLLOG::GlobalSwitch, true);
    EXPECT_FALSE(lineFor(PLLOG::Info).isNull());
    EXPECT_TRUE(lineFor(PLLOG::Net).isNull()); // its own switch is still off
    EXPECT_TRUE(m_assertions.isEmpty());
}

TEST_F(Logging, UnknownEnvironmentIsAnAssertion)
{
    StdoutCapture out;
    PLLOG::logForEnv(9, "f", 1, "m", "x");
    PLLOG::setLogState(10, true);
    EXPECT_TRUE(out.text().isEmpty());
    EXPECT_EQ(m_assertions, QStringList({"PLOG env 9 not exists", "PLOG env 10 not exists"}));

    PLLOG::addEnv(9, QStringLiteral("Lyric"));
    EXPECT_EQ(PLLOG::formatLine(9, "f", 1, "m", QStringLiteral("x"), false),
              QStringLiteral("[Lyric] x\n  m"));
    PLLOG::addEnv(9, QStringLiteral("Again")); // replaces, enabled again
    EXPECT_TRUE(
        PLLOG::formatLine(9, "f", 1, "m", QStringLiteral("x"), false).startsWith("[Again]"));
}

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

TEST_F(Logging, FileLoggerStartsAFreshFileAndEchoesWhileVisible)
{
    TempHome home;
    const QString path = home.write("log.txt", "old contents\n");
    PLLOG::setLogStyle(0);
    {
        auto first = PLLOG_File::fileLog(path);
        ASSERT_TRUE(first);
        first->logForEnv(PLLOG::Info, "f", 1, "m", "first");
    }
    auto logger = PLLOG_File::fileLog(path);
    ASSERT_TRUE(logger);
    StdoutCapture out;
    logger->logForEnv(PLLOG::Info, "f", 1, "m", "one %d", 1);
    logger->setConsoleVisible(false);
    logger->logForEnv(PLLOG::Warning, "f", 1, "m", "two");
    // Styles 0 and 1 add no line end in the file: entries run together.
    EXPECT_EQ(readFile(path), QByteArray("[Info] one 1[Warning] two"));
    EXPECT_EQ(out.text(), QByteArray("[Info] one 1"));

    PLLOG::setLogStyle(2);
    logger->logForEnv(PLLOG::Error, "dir/File.cpp", 7, "run", "three");
    EXPECT_EQ(readFile(path), QByteArray("[Info] one 1[Warning] two[Error]File.cpp:7 run three\n"));
}

TEST_F(Logging, ASecondLoggerOnAPathLeavesTheFirstItsOwnFile)
{
    TempHome home;
    const QString path = home.filePath("log.txt");
    PLLOG::setLogStyle(0);
    auto first = PLLOG_File::fileLog(path);
    ASSERT_TRUE(first);
    first->setConsoleVisible(false);
    first->logForEnv(PLLOG::Info, "f", 1, "m", "first logger's early line");
    auto second = PLLOG_File::fileLog(path);
    ASSERT_TRUE(second);
    second->setConsoleVisible(false);
    EXPECT_EQ(readFile(path), QByteArray());
    first->logForEnv(PLLOG::Info, "f", 1, "m", "late");
    second->logForEnv(PLLOG::Info, "f", 1, "m", "new");
    EXPECT_EQ(readFile(path), QByteArray("[Info] new"));
}

TEST_F(Logging, DefaultLoggerIsANonOwningReference)
{
    TempHome home;
    {
        auto logger = PLLOG_File::createDefaultLogger(home.filePath("d.log"));
        ASSERT_TRUE(logger);
        EXPECT_EQ(PLLOG_File::defaultLogger(), logger.get());
    }
    EXPECT_EQ(PLLOG_File::defaultLogger(), nullptr);

    auto broken = PLLOG_File::createDefaultLogger(home.filePath("no/such/dir/d.log"));
    EXPECT_EQ(broken, nullptr);
    EXPECT_EQ(PLLOG_File::defaultLogger(), nullptr);
}

} // namespace
