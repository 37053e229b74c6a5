#include "PlayerObjects.h"

#include "core/sources/iTunesControl.h"
#include "core/sources/iTunesScripting.h"

ITunesApplicationObject::ITunesApplicationObject(Playback& playback, QString version,
                                                 std::function<void(QString)> command)
    : m_playback(playback)
    , m_version(std::move(version))
    , m_command(std::move(command))
{
}

uint ITunesApplicationObject::playerState() const
{
    switch (m_playback.state()) {
    case Playback::Playing:
        return itunes::kPlaying;
    case Playback::Paused:
        return itunes::kPaused;
    default:
        return itunes::kStopped;
    }
}

QDBusVariant ITunesApplicationObject::playerPosition() const
{
    // Whole seconds before 11.0.3, a fraction from then on.
    if (iTunesControl::compareVersions(m_version, QStringLiteral("11.0.3")) < 0)
        return QDBusVariant(QVariant::fromValue(qint32(m_playback.position())));
    return QDBusVariant(QVariant::fromValue(m_playback.position()));
}

void ITunesApplicationObject::setPlayerPosition(const QDBusVariant& seconds)
{
    bool number = false;
    const double to = seconds.variant().toDouble(&number);
    if (number)
        m_playback.seek(to);
}

QDBusObjectPath ITunesApplicationObject::currentTrack() const
{
    if (m_playback.state() == Playback::Stopped || !m_playback.current())
        return QDBusObjectPath(QStringLiteral("/Tracks/0"));
    return QDBusObjectPath(QStringLiteral("/Tracks/%1").arg(m_playback.index() + 1));
}

ITunesTrackObject::ITunesTrackObject(Song& song, qlonglong id)
    : m_song(song)
    , m_id(id)
{
}

JukoraApplicationObject::JukoraApplicationObject(Playback& playback)
    : m_playback(playback)
{
}

QDBusObjectPath JukoraApplicationObject::song() const
{
    if (!m_playback.current())
        return QDBusObjectPath(QStringLiteral("/Songs/0"));
    return QDBusObjectPath(QStringLiteral("/Songs/%1").arg(m_playback.index() + 1));
}
