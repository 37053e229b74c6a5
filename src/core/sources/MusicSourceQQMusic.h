#pragma once

#include "core/platform/DistributedNotificationCenter.h"
#include "core/sources/MusicSource.h"

#include <QUrl>

class Workspace;

// The QQMusic player, through its HTTP service on 127.0.0.1:18715 ("/" must name Versewick;
// "/all" answers "artist_$x$_title_$x$_album_$x$_position"). Every request blocks the calling
// thread for at most 5 seconds, without running its event loop.
class MusicSourceQQMusic : public MusicSource {
    Q_OBJECT
public:
    static constexpr float kPositionLead = 0.15f;
    static constexpr int kRequestTimeoutMs = 5000;
    static constexpr quint16 kDefaultPort = 18715;
    static constexpr char kBundleIdentifier[] = "com.tencent.QQMusicMac";
    static constexpr char kSeparator[] = "_$x$_";

    // The port is 18715 unless VERSEWICK_QQMUSIC_PORT names another (tests, simulators).
    MusicSourceQQMusic(Workspace& workspace, DistributedNotificationCenter& center,
                       QObject* parent = nullptr);

    void setCallBack(QObject* target, const QByteArray& songChanged,
                     const QByteArray& appStateChanged);
    // Null when not running; refreshed first when its title is blank.
    TrackItem* track() override;
    // 0 (and no request) when not running; otherwise refreshed, plus the lead.
    float location() override;

    void updateSongInfo();
    void updateSongLocation();
    QString syncGet(const QString& path) const;
    QUrl baseUrl() const { return m_base; }

    // The four parts of an "/all" answer, or nothing when it does not split into four.
    static std::optional<QStringList> splitAnswer(const QString& text);

private:
    void _appLifeChanged(bool alive);

    Workspace& m_workspace;
    DistributedNotificationCenter& m_center;
    QUrl m_base;
    DistributedNotificationCenter::Observation m_observations[2];
};
