#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// The compressed text form of the track-tag lyric block: UTF-8 bytes, zlib-compressed at the
// default level, then Base64 in lines of 64 characters separated by CR LF.
namespace foundation {

// Inflating stops, and fails, once the output would exceed this many bytes: a lyric is a few
// kilobytes, so anything near this is hostile or corrupt.
inline constexpr qsizetype kMaxInflatedSize = 16 * 1024 * 1024;

// Empty input is answered unchanged; nullopt when zlib cannot start.
std::optional<QByteArray> zlibDeflate(const QByteArray& data);
// Empty input is answered unchanged; nullopt for anything but a complete zlib stream,
// or when the output would pass maxOutput bytes.
std::optional<QByteArray> zlibInflate(const QByteArray& data,
                                      qsizetype maxOutput = kMaxInflatedSize);

QString base64EncodedString(const QByteArray& data);
// Accepts the line-broken form: every character outside the alphabet is skipped.
QByteArray dataFromBase64String(const QString& text);

// String forms: a null QString answers "absent" (a failed step); "" is a valid result.
QString zlibDeflateString(const QString& text);
QString zlibInflateString(const QString& text, qsizetype maxOutput = kMaxInflatedSize);

} // namespace foundation
