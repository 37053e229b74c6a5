#include "LrclibAnswer.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace lrclib {
namespace {

QString stringField(const QJsonObject& object, const char* name)
{
    const QJsonValue value = object.value(QLatin1String(name));
    return value.isString() ? value.toString() : QString();
}

Record recordFrom(const QJsonObject& object)
{
    Record record;
    const QJsonValue id = object.value(QLatin1String("id"));
    if (id.isDouble() && std::isfinite(id.toDouble()) && std::fabs(id.toDouble()) < 9.0e15)
        record.id = qint64(id.toDouble());
    record.trackName = stringField(object, "trackName");
    record.artistName = stringField(object, "artistName");
    record.albumName = stringField(object, "albumName");
    const QJsonValue duration = object.value(QLatin1String("duration"));
    if (duration.isDouble() && std::isfinite(duration.toDouble()) && duration.toDouble() > 0)
        record.duration = duration.toDouble();
    record.instrumental = object.value(QLatin1String("instrumental")).toBool();
    record.plainLyrics = stringField(object, "plainLyrics");
    record.syncedLyrics = stringField(object, "syncedLyrics");
    return record;
}

} // namespace

std::optional<QList<Record>> parseAnswer(const QByteArray& json)
{
    if (json.size() > kMaxAnswerBytes)
        return std::nullopt;
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        return std::nullopt;
    QList<Record> records;
    if (document.isObject()) {
        records.append(recordFrom(document.object()));
    } else if (document.isArray()) {
        for (const QJsonValue& value : document.array()) {
            if (value.isObject())
                records.append(recordFrom(value.toObject()));
        }
    } else {
        return std::nullopt;
    }
    return records;
}

QString matchKey(const QString& text)
{
    // Plain ASCII (most names) decomposes to itself and folds to lower case: no normalisation.
    const bool ascii =
        std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() < 0x80; });
    if (ascii) {
        QString lower = QStringView(text).trimmed().toString();
        for (QChar& c : lower) {
            if (c >= u'A' && c <= u'Z')
                c = QChar(c.unicode() + (u'a' - u'A'));
        }
        return lower;
    }
    const QString decomposed = text.normalized(QString::NormalizationForm_KD);
    QString key;
    key.reserve(decomposed.size());
    for (const QChar c : decomposed) {
        const QChar::Category category = c.category();
        if (category != QChar::Mark_NonSpacing && category != QChar::Mark_SpacingCombining &&
            category != QChar::Mark_Enclosing)
            key += c;
    }
    // Upper-casing first applies the full mappings ("ß" gives "SS"), which folding alone does not.
    return key.toUpper().toCaseFolded().trimmed();
}

QList<Ranked> rankRecords(const QList<Record>& records, const QString& artist, const QString& title,
                          double duration)
{
    const Wanted wanted(artist, title, duration);
    QList<Ranked> kept;
    kept.reserve(records.size());
    for (const Record& record : records) {
        if (!record.syncedLyrics.trimmed().isEmpty() || !record.plainLyrics.trimmed().isEmpty())
            kept.append({record, scoreRecord(wanted, record)});
    }
    std::stable_sort(kept.begin(), kept.end(),
                     [](const Ranked& a, const Ranked& b) { return better(a.score, b.score); });
    return kept;
}

QVariantMap itemFromRecord(const Record& record, const Score& score)
{
    QVariantMap item{{QStringLiteral("artist"), record.artistName},
                     {QStringLiteral("title"), record.trackName},
                     {QStringLiteral("album"), record.albumName},
                     {QStringLiteral("duration"), record.duration},
                     {QStringLiteral("id"), record.id},
                     {QStringLiteral("syncedLyrics"), record.syncedLyrics},
                     {QStringLiteral("synced"), score.synced},
                     {QStringLiteral("match"), score.acceptable}};
    if (!score.synced)
        item.insert(QStringLiteral("plainLyrics"), record.plainLyrics);
    return item;
}

QVariantList itemsFromRecords(const QList<Record>& records, const QString& artist,
                              const QString& title, double duration)
{
    QVariantList items;
    for (const Ranked& ranked : rankRecords(records, artist, title, duration))
        items.append(itemFromRecord(ranked.record, ranked.score));
    return items;
}

std::optional<QVariantList> resultItems(const QByteArray& json, const QString& artist,
                                        const QString& title, double duration)
{
    const auto records = parseAnswer(json);
    if (!records)
        return std::nullopt;
    return itemsFromRecords(*records, artist, title, duration);
}

} // namespace lrclib
