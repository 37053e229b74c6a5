// The versewick executable itself: it starts, owns its bus name, lets a second start show its
// window and exit 0, and quits through the service.
#include "core/app/AppDBusService.h"

#include "support/PlayerProcess.h"
#include "support/QtPrinters.h"
#include "support/TempHome.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDBusReply>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

namespace {

// One line per member of the interface ("method SetLyric(in s text)"), sorted; annotations and
// comments aside, two descriptions of the same interface give the same lines.
QStringList membersOf(const QString& xml, const QString& interface)
{
    QStringList members;
    QXmlStreamReader reader(xml);
    bool inside = false;
    QString member;
    QStringList args;
    while (!reader.atEnd()) {
        reader.readNext();
        const auto a = reader.attributes();
        const QStringView tag = reader.name();
        if (reader.isStartElement() && tag == u"interface")
            inside = a.value("name") == interface;
        else if (!inside)
            continue;
        else if (reader.isStartElement() && tag == u"property")
            members << QStringLiteral("property %1 %2 %3")
                           .arg(a.value("name"), a.value("type"), a.value("access"));
        else if (reader.isStartElement() && (tag == u"method" || tag == u"signal")) {
            member = tag.toString() + u' ' + a.value("name").toString();
            args.clear();
        } else if (reader.isStartElement() && tag == u"arg")
            args << QStringLiteral("%1 %2 %3")
                        .arg(a.value("direction"), a.value("type"), a.value("name"));
        else if (reader.isEndElement() && (tag == u"method" || tag == u"signal"))
            members << member + u'(' + args.join(u", ") + u')';
        else if (reader.isEndElement() && tag == u"interface")
            inside = false;
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    members.sort();
    return members;
}

class DesktopAppProcess : public ::testing::Test {
protected:
    TempHome home;
    QDBusConnection bus = QDBusConnection::sessionBus();
    QProcess first;

    void SetUp() override { ASSERT_TRUE(bus.isConnected()); }
    void TearDown() override
    {
        if (first.state() != QProcess::NotRunning) {
            first.kill();
            first.waitForFinished(5000);
        }
    }
    QProcessEnvironment environment() const
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("HOME", home.path());
        env.insert("XDG_CONFIG_HOME", home.filePath("config"));
        env.insert("XDG_DATA_HOME", home.filePath("data"));
        env.insert("QT_QPA_PLATFORM", "offscreen");
        env.insert("VERSEWICK_QQMUSIC_PORT", "9");
        return env;
    }
    void start(QProcess& process) const
    {
        process.setProcessEnvironment(environment());
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QStringLiteral(VERSEWICK_APP), {});
    }
    bool nameOwned() const
    {
        return bus.interface()->isServiceRegistered(AppDBusService::kServiceName).value();
    }
    QDBusInterface service() const
    {
        return QDBusInterface(AppDBusService::kServiceName, AppDBusService::kObjectPath,
                              AppDBusService::kInterface, bus);
    }
    bool windowVisible() const { return service().property("LyricWindowVisible").toBool(); }
};

TEST_F(DesktopAppProcess, StartsOwnsTheNamePublishesTheShippedInterfaceAndQuitsThroughIt)
{
    start(first);
    ASSERT_TRUE(first.waitForStarted(10000));
    ASSERT_TRUE(waitFor([&] { return nameOwned(); }, 20000));
    EXPECT_TRUE(windowVisible());
    EXPECT_EQ(service().property("Mode").toInt(), 0);

    QFile shipped(QStringLiteral(VERSEWICK_INTERFACE_XML));
    ASSERT_TRUE(shipped.open(QIODevice::ReadOnly));
    QDBusInterface introspectable(AppDBusService::kServiceName, AppDBusService::kObjectPath,
                                  "org.freedesktop.DBus.Introspectable", bus);
    const QDBusReply<QString> running = introspectable.call("Introspect");
    ASSERT_TRUE(running.isValid());
    const QStringList published = membersOf(running.value(), AppDBusService::kInterface);
    EXPECT_GT(published.size(), 20);
    EXPECT_EQ(published,
              membersOf(QString::fromUtf8(shipped.readAll()), AppDBusService::kInterface));
    // The editor opens without a song playing (on an empty text).
    const QDBusMessage editor = service().call("ShowEditor");
    EXPECT_EQ(editor.type(), QDBusMessage::ReplyMessage) << editor.errorMessage().toStdString();

    service().call("Quit");
    ASSERT_TRUE(first.waitForFinished(10000));
    EXPECT_EQ(first.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(first.exitCode(), 0);
    EXPECT_TRUE(waitFor([&] { return !nameOwned(); }, 5000));
}

TEST_F(DesktopAppProcess, ASecondStartShowsTheFirstsWindowAndExitsZero)
{
    start(first);
    ASSERT_TRUE(waitFor([&] { return nameOwned(); }, 20000));
    service().call("ToggleLyricsWindow");
    ASSERT_TRUE(waitFor([&] { return !windowVisible(); }, 5000));

    for (int round = 0; round < 2; ++round) { // the second round must not hide it again
        QProcess second;
        start(second);
        ASSERT_TRUE(second.waitForFinished(20000)) << round;
        EXPECT_EQ(second.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(second.exitCode(), 0);
        EXPECT_TRUE(waitFor([&] { return windowVisible(); }, 5000)) << round;
    }
    EXPECT_EQ(first.state(), QProcess::Running);
    service().call("Quit");
    EXPECT_TRUE(first.waitForFinished(10000));
}

struct OptionCase {
    const char* option;
    const char* pattern; // what the whole output must match
};

void PrintTo(const OptionCase& c, std::ostream* os)
{
    *os << c.option;
}

class CommandLineOption : public DesktopAppProcess,
                          public ::testing::WithParamInterface<OptionCase> {};

// Answered on a console with no display at all, and beside a running instance it must not wake.
TEST_P(CommandLineOption, PrintsAndExitsZeroWithoutADisplayAndBesideARunningInstance)
{
    const OptionCase c = GetParam();
    for (const bool running : {false, true}) {
        if (running) {
            start(first);
            ASSERT_TRUE(waitFor([&] { return nameOwned(); }, 20000));
        }
        QProcess console;
        QProcessEnvironment env = environment();
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            env.remove(name);
        console.setProcessEnvironment(env);
        console.start(QStringLiteral(VERSEWICK_APP), {QString::fromLatin1(c.option)});
        ASSERT_TRUE(console.waitForFinished(10000)) << running;
        EXPECT_EQ(console.exitStatus(), QProcess::NormalExit) << running;
        EXPECT_EQ(console.exitCode(), 0) << running;
        const QString out = QString::fromUtf8(console.readAllStandardOutput());
        EXPECT_TRUE(QRegularExpression(c.pattern).match(out).hasMatch()) << out.toStdString();
    }
    EXPECT_TRUE(windowVisible()); // the running instance was not toggled
    service().call("Quit");
    EXPECT_TRUE(first.waitForFinished(10000));
}

INSTANTIATE_TEST_SUITE_P(
    Options, CommandLineOption,
    ::testing::Values(OptionCase{"--help", "^Usage: versewick \\[options\\]\\n[\\s\\S]*--version"},
                      OptionCase{"-h", "^Usage: versewick"},
                      OptionCase{"--version", "^versewick \\d+\\.\\d+\\.\\d+\\n$"},
                      OptionCase{"--self-test",
                                 "^plug-in: LRCLIB[\\s\\S]*\\nself-test passed\\n$"}));

} // namespace
