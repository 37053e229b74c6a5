#pragma once

#include <QJsonObject>
#include <QString>

#include <ostream>

// Readable failure messages for Qt values.
inline void PrintTo(const QString& text, std::ostream* os)
{
    *os << '"' << text.toStdString() << '"';
}
