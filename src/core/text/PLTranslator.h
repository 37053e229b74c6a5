#pragma once

#include <QString>
#include <QUrl>
#include <QVariantMap>

inline const QString PLLangChineseSimplified = QStringLiteral("zh-cn");
inline const QString PLLangChineseTradition = QStringLiteral("zh-tw");
inline const QString PLLangEnglish = QStringLiteral("en");
inline const QString PLLangJapanese = QStringLiteral("ja");

// Request addresses for the online translation service and the reading of its JSON answer.
// No networking here: callers fetch the address and hand the body back.
class PLTranslator {
public:
    static const QString kDetails;                // "kPLT_DETAILS"
    static const QString kStatus;                 // "kPLT_STATUS"
    static const QString kTranslatedText;         // "kPLT_TranslatedText"
    static const QString kDetectedSourceLanguage; // "kPLT_DetectedSourceLanguage"

    // A null fromLang asks the service to detect the language. A null text or target is a
    // programming error: reported, and an empty URL is answered.
    static QUrl URLforText(const QString& text, const QString& fromLang, const QString& toLang,
                           const QString& host);
    // The same address as text, exactly as formatted ("%7c" stays lower-case; QUrl would
    // normalise it). Null on the same programming errors.
    static QString addressForText(const QString& text, const QString& fromLang,
                                  const QString& toLang, const QString& host);
    // The four values in the order details, status, text, detected language, ending at the
    // first one missing from the answer. JSON null is a value: a QVariant holding nullptr.
    static QVariantMap TranslationFromResponse(const QString& body);
    static QVariant TranslatedTextFromResponse(const QString& body);
};
