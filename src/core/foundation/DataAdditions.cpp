#include "core/foundation/DataAdditions.h"

#include <QStringDecoder>

#include <zlib.h>

namespace foundation {

namespace {
constexpr qsizetype kDeflateChunk = 16384;
constexpr qsizetype kBase64LineLength = 64;

uInt clampToUInt(qsizetype n)
{
    return static_cast<uInt>(std::min<qsizetype>(n, std::numeric_limits<uInt>::max()));
}
} // namespace

std::optional<QByteArray> zlibDeflate(const QByteArray& data)
{
    if (data.isEmpty())
        return data;
    z_stream stream{};
    if (deflateInit(&stream, Z_DEFAULT_COMPRESSION) != Z_OK)
        return std::nullopt;
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.constData()));
    stream.avail_in = clampToUInt(data.size());

    QByteArray out(kDeflateChunk, Qt::Uninitialized);
    // Finish in one go, growing the buffer by a chunk each time it fills up.
    do {
        if (stream.total_out >= static_cast<uLong>(out.size()))
            out.resize(out.size() + kDeflateChunk);
        stream.next_out = reinterpret_cast<Bytef*>(out.data()) + stream.total_out;
        stream.avail_out = clampToUInt(out.size() - static_cast<qsizetype>(stream.total_out));
        deflate(&stream, Z_FINISH);
    } while (stream.avail_out == 0);
    deflateEnd(&stream);
    out.truncate(static_cast<qsizetype>(stream.total_out));
    return out;
}

std::optional<QByteArray> zlibInflate(const QByteArray& data, qsizetype maxOutput)
{
    if (data.isEmpty())
        return data;
    const qsizetype half = std::max<qsizetype>(data.size() / 2, 1);
    QByteArray out(std::min(data.size() + half, maxOutput + 1), Qt::Uninitialized);

    z_stream stream{};
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.constData()));
    stream.avail_in = clampToUInt(data.size());
    if (inflateInit(&stream) != Z_OK)
        return std::nullopt;

    for (;;) {
        if (stream.total_out >= static_cast<uLong>(out.size())) {
            if (out.size() > maxOutput)
                break;
            out.resize(std::min(out.size() + half, maxOutput + 1));
        }
        stream.next_out = reinterpret_cast<Bytef*>(out.data()) + stream.total_out;
        stream.avail_out = clampToUInt(out.size() - static_cast<qsizetype>(stream.total_out));
        const int status = inflate(&stream, Z_SYNC_FLUSH);
        if (status == Z_STREAM_END) {
            if (inflateEnd(&stream) != Z_OK || stream.total_out > static_cast<uLong>(maxOutput))
                return std::nullopt;
            out.truncate(static_cast<qsizetype>(stream.total_out));
            return out;
        }
        if (status != Z_OK)
            break;
    }
    inflateEnd(&stream);
    return std::nullopt;
}

QString base64EncodedString(const QByteArray& data)
{
    const QByteArray flat = data.toBase64();
    QString text;
    text.reserve(flat.size() + flat.size() / kBase64LineLength * 2);
    for (qsizetype i = 0; i < flat.size(); i += kBase64LineLength) {
        if (i > 0)
            text += QLatin1String("\r\n");
        text += QLatin1String(flat.mid(i, kBase64LineLength));
    }
    return text;
}

QByteArray dataFromBase64String(const QString& text)
{
    // Every character outside the standard alphabet is skipped: line breaks, blanks and the
    // "=" padding alike. A final group of two or three characters gives one or two bytes.
    QByteArray out;
    out.reserve(text.size() * 3 / 4);
    quint32 bits = 0;
    int count = 0;
    for (QChar c : text) {
        const char16_t u = c.unicode();
        int value;
        if (u >= 'A' && u <= 'Z')
            value = u - 'A';
        else if (u >= 'a' && u <= 'z')
            value = u - 'a' + 26;
        else if (u >= '0' && u <= '9')
            value = u - '0' + 52;
        else if (u == '+')
            value = 62;
        else if (u == '/')
            value = 63;
        else
            continue;
        bits = (bits << 6) | quint32(value);
        if (++count == 4) {
            out.append(char(bits >> 16));
            out.append(char(bits >> 8));
            out.append(char(bits));
            bits = 0;
            count = 0;
        }
    }
    if (count == 2) {
        out.append(char(bits >> 4));
    } else if (count == 3) {
        out.append(char(bits >> 10));
        out.append(char(bits >> 2));
    }
    return out;
}

QString zlibDeflateString(const QString& text)
{
    if (text.isNull())
        return {};
    const auto compressed = zlibDeflate(text.toUtf8());
    if (!compressed)
        return {};
    QString encoded = base64EncodedString(*compressed);
    return encoded.isNull() ? QString(QLatin1String("")) : encoded;
}

QString zlibInflateString(const QString& text, qsizetype maxOutput)
{
    if (text.isNull())
        return {};
    const auto bytes = zlibInflate(dataFromBase64String(text), maxOutput);
    if (!bytes)
        return {};
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString decoded = decoder.decode(*bytes);
    if (decoder.hasError())
        return {};
    return decoded.isNull() ? QString(QLatin1String("")) : decoded;
}

} // namespace foundation
