// The whole song-change road against the player simulator on a private session bus, with the
// tests' own plug-in bundle asking a loopback server.
#include "support/app/AppFixture.h"

#include "core/app/AppDBusService.h"
#include "core/app/LyricEditing.h"
#include "core/app/SyncControls.h"
#include "core/foundation/RegularFile.h"
#include "core/store/LyricTagBlock.h"
#include "support/RoundTrip.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusPendingCall>
#include <QDBusReply>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTcpSocket>
#include <QThread>
#include <QUrlQuery>

#include <atomic>
#include <csignal>
#include <memory>
#include <sys/resource.h>

namespace {

const QByteArray kStored = "[00:01.00]stored one\n[00:02.00]stored two\n";
const QByteArray kOnline = "[00:01.00]online one\n[00:02.00]online two\n";

QString tagText(const QByteArray& lrc)
{
    Lyric lyric;
    lyric.parseLRCcontent(QString::fromUtf8(lrc));
    return tagblock::tagTextForLyric(lyric).value_or(QString());
}

class EndToEnd : public AppFixture {
protected:
    RawHttpServer plugin;  // what the fake plug-in asks
    RawHttpServer sharing; // the lyric-sharing service
    std::unique_ptr<PlayerProcess> player;

    void SetUp() override
    {
        AppFixture::SetUp();
        ASSERT_TRUE(QDBusConnection::sessionBus().isConnected());
        qputenv("VERSEWICK_FAKE_PLUGIN_URL", plugin.url("").toUtf8());
        bundles = {QStringLiteral(VERSEWICK_FAKE_BUNDLE)};
        sharing.route("/lyrics", RawHttpServer::status(200));
        setService(ServiceAddresses::kLyricSharingKey, sharing.host());
        settings->setIsShowChangeSongNotify(true);
    }
    void TearDown() override
    {
        AppFixture::TearDown();
        player.reset();
    }
    // Songs as {artist, title, album, duration, lyrics}.
    void startPlayer(const QString& as, const QJsonArray& songs, QStringList more = {})
    {
        const QString playlist =
            home.write("playlist.json", QJsonDocument(songs).toJson(QJsonDocument::Compact));
        player =
            std::make_unique<PlayerProcess>(QStringList{"--as", as, "--playlist", playlist,
                                                        "--qqmusic-port", QString::number(qqPort)} +
                                            more);
    }
    static QJsonObject song(const QString& artist, const QString& title, const QString& lyrics = {})
    {
        return {{"artist", artist},
                {"title", title},
                {"album", "Weather"},
                {"duration", 60},
                {"lyrics", lyrics}};
    }
    void answerList(const QByteArray& items, const QByteArray& headers = {})
    {
        plugin.route("/list", RawHttpServer::status(200, "{\"items\":" + items + "}", headers));
    }
    void answerContent(const QByteArray& text, const QByteArray& headers = {})
    {
        plugin.route("/content", RawHttpServer::status(200, text, headers));
    }
    void play()
    {
        player->send("play");
        ASSERT_TRUE(player->waitEvent("play"));
    }
    bool waitStatus(const QString& text, int ms = 10000)
    {
        return waitFor([&] { return status() == text; }, ms);
    }
    bool waitLoaded(int origin, int ms = 10000)
    {
        return waitFor([&] { return app->lrcAvailable() && app->state().lyricOrigin() == origin; },
                       ms);
    }
    // Jukora plays Ann's "Rain", whose lyric is in the folder; the service is published.
    std::unique_ptr<QDBusInterface> serve(const QByteArray& lyric)
    {
        writeStored("Ann--Rain", lyric);
        startPlayer("jukora", {song("Ann", "Rain")});
        play();
        launch();
        EXPECT_TRUE((new AppDBusService(*app))->publish()); // owned by the controller
        EXPECT_TRUE(waitLoaded(AppState::Folder));
        return std::make_unique<QDBusInterface>(
            AppDBusService::kServiceName, AppDBusService::kObjectPath, AppDBusService::kInterface);
    }
    QString stored(const QString& identify) const
    {
        return QString::fromUtf8(readFile(lyricsFolder() + u'/' + identify + ".lrc"));
    }
};

TEST_F(EndToEnd, AJukoraSongIsFoundInTheFolderAndDrivesTheDisplays)
{
    writeStored("Ann--Rain", kStored);
    startPlayer("jukora", {song("Ann", "Rain")});
    play();
    launch();
    ASSERT_TRUE(waitLoaded(AppState::Folder));
    EXPECT_EQ(app->musicSource(), 2);
    EXPECT_EQ(ports.sourceTitle, "Jukora");
    ASSERT_TRUE(waitFor([&] {
        timers.fire();
        return ports.content == "stored one" || ports.content == "stored two";
    }));
    EXPECT_EQ(ports.panelTitle, "Rain-Ann");
    EXPECT_GE(ports.viewTime, 0.15f); // the position with Jukora's lead
    EXPECT_GE(app->state().lineIndex(), 0);
    EXPECT_EQ(stored("Ann--Rain"), QString::fromUtf8(kStored)); // never written back
    EXPECT_TRUE(plugin.requests().isEmpty());
}

TEST_F(EndToEnd, AnITunesTagLyricIsCopiedToTheFolderWithoutReplacingAFile)
{
    settings->setIsSaveLRCtoDisk(true);
    writeStored("Ann--Rain", "[00:01]kept\n");
    startPlayer("itunes",
                {song("Ann", "Rain", tagText(kStored)), song("Bo", "Snow", tagText(kStored))});
    launch();
    player->send("play");
    ASSERT_TRUE(waitLoaded(AppState::TrackTag));
    EXPECT_EQ(stored("Ann--Rain"), "[00:01]kept\n");
    // The first notification ends its animation: closed and forgotten, so the next song's
    // notification replaces nothing.
    app->notificationCanBeRemoved();
    EXPECT_EQ(ports.entries("notification.close").size(), 1);
    player->send("next");
    ASSERT_TRUE(waitFor([&] { return app->state().title() == "Snow" && app->lrcAvailable(); }));
    EXPECT_EQ(stored("Bo--Snow"), QString::fromUtf8(kStored));
    EXPECT_EQ(ports.notifications, 2); // playing, and the setting is on
    EXPECT_TRUE(ports.entries("notification.disappear").isEmpty());
    EXPECT_EQ(ports.entries("notification.show"),
              (QStringList{"notification.show Rain / Ann", "notification.show Snow / Bo"}));
    // Each song's search starts, and says so, before the song is announced.
    EXPECT_EQ(ports.log.filter(QRegularExpression("^(view.info fetching|notification.show)")),
              (QStringList{"view.info fetching lyrics...", "notification.show Rain / Ann",
                           "view.info fetching lyrics...", "notification.show Snow / Bo"}));
}

TEST_F(EndToEnd, APluginLyricReplacesTheFileIsTaggedAndIsShared)
{
    settings->setIsSaveLRCtoDisk(true);
    settings->setIsSaveLRCtoTrackTags(true);
    // Unreadable as UTF-8: the folder misses it, and the online lyric replaces it.
    writeStored("Ann--Rain", "[00:01]\xff\xfe broken\n");
    answerList(
        R"([{"artist":"Ann & Co","title":"Rain","id":"7"},{"artist":"X","title":"Y","id":"8"}])");
    answerContent(kOnline);
    startPlayer("itunes", {song("Ann", "Rain")});
    launch();
    EXPECT_EQ(settings->lrcPluginInfo(), "Fake v(3)");
    player->send("play");
    ASSERT_TRUE(waitLoaded(AppState::Plugin));
    EXPECT_EQ(stored("Ann--Rain"), QString::fromUtf8(kOnline));
    ASSERT_TRUE(waitFor([&] { return sharing.requests().size() == 1; }));
    const auto upload = sharing.requests().first();
    EXPECT_EQ(upload.method, "POST");
    EXPECT_EQ(upload.body,
              "lyric[artist]=Ann%20%26%20Co&lyric[content]=%5B00%3A01.00%5Donline%20one%0A"
              "%5B00%3A02.00%5Donline%20two%0A&lyric[track]=Rain");
    EXPECT_FALSE(upload.headers.contains("content-type"));
    // The optional call carried the album and the duration; only the first result came down.
    const auto asked = plugin.requests();
    ASSERT_EQ(asked.size(), 2);
    const QUrlQuery query(QString::fromUtf8(asked[0].path.mid(asked[0].path.indexOf('?') + 1)));
    EXPECT_EQ(query.queryItemValue("album"), "Weather");
    EXPECT_EQ(query.queryItemValue("duration"), "60");
    EXPECT_EQ(asked[1].path, "/content?id=7");
    // The tag now holds the block of the online lyric.
    ASSERT_TRUE(waitFor([&] { return app->lyricControl() != nullptr; }));
    const auto track = itunes->currentTrack();
    ASSERT_TRUE(track);
    EXPECT_EQ(tagblock::lrcFromTagText(track->lyrics()).value_or(QString()),
              QString::fromUtf8(kOnline));
}

TEST_F(EndToEnd, APlainLyricIsShownUnlitAndNeverSavedNorShared)
{
    settings->setIsSaveLRCtoDisk(true);
    settings->setIsSaveLRCtoTrackTags(true);
    answerList(R"([{"artist":"Ann","title":"Rain","id":"7","synced":false,"match":true,)"
               R"("plainLyrics":"first line\nsecond line"}])");
    startPlayer("itunes", {song("Ann", "Rain")});
    launch();
    auto* service = new AppDBusService(*app);
    ASSERT_TRUE(service->publish());
    play();
    ASSERT_TRUE(waitLoaded(AppState::Plugin));
    ASSERT_TRUE(waitStatus("unsynced lyric"));
    QDBusInterface remote(AppDBusService::kServiceName, AppDBusService::kObjectPath,
                          AppDBusService::kInterface);
    EXPECT_FALSE(remote.property("Synced").toBool());
    EXPECT_EQ(app->plainLyricText(), "first line\nsecond line");
    EXPECT_EQ(ports.viewLyric->contentsReadable(), "\nfirst line\nsecond line\n");
    ASSERT_TRUE(waitFor([&] {
        timers.fire();
        return ports.viewTime > 0.5f;
    }));
    EXPECT_EQ(app->state().lineIndex(), -1) << "no line is lit";
    EXPECT_EQ(ports.content, "");
    // Nothing downloaded, saved into the folder or the tag, or shared.
    EXPECT_EQ(plugin.requests().size(), 1);
    EXPECT_FALSE(QFile::exists(lyricsFolder() + "/Ann--Rain.lrc"));
    ASSERT_TRUE(itunes->currentTrack());
    EXPECT_EQ(itunes->currentTrack()->lyrics(), "");
    app->forceWriteLyric(*app->lyric());
    EXPECT_FALSE(QFile::exists(lyricsFolder() + "/Ann--Rain.lrc"));
    QCoreApplication::processEvents(); // an upload would have started now
    EXPECT_EQ(PLHttpConfig::s().connections(), 0);
    EXPECT_TRUE(sharing.requests().isEmpty());
}

TEST_F(EndToEnd, AFolderLyricGoesIntoTheTagButNeverBackToTheFolder)
{
    settings->setIsSaveLRCtoDisk(true);
    settings->setIsSaveLRCtoTrackTags(true);
    const QString path = writeStored("Ann--Rain", kStored);
    const QDateTime written = QFileInfo(path).lastModified();
    startPlayer("itunes", {song("Ann", "Rain", "typed by the user")});
    launch();
    play();
    ASSERT_TRUE(waitLoaded(AppState::Folder));
    const auto track = itunes->currentTrack();
    ASSERT_TRUE(track);
    EXPECT_EQ(tagblock::lrcFromTagText(track->lyrics()).value_or(QString()),
              QString::fromUtf8(kStored)); // overwritten, whatever the tag held
    EXPECT_EQ(QFileInfo(path).lastModified(), written);
}

// The search window fills in the song; its pick replaces the file and the tag, and is not
// shared.
TEST_F(EndToEnd, ALyricPickedByHandIsForcedIntoTheFolderAndTheTag)
{
    settings->setIsSaveLRCtoDisk(true);
    settings->setIsSaveLRCtoTrackTags(true);
    writeStored("Ann--Rain", kStored);
    startPlayer("itunes", {song("Ann", "Rain")});
    launch();
    play();
    ASSERT_TRUE(waitLoaded(AppState::Folder));
    app->showSearchWindow();
    EXPECT_EQ(ports.entries("search.show"), QStringList{"search.show Rain / Ann"});
    app->setupLRCcontent(QString::fromUtf8(kOnline));
    EXPECT_EQ(stored("Ann--Rain"), QString::fromUtf8(kOnline));
    EXPECT_EQ(tagblock::lrcFromTagText(itunes->currentTrack()->lyrics()).value_or(QString()),
              QString::fromUtf8(kOnline));
    EXPECT_EQ(app->state().lyricOrigin(), AppState::ByHand);
    // A share would have started with the pick; events posted by it are handled now.
    QCoreApplication::processEvents();
    EXPECT_EQ(PLHttpConfig::s().connections(), 0);
    EXPECT_TRUE(sharing.requests().isEmpty());
}

TEST_F(EndToEnd, NothingFoundSaysTheLyricIsNotAvailable)
{
    answerList("[]");
    startPlayer("jukora", {song("Ann", "Rain")});
    launch();
    EXPECT_TRUE(waitStatus("lyric is not available"));
    EXPECT_FALSE(app->lrcAvailable());
    // The panel title follows the song; the displays are not driven without a lyric.
    timers.fire(2);
    EXPECT_EQ(ports.panelTitle, "Rain-Ann");
    EXPECT_EQ(ports.viewTime, -1);
    EXPECT_EQ(app->state().lineIndex(), -1);
}

TEST_F(EndToEnd, AnEmptyArtistLeavesTheSearchAtFetching)
{
    answerList("[]");
    startPlayer("itunes", {song("", "Rain"), song("Bo", "Snow")});
    launch();
    bool answered = false;
    QObject::connect(app.get(), &AppDelegate::lookupAnswered, [&] { answered = true; });
    player->send("play");
    ASSERT_TRUE(waitStatus("fetching lyrics..."));
    ASSERT_TRUE(waitFor([&] { return answered; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(status(), "fetching lyrics...");
    // iTunes searches one song at a time: a search for the first song would reach the server
    // before the next song's search, which is over once it says so.
    player->send("next");
    ASSERT_TRUE(waitStatus("lyric is not available"));
    const auto asked = plugin.requests();
    ASSERT_EQ(asked.size(), 1);
    EXPECT_TRUE(asked.first().path.contains("Snow"));
}

TEST_F(EndToEnd, AnEditorSavesForTheSongItOpenedOnAndInstallsOnlyWhileItPlays)
{
    answerList("[]");
    writeStored("Bo--Snow", "[offset:500]\n" + kStored);
    startPlayer("jukora", {song("Ann", "Rain"), song("Bo", "Snow")});
    launch();
    ASSERT_TRUE(waitStatus("lyric is not available"));
    const auto rain = lyricediting::song(*app);
    player->send("next");
    ASSERT_TRUE(waitLoaded(AppState::Folder));
    EXPECT_EQ(lyricediting::save(*app, rain, "[00:01]timed\n"), std::nullopt);
    EXPECT_EQ(stored("Ann--Rain"), "[00:01]timed\n");
    const QString snow = QString::fromUtf8("[offset:500]\n" + kStored);
    EXPECT_EQ(stored("Bo--Snow"), snow); // the song playing keeps its own
    EXPECT_EQ(app->lyric()->contents(), snow);
    EXPECT_EQ(lyricediting::save(*app, lyricediting::song(*app), "[00:02]snow\n"), std::nullopt);
    EXPECT_EQ(stored("Bo--Snow"), "[00:02]snow\n");
    EXPECT_EQ(app->lyric()->contents(), "[00:02]snow\n");
    // The old document's offset tag is gone with it: a nudge now lands in the file.
    EXPECT_TRUE(app->sync().nudgeOffset(0.1));
    EXPECT_TRUE(waitFor([&] { return stored("Bo--Snow") == "[00:02]snow\n\n[offset:100]"; }))
        << stored("Bo--Snow").toStdString();
    EXPECT_TRUE(lyricediting::save(*app, std::nullopt, "[00:02]x\n").has_value());
}

TEST_F(EndToEnd, QQMusicWinsOverITunesAndItsLyricsAreNeverSaved)
{
    answerList(R"([{"artist":"Ann","title":"Rain","id":"1"}])");
    answerContent(kOnline);
    startPlayer("itunes,qqmusic", {song("Ann", "Rain")});
    play();
    launch();
    // A fresh QQMusic source knows the song only from its first song-change notice.
    player->send("post com.tencent.QQMusicMac.songchanged com.tencent.QQMusicMac");
    ASSERT_TRUE(waitLoaded(AppState::Plugin));
    EXPECT_EQ(app->musicSource(), 3);
    EXPECT_EQ(ports.sourceTitle, QString::fromUtf8("QQ音乐"));
    timers.fire();
    EXPECT_EQ(ports.panelTitle, "Rain-Ann");
    EXPECT_GE(ports.viewTime, 0.15f);
    EXPECT_EQ(readFile(lyricsFolder() + "/Ann--Rain.lrc"), "<missing>");
}

TEST_F(EndToEnd, TheLastPlayerQuittingStopsTheTimer)
{
    answerList("[]");
    startPlayer("jukora", {song("Ann", "Rain")});
    launch();
    ASSERT_TRUE(waitStatus("lyric is not available")); // the search is over
    EXPECT_EQ(app->musicSource(), 2);
    EXPECT_EQ(timers.live(), 1);
    player->send("quit");
    ASSERT_TRUE(waitFor([&] { return app->musicSource() == 0; }));
    EXPECT_EQ(ports.sourceTitle, "No Music Source");
    EXPECT_EQ(ports.info, "iTunes is not running");
    EXPECT_FALSE(app->timerRunning());
    EXPECT_EQ(timers.live(), 0);
    EXPECT_LE(timers.created(), 4); // one per source choice, never two alive
}

struct NotPlaying {
    const char* player;
    const char* title; // of the only song
    const char* message;
};
void PrintTo(const NotPlaying& c, std::ostream* os)
{
    *os << c.player;
}

class NotPlayingPlayer : public EndToEnd, public ::testing::WithParamInterface<NotPlaying> {};

// A stopped iTunes has no current track; a fresh QQMusic source knows no song until its
// first notice; a Jukora song without a title is no song.
TEST_P(NotPlayingPlayer, ShowsItsMessageOnEveryTick)
{
    startPlayer(GetParam().player, {song("Ann", GetParam().title)});
    launch();
    ASSERT_TRUE(waitFor([&] { return app->musicSource() != 0; }));
    timers.fire();
    EXPECT_EQ(ports.panelTitle, "Versewick");
    EXPECT_EQ(ports.info, GetParam().message);
    EXPECT_EQ(ports.viewLyric, nullptr);
    app->setInfo({});
    timers.fire();
    EXPECT_EQ(ports.info, GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(Players, NotPlayingPlayer,
                         ::testing::Values(NotPlaying{"itunes", "Rain", "iTunes is not playing"},
                                           NotPlaying{"qqmusic", "Rain", "QQMusic is not playing"},
                                           NotPlaying{"jukora", "", "Jukora is not playing"}),
                         [](const auto& info) { return std::string(info.param.player); });

// The panel title is rewritten from the track on every tick, not from the song change.
TEST_F(EndToEnd, TheITunesPanelTitleIsReadOnEveryTick)
{
    answerList("[]");
    startPlayer("itunes", {song("Ann", "Rain")});
    launch();
    play();
    ASSERT_TRUE(waitStatus("lyric is not available"));
    player->send("mpris-meta title Renamed");
    ASSERT_TRUE(player->waitEvent("mpris-meta"));
    timers.fire();
    EXPECT_EQ(ports.panelTitle, "Renamed-Ann");
}

TEST_F(EndToEnd, ARepeatedITunesNoticeStartsNoSearch)
{
    answerList("[]");
    startPlayer("itunes", {song("Ann", "Rain")});
    launch();
    player->send("play");
    ASSERT_TRUE(waitStatus("lyric is not available"));
    const int searches = plugin.requests().size();
    player->send("pause");
    player->send("play");
    ASSERT_TRUE(player->waitEvent("play"));
    // Its notices came before its answer; the song is read on the next tick, and a search
    // would show at once.
    ASSERT_TRUE(peerAnswered("com.apple.iTunes"));
    timers.fire();
    EXPECT_EQ(status(), "lyric is not available");
    EXPECT_EQ(plugin.requests().size(), searches);
    EXPECT_EQ(ports.notifications, 1);
    EXPECT_EQ(app->curDBid(), 1);
}

TEST_F(EndToEnd, ALatePluginAnswerIsInstalled)
{
    // The search for the first song answers once the second song's lyric is shown (or after a
    // limit, should it never be).
    const auto shown = std::make_shared<std::atomic<bool>>(false);
    plugin.route("/list", [shown](const RawHttpServer::Request&, QTcpSocket& socket) {
        QElapsedTimer limit;
        limit.start();
        while (!*shown && limit.elapsed() < 20000)
            QThread::msleep(10);
        RawHttpServer::status(200, R"({"items":[{"artist":"Ann","title":"Rain","id":"1"}]})")(
            {}, socket);
    });
    answerContent(kOnline);
    writeStored("Bo--Snow", kStored);
    startPlayer("jukora", {song("Ann", "Rain"), song("Bo", "Snow")});
    launch();
    ASSERT_TRUE(waitFor([&] { return !plugin.requests().isEmpty(); }));
    player->send("next");
    ASSERT_TRUE(waitLoaded(AppState::Folder));
    *shown = true;
    // The players of old install a late answer like any other.
    ASSERT_TRUE(waitLoaded(AppState::Plugin));
    EXPECT_EQ(app->lyric()->contents(), QString::fromUtf8(kOnline));
}

TEST_F(EndToEnd, TheServicePublishesTheStateAndAnswersItsMethods)
{
    const auto service = serve(kStored);
    QDBusInterface& remote = *service;
    EXPECT_EQ(remote.property("SourceKind").toInt(), 2);
    EXPECT_EQ(remote.property("SourceName").toString(), "Jukora");
    EXPECT_EQ(remote.property("Artist").toString(), "Ann");
    EXPECT_EQ(remote.property("LyricOrigin").toInt(), 0);
    EXPECT_TRUE(remote.property("LyricLoaded").toBool());
    QDBusReply<QString> lyric = remote.call("Lyric");
    EXPECT_EQ(lyric.value(), QString::fromUtf8(kStored));
    // A second owner is refused.
    auto* second = new AppDBusService(*app);
    EXPECT_FALSE(second->publish());
    remote.call("SetMode", 1);
    EXPECT_EQ(settings->lyricStyle(), 1);
    EXPECT_EQ(remote.property("Mode").toInt(), 1);
}

TEST_F(EndToEnd, TheServiceRefusesArgumentsOutOfRangeBeforeAnyWork)
{
    const auto service = serve(kStored);
    QDBusInterface& remote = *service;
    const QString huge = "[00:01]" + QString(foundation::kMaxLyricBytes / 2, QChar(0xE9));
    const QList<std::pair<QString, QVariant>> calls{
        {"SetLyric", huge}, {"SetMode", 2}, {"SetMode", -1}};
    for (const auto& [method, argument] : calls) {
        const QDBusMessage reply = remote.call(method, argument);
        EXPECT_EQ(reply.type(), QDBusMessage::ErrorMessage) << method.toStdString();
        EXPECT_EQ(reply.errorName(), "org.freedesktop.DBus.Error.InvalidArgs");
    }
    EXPECT_EQ(QDBusReply<QString>(remote.call("Lyric")).value(), QString::fromUtf8(kStored));
    EXPECT_EQ(remote.property("Mode").toInt(), 0);
}

TEST_F(EndToEnd, TheServiceNudgesTheOffsetIntoTheFileAndSeeksThePlayer)
{
    const auto service = serve("[00:10.00]one\n[00:50.00]two\n[offset:100]\n");
    QDBusInterface& remote = *service;
    EXPECT_DOUBLE_EQ(remote.property("Offset").toDouble(), 0.1);
    remote.call("NudgeOffset", -0.3);
    EXPECT_DOUBLE_EQ(remote.property("Offset").toDouble(), -0.2);
    const QString saved = "[00:10.00]one\n[00:50.00]two\n[offset:-200]\n";
    EXPECT_TRUE(waitFor([&] { return stored("Ann--Rain") == saved; }));
    for (const auto& [method, value] : QList<std::pair<QString, double>>{
             {"SetOffset", qQNaN()}, {"SetOffset", 600.5}, {"NudgeOffset", -600}})
        EXPECT_EQ(remote.call(method, value).errorName(), "org.freedesktop.DBus.Error.InvalidArgs");
    EXPECT_DOUBLE_EQ(app->state().offset(), -0.2);
    EXPECT_EQ(stored("Ann--Rain"), saved);

    // A seek answers once the player did: called through the daemon, the event loop running.
    QDBusConnection caller = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "caller");
    const auto seek = [&](const char* method, const QVariant& to) {
        QDBusMessage call = QDBusMessage::createMethodCall(AppDBusService::kServiceName,
                                                           AppDBusService::kObjectPath,
                                                           AppDBusService::kInterface, method);
        QDBusPendingCall pending = caller.asyncCall(call << to);
        waitFor([&] { return pending.isFinished(); });
        return pending.reply().arguments().value(0).toBool();
    };
    const auto lit = [&](int index) {
        return waitFor([&] {
            timers.fire();
            return app->state().lineIndex() == index;
        });
    };
    EXPECT_TRUE(seek("SeekToLine", 1)); // at 50.1 s, offset included
    EXPECT_TRUE(lit(1));
    EXPECT_FALSE(seek("SeekToLine", 2));
    EXPECT_FALSE(seek("Seek", -1.0));
    EXPECT_TRUE(seek("Seek", 12.0));
    EXPECT_TRUE(lit(0));
    QDBusConnection::disconnectFromBus("caller");
}

} // namespace
