#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>

// Elements of an XML answer selected by an XPath, with their attributes. The parser never
// touches the network, never loads a DTD or an external entity, and stops at the first
// document type or entity declaration, in whatever encoding the document comes. Such answers,
// answers larger than kMaxXmlSize, and malformed or too deeply nested ones select nothing.
namespace xmlanswer {

inline constexpr qsizetype kMaxXmlSize = 4 * 1024 * 1024;

struct Element {
    QMap<QString, QString> attributes;
};

// error receives a short reason when the document cannot be parsed.
QList<Element> select(const QByteArray& xml, const char* xpath, QString* error = nullptr);

} // namespace xmlanswer
