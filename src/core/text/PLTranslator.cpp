#include "core/text/PLTranslator.h"

#include "core/foundation/Assertion.h"

#include <QJsonDocument>
#include <QJsonObject>

const QString PLTranslator::kDetails = QStringLiteral("kPLT_DETAILS");
const QString PLTranslator::kStatus = QStringLiteral("kPLT_STATUS");
const QString PLTranslator::kTranslatedText = QStringLiteral("kPLT_TranslatedText");
const QString PLTranslator::kDetectedSourceLanguage = QStringLiteral("kPLT_DetectedSourceLanguage");

QUrl PLTranslator::URLforText(const QString& text, const QString& fromLang, const QString& toLang,
                              const QString& host)
{
    const QString address = addressForText(text, fromLang, toLang, host);
    return address.isNull() ? QUrl() : QUrl::fromEncoded(address.toUtf8(), QUrl::StrictMode);
}

QString PLTranslator::addressForText(const QString& text, const QString& fromLang,
                                     const QString& toLang, const QString& host)
{
    if (toLang.isNull()) {
        foundation::assertionFailure(QStringLiteral("target Language can't be nil!"));
        return {};
    }
    if (text.isNull()) {
        foundation::assertionFailure(QStringLiteral("translation text can't be nil!"));
        return {};
    }
    // Characters that may not stand in an address are escaped; reserved ones such as "&" and
    // "=" stay as they are.
    const QByteArray escaped = QUrl::toPercentEncoding(text, ":/?#[]@!$&'()*+,;=");
    return QStringLiteral("http://%1/ajax/services/language/translate?v=1.0&q=%2&langpair=%3%7c%4")
        .arg(host, QString::fromLatin1(escaped), fromLang, toLang);
}

QVariantMap PLTranslator::TranslationFromResponse(const QString& body)
{
    const QJsonObject root = QJsonDocument::fromJson(body.toUtf8()).object();
    const QJsonObject data = root.value(QLatin1String("responseData")).toObject();
    const std::pair<const QString*, QJsonValue> pairs[] = {
        {&kDetails, root.value(QLatin1String("responseDetails"))},
        {&kStatus, root.value(QLatin1String("responseStatus"))},
        {&kTranslatedText, data.value(QLatin1String("translatedText"))},
        {&kDetectedSourceLanguage, data.value(QLatin1String("detectedSourceLanguage"))}};
    QVariantMap result;
    for (const auto& [key, value] : pairs) {
        if (value.isUndefined())
            break; // the list ends at the first missing value
        result.insert(*key, value.isNull() ? QVariant::fromValue(nullptr) : value.toVariant());
    }
    return result;
}

QVariant PLTranslator::TranslatedTextFromResponse(const QString& body)
{
    return TranslationFromResponse(body).value(kTranslatedText);
}
