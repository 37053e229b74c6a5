#pragma once

#include "core/app/AppEnvironment.h"
#include "core/app/AppPorts.h"
#include "core/app/AppState.h"
#include "core/app/ShownLyric.h"
#include "core/app/SourceLoop.h"
#include "core/app/StatusMenuItem.h"
#include "core/sources/iTunesControl.h"
#include "core/store/LyricControlDelegate.h"

#include <QObject>
#include <QVariantList>

#include <memory>
#include <optional>

class ITunesPlayerSource;
class JukoraControl;
class JukoraPlayerSource;
class LyricAcquisition;
class LyricControl;
class LyricManagerPort;
class Lyric;
class MenuState;
class MprisPlayerSource;
class MusicSourceQQMusic;
class PlayerSource;
class QQMusicPlayerSource;
class NotificationPort;
class PLHttpClient;
class PluginHost;
class PreferencesPort;
class SearchWindowPort;
class SyncControls;
struct PLHttpError;

// The application controller: owns the players, the lyric being shown and the lyric store.
// Its operations keep their names as thin calls; the work is done by four collaborators that
// its constructor builds and wires (SourceLoop: the players and the update tick;
// LyricAcquisition: installing, saving and sharing lyrics; PluginHost: the lyric plug-in;
// MenuState: the status menu, the modes and the windows). Everything on screen is reached
// through the ports, so it runs headless.
class AppDelegate : public QObject, public LyricControlDelegate, public iTunesControlDelegate {
    Q_OBJECT
public:
    static constexpr int kTickMs = SourceLoop::kTickMs;
    static constexpr char kTrackerAccount[] = "UA-1357913-5";

    AppDelegate(AppEnvironment environment, AppPorts ports, QObject* parent = nullptr);
    ~AppDelegate() override;

    // The application's controller: the most recently created one still alive, or null.
    static AppDelegate* s();

    // Life cycle, in the order the application calls them.
    void awakeFromNib();
    void applicationDidFinishLaunching();
    // Writes the settings out; only a normal exit does.
    void applicationWillTerminate();
    // Optional source of the last priority (kind 4) instead of the MPRIS one; set before
    // launching. Not owned.
    void setFollowedSource(PlayerSource* source) { m_followed = source; }

    // The update loop.
    void update();
    void activeTimer();
    void deactiveTimer();
    void updateAppItunes();
    void updateAppQQMusic();
    void updateAppJukora();
    void updateUIinfo() {}
    void debugTrack() {}

    // Lyric acquisition.
    void fetchLRC(const itunes::Track& track);
    void lrcFetched(Lyric& lyric, int source);
    void forceWriteLyric(Lyric& lyric);
    void showSearchWindow();

    // Status menu and display modes.
    void toggleLyricsWindow();
    void showMainWindow();
    void hideMainWindow();
    void changeLrcMode(StatusMenuItem sender);
    void changeLrcModeTo(int mode);
    void showPreferencePanel();
    void showAbout();
    void showLyricManager();
    void showLyricEditor();
    // The editor on a text that is not installed (a plain lyric from a search).
    void showLyricEditorWith(const QString& text);
    LyricManagerPort* lyricManagerWC();
    void notificationCanBeRemoved();
    void setInfo(const QString& info);
    void reloadLyricView();

    // Plug-ins.
    QStringList allBundles() const;
    std::unique_ptr<QObject> loadLyricPlugin();
    bool isLyricPluginLoaded() const { return lrcFetcher() != nullptr; }

    // Sources' delegate callbacks.
    void iTunesCB_AppLifeCycleChanged(bool alive) override;
    void iTunesCB_TrackDidChange(const std::optional<itunes::Track>& track) override;

    // The lyric store's delegate.
    void controlLrcFetched(LyricControl& control, std::unique_ptr<Lyric> lyric,
                           int source) override;
    bool respondsToLrcFetchFailed() const override { return true; }
    void controlLrcFetchFailed(LyricControl& control, const QString* error, int type) override;

    // Read access for the windows, the D-Bus service and tests.
    int musicSource() const;
    // The player followed now; null when none runs.
    PlayerSource* activePlayer() const;
    JukoraControl* djControl() const;
    MusicSourceQQMusic* qqmusic() const;
    LyricControl* lyricControl() const { return lrcControl.get(); }
    Lyric* lyric() const { return m_shown.parser.get(); }
    bool lrcAvailable() const { return m_shown.available; }
    // The installed lyric's text when it is unsynced (state().synced() false), else null.
    QString plainLyricText() const;
    bool isLrcWindowVisible() const;
    qint64 curDBid() const;
    bool timerRunning() const;
    QObject* lrcFetcher() const;
    AppState& state() { return m_state; }
    const AppState& state() const { return m_state; }
    // Offset nudges and seeks.
    SyncControls& sync() const { return *m_sync; }
    Settings& settings() const { return m_env.settings; }

public Q_SLOTS:
    // Target-and-selector callbacks of the sources.
    void djSongChanged();
    void djAppStateChanged();
    void qqmusicSongChanged();
    void updateMusicSource();
    void mprisSongChanged();
    // The search window's pick.
    void setupLRCcontent(const QString& text);
    void installEditedLyric(const QString& text);

    // LrcFetcherDelegate: the plug-in's answers.
    void lyricsListFetched(const QVariantList& items);
    void lyricsListFetchFailed(const QString& error);
    void lyricsContentFetched(const QString& lrcText, const QVariant& item);
    void lyricsContentFetchFailed(const QString& error);

    // The upload's answer is ignored.
    void httpClientSuccessed(PLHttpClient*, const QByteArray&) {}
    void httpClientFailed(PLHttpClient*, const PLHttpError&) {}

Q_SIGNALS:
    // Quit was asked for (the D-Bus service, the shutdown notice).
    void quitRequested();
    // The lyrics folder and the song's own tag were searched for the playing song.
    void lookupAnswered();

private:
    AppEnvironment m_env;
    AppPorts m_ports;
    AppState m_state;
    ShownLyric m_shown;
    std::unique_ptr<LyricControl> lrcControl;
    // The players, in the order they are registered; the loop keeps their priority.
    std::unique_ptr<JukoraPlayerSource> m_jukora;
    std::unique_ptr<QQMusicPlayerSource> m_qqmusic;
    std::unique_ptr<MprisPlayerSource> m_mpris; // when the environment asks for it
    std::unique_ptr<ITunesPlayerSource> m_itunes;
    PlayerSource* m_followed = nullptr; // the last priority's player

    // The collaborators, each built on what it uses and wired in the constructor.
    std::unique_ptr<MenuState> m_menu;
    std::unique_ptr<PluginHost> m_plugin;
    std::unique_ptr<LyricAcquisition> m_acquisition;
    std::unique_ptr<SourceLoop> m_loop;
    SyncControls* m_sync = nullptr; // a child
};
