// The song-change road of SourceLoop: a player's notice (coalesced where it asks for it)
// clears the displays and starts the lookup; its answer installs a lyric or asks the plug-in.
#include "core/app/SourceLoop.h"

#include "core/app/AppState.h"
#include "core/app/AppTexts.h"
#include "core/app/LyricAcquisition.h"
#include "core/app/ShownLyric.h"
#include "core/foundation/SystemLog.h"
#include "core/lyric/Lyric.h"
#include "core/settings/Settings.h"
#include "core/store/LyricsTrack.h"

#include <QTimer>

// Most players' notices are handled as they come: each one searches again (they have always
// done so). Players that may send anything are coalesced: see SongChangeQueue.
void SourceLoop::songNotice(PlayerSource* source)
{
    if (!source)
        return;
    if (!source->rules().coalesced) {
        handleSong(*source);
        return;
    }
    m_noticed = source;
    m_changes.notice();
}

void SourceLoop::handleSong(PlayerSource& source)
{
    const PlayerSource::Rules rules = source.rules();
    // A coalesced player behind a source of higher priority changes nothing on screen.
    if (rules.coalesced && &source != m_active)
        return;
    followTitle(source);
    PlayerSong song;
    const PlayerSource::Change change = source.readSongChange(song);
    if (change == PlayerSource::Change::None)
        return;
    const bool available = m_shown.available;
    const int origin = m_state.lyricOrigin();
    clearForSong();
    // The old lyric drives the strip until the new one is found.
    if (rules.keepsLyricUntilFound && available) {
        m_shown.available = true;
        m_state.setLyricLoaded(true);
        m_state.setLyricOrigin(origin);
        m_state.setOffset(m_shown.parser ? m_shown.parser->offsetTime() : 0.0);
    }
    if (change == PlayerSource::Change::NoSong)
        return;
    m_state.setSong(song.artist, song.title);
    Q_EMIT songChanged(song);
    startSearch(song);
    // The search has started (and says so) before the song is announced.
    if (m_settings.isShowChangeSongNotify()) {
        if (const auto shown = source.announcement())
            Q_EMIT songAnnounced({shown->title, shown->artist, shown->album, shown->duration});
    }
}

// The tag is read here (a player's scripting call); the rest of the lookup runs off the main
// thread.
void SourceLoop::fetchLRC(const LyricsTrack& track)
{
    clearForSong();
    PlayerSong song;
    song.tagText = track.lyrics();
    song.artist = track.artist();
    song.title = track.name();
    startSearch(song);
}

void SourceLoop::clearForSong()
{
    ++m_generation;
    Q_EMIT songChanging(m_generation);
    m_shown.available = false;
    m_state.setLyricLoaded(false);
    lyricInstalled();
    m_state.showLyric(nullptr);
    m_state.setLineText(QString());
}

void SourceLoop::startSearch(const PlayerSong& song)
{
    m_state.setSong(song.artist, song.title);
    // A lyric kept with the audio file is at hand: no search is shown unless it is missing.
    Q_EMIT statusChanged(song.localFile.isEmpty() ? apptext::tr(apptext::kFetching) : QString());
    lookup::Request request;
    request.tagText = song.tagText;
    request.audioPath = song.localFile;
    request.artist = song.artist;
    request.title = song.title;
    lookUp(std::move(request));
}

void SourceLoop::lookUp(lookup::Request request)
{
    request.generation = m_generation;
    m_searchArtist = request.artist;
    m_searchTitle = request.title;
    m_awaiting = true;
    m_lookup.post(std::move(request));
    // A lookup held up by a file (a pipe nobody writes) is given up on; the search goes on.
    QTimer::singleShot(LyricLookupWorker::kStuckMs, this, [this, generation = m_generation] {
        if (generation != m_generation || !m_awaiting)
            return;
        foundation::systemLog(
            QStringLiteral("looking for the lyric of %1 - %2 in its files took over %3 ms; "
                           "going on without them")
                .arg(m_searchArtist, m_searchTitle)
                .arg(LyricLookupWorker::kStuckMs));
        lookup::Result none;
        none.generation = generation;
        lookedUp(std::move(none));
    });
}

void SourceLoop::lookedUp(lookup::Result result)
{
    if (result.generation != m_generation || !m_awaiting)
        return; // another song came since, or it was given up on
    m_awaiting = false;
    actOnLookup(std::move(result));
    Q_EMIT lookupAnswered();
}

void SourceLoop::actOnLookup(lookup::Result result)
{
    const bool coalesced = m_active && m_active->rules().coalesced;
    if (result.lyric) {
        m_acquisition.installStored(std::move(result.lyric), result.origin);
        // The lyric was at hand: lit now, not up to a tick (200 ms) later.
        if (coalesced)
            tick(m_active);
        return;
    }
    // The store's own rule: without an artist or a title no search is made at all.
    if (m_searchArtist.isEmpty() || m_searchTitle.isEmpty()) {
        if (coalesced)
            m_acquisition.notAvailable(); // a file without a title: nothing more to ask
        return;
    }
    Q_EMIT statusChanged(apptext::tr(apptext::kFetching));
    m_acquisition.storeMissed(m_searchArtist, m_searchTitle);
}
