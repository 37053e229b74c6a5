#include "core/app/OffsetNudge.h"

#include "core/lyric/Lyric.h"
#include "core/store/LyricControl.h"

#include <QCoreApplication>

#include <cmath>
#include <limits>

namespace offsetnudge {

std::optional<double> validOffset(double seconds)
{
    if (!std::isfinite(seconds) || std::fabs(seconds) > kLimit)
        return std::nullopt;
    const double ms = std::round(seconds * 1000.0);
    // -0.0 would print as "[offset:-0]".
    return ms == 0.0 ? 0.0 : ms / 1000.0;
}

bool setOffset(Lyric& lyric, double seconds)
{
    const auto offset = validOffset(seconds);
    if (!offset)
        return false;
    lyric.setOffsetTime(*offset);
    // The remembered line keeps the end time it had, so it could stay lit under the new offset;
    // a question before any line forgets it, and the next one finds the line afresh.
    lyric.lrcItemAtTime(-std::numeric_limits<double>::infinity());
    return true;
}

Outcome snapshot(const Lyric& lyric, const QString& artist, const QString& title, Snapshot& taken)
{
    if (artist.isEmpty() || title.isEmpty())
        return Outcome::NoSongNames;
    // A document re-parsed from text without a tag remembers the tag it had, finds nothing to
    // replace and writes nothing: saving would only write the old offset again.
    if (lyric.contents().isNull() || !lyric.contents().contains(lyric.offsetItem()))
        return Outcome::TagNotInText;
    taken = {artist, title, lyric.contents()};
    return Outcome::Saved;
}

Outcome save(const Snapshot& taken, LyricControl& store)
{
    Lyric text;
    text.setContents(taken.text);
    store.writeLrc(text, taken.artist, taken.title, true);
    // The store writes quietly; reading back tells whether the text landed.
    const auto saved = store.readLrcByIdentify(store.identifyFromArtist(taken.artist, taken.title));
    return saved && saved->contents() == taken.text ? Outcome::Saved : Outcome::NotSaved;
}

Outcome apply(Lyric& lyric, double seconds, LyricControl& store, const QString& artist,
              const QString& title)
{
    if (!setOffset(lyric, seconds))
        return Outcome::Refused;
    Snapshot taken;
    const Outcome outcome = snapshot(lyric, artist, title, taken);
    return outcome == Outcome::Saved ? save(taken, store) : outcome;
}

QString noticeText(double seconds)
{
    QString number = QString::number(std::fabs(seconds), 'f', 3);
    while (number.endsWith(QLatin1Char('0')) && !number.endsWith(QLatin1String(".0")))
        number.chop(1);
    const QString sign = seconds > 0   ? QStringLiteral("+")
                         : seconds < 0 ? QStringLiteral("-")
                                       : QString();
    return QCoreApplication::translate("OffsetNudge", "Offset %1 s").arg(sign + number);
}

} // namespace offsetnudge
