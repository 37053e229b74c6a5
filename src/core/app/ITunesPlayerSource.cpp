#include "core/app/ITunesPlayerSource.h"

#include "core/app/AppState.h"
#include "core/app/AppTexts.h"
#include "core/app/PlayerSeek.h"
#include "core/sources/MusicSourceKind.h"
#include "core/store/LyricControl.h"

#include <utility>

ITunesPlayerSource::ITunesPlayerSource(iTunesControl& control, QObject* parent)
    : PlayerSource(parent)
    , m_control(control)
{
    m_control.setDelegate(this);
    m_track = m_control.currentTrack();
}

ITunesPlayerSource::~ITunesPlayerSource()
{
    if (m_control.delegate() == this)
        m_control.setDelegate(nullptr);
}

int ITunesPlayerSource::kind() const
{
    return MusicSourceKindITunes;
}

bool ITunesPlayerSource::isRunning() const
{
    return m_control.app().isRunning();
}

QString ITunesPlayerSource::menuTitle() const
{
    return apptext::tr(apptext::kITunes);
}

QString ITunesPlayerSource::notPlayingText() const
{
    return apptext::tr(apptext::kITunesNotPlaying);
}

void ITunesPlayerSource::iTunesCB_AppLifeCycleChanged(bool /*alive*/)
{
    Q_EMIT runningChanged();
}

void ITunesPlayerSource::iTunesCB_TrackDidChange(const std::optional<itunes::Track>& track)
{
    m_noticed = track;
    Q_EMIT songChanged();
}

PlayerSource::Change ITunesPlayerSource::readSongChange(PlayerSong& changed)
{
    const std::optional<itunes::Track> noticed =
        m_noticed ? *std::exchange(m_noticed, std::nullopt) : m_control.currentTrack();
    // A stopped player (no track) and a repeated notice for the same track change nothing.
    if (!noticed || !noticed->exists() || noticed->databaseID() == m_databaseID)
        return Change::None;
    m_track = m_control.currentTrack();
    if (!m_track)
        return Change::None;
    m_databaseID = m_track->databaseID();
    changed.artist = m_track->artist();
    changed.title = m_track->name();
    // The tag is read here (a scripting call); the rest of the lookup runs off the main thread.
    changed.tagText = m_track->lyrics();
    return Change::Song;
}

// The names are read on every tick, as the panel title is rewritten on every tick.
std::optional<PlayerSong> ITunesPlayerSource::nowPlaying()
{
    if (!m_track || !m_track->exists())
        return std::nullopt;
    PlayerSong song;
    song.title = m_track->name();
    song.artist = m_track->artist();
    return song;
}

float ITunesPlayerSource::location()
{
    return m_control.playerPosition();
}

// Announced while it plays.
std::optional<PlayerSong> ITunesPlayerSource::announcement()
{
    if (!m_control.isPlaying() || !m_track)
        return std::nullopt;
    PlayerSong song = searchDetails();
    song.title = m_track->name();
    song.artist = m_track->artist();
    return song;
}

PlayerSong ITunesPlayerSource::searchDetails()
{
    PlayerSong song;
    if (m_track) {
        song.album = m_track->album();
        song.duration = m_track->duration();
    }
    return song;
}

std::optional<PlayerSong> ITunesPlayerSource::searchWindowSong()
{
    const auto track = m_control.currentTrack();
    if (!track || !track->enabled())
        return std::nullopt;
    PlayerSong song;
    song.title = track->name();
    song.artist = track->artist();
    song.duration = track->duration();
    return song;
}

std::optional<PlayerSong> ITunesPlayerSource::savedNames()
{
    if (!m_track)
        return std::nullopt;
    PlayerSong song;
    song.artist = m_track->artist();
    song.title = m_track->name();
    return song;
}

// A lyric from the folder, the plug-in or the user goes into the tag; one from the tag is there.
bool ITunesPlayerSource::writesIntoSong(int origin) const
{
    return origin == AppState::Folder || origin == AppState::Plugin || origin == AppState::ByHand;
}

bool ITunesPlayerSource::writeIntoSong(const Lyric& lyric, LyricControl& store)
{
    if (!m_track)
        return false;
    store.writeLrcToTrack(lyric, *m_track, true, true);
    return true;
}

void ITunesPlayerSource::seek(double seconds, std::function<void(bool)> done)
{
    playerseek::send(playerseek::setDouble(QLatin1String(itunes::kBusName), QStringLiteral("/"),
                                           QLatin1String(itunes::kApplicationInterface),
                                           QStringLiteral("playerPosition"), seconds),
                     this, std::move(done));
}
