#include "core/app/SyncControls.h"

#include "core/app/AppState.h"
#include "core/app/PlayerSeek.h"
#include "core/app/PlayerSource.h"
#include "core/app/ShownLyric.h"
#include "core/foundation/SystemLog.h"
#include "core/lyric/Lyric.h"

#include <cmath>

SyncControls::SyncControls(Context context, QObject* parent)
    : QObject(parent)
    , m_context(std::move(context))
{
    m_save.setSingleShot(true);
    m_save.setInterval(0);
    connect(&m_save, &QTimer::timeout, this, &SyncControls::save);
}

Lyric* SyncControls::shownLyric() const
{
    return m_context.shown.available ? m_context.shown.parser.get() : nullptr;
}

bool SyncControls::isValidDelta(double delta)
{
    return std::isfinite(delta) && std::fabs(delta) <= 2 * offsetnudge::kLimit;
}

bool SyncControls::nudgeOffset(double delta)
{
    const Lyric* lyric = shownLyric();
    return lyric && isValidDelta(delta) && setOffset(lyric->offsetTime() + delta);
}

bool SyncControls::setOffset(double seconds)
{
    Lyric* lyric = shownLyric();
    // A plain lyric has no timing to move.
    if (!lyric || !m_context.state.synced() || !offsetnudge::setOffset(*lyric, seconds))
        return false;
    m_context.state.setOffset(lyric->offsetTime());
    // The lit line follows at once rather than at the next tick.
    if (m_context.tick)
        m_context.tick();
    Q_EMIT offsetNudged(lyric->offsetTime());
    // The names and text now: the lyric may be another song's by the time it is saved.
    PlayerSource* player = (m_context.player ? m_context.player() : nullptr);
    const auto names = player ? player->savedNames() : std::nullopt;
    const auto outcome = offsetnudge::snapshot(*lyric, names ? names->artist : QString(),
                                               names ? names->title : QString(), m_pending);
    if (outcome == offsetnudge::Outcome::Saved) {
        m_save.start();
    } else {
        m_save.stop();
        if (outcome == offsetnudge::Outcome::TagNotInText)
            foundation::systemLog(QStringLiteral("the lyric's text kept no offset tag to save"));
        Q_EMIT offsetSaved(outcome);
    }
    return true;
}

void SyncControls::save()
{
    LyricControl* store = (m_context.store ? m_context.store() : nullptr);
    const auto outcome =
        store ? offsetnudge::save(m_pending, *store) : offsetnudge::Outcome::NotSaved;
    if (outcome == offsetnudge::Outcome::NotSaved)
        foundation::systemLog(
            QStringLiteral("could not save the new offset of \"%1\" in the lyrics folder")
                .arg(m_pending.title));
    Q_EMIT offsetSaved(outcome);
}

void SyncControls::seek(double seconds, std::function<void(bool)> done)
{
    PlayerSource* player = (m_context.player ? m_context.player() : nullptr);
    if (!player || !std::isfinite(seconds) || seconds < 0) {
        playerseek::refuse(this, std::move(done));
        return;
    }
    player->seek(seconds, std::move(done));
}

void SyncControls::seekToLine(int index, std::function<void(bool)> done)
{
    const Lyric* lyric = shownLyric();
    const LRCItem* item = lyric ? lyric->lrcItemAtIndex(index) : nullptr;
    if (!item) {
        playerseek::refuse(this, std::move(done));
        return;
    }
    // A line before zero (a negative offset) starts with the song.
    seek(std::max(0.0, double(item->startTime())), std::move(done));
}
