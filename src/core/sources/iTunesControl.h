#pragma once

#include "core/platform/DistributedNotificationCenter.h"
#include "core/sources/iTunesScripting.h"

#include <QObject>

#include <optional>

class Workspace;

// Optional callbacks; each is sent only when the delegate says it implements it.
class iTunesControlDelegate {
public:
    virtual ~iTunesControlDelegate() = default;
    virtual bool respondsToAppLifeCycleChanged() const { return true; }
    virtual void iTunesCB_AppLifeCycleChanged(bool /*alive*/) {}
    virtual bool respondsToTrackDidChange() const { return true; }
    // No track (nullopt) when the player reports "Stopped".
    virtual void iTunesCB_TrackDidChange(const std::optional<itunes::Track>& /*track*/) {}
};

// The iTunes player: its track and position through its scripting objects, its player and
// launch/quit events as delegate callbacks.
class iTunesControl : public QObject {
    Q_OBJECT
public:
    static constexpr float kPositionLead = 0.4f;
    static constexpr double kRelaunchGuardSeconds = 0.2;
    static constexpr char kPlayerInfoNotification[] = "com.apple.iTunes.playerInfo";
    static constexpr char kPlayerSender[] = "com.apple.iTunes.player";
    static constexpr char kShutdownNotification[] = "com.morvane.Versewick.action.shutdown";

    static iTunesControl& sharedInstance();
    iTunesControl(Workspace& workspace, DistributedNotificationCenter& center,
                  QObject* parent = nullptr);

    iTunesControlDelegate* delegate() const { return m_delegate; }
    void setDelegate(iTunesControlDelegate* delegate) { m_delegate = delegate; }
    const itunes::Application& app() const { return m_app; }

    std::optional<itunes::Track> currentTrack() const;
    bool isPlaying() const;
    float playerPosition() const;
    bool versionGreate1103() const { return m_versionGreate1103; }
    void playPause() const { m_app.playpause(); }
    void playPrevious() const;
    void playNext() const;
    // Asks the session bus to start the service com.apple.iTunes (D-Bus activation) and does not
    // wait: the player appears as any launch does. Nothing happens when no service provides it.
    void launchItunesApp() const;
    void updateAppLifeState();

    // "11.0.10" is later than "11.0.3": runs of digits compare as numbers.
    static int compareVersions(const QString& a, const QString& b);

Q_SIGNALS:
    // The shutdown notification arrived; the application quits on it.
    void shutdownRequested();

private:
    void readVersion() const;
    void _appLifeChanged(bool alive);
    void _notifyTrackDidChanged(const QVariantMap& userInfo);
    void onWillLaunch(const QString& id);
    void onDidLaunch(const QString& id);
    void onDidTerminate(const QString& id);

    Workspace& m_workspace;
    DistributedNotificationCenter& m_center;
    itunes::Application m_app;
    iTunesControlDelegate* m_delegate = nullptr; // not owned
    mutable bool m_versionGreate1103 = false;
    mutable bool m_versionKnown = false; // read again on each position read until known
    bool m_rejectLaunch = false;         // the relaunch guard closed this launch
    DistributedNotificationCenter::Observation m_observations[2];
    static double s_terminatedAt;
};
