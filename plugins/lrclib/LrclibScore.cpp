#include "LrclibScore.h"

#include "LrclibAnswer.h"

#include <cmath>

namespace lrclib {
namespace {

// Closing brackets and their openers, after compatibility folding (full-width ones become ASCII).
constexpr std::pair<char16_t, char16_t> kBrackets[] = {
    {u')', u'('},   {u']', u'['},   {u'}', u'{'},  {u'】', u'【'},
    {u'」', u'「'}, {u'』', u'『'}, {u'〕', u'〔'}};

// Markers that start a suffix naming a version or a guest; blanks around them matter.
const QString kSuffixMarkers[] = {QStringLiteral(" - "),        QStringLiteral(" \u2013 "),
                                  QStringLiteral(" \u2014 "),   QStringLiteral(" feat. "),
                                  QStringLiteral(" feat "),     QStringLiteral(" ft. "),
                                  QStringLiteral(" featuring ")};

// Separators between artists of one credit.
const QString kArtistSeparators[] = {
    QStringLiteral(","),      QStringLiteral("&"),      QStringLiteral("/"),
    QStringLiteral(";"),      QStringLiteral("\u3001"), QStringLiteral(" x "),
    QStringLiteral(" and "),  QStringLiteral(" with "), QStringLiteral(" feat. "),
    QStringLiteral(" feat "), QStringLiteral(" ft. "),  QStringLiteral(" featuring "),
    QStringLiteral(" vs. "),  QStringLiteral(" vs ")};

QString withoutSuffix(QString s)
{
    for (bool again = true; again;) {
        again = false;
        s = s.trimmed();
        for (const auto& [close, open] : kBrackets) {
            if (!s.endsWith(QChar(close)))
                continue;
            const qsizetype at = s.lastIndexOf(QChar(open));
            if (at > 0) {
                s.truncate(at);
                again = true;
            }
            break;
        }
    }
    for (const QString& marker : kSuffixMarkers) {
        const qsizetype at = s.indexOf(marker);
        if (at > 0)
            s.truncate(at);
    }
    return s;
}

QString lettersAndDigits(const QString& s)
{
    QString kept;
    kept.reserve(s.size());
    for (const QChar c : s) {
        if (c.isLetterOrNumber())
            kept += c;
    }
    return kept;
}

} // namespace

QString foldName(const QString& text, bool stripSuffix)
{
    const QString key = matchKey(text);
    if (stripSuffix) {
        const QString stripped = lettersAndDigits(withoutSuffix(key));
        if (!stripped.isEmpty())
            return stripped;
    }
    const QString kept = lettersAndDigits(key);
    return kept.isEmpty() ? key : kept;
}

QStringList foldArtists(const QString& credit)
{
    QString s = QLatin1Char(' ') + matchKey(credit) + QLatin1Char(' ');
    for (const QString& separator : kArtistSeparators)
        s.replace(separator, QStringLiteral("\x1f"));
    QStringList artists;
    for (const QString& part : s.split(QChar(0x1f), Qt::SkipEmptyParts)) {
        const QString folded = lettersAndDigits(part);
        if (!folded.isEmpty())
            artists.append(folded);
    }
    return artists;
}

Wanted::Wanted(const QString& artist_, const QString& title_, double duration_)
    : artist(foldName(artist_, false))
    , artists(foldArtists(artist_))
    , title(foldName(title_, true))
    , exactTitle(foldName(title_, false))
    , duration(std::isfinite(duration_) && duration_ > 0 ? duration_ : 0)
{
}

Score scoreRecord(const Wanted& wanted, const Record& record)
{
    Score score;
    score.synced = !record.syncedLyrics.trimmed().isEmpty();
    const QString artist = foldName(record.artistName, false);
    int artistPoints = 0;
    if (artist == wanted.artist) {
        artistPoints = 2;
    } else {
        const QStringList artists = foldArtists(record.artistName);
        const bool leadIn = !wanted.artists.isEmpty() && artists.contains(wanted.artists.first());
        const bool theirLeadIn = !artists.isEmpty() && wanted.artists.contains(artists.first());
        artistPoints = leadIn || theirLeadIn ? 1 : 0;
    }
    const bool titleMatches = foldName(record.trackName, true) == wanted.title;
    const bool titleExact = foldName(record.trackName, false) == wanted.exactTitle;
    bool durationOk = true;
    int durationPoints = 0;
    if (wanted.duration > 0 && record.duration > 0) {
        score.durationGap = std::fabs(record.duration - wanted.duration);
        durationPoints = score.durationGap <= kCloseSeconds        ? 8
                         : score.durationGap <= kAcceptableSeconds ? 4
                                                                   : 0;
        durationOk = score.durationGap <= kAcceptableSeconds;
    }
    score.acceptable = titleMatches && artistPoints > 0 && durationOk;
    score.points = durationPoints + artistPoints + (titleMatches ? 2 : 0) + (titleExact ? 1 : 0);
    return score;
}

bool better(const Score& a, const Score& b)
{
    if (a.acceptable != b.acceptable)
        return a.acceptable;
    if (a.synced != b.synced)
        return a.synced;
    if (a.points != b.points)
        return a.points > b.points;
    return a.durationGap < b.durationGap;
}

} // namespace lrclib
