#include "app/SourceLoop.h"

#include "app/AppDelegate.h"
#include "app/AppTexts.h"
#include "app/LyricPanelPort.h"
#include "app/LyricViewPort.h"
#include "app/MenuState.h"
#include "app/SingleLinePort.h"
#include "foundation/SystemLog.h"
#include "lyric/Lyric.h"

#include <QElapsedTimer>

SourceLoop::SourceLoop(AppDelegate& d)
    : d(d)
    , m_changes(&d,
                [this] {
                    if (m_noticed)
                        handleSong(*m_noticed);
                })
    , m_lookup(&d, [this](lookup::Result result) { lookedUp(std::move(result)); })
{
}

void SourceLoop::addSource(PlayerSource& source, int priority)
{
    auto at = m_sources.begin();
    while (at != m_sources.end() && at->priority <= priority)
        ++at;
    m_sources.insert(at, Ranked{priority, &source});
    QObject::connect(&source, &PlayerSource::songChanged, &d,
                     [this, s = &source] { songNotice(s); });
    QObject::connect(&source, &PlayerSource::runningChanged, &d, [this] { updateMusicSource(); });
}

void SourceLoop::updateMusicSource()
{
    PlayerSource* chosen = nullptr;
    for (const Ranked& ranked : m_sources) {
        if (ranked.source && ranked.source->isRunning()) {
            chosen = ranked.source;
            break;
        }
    }
    m_active = chosen;
    QString title;
    if (chosen) {
        title = chosen->menuTitle();
        d.m_state.setSourceKind(chosen->kind());
        songNotice(chosen);
        activeTimer();
    } else {
        d.m_state.setSourceKind(0);
        title = apptext::tr(apptext::kNoMusicSource);
        songChanging();
        d.m_state.setSong({}, {});
        // Names iTunes whatever the user's player: the message has always read so.
        d.m_menu->setInfo(apptext::tr(apptext::kITunesNotRunning));
        deactiveTimer();
    }
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
    tick(m_active);
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

// Each tick makes at most one blocking read besides the running test (the position), and
// only while a lyric is shown; the names come from the song change where reading them costs.
void SourceLoop::tick(PlayerSource* source)
{
    if (!source || !source->isRunning())
        return;
    followTitle(*source);
    if (const auto song = source->nowPlaying())
        songPresent(*song, *source);
    else
        notPlaying(source->notPlayingText());
}

void SourceLoop::songPresent(const PlayerSong& song, PlayerSource& source)
{
    const QString panelTitle = QStringLiteral("%1-%2").arg(song.title, song.artist);
    if (d.m_ports.uiLRCpanel)
        d.m_ports.uiLRCpanel->setTitle(panelTitle);
    d.m_state.setPanelTitle(panelTitle);
    d.m_state.setSong(song.artist, song.title);
    if (d._lrcAvailable)
        drive(source.location());
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

void SourceLoop::followTitle(const PlayerSource& source)
{
    if (&source != m_active)
        return;
    const QString title = source.menuTitle();
    if (title.isEmpty() || title == d.m_state.sourceName())
        return;
    if (d.m_ports.statusMenu)
        d.m_ports.statusMenu->setSourceTitle(title);
    d.m_state.setSourceName(title);
}

void SourceLoop::lyricInstalled()
{
    m_litKnown = false;
    m_litItem = nullptr;
}
