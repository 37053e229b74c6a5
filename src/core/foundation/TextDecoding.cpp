#include "core/foundation/TextDecoding.h"

#include <QStringDecoder>

#include <algorithm>

namespace foundation {

std::optional<QString> decodeText(const QByteArray& bytes, std::uint64_t encoding, QString* error)
{
    std::optional<QStringConverter::Encoding> qtEncoding;
    switch (encoding) {
    case 1: // ASCII is a subset of UTF-8; a byte above 127 is an error there too
    case kUTF8Encoding:
        qtEncoding = QStringConverter::Utf8;
        break;
    case 5:
        qtEncoding = QStringConverter::Latin1;
        break;
    case 10:
        qtEncoding = QStringConverter::Utf16;
        break;
    default:
        break;
    }
    if (!qtEncoding) {
        if (error)
            *error = QStringLiteral("The text encoding %1 is not supported.").arg(encoding);
        return std::nullopt;
    }
    QStringDecoder decoder(*qtEncoding);
    QString text = decoder.decode(bytes);
    const bool notAscii =
        encoding == 1 && std::any_of(bytes.begin(), bytes.end(), [](char c) { return c & 0x80; });
    if (decoder.hasError() || notAscii) {
        if (error)
            *error = QStringLiteral("The file is not valid text in the expected encoding.");
        return std::nullopt;
    }
    return text.isNull() ? QString(QLatin1String("")) : text;
}

} // namespace foundation
