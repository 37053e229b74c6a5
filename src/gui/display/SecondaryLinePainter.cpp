#include "gui/display/SecondaryLinePainter.h"

#include "gui/display/WrappedText.h"

#include <QPainter>

namespace secondarypaint {

QString laidOut(const QString& text)
{
    QString out = text;
    out.replace(QLatin1Char('\n'), QChar::LineSeparator);
    return out;
}

QColor dimmed(const QColor& color)
{
    QColor c = color;
    c.setAlphaF(color.alphaF() * 0.85f);
    return c;
}

void draw(QPainter& painter, const QString& text, const QFont& font, const QRectF& rect,
          const QColor& color)
{
    if (text.trimmed().isEmpty() || rect.isEmpty())
        return;
    WrappedText(laidOut(text), font, rect.width(), 0, rect.height())
        .draw(painter, rect, dimmed(color));
}

} // namespace secondarypaint
