#include "core/sources/MusicSourceQQMusic.h"

#include "core/foundation/StringAdditions.h"
#include "core/foundation/TextDecoding.h"
#include "core/http/BlockingGet.h"
#include "core/lyric/LrcPatterns.h"
#include "core/platform/Clock.h"
#include "core/platform/DistributedNotificationCenter.h"
#include "core/platform/Workspace.h"

#include <QTimer>

namespace {
double gTerminatedAt = 0.0;

quint16 configuredPort()
{
    bool ok = false;
    const uint port = qEnvironmentVariable("VERSEWICK_QQMUSIC_PORT").toUInt(&ok);
    return ok && port > 0 && port < 65536 ? quint16(port) : MusicSourceQQMusic::kDefaultPort;
}
} // namespace

MusicSourceQQMusic::MusicSourceQQMusic(Workspace& workspace, DistributedNotificationCenter& center,
                                       QObject* parent)
    : MusicSource(parent)
    , m_workspace(workspace)
    , m_center(center)
    , m_base(QStringLiteral("http://127.0.0.1:%1/").arg(configuredPort()))
{
    setName(QStringLiteral("QQ音乐"));
    setBundleIdentifier(QLatin1String(kBundleIdentifier));
    setMessageIdentifier(bundleIdentifier());

    connect(&m_workspace, &Workspace::didLaunchApplication, this, [this](const QString& id) {
        if (id == bundleIdentifier())
            _appLifeChanged(true);
    });
    connect(&m_workspace, &Workspace::didTerminateApplication, this, [this](const QString& id) {
        if (id == bundleIdentifier()) {
            _appLifeChanged(false);
            gTerminatedAt = platform::now();
        }
    });
    m_observations[0] =
        m_center.observe(QStringLiteral("com.tencent.QQMusicMac.songchanged"), messageIdentifier(),
                         [this](const QString&, const QString&, const QVariantMap&) {
                             updateSongInfo();
                             m_callbacks.sendSongChanged();
                         });
    m_observations[1] = m_center.observe(
        QStringLiteral("com.tencent.QQMusicMac.ready"), messageIdentifier(),
        [this](const QString&, const QString&, const QVariantMap&) { _appLifeChanged(true); });
}

void MusicSourceQQMusic::setCallBack(QObject* target, const QByteArray& songChanged,
                                     const QByteArray& appStateChanged)
{
    m_callbacks.set(target, songChanged, appStateChanged);
    _appLifeChanged(Workspace::isRunning(bundleIdentifier()));
}

QString MusicSourceQQMusic::syncGet(const QString& path) const
{
    // The service answers a few short fields: 4 KiB is plenty, and the whole request,
    // however slowly it trickles, is over in 5 s.
    constexpr qint64 kMaxAnswerBytes = 4 * 1024;
    const auto body =
        http::blockingGet(m_base.resolved(QUrl(path)), kRequestTimeoutMs, kMaxAnswerBytes);
    if (!body)
        return {};
    return foundation::decodeText(*body, foundation::kUTF8Encoding).value_or(QString());
}

std::optional<QStringList> MusicSourceQQMusic::splitAnswer(const QString& text)
{
    if (text.isNull())
        return std::nullopt;
    const QStringList parts = text.split(QLatin1String(kSeparator));
    if (parts.size() != 4)
        return std::nullopt;
    return parts;
}

void MusicSourceQQMusic::updateSongInfo()
{
    if (!isRunning())
        return;
    const auto parts = splitAnswer(syncGet(QStringLiteral("all")));
    if (!parts)
        return;
    if (m_track) {
        m_track->setArtist(parts->at(0));
        m_track->setTitle(parts->at(1));
        m_track->setAlbum(parts->at(2));
    }
    setLocation(lrc::readFloat(parts->at(3)));
}

void MusicSourceQQMusic::updateSongLocation()
{
    if (!isRunning())
        return;
    if (const auto parts = splitAnswer(syncGet(QStringLiteral("all"))))
        setLocation(lrc::readFloat(parts->at(3)));
}

TrackItem* MusicSourceQQMusic::track()
{
    if (!isRunning())
        return nullptr;
    // A missing record has no title, which is not an empty one.
    if (m_track && foundation::isEmpty(m_track->title()))
        updateSongInfo();
    return m_track.get();
}

float MusicSourceQQMusic::location()
{
    if (!isRunning())
        return 0.0f;
    updateSongLocation();
    return m_location + kPositionLead;
}

void MusicSourceQQMusic::_appLifeChanged(bool alive)
{
    std::lock_guard lock(m_lock);
    bool running = false;
    if (alive)
        running = syncGet(QString()).contains(QLatin1String("Versewick"));
    setIsRunning(running);
    // The first position is read once this handler has returned.
    QTimer::singleShot(0, this, &MusicSourceQQMusic::updateSongLocation);
    m_callbacks.sendAppStateChanged();
}
