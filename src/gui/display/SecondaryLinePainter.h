#pragma once

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>

class QPainter;

// The smaller line drawn under a lyric line (its translation or its reading): centred in its
// rectangle, wrapped at words, a little dimmer than its line.
namespace secondarypaint {

// The text as laid out: each line under the line on a line of its own.
QString laidOut(const QString& text);
// The colour of the line under a line drawn in color.
QColor dimmed(const QColor& color);
void draw(QPainter& painter, const QString& text, const QFont& font, const QRectF& rect,
          const QColor& color);

} // namespace secondarypaint
