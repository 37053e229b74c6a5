// The song-change road of SourceLoop: each source's notice, coalesced, clears the displays
// and starts the lookup; its answer installs a lyric or asks the plug-in.
#include "app/SourceLoop.h"

#include "app/AppDelegate.h"
#include "app/AppTexts.h"
#include "app/FollowedSource.h"
#include "app/LyricAcquisition.h"
#include "app/LyricPanelPort.h"
#include "app/LyricViewPort.h"
#include "app/MenuState.h"
#include "app/SingleLinePort.h"
#include "foundation/StringAdditions.h"
#include "foundation/SystemLog.h"
#include "lyric/Lyric.h"
#include "settings/Settings.h"
#include "sources/JukoraControl.h"
#include "sources/MusicSourceKind.h"
#include "sources/MusicSourceQQMusic.h"
#include "store/LyricControl.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QTimer>

void SourceLoop::iTunesTrackDidChange(bool exists, qint64 databaseID)
{
    // A stopped player (no track) and a repeated notice for the same track change nothing.
    if (!exists || databaseID == d.m_curDBid)
        return;
    iTunesControl* itunes = d._itunesControl;
    d.curTrackTunes = itunes->currentTrack();
    if (!d.curTrackTunes)
        return;
    d.m_curDBid = d.curTrackTunes->databaseID();
    d.m_state.setSong(d.curTrackTunes->artist(), d.curTrackTunes->name());
    d.m_acquisition->fetchLRC(*d.curTrackTunes);
    if (itunes->isPlaying() && d.m_env.settings.isShowChangeSongNotify())
        d.m_menu->showSongNotification();
}

// QQMusic's and Jukora's notices are handled as they come: each one searches again (they
// have always done so). Only MPRIS players, which may send anything, are coalesced: see
// SongChangeQueue.
void SourceLoop::qqmusicSongChanged()
{
    const TrackItem* track = d.qqmusicControl ? d.qqmusicControl->track() : nullptr;
    if (!track || !foundation::isNonEmpty(track->title()))
        return;
    // A QQMusic song change leaves _lrcAvailable as it was: the old lyric drives the strip
    // until the new one is found.
    const bool available = d._lrcAvailable;
    const int origin = d.m_state.lyricOrigin();
    songChanging();
    if (available) {
        d._lrcAvailable = true;
        d.m_state.setLyricLoaded(true);
        d.m_state.setLyricOrigin(origin);
    }
    startSearch(track->artist(), track->title());
}

void SourceLoop::djSongChanged()
{
    JukoraControl* dj = d.DJControl.get();
    if (!dj)
        return;
    dj->setCachedItem(dj->item());
    songChanging();
    m_djTitle = dj->cachedItem() ? dj->cachedItem()->title() : QString();
    m_djArtist = dj->cachedItem() ? dj->cachedItem()->artist() : QString();
    if (!dj->cachedItem())
        return;
    startSearch(m_djArtist, m_djTitle);
}

void SourceLoop::followedSongChanged()
{
    m_changes.notice();
}

void SourceLoop::handleFollowed()
{
    // A player behind a source of higher priority changes nothing on screen.
    if (d.m_musicSource != MusicSourceKindMpris)
        return;
    followedTitleChanged();
    songChanging();
    FollowedSource* source = d.m_followed;
    const TrackItem* track = source ? source->track() : nullptr;
    if (!track)
        return;
    const QString path = source->localFilePath();
    // A song without a title is looked up by its file alone.
    if (!foundation::isNonEmpty(track->title()) && path.isEmpty())
        return;
    d.m_state.setSong(track->artist(), track->title());
    if (d.m_env.settings.isShowChangeSongNotify())
        d.m_menu->showSongNotification(
            {track->title().isEmpty() ? QFileInfo(path).completeBaseName() : track->title(),
             track->artist(), track->album(), source->duration()});
    startSearch(track->artist(), track->title(), path);
}

void SourceLoop::followedTitleChanged()
{
    if (d.m_musicSource != MusicSourceKindMpris || !d.m_followed)
        return;
    const QString title = d.m_followed->menuTitle();
    if (title.isEmpty() || title == d.m_state.sourceName())
        return;
    if (d.m_ports.statusMenu)
        d.m_ports.statusMenu->setSourceTitle(title);
    d.m_state.setSourceName(title);
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

void SourceLoop::startSearch(const QString& artist, const QString& title, const QString& audioPath)
{
    d.m_state.setSong(artist, title);
    // A lyric kept with the audio file is at hand: no search is shown unless it is missing.
    d.m_menu->setInfo(audioPath.isEmpty() ? apptext::tr(apptext::kFetching) : QString());
    lookup::Request request;
    request.audioPath = audioPath;
    request.artist = artist;
    request.title = title;
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
    if (result.lyric) {
        d.m_acquisition->installStored(std::move(result.lyric), result.origin);
        // The lyric was at hand: lit now, not up to a tick (200 ms) later.
        if (d.m_musicSource == MusicSourceKindMpris)
            updateAppFollowed();
        return;
    }
    // The store's own rule: without an artist or a title no search is made at all.
    if (m_searchArtist.isEmpty() || m_searchTitle.isEmpty()) {
        if (d.m_musicSource == MusicSourceKindMpris)
            d.m_acquisition->notAvailable(); // a file without a title: nothing more to ask
        return;
    }
    d.m_menu->setInfo(apptext::tr(apptext::kFetching));
    d.m_acquisition->storeMissed(m_searchArtist, m_searchTitle);
}
