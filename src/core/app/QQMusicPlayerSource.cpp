#include "core/app/QQMusicPlayerSource.h"

#include "core/app/AppTexts.h"
#include "core/sources/MusicSourceKind.h"
#include "core/sources/MusicSourceQQMusic.h"

QQMusicPlayerSource::QQMusicPlayerSource(Workspace& workspace,
                                         DistributedNotificationCenter& center, QObject* parent)
    : PlayerSource(parent)
    , m_control(std::make_unique<MusicSourceQQMusic>(workspace, center))
{
}

QQMusicPlayerSource::~QQMusicPlayerSource() = default;

void QQMusicPlayerSource::connectPlayer()
{
    m_control->setCallBack(this, "songChanged", "runningChanged");
}

int QQMusicPlayerSource::kind() const
{
    return MusicSourceKindQQMusic;
}

bool QQMusicPlayerSource::isRunning() const
{
    return m_control->isRunning();
}

QString QQMusicPlayerSource::menuTitle() const
{
    return apptext::tr(m_control->name().toUtf8().constData());
}

QString QQMusicPlayerSource::notPlayingText() const
{
    return apptext::tr(apptext::kQQMusicNotPlaying);
}

// Each read asks the service (the track is refreshed while its title is blank).
std::optional<PlayerSong> QQMusicPlayerSource::nowPlaying()
{
    const TrackItem* track = m_control->track();
    if (!track || track->title().isEmpty())
        return std::nullopt;
    PlayerSong song;
    song.title = track->title();
    song.artist = track->artist();
    return song;
}

PlayerSource::Change QQMusicPlayerSource::readSongChange(PlayerSong& changed)
{
    const auto song = nowPlaying();
    if (!song)
        return Change::None;
    changed = *song;
    return Change::Song;
}

float QQMusicPlayerSource::location()
{
    return m_control->location();
}

PlayerSong QQMusicPlayerSource::searchDetails()
{
    PlayerSong song;
    if (const TrackItem* track = m_control->track())
        song.album = track->album();
    return song;
}
