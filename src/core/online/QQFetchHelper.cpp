#include "core/online/QQFetchHelper.h"

#include "core/foundation/DataAdditions.h"
#include "core/online/XmlAnswer.h"

QString Base16Encoded(const QString& text)
{
    if (text.isEmpty())
        return text;
    static const char digits[] = "0123456789ABCDEF";
    QString out;
    out.reserve(text.size() * 4);
    for (QChar c : text) {
        const char16_t unit = c.unicode();
        for (const unsigned byte : {unsigned(unit & 0xFF), unsigned(unit >> 8)}) {
            out += QLatin1Char(digits[byte >> 4]);
            out += QLatin1Char(digits[byte & 0xF]);
        }
    }
    return out;
}

QString base64Encrypted(const QString& text)
{
    return foundation::base64EncodedString(text.toUtf8());
}

namespace {
QUrl address(const QString& host, const QString& query)
{
    // Plain formatting: the parts carry only hexadecimal digits, numbers or Base64 text.
    return QUrl(QStringLiteral("http://") + host + query, QUrl::StrictMode);
}
} // namespace

QUrl QQFetchHelper::urlForLRCsearching(const QString& artist, const QString& title,
                                       const QString& host)
{
    return address(host, QStringLiteral("/dll/lyricsvr.dll?sh?Artist=%1&Title=%2&Flags=1")
                             .arg(Base16Encoded(artist.toLower()), Base16Encoded(title.toLower())));
}

QUrl QQFetchHelper::urlForLRCfetching(std::int64_t id, const QString& artist, const QString& title,
                                      const QString& host)
{
    const std::int64_t code = encryptedCodeFromID(id, artist, title);
    return address(host, QStringLiteral("/dll/lyricsvr.dll?dl?Id=%1&Code=%2")
                             .arg(QString::number(id), QString::number(code)));
}

std::int64_t QQFetchHelper::encryptedCodeFromID(std::int64_t id, const QString& artist,
                                                const QString& title)
{
    const QByteArray s = (artist + title).toUtf8();
    const auto uid = static_cast<std::uint64_t>(id);
    const std::uint64_t b0 = uid & 0xFF, b1 = (uid >> 8) & 0xFF, b2 = (uid >> 16) & 0xFF,
                        b3 = (uid >> 24) & 0xFF;
    const std::uint64_t B2 = b2 != 0 ? b2 : 255 - b1;
    const std::uint64_t B3 = b3 != 0 ? b3 : 255 - b0;
    const std::uint64_t v = (b0 << 24) + (B2 << 16) + (b1 << 8) + B3;

    // Bytes count as signed 8-bit numbers, sign-extended; all sums wrap at 64 bits.
    auto byteAt = [&](qsizetype k) {
        return static_cast<std::uint64_t>(
            static_cast<std::int64_t>(static_cast<signed char>(s[k])));
    };
    std::uint64_t t1 = 0;
    for (qsizetype k = s.size() - 1; k >= 0; --k)
        t1 = (t1 << (4 + (k % 2))) + t1 + byteAt(k);
    std::uint64_t t2 = 0;
    for (qsizetype k = 0; k < s.size(); ++k)
        t2 = (t2 << (3 + (k % 2))) + t2 + byteAt(k);

    const std::uint64_t code = (v | t2) * (t1 ^ uid) * ((t2 | uid) + (t1 ^ v));
    return static_cast<std::int64_t>(code);
}

QList<LRCListItem> QQFetchHelper::lrcListItemsFromXML(const QByteArray& xml, const QString& host,
                                                      QString* error)
{
    QList<LRCListItem> items;
    for (const xmlanswer::Element& e : xmlanswer::select(xml, "//lrc", error)) {
        const auto attribute = [&](const char* name) {
            const auto it = e.attributes.constFind(QLatin1String(name));
            return it == e.attributes.constEnd() ? QString() : *it;
        };
        items.append(LRCListItem(attribute("artist"), attribute("title"), attribute("id"), host));
    }
    return items;
}

QUrl QQFetchHelper::urlForArtworkSearching(const QString& artist, const QString& title,
                                           const QString& album, int type, const QString& host)
{
    return address(host, QStringLiteral("/mttplayer.cgi?reqtype=3&Artist=%1&Title=%2&Album=%3"
                                        "&Extra=&Type=%4&userid=1")
                             .arg(base64Encrypted(artist), base64Encrypted(title),
                                  base64Encrypted(album), QString::number(type)));
}

QUrl QQFetchHelper::urlForArtWorkSearchingOfArtist(const QString& artist, const QString& host)
{
    return urlForArtworkSearching(artist, QString(), QString(), 1, host);
}

QUrl QQFetchHelper::firstUrlForArtWorkFromXML(const QByteArray& xml, QString* error)
{
    const auto elements = xmlanswer::select(xml, "//res", error);
    if (elements.isEmpty())
        return {};
    return QUrl(elements.first().attributes.value(QStringLiteral("url")));
}
