#include "core/editor/LrcDraft.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

// A time tag where the matching starts (anchored there): "[mm:ss]", "[mm:ss.xx]" or "[mm:ss:xx]".
const QRegularExpression& timeTag()
{
    static const QRegularExpression re(
        QStringLiteral(R"(\s*\[(\d{1,4}:\d{1,2}(?:[.:]\d{1,3})?)\])"));
    return re;
}

const QRegularExpression& idTag()
{
    static const QRegularExpression re(QStringLiteral(R"(^\s*\[([A-Za-z#]+):(.*)\]\s*$)"));
    return re;
}

const QRegularExpression& wordTag()
{
    static const QRegularExpression re(
        QStringLiteral(R"(<([0-9]{1,4}:[0-9]{1,2}(?:[.:][0-9]{1,3})?)>)"));
    return re;
}

} // namespace

QString LrcDraft::shiftWordTags(const QString& text, qint64 deltaMs)
{
    if (deltaMs == 0 || !text.contains(QLatin1Char('<')))
        return text;
    QString out;
    qsizetype done = 0;
    for (auto it = wordTag().globalMatch(text); it.hasNext();) {
        const auto m = it.next();
        const auto ms = parseTime(m.capturedView(1));
        if (!ms)
            continue; // only looks like a tag: kept as text
        out += QStringView(text).mid(done, m.capturedStart(0) - done);
        out += QLatin1Char('<') + formatTime(std::max<qint64>(0, *ms + deltaMs)) + QLatin1Char('>');
        done = m.capturedEnd(0);
    }
    return out + text.mid(done);
}

QString LrcDraft::withoutWordTags(const QString& text)
{
    if (!text.contains(QLatin1Char('<')))
        return text;
    QString out;
    qsizetype done = 0;
    for (auto it = wordTag().globalMatch(text); it.hasNext();) {
        const auto m = it.next();
        if (!parseTime(m.capturedView(1)))
            continue;
        out += QStringView(text).mid(done, m.capturedStart(0) - done);
        done = m.capturedEnd(0);
    }
    return out + text.mid(done);
}

std::optional<qint64> LrcDraft::parseTime(QStringView text)
{
    static const QRegularExpression re(
        QStringLiteral(R"(^\s*(\d{1,4}):(\d{1,2})(?:[.:](\d{1,3}))?\s*$)"));
    const auto match = re.match(text.toString());
    if (!match.hasMatch())
        return std::nullopt;
    const qint64 minutes = match.capturedView(1).toLongLong();
    const qint64 seconds = match.capturedView(2).toLongLong();
    if (seconds >= 60)
        return std::nullopt;
    qint64 fraction = 0;
    const QStringView digits = match.capturedView(3);
    if (!digits.isEmpty()) {
        // "5" is 500 ms, "05" 50 ms, "005" 5 ms.
        fraction = digits.toLongLong();
        for (qsizetype i = digits.size(); i < 3; ++i)
            fraction *= 10;
    }
    return (minutes * 60 + seconds) * 1000 + fraction;
}

QString LrcDraft::formatTime(std::optional<qint64> ms)
{
    if (!ms)
        return {};
    const qint64 centis = (*ms + 5) / 10; // to the nearest hundredth
    return QStringLiteral("%1:%2.%3")
        .arg(centis / 6000, 2, 10, QLatin1Char('0'))
        .arg(centis / 100 % 60, 2, 10, QLatin1Char('0'))
        .arg(centis % 100, 2, 10, QLatin1Char('0'));
}

LrcDraft LrcDraft::fromText(const QString& text)
{
    LrcDraft draft;
    qint64 offset = 0;
    const QStringList rows = text.split(QLatin1Char('\n'));
    for (QString row : rows) {
        if (row.endsWith(QLatin1Char('\r')))
            row.chop(1);
        qsizetype rest = 0;
        std::vector<qint64> times;
        for (auto m = timeTag().match(row, rest, QRegularExpression::NormalMatch,
                                      QRegularExpression::AnchorAtOffsetMatchOption);
             m.hasMatch(); m = timeTag().match(row, rest, QRegularExpression::NormalMatch,
                                               QRegularExpression::AnchorAtOffsetMatchOption)) {
            if (const auto ms = parseTime(m.capturedView(1)))
                times.push_back(*ms);
            rest = m.capturedEnd(0);
        }
        if (times.empty()) {
            const auto tag = idTag().match(row);
            if (tag.hasMatch()) {
                if (tag.captured(1).compare(QLatin1String("offset"), Qt::CaseInsensitive) == 0)
                    offset = tag.captured(2).trimmed().toLongLong();
                else
                    draft.m_tags << row.trimmed();
                continue;
            }
            if (!row.trimmed().isEmpty())
                draft.m_lines.push_back({std::nullopt, row.trimmed()});
            continue;
        }
        const QString words = row.mid(rest).trimmed();
        for (qint64 ms : times)
            draft.m_lines.push_back({ms, words});
    }
    // Lines of one tag group ("[00:10][01:10]chorus") come out in time order, as a player shows
    // them; a text with untimed lines keeps its written order.
    if (draft.timedCount() == draft.size())
        std::stable_sort(draft.m_lines.begin(), draft.m_lines.end(),
                         [](const Line& a, const Line& b) { return *a.ms < *b.ms; });
    draft.shift(offset);
    return draft;
}

QString LrcDraft::toLrc() const
{
    QString out;
    for (const QString& tag : m_tags)
        out += tag + QLatin1Char('\n');
    for (const Line& line : m_lines) {
        if (line.ms)
            out += QLatin1Char('[') + formatTime(line.ms) + QLatin1Char(']');
        out += line.text + QLatin1Char('\n');
    }
    return out;
}

QString LrcDraft::plainText() const
{
    QString out;
    for (const Line& line : m_lines)
        out += withoutWordTags(line.text) + QLatin1Char('\n');
    return out;
}

int LrcDraft::timedCount() const
{
    return int(std::count_if(m_lines.begin(), m_lines.end(), [](const Line& l) { return l.ms; }));
}

void LrcDraft::setTime(int row, std::optional<qint64> ms)
{
    if (row < 0 || row >= size())
        return;
    Line& line = m_lines[std::size_t(row)];
    const auto was = line.ms;
    line.ms = ms ? std::optional(std::max<qint64>(0, *ms)) : ms;
    if (was && line.ms)
        line.text = shiftWordTags(line.text, *line.ms - *was);
}

void LrcDraft::setText(int row, const QString& text)
{
    if (row >= 0 && row < size())
        m_lines[std::size_t(row)].text = text;
}

void LrcDraft::shift(qint64 deltaMs)
{
    for (Line& line : m_lines)
        if (line.ms) {
            const qint64 moved = std::max<qint64>(0, *line.ms + deltaMs);
            line.text = shiftWordTags(line.text, moved - *line.ms);
            line.ms = moved;
        }
}
