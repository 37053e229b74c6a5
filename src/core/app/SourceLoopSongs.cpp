// The song-change road of SourceLoop: a player's notice (coalesced where it asks for it)
// clears the displays and starts the lookup; its answer installs a lyric or asks the plug-in.
#include "app/SourceLoop.h"

#include "app/AppDelegate.h"
#include "app/AppTexts.h"
#include "app/LyricAcquisition.h"
#include "app/LyricViewPort.h"
#include "app/MenuState.h"
#include "app/SingleLinePort.h"
#include "foundation/SystemLog.h"
#include "lyric/Lyric.h"
#include "settings/Settings.h"

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
    const bool available = d._lrcAvailable;
    const int origin = d.m_state.lyricOrigin();
    songChanging();
    // The old lyric drives the strip until the new one is found.
    if (rules.keepsLyricUntilFound && available) {
        d._lrcAvailable = true;
        d.m_state.setLyricLoaded(true);
        d.m_state.setLyricOrigin(origin);
    }
    if (change == PlayerSource::Change::NoSong)
        return;
    d.m_state.setSong(song.artist, song.title);
    if (d.m_env.settings.isShowChangeSongNotify()) {
        if (const auto shown = source.announcement())
            d.m_menu->showSongNotification(
                {shown->title, shown->artist, shown->album, shown->duration});
    }
    startSearch(song);
}

void SourceLoop::songChanging()
{
    ++m_generation;
    d._lrcAvailable = false;
    d.m_state.setLyricLoaded(false);
    lyricInstalled();
    if (d.m_ports.appController)
        d.m_ports.appController->setParser(nullptr);
    if (d.m_ports.singleLineControl)
        d.m_ports.singleLineControl->setContent(QString());
    d.m_state.setLineText(QString());
}

void SourceLoop::startSearch(const PlayerSong& song)
{
    d.m_state.setSong(song.artist, song.title);
    // A lyric kept with the audio file is at hand: no search is shown unless it is missing.
    d.m_menu->setInfo(song.localFile.isEmpty() ? apptext::tr(apptext::kFetching) : QString());
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
    QTimer::singleShot(LyricLookupWorker::kStuckMs, &d, [this, generation = m_generation] {
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
    const bool coalesced = m_active && m_active->rules().coalesced;
    if (result.lyric) {
        d.m_acquisition->installStored(std::move(result.lyric), result.origin);
        // The lyric was at hand: lit now, not up to a tick (200 ms) later.
        if (coalesced)
            tick(m_active);
        return;
    }
    // The store's own rule: without an artist or a title no search is made at all.
    if (m_searchArtist.isEmpty() || m_searchTitle.isEmpty()) {
        if (coalesced)
            d.m_acquisition->notAvailable(); // a file without a title: nothing more to ask
        return;
    }
    d.m_menu->setInfo(apptext::tr(apptext::kFetching));
    d.m_acquisition->storeMissed(m_searchArtist, m_searchTitle);
}
