#include "LrclibScore.h"

#include "LrclibAnswer.h"

#include <cmath>
#include <utility>

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

// Works on a shrinking view: a title of many bracketed groups costs linear time, not quadratic.
QString withoutSuffix(const QString& text)
{
    QStringView s = QStringView(text).trimmed();
    for (bool again = true; again;) {
        again = false;
        for (const auto& [close, open] : kBrackets) {
            if (!s.endsWith(QChar(close)))
                continue;
            const qsizetype at = s.lastIndexOf(QChar(open));
            if (at > 0) {
                s = s.first(at).trimmed();
                again = true;
            }
            break;
        }
    }
    for (const QString& marker : kSuffixMarkers) {
        const qsizetype at = s.indexOf(marker);
        if (at > 0)
            s = s.first(at);
    }
    return s.toString();
}

bool isLetterOrDigit(QChar c)
{
    const char16_t u = c.unicode();
    if (u < 0x80)
        return (u >= u'a' && u <= u'z') || (u >= u'A' && u <= u'Z') || (u >= u'0' && u <= u'9');
    return c.isLetterOrNumber();
}

// Written into a buffer of the final bound: scoring runs over every candidate of an answer.
QString lettersAndDigits(QStringView s)
{
    QString kept(s.size(), Qt::Uninitialized);
    QChar* out = kept.data();
    for (const QChar c : s) {
        if (isLetterOrDigit(c))
            *out++ = c;
    }
    kept.truncate(out - kept.constData());
    return kept;
}

// Words that join artists of one credit ("A feat. B", "A x B").
bool isJoiningWord(QStringView word)
{
    static const QString kWords[] = {QStringLiteral("x"),    QStringLiteral("and"),
                                     QStringLiteral("with"), QStringLiteral("feat."),
                                     QStringLiteral("feat"), QStringLiteral("ft."),
                                     QStringLiteral("ft"),   QStringLiteral("featuring"),
                                     QStringLiteral("vs."),  QStringLiteral("vs")};
    for (const QString& w : kWords) {
        if (word == w)
            return true;
    }
    return false;
}

// Versions sung to other timing: a live take, a remix... A remaster keeps the timing.
bool namesOtherTiming(const QString& candidate, const QString& wanted)
{
    static const QString kWords[] = {QStringLiteral("live"),     QStringLiteral("remix"),
                                     QStringLiteral("acoustic"), QStringLiteral("karaoke"),
                                     QStringLiteral("demo"),     QStringLiteral("spedup")};
    for (const QString& word : kWords) {
        if (candidate.count(word) > wanted.count(word))
            return true;
    }
    return false;
}

} // namespace

QString foldName(const QString& text, bool stripSuffix)
{
    return foldKey(matchKey(text), stripSuffix);
}

QString foldKey(const QString& key, bool stripSuffix)
{
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
    // One pass: a separator sign or a joining word ends an artist; other words are folded in.
    const QString key = matchKey(credit);
    QStringList artists;
    QString current;
    auto endArtist = [&] {
        if (!current.isEmpty())
            artists.append(std::exchange(current, QString()));
    };
    qsizetype wordStart = 0;
    for (qsizetype i = 0; i <= key.size(); ++i) {
        const QChar c = i < key.size() ? key.at(i) : QChar(u' ');
        const bool sign = c == u',' || c == u'&' || c == u'/' || c == u';' || c == u'\u3001';
        if (!sign && !c.isSpace())
            continue;
        const QStringView word = QStringView(key).sliced(wordStart, i - wordStart);
        if (isJoiningWord(word))
            endArtist();
        else
            current += lettersAndDigits(word);
        if (sign)
            endArtist();
        wordStart = i + 1;
    }
    endArtist();
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
    const QString titleKey = matchKey(record.trackName);
    const bool titleMatches = foldKey(titleKey, true) == wanted.title;
    const QString exactTitle = foldKey(titleKey, false);
    const bool titleExact = exactTitle == wanted.exactTitle;
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
    score.points = durationPoints + artistPoints + (titleMatches ? 2 : 0) + (titleExact ? 1 : 0) -
                   (titleMatches && !titleExact && namesOtherTiming(exactTitle, wanted.exactTitle));
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
