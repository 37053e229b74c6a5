#include "gui/windows/LyricSearchWC.h"

#include "core/app/LrcFetcherProtocol.h"
#include "core/online/LyricSearchDelegate.h"

#include "support/RawHttpServer.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>

#include <gtest/gtest.h>

namespace {

struct RecordingDelegate : LyricSearchDelegate {
    QStringList texts;
    void setupLRCcontent(const QString& text) override
    {
        texts << (text.isNull() ? QStringLiteral("<null>") : text);
    }
};

// Runs the event loop until the condition holds; false after a generous limit.
bool waitUntil(const std::function<bool()>& condition)
{
    QDeadlineTimer deadline(10000);
    while (!condition() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    return condition();
}

const QByteArray kAnswer = "<?xml version=\"1.0\"?><result>"
                           "<lrc id=\"7\" artist=\"Abba\" title=\"Waterloo\"/>"
                           "<x><lrc id=\"8\" artist=\"ABBA\" title=\"Waterloo (live)\"/></x>"
                           "</result>";

class LyricSearchWCTest : public ::testing::Test {
protected:
    RawHttpServer server;
    RecordingDelegate delegate;
    LyricSearchWC window;

    void SetUp() override
    {
        server.route(
            "/dll/lyricsvr.dll", [](const RawHttpServer::Request& request, QTcpSocket& socket) {
                const bool search = request.path.contains("?sh?");
                RawHttpServer::status(200, search ? kAnswer
                                                  : QByteArray("[00:01.00]lyric"))(request, socket);
            });
        window.setLyricServerHost(server.host());
        window.setDelegate(&delegate);
        window.setRequestTimeout(3000);
        window.showWindow();
    }
    void search(const QString& artist, const QString& title)
    {
        window.textArtist()->setText(artist);
        window.textTitle()->setText(title);
        window.searchButton()->click();
    }
};

} // namespace

TEST_F(LyricSearchWCTest, SearchShowsResultsAndAPickDownloadsForTheDelegate)
{
    search(QStringLiteral("AB"), QStringLiteral("c"));
    EXPECT_FALSE(window.searchButton()->isEnabled()); // busy while the request runs
    ASSERT_TRUE(waitUntil([&] { return !window.isBusy(); }));
    EXPECT_TRUE(window.searchButton()->isEnabled());
    EXPECT_TRUE(server.requests().at(0).path.endsWith("Artist=61006200&Title=6300&Flags=1"));
    ASSERT_EQ(window.tableView()->rowCount(), 2);
    EXPECT_EQ(window.tableView()->item(1, 0)->text(), "Waterloo (live)");
    EXPECT_EQ(window.tableView()->item(1, 1)->text(), "ABBA");
    EXPECT_EQ(window.objectValue(QStringLiteral("Other"), 0), "unexpected");

    window.onDoubleClick(2); // below the rows: nothing
    window.onDoubleClick(-1);
    EXPECT_FALSE(window.isBusy());
    EXPECT_EQ(window.tableView()->currentRow(), 0); // the keyboard starts on the first result
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(window.tableView(), &enter);
    ASSERT_TRUE(waitUntil([&] { return !delegate.texts.isEmpty(); }));
    EXPECT_EQ(delegate.texts, QStringList{"[00:01.00]lyric"});
    EXPECT_TRUE(server.requests().last().path.contains("?dl?Id=7&Code="));
    EXPECT_FALSE(window.isVisible());
}

TEST_F(LyricSearchWCTest, ShowingAgainClearsResults)
{
    search(QString(), QString()); // empty fields still ask
    ASSERT_TRUE(waitUntil([&] { return !window.isBusy(); }));
    EXPECT_TRUE(server.requests().at(0).path.endsWith("Artist=&Title=&Flags=1"));
    EXPECT_EQ(window.tableView()->rowCount(), 2);
    window.showWindow();
    EXPECT_EQ(window.tableView()->rowCount(), 0);
    EXPECT_EQ(window.numberOfRowsInTableView(), 0);
}

TEST_F(LyricSearchWCTest, SilentServerAndClosedPortShowAFailure)
{
    server.route("/dll/lyricsvr.dll", RawHttpServer::silent());
    window.setRequestTimeout(300);
    search(QStringLiteral("a"), QStringLiteral("b"));
    ASSERT_TRUE(waitUntil([&] { return !window.isBusy(); }));
    EXPECT_EQ(window.statusLabel()->text(), "The lyric server did not answer. Try again later.");
    EXPECT_EQ(window.tableView()->rowCount(), 0);

    window.setLyricServerHost(QStringLiteral("127.0.0.1:%1").arg(closedPort()));
    search(QStringLiteral("a"), QStringLiteral("b"));
    ASSERT_TRUE(waitUntil([&] { return !window.isBusy(); }));
    EXPECT_EQ(window.statusLabel()->text(), "The lyric server did not answer. Try again later.");
}

TEST_F(LyricSearchWCTest, EmptyAnswerSaysNothingFound)
{
    server.route("/dll/lyricsvr.dll", RawHttpServer::status(200, "<result/>"));
    search(QStringLiteral("a"), QStringLiteral("b"));
    ASSERT_TRUE(waitUntil([&] { return !window.isBusy(); }));
    EXPECT_EQ(window.statusLabel()->text(), "No lyrics found.");
}

// A fetcher that answers as a plug-in does, through its delegate.
class FakeFetcher : public QObject {
    Q_OBJECT
public:
    QPointer<QObject> delegate;
    Q_INVOKABLE void setDelegate(QObject* object) { delegate = object; }
    Q_INVOKABLE void lyricsListForArtist(const QString& artist, const QString& song)
    {
        lrcfetcher::sendListFetched(
            delegate, {QVariantMap{{"artist", artist}, {"title", song}, {"duration", 201.6}},
                       QVariantMap{{"artist", artist},
                                   {"title", song + " (Live)"},
                                   {"duration", 3725.0},
                                   {"synced", false},
                                   {"plainLyrics", "words"}}});
    }
    Q_INVOKABLE void lyricsContents(const QVariant& item)
    {
        lrcfetcher::sendContentFetched(delegate, "[00:02.00]" + item.toMap()["title"].toString(),
                                       item);
    }
};

TEST_F(LyricSearchWCTest, PluginServiceSearchesAndPicksThroughThePlugin)
{
    FakeFetcher fetcher;
    window.setLyricFetcher(&fetcher, QStringLiteral("Fake"));
    EXPECT_EQ(window.service(), LyricSearchWC::LyricServer); // the plug-in is the second choice
    window.setService(LyricSearchWC::Plugin);
    search(QStringLiteral("Nina"), QStringLiteral("Sinnerman"));
    ASSERT_TRUE(waitUntil([&] { return !window.isBusy(); }));
    ASSERT_EQ(window.tableView()->rowCount(), 2);
    const auto row = [&](int r) {
        QStringList cells;
        for (int c = 0; c < window.tableView()->columnCount(); ++c)
            cells << window.tableView()->item(r, c)->text();
        return cells;
    };
    EXPECT_EQ(row(0), (QStringList{"Sinnerman", "Nina", "3:22", "\u2713"}));
    EXPECT_EQ(row(1), (QStringList{"Sinnerman (Live)", "Nina", "1:02:05", ""}));
    window.onDoubleClick(1); // unsynced: not taken
    EXPECT_FALSE(window.isBusy());
    EXPECT_EQ(window.statusLabel()->text(), "This lyric has no timing.");
    window.onDoubleClick(0);
    ASSERT_TRUE(waitUntil([&] { return !delegate.texts.isEmpty(); }));
    EXPECT_EQ(delegate.texts, QStringList{"[00:02.00]Sinnerman"});
    EXPECT_TRUE(server.requests().isEmpty());
}

// A row found by one service is never read from the other's list.
TEST_F(LyricSearchWCTest, ChangingTheServiceClearsTheResults)
{
    FakeFetcher fetcher;
    window.setLyricFetcher(&fetcher, QStringLiteral("Fake"));
    window.setService(LyricSearchWC::Plugin);
    search(QStringLiteral("Nina"), QStringLiteral("Sinnerman"));
    ASSERT_TRUE(waitUntil([&] { return !window.isBusy(); }));
    ASSERT_EQ(window.tableView()->rowCount(), 2);

    window.setService(LyricSearchWC::LyricServer);
    EXPECT_EQ(window.tableView()->rowCount(), 0);
    window.onDoubleClick(0);
    EXPECT_FALSE(window.isBusy());
    EXPECT_TRUE(delegate.texts.isEmpty());
    EXPECT_TRUE(server.requests().isEmpty());
}

#include "LyricSearchWCTest.moc"
