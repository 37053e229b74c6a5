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

SourceLoop::SourceLoop(AppDelegate& d)
    : d(d)
    , m_changes(&d, [this] { handleFollowed(); })
    , m_lookup(&d, [this](lookup::Result result) { lookedUp(std::move(result)); })
{
}

void SourceLoop::updateMusicSource()
{
    QString title;
    if (d.qqmusicControl && d.qqmusicControl->isRunning()) {
        title = apptext::tr(d.qqmusicControl->name().toUtf8().constData());
        d.m_musicSource = MusicSourceKindQQMusic;
        d.m_state.setSourceKind(d.m_musicSource);
        qqmusicSongChanged();
    } else if (d.DJControl && d.DJControl->isRunning()) {
        title = apptext::tr(apptext::kJukora);
        d.m_musicSource = MusicSourceKindJukora;
        d.m_state.setSourceKind(d.m_musicSource);
        djSongChanged();
    } else if (d._itunesControl && d._itunesControl->app().isRunning()) {
        title = apptext::tr(apptext::kITunes);
        d.m_musicSource = MusicSourceKindITunes;
        d.m_state.setSourceKind(d.m_musicSource);
        d.iTunesCB_TrackDidChange(d._itunesControl->currentTrack());
    } else if (d.m_followed && d.m_followed->isRunning()) {
        title = d.m_followed->menuTitle();
        d.m_musicSource = MusicSourceKindMpris;
        d.m_state.setSourceKind(d.m_musicSource);
        followedSongChanged();
    } else {
        d.m_musicSource = MusicSourceKindNone;
        d.m_state.setSourceKind(d.m_musicSource);
        title = apptext::tr(apptext::kNoMusicSource);
        songChanging();
        d.m_state.setSong({}, {});
        // Names iTunes whatever the user's player: the message has always read so.
        d.m_menu->setInfo(apptext::tr(apptext::kITunesNotRunning));
    }
    if (d.m_musicSource != MusicSourceKindNone)
        activeTimer();
    else
        deactiveTimer();
    if (d.m_ports.statusMenu)
        d.m_ports.statusMenu->setSourceTitle(title);
    d.m_state.setSourceName(title);
}

void SourceLoop::activeTimer()
{
    deactiveTimer(); // never two
    d.timer = d.m_env.timers();
    if (d.timer)
        d.timer->start(AppDelegate::kTickMs, [this] { update(); });
}

void SourceLoop::deactiveTimer()
{
    if (d.timer)
        d.timer->stop();
    d.timer.reset();
}

void SourceLoop::update()
{
    if (!d.timer)
        return;
    QElapsedTimer clock;
    clock.start();
    tick();
    // A player that does not answer holds the tick up to its source's own limit; say so once
    // per episode, not five times a second.
    const qint64 waited = clock.elapsed();
    if (waited >= kStallMs && !m_stalled)
        foundation::systemLog(
            QStringLiteral("the update tick waited %1 ms for the player \"%2\"; it does not answer")
                .arg(waited)
                .arg(d.m_state.sourceName()));
    m_stalled = waited >= kStallMs;
}

void SourceLoop::tick()
{
    switch (d.m_musicSource) {
    case MusicSourceKindITunes:
        updateAppItunes();
        break;
    case MusicSourceKindJukora:
        updateAppJukora();
        break;
    case MusicSourceKindQQMusic:
        updateAppQQMusic();
        break;
    case MusicSourceKindMpris:
        updateAppFollowed();
        break;
    default:
        break;
    }
}

// Each tick makes at most one blocking read besides the running test (the position), and
// only while a lyric is shown; the names come from the song change.
void SourceLoop::updateAppItunes()
{
    iTunesControl* itunes = d._itunesControl;
    if (!itunes || !itunes->app().isRunning())
        return;
    // The names are read on every tick, as the panel title is rewritten on every tick.
    if (d.curTrackTunes && d.curTrackTunes->exists())
        songPresent(d.curTrackTunes->name(), d.curTrackTunes->artist(),
                    [](AppDelegate& d) { return d._itunesControl->playerPosition(); });
    else
        notPlaying(apptext::tr(apptext::kITunesNotPlaying));
}

void SourceLoop::updateAppQQMusic()
{
    MusicSourceQQMusic* qq = d.qqmusicControl.get();
    if (!qq || !qq->isRunning())
        return;
    const TrackItem* track = qq->track();
    if (track && foundation::isNonEmpty(track->title()))
        songPresent(track->title(), track->artist(),
                    [](AppDelegate& d) { return d.qqmusicControl->location(); });
    else
        notPlaying(apptext::tr(apptext::kQQMusicNotPlaying));
}

void SourceLoop::updateAppJukora()
{
    JukoraControl* dj = d.DJControl.get();
    if (!dj || !dj->isRunning())
        return;
    if (dj->cachedItem())
        songPresent(m_djTitle, m_djArtist, [](AppDelegate& d) { return d.DJControl->location(); });
    else
        notPlaying(apptext::tr(apptext::kJukoraNotPlaying));
}

void SourceLoop::updateAppFollowed()
{
    FollowedSource* source = d.m_followed;
    if (!source || !source->isRunning())
        return;
    followedTitleChanged();
    const TrackItem* track = source->track();
    // A local file without a title is shown by its file name.
    const QString title = !track ? QString()
                          : foundation::isNonEmpty(track->title())
                              ? track->title()
                              : QFileInfo(source->localFilePath()).completeBaseName();
    if (!title.isEmpty())
        songPresent(title, track->artist(),
                    [](AppDelegate& d) { return d.m_followed->location(); });
    else
        notPlaying(apptext::tr(apptext::kPlayerNotPlaying).arg(source->menuTitle()));
}

void SourceLoop::songPresent(const QString& title, const QString& artist,
                             float (*position)(AppDelegate&))
{
    const QString panelTitle = QStringLiteral("%1-%2").arg(title, artist);
    if (d.m_ports.uiLRCpanel)
        d.m_ports.uiLRCpanel->setTitle(panelTitle);
    d.m_state.setPanelTitle(panelTitle);
    d.m_state.setSong(artist, title);
    if (d._lrcAvailable)
        drive(position(d));
}

void SourceLoop::drive(float seconds)
{
    if (d.m_ports.appController)
        d.m_ports.appController->updateTime(seconds);
    Lyric* lyric = d.parser.get();
    const LRCItem* item = lyric ? lyric->lrcItemAtTime(seconds) : nullptr;
    const QString text = item ? item->content() : QString();
    if (d.m_ports.singleLineControl)
        d.m_ports.singleLineControl->setContent(text);
    // The index is searched only when the lit item changes.
    if (!m_litKnown || item != m_litItem) {
        m_litItem = item;
        m_litIndex = item ? int(lyric->indexOfItem(item)) : -1;
        m_litKnown = true;
    }
    d.m_state.setLine(m_litIndex, text, seconds);
}

void SourceLoop::notPlaying(const QString& message)
{
    const QString title = QLatin1String(apptext::kPanelTitle);
    if (d.m_ports.uiLRCpanel)
        d.m_ports.uiLRCpanel->setTitle(title);
    d.m_state.setPanelTitle(title);
    d.m_state.setSong({}, {});
    if (d.m_ports.appController)
        d.m_ports.appController->setParser(nullptr);
    d.m_menu->setInfo(message);
}

void SourceLoop::lyricInstalled()
{
    m_litKnown = false;
    m_litItem = nullptr;
}
