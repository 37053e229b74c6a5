#include "core/foundation/StringAdditions.h"

#include <cmath>

namespace foundation {

namespace {
bool isBlank(QChar c)
{
    return c.isSpace() || c == QChar(0x2028) || c == QChar(0x2029);
}

bool trimsToNothing(const QString& text)
{
    for (QChar c : text) {
        if (!isBlank(c))
            return false;
    }
    return true;
}
} // namespace

bool isEmpty(const QString& text)
{
    return !text.isNull() && trimsToNothing(text);
}

bool isNonEmpty(const QString& text)
{
    return !text.isNull() && !trimsToNothing(text);
}

bool isNonEmpty(const QVariant& number)
{
    if (!number.isValid() || number.isNull())
        return false;
    bool ok = false;
    const double value = number.toDouble(&ok);
    return ok && std::trunc(value) != 0.0;
}

} // namespace foundation
