#include "core/app/SourceLoop.h"

#include "core/app/AppState.h"
#include "core/app/AppTexts.h"
#include "core/app/ShownLyric.h"
#include "core/foundation/SystemLog.h"
#include "core/lyric/Lyric.h"
#include "core/reading/ShownLine.h"

#include <QElapsedTimer>

SourceLoop::SourceLoop(AppState& state, ShownLyric& shown, Settings& settings,
                       LyricAcquisition& acquisition, UpdateTimer::Factory timers)
    : m_state(state)
    , m_shown(shown)
    , m_settings(settings)
    , m_acquisition(acquisition)
    , m_timers(std::move(timers))
    , m_changes(this,
                [this] {
                    if (m_noticed)
                        handleSong(*m_noticed);
                })
    , m_lookup(this, [this](lookup::Result result) { lookedUp(std::move(result)); })
{
}

SourceLoop::~SourceLoop()
{
    deactiveTimer();
}

void SourceLoop::addSource(PlayerSource& source, int priority)
{
    auto at = m_sources.begin();
    while (at != m_sources.end() && at->priority <= priority)
        ++at;
    m_sources.insert(at, Ranked{priority, &source});
    QObject::connect(&source, &PlayerSource::songChanged, this,
                     [this, s = &source] { songNotice(s); });
    QObject::connect(&source, &PlayerSource::runningChanged, this, [this] { updateMusicSource(); });
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
    if (chosen != m_active) {
        m_active = chosen;
        Q_EMIT playerChosen(chosen);
    }
    QString title;
    if (chosen) {
        title = chosen->menuTitle();
        m_state.setSourceKind(chosen->kind());
        songNotice(chosen);
        activeTimer();
    } else {
        m_state.setSourceKind(0);
        title = apptext::tr(apptext::kNoMusicSource);
        clearForSong();
        m_state.setSong({}, {});
        // Names iTunes whatever the user's player: the message has always read so.
        Q_EMIT statusChanged(apptext::tr(apptext::kITunesNotRunning));
        deactiveTimer();
    }
    m_state.setSourceName(title);
}

void SourceLoop::activeTimer()
{
    deactiveTimer(); // never two
    m_timer = m_timers ? m_timers() : nullptr;
    if (m_timer)
        m_timer->start(kTickMs, [this] { update(); });
}

void SourceLoop::deactiveTimer()
{
    if (m_timer)
        m_timer->stop();
    m_timer.reset();
}

void SourceLoop::update()
{
    if (!m_timer)
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
                .arg(m_state.sourceName()));
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
    m_state.setPanelTitle(panelTitle);
    m_state.setSong(song.artist, song.title);
    if (m_shown.available)
        drive(source.location());
}

void SourceLoop::drive(float seconds)
{
    m_state.showPlayTime(seconds);
    Lyric* lyric = m_shown.parser.get();
    const LRCItem* item = lyric ? lyric->lrcItemAtTime(seconds) : nullptr;
    // Before the strip's update and lineChanged: both read them.
    m_state.setLitLine(KaraokeLine::of(item));
    m_state.setPosition(seconds);
    // The index is searched only when the lit item changes.
    if (!m_litKnown || item != m_litItem) {
        m_litItem = item;
        m_litIndex = item ? int(lyric->indexOfItem(item)) : -1;
        m_litKnown = true;
    }
    const ShownLine shown = shownLine(lyric, item, m_litIndex);
    m_state.setSecondaryLine(shown.secondary);
    m_state.setLine(m_litIndex, shown.text, seconds);
}

void SourceLoop::notPlaying(const QString& message)
{
    const QString title = QLatin1String(apptext::kPanelTitle);
    m_state.setPanelTitle(title);
    m_state.setSong({}, {});
    m_state.showLyric(nullptr);
    Q_EMIT statusChanged(message);
}

void SourceLoop::followTitle(const PlayerSource& source)
{
    if (&source != m_active)
        return;
    const QString title = source.menuTitle();
    if (title.isEmpty() || title == m_state.sourceName())
        return;
    m_state.setSourceName(title);
}

void SourceLoop::lyricInstalled()
{
    m_litKnown = false;
    m_litItem = nullptr;
}
