#pragma once

#include <QString>
#include <QVariant>

// A null QString stands for an absent string. Asking an absent value anything answers no, so
// an absent string is neither empty nor non-empty; callers depend on that at many places.
namespace foundation {

// True when the string, trimmed of white space and line breaks, has no characters left.
bool isEmpty(const QString& text);
bool isNonEmpty(const QString& text);
// A number is non-empty when its integer value is not 0; an invalid variant is absent.
bool isNonEmpty(const QVariant& number);

} // namespace foundation
