#pragma once

#include "support/app/RecordingPorts.h"

#include "core/app/AppDelegate.h"
#include "core/app/LyricPluginLoader.h"
#include "core/http/PLHttpConfig.h"
#include "core/lyric/Lyric.h"
#include "core/platform/DistributedNotificationCenter.h"
#include "core/platform/Workspace.h"
#include "core/settings/ServiceAddresses.h"
#include "core/settings/Settings.h"
#include "core/sources/iTunesControl.h"
#include "core/store/LyricControl.h"

#include "support/PlayerProcess.h"
#include "support/QtPrinters.h"
#include "support/RawHttpServer.h"
#include "support/TempHome.h"

#include <QDir>
#include <QFile>
#include <QPointer>
#include <QSettings>

#include <gtest/gtest.h>

// An in-process plug-in whose answers the test gives by hand.
class ScriptedFetcher : public QObject {
    Q_OBJECT
public:
    QPointer<QObject> delegate;
    QStringList searches;
    QVariantList downloads;
    Q_INVOKABLE void setDelegate(QObject* d) { delegate = d; }
    Q_INVOKABLE void lyricsListForArtist(const QString& artist, const QString& song)
    {
        searches << artist + QStringLiteral(" / ") + song;
    }
    Q_INVOKABLE void lyricsContents(const QVariant& item) { downloads << item; }
};

// The same, with the optional call that takes the album and the duration.
class AlbumFetcher : public ScriptedFetcher {
    Q_OBJECT
public:
    Q_INVOKABLE void lyricsListForArtist(const QString& artist, const QString& song,
                                         const QString& album, double duration)
    {
        searches << QStringLiteral("%1 / %2 / %3 / %4").arg(artist, song, album).arg(duration);
    }
};

// A controller on temporary settings, folders and ports, with timers the test fires.
class AppFixture : public ::testing::Test {
protected:
    TempHome home;
    std::unique_ptr<ScopedUserFolders> folders;
    std::unique_ptr<Settings> settings;
    std::unique_ptr<ServiceAddresses> addresses;
    std::unique_ptr<iTunesControl> itunes;
    RecordingPorts ports;
    ManualTimers timers;
    std::unique_ptr<AppDelegate> app;
    std::unique_ptr<QObject> pluginToLoad; // handed over at launch
    QStringList bundles;                   // real bundles to load instead, when set
    quint16 qqPort = closedPort();
    bool followMpris = false;

    void SetUp() override
    {
        folders = std::make_unique<ScopedUserFolders>(home);
        qputenv("VERSEWICK_QQMUSIC_PORT", QByteArray::number(qqPort));
        settings = Settings::launch(settingsStore());
        addresses = std::make_unique<ServiceAddresses>(
            std::make_unique<QSettings>(home.filePath("services.ini"), QSettings::IniFormat));
    }
    void TearDown() override
    {
        app.reset();
        itunes.reset();
    }
    std::unique_ptr<QSettings> settingsStore() const
    {
        return std::make_unique<QSettings>(home.filePath("settings.ini"), QSettings::IniFormat);
    }
    void setService(const char* key, const QString& value)
    {
        addresses = std::make_unique<ServiceAddresses>(
            std::make_unique<QSettings>(home.filePath("services.ini"), QSettings::IniFormat));
        QSettings(home.filePath("services.ini"), QSettings::IniFormat)
            .setValue(QLatin1String(key), value);
    }

    void launch()
    {
        itunes = std::make_unique<iTunesControl>(Workspace::sharedWorkspace(),
                                                 DistributedNotificationCenter::defaultCenter());
        AppEnvironment env{*settings, *addresses, Workspace::sharedWorkspace(),
                           DistributedNotificationCenter::defaultCenter(), *itunes};
        env.timers = timers.factory();
        env.bundles = [this] { return bundles; };
        env.followMpris = followMpris;
        if (bundles.isEmpty())
            env.loader = [this](const QStringList&) {
                LyricPluginLoader::Loaded loaded;
                loaded.fetcher = std::move(pluginToLoad);
                loaded.info = QStringLiteral("Scripted v(1)");
                return loaded;
            };
        app = std::make_unique<AppDelegate>(std::move(env), ports.ports());
        ports.observe(app->state());
        app->awakeFromNib();
        app->applicationDidFinishLaunching();
    }

    // Launches following MPRIS players, with a scripted plug-in (returned) and a sharing
    // service that goes nowhere.
    ScriptedFetcher* launchFollowingMpris()
    {
        auto fetcher = std::make_unique<ScriptedFetcher>();
        ScriptedFetcher* plugin = fetcher.get();
        pluginToLoad = std::move(fetcher);
        followMpris = true;
        setService(ServiceAddresses::kLyricSharingKey,
                   QStringLiteral("127.0.0.1:%1").arg(closedPort()));
        launch();
        return plugin;
    }
    // The plug-in answers its search for "Ann - Rain" with one result whose text is lrc.
    void answerFromPlugin(const ScriptedFetcher& plugin, const QString& lrc)
    {
        const QVariantMap item{{"artist", "Ann"}, {"title", "Rain"}, {"id", "1"}};
        QMetaObject::invokeMethod(app.get(), "lyricsListFetched", Q_ARG(QVariantList, {item}));
        ASSERT_TRUE(waitFor([&] { return !plugin.downloads.isEmpty(); }));
        QMetaObject::invokeMethod(app.get(), "lyricsContentFetched", Q_ARG(QString, lrc),
                                  Q_ARG(QVariant, item));
    }

    QString lyricsFolder() const { return LyricControl::_pathLrcs(); }
    QString writeStored(const QString& identify, const QByteArray& text) const
    {
        QDir().mkpath(lyricsFolder());
        QFile file(lyricsFolder() + u'/' + identify + QStringLiteral(".lrc"));
        if (file.open(QIODevice::WriteOnly))
            file.write(text);
        return file.fileName();
    }
    static QByteArray readFile(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
    }
    QString status() const { return app->state().status(); }
};
