#include "core/http/HttpForms.h"

#include <QUrl>

namespace http {

QString URLEscaped(const QString& text)
{
    // toPercentEncoding keeps "-._~" by default; "~" is escaped here as well.
    return QString::fromLatin1(QUrl::toPercentEncoding(text, QByteArray(), "~"));
}

QString unURLEscape(const QString& text)
{
    return QUrl::fromPercentEncoding(text.toUtf8());
}

namespace {
QString join(const QVariantMap& params, bool stringsOnly)
{
    QStringList pairs;
    for (auto it = params.constBegin(); it != params.constEnd(); ++it) {
        if (stringsOnly && it->typeId() != QMetaType::QString)
            continue;
        pairs << it.key() + u'=' + URLEscaped(it->toString());
    }
    return pairs.join(u'&');
}
} // namespace

QString paramsFromDict(const QVariantMap& params)
{
    return join(params, true);
}

QString toURLarguments(const QVariantMap& params)
{
    return join(params, false);
}

QByteArray multipartContentType()
{
    return QByteArray("multipart/form-data; boundary=") + kMultipartBoundary;
}

QByteArray multipartBody(const QVariantMap& params, const QString& fileName,
                         const QByteArray& fileData)
{
    const QString boundary = QLatin1String(kMultipartBoundary);
    QString text = QStringLiteral("--%1\r\n").arg(boundary);
    for (auto it = params.constBegin(); it != params.constEnd(); ++it) {
        text += QStringLiteral("Content-Disposition: form-data; name=\"%1\"\r\n\r\n").arg(it.key());
        text += it->toString();
        text += QStringLiteral("\r\n--%1\r\n").arg(boundary);
    }
    const bool withFile = !fileName.isNull() && !fileData.isNull();
    if (withFile) {
        text +=
            QStringLiteral("Content-Disposition: form-data; name=\"%1\"; filename=\"%1.jpg\"\r\n")
                .arg(fileName);
        text += QStringLiteral("Content-Type: image/jpg\r\n\r\n");
    }
    QByteArray body = text.toUtf8();
    if (withFile)
        body += fileData;
    body += QStringLiteral("\r\n--%1--\r\n").arg(boundary).toUtf8();
    return body;
}

} // namespace http
