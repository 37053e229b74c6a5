#pragma once

#include <QByteArray>
#include <QString>
#include <QVariantMap>

// Query and form strings and multipart bodies.
namespace http {

// Percent-encodes (UTF-8, upper-case hex) everything but ASCII letters, digits, "-", "." and
// "_". Not idempotent: a "%" is escaped again.
QString URLEscaped(const QString& text);
// Reverses every percent escape.
QString unURLEscape(const QString& text);
// "k=v&k=v" in key order: only string values, escaped; keys as they are.
QString paramsFromDict(const QVariantMap& params);
// The same with every value, through its text form.
QString toURLarguments(const QVariantMap& params);

inline constexpr char kMultipartBoundary[] = "trevally-mp-sep";
QByteArray multipartContentType();
// Every parameter is followed by a full separator; the file part, when a name and bytes are
// given, is always called "<name>.jpg" with type image/jpg.
QByteArray multipartBody(const QVariantMap& params, const QString& fileName,
                         const QByteArray& fileData);

} // namespace http
