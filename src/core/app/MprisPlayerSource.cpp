#include "core/app/MprisPlayerSource.h"

#include "core/app/AppState.h"
#include "core/app/AppTexts.h"
#include "core/app/PlayerSeek.h"
#include "core/audiofile/AudioFileLyrics.h"
#include "core/foundation/SystemLog.h"
#include "core/lyric/Lyric.h"
#include "core/sources/MprisValues.h"
#include "core/sources/MusicSourceKind.h"
#include "core/sources/MusicSourceMpris.h"

#include <QDBusObjectPath>
#include <cmath>

MprisPlayerSource::MprisPlayerSource(Workspace& workspace, QObject* parent)
    : PlayerSource(parent)
    , m_source(std::make_unique<MusicSourceMpris>(workspace))
{
}

MprisPlayerSource::MprisPlayerSource(Workspace& workspace, QSettings& settings, QObject* parent)
    : PlayerSource(parent)
    , m_source(std::make_unique<MusicSourceMpris>(workspace, settings))
{
}

MprisPlayerSource::~MprisPlayerSource() = default;

void MprisPlayerSource::connectPlayer()
{
    m_source->setCallBack(this, "songChanged", "runningChanged");
}

int MprisPlayerSource::kind() const
{
    return MusicSourceKindMpris;
}

bool MprisPlayerSource::isRunning() const
{
    return m_source->isRunning();
}

QString MprisPlayerSource::menuTitle() const
{
    return m_source->name();
}

QString MprisPlayerSource::notPlayingText() const
{
    return apptext::tr(apptext::kPlayerNotPlaying).arg(menuTitle());
}

std::optional<PlayerSong> MprisPlayerSource::current() const
{
    const TrackItem* track = m_source->track();
    if (!track)
        return std::nullopt;
    const MprisSong song = m_source->song();
    PlayerSong current;
    current.artist = track->artist();
    current.title = track->title();
    current.album = track->album();
    current.duration = song.lengthSeconds();
    current.localFile = song.localFilePath();
    return current;
}

PlayerSource::Change MprisPlayerSource::readSongChange(PlayerSong& changed)
{
    const auto song = current();
    // A song without a title is looked up by its file alone.
    if (!song || (song->title.isEmpty() && song->localFile.isEmpty()))
        return Change::NoSong;
    changed = *song;
    return Change::Song;
}

std::optional<PlayerSong> MprisPlayerSource::nowPlaying()
{
    auto song = current();
    if (!song || song->shownTitle().isEmpty())
        return std::nullopt;
    song->title = song->shownTitle();
    return song;
}

float MprisPlayerSource::location()
{
    return m_source->location();
}

std::optional<PlayerSong> MprisPlayerSource::announcement()
{
    auto song = current();
    if (song)
        song->title = song->shownTitle();
    return song;
}

PlayerSong MprisPlayerSource::searchDetails()
{
    return current().value_or(PlayerSong{});
}

std::optional<PlayerSong> MprisPlayerSource::searchWindowSong()
{
    return current();
}

std::optional<PlayerSong> MprisPlayerSource::savedNames()
{
    return current();
}

// Only an online lyric goes into the audio file.
bool MprisPlayerSource::writesIntoSong(int origin) const
{
    return origin == AppState::Plugin;
}

// writeLyric leaves a read-only file be; without a local file there is nothing to write.
bool MprisPlayerSource::writeIntoSong(const Lyric& lyric, LyricControl& /*store*/)
{
    const QString path = m_source->song().localFilePath();
    if (path.isEmpty() || AudioFileLyrics::writeLyric(path, lyric.contents()))
        return true;
    foundation::systemLog(QStringLiteral("could not write the lyric into \"%1\"").arg(path));
    return false;
}

// SetPosition names the track, so a seek meant for a song that has just ended is ignored; a
// player without track ids gets a relative Seek from the position last heard.
void MprisPlayerSource::seek(double seconds, std::function<void(bool)> done)
{
    const QString bus = m_source->busName();
    if (bus.isEmpty() || !std::isfinite(seconds) || seconds < 0) {
        playerseek::refuse(this, std::move(done));
        return;
    }
    const QString trackId = m_source->song().trackId;
    const bool named = !trackId.isEmpty() && QDBusObjectPath(trackId).path() == trackId;
    QDBusMessage call = QDBusMessage::createMethodCall(
        bus, QLatin1String(mpris::kObjectPath), QLatin1String(mpris::kPlayerInterface),
        named ? QStringLiteral("SetPosition") : QStringLiteral("Seek"));
    const double heard = double(m_source->location()) - double(MusicSourceMpris::kPositionLead);
    const auto us = [](double s) { return qlonglong(std::llround(s * 1e6)); };
    if (named)
        call << QVariant::fromValue(QDBusObjectPath(trackId)) << us(seconds);
    else
        call << us(seconds - heard);
    playerseek::send(call, this, std::move(done));
}
