#pragma once

#include "core/display/KaraokeLine.h"

#include <QFont>
#include <QPainterPath>
#include <QRectF>
#include <QString>
#include <QTextLayout>

#include <memory>
#include <vector>

class QPainter;

// Text laid out once, wrapped at words (anywhere inside a word too long for the width),
// centred line by line; drawn filled or as an outline path, centred vertically in a rectangle.
class WrappedText {
public:
    // At most maxLines lines (0: any number), and only the lines that fit in maxHeight
    // (0: any height; the first line always counts).
    WrappedText(const QString& text, const QFont& font, double width, int maxLines = 0,
                double maxHeight = 0);

    QSizeF size() const { return m_size; }
    void draw(QPainter& painter, const QRectF& rect, const QColor& color) const;
    QPainterPath path(const QRectF& rect) const;
    // The drawn lines as placed in rect, each spanning rect's width, and the x of the place
    // before character index on one of them: what the karaoke fill is measured against.
    std::vector<KaraokeTextLine> lineBoxes(const QRectF& rect) const;
    double caretX(int line, qsizetype index, const QRectF& rect) const;

private:
    QPointF origin(const QRectF& rect) const;

    std::unique_ptr<QTextLayout> m_layout;
    int m_lines = 0;
    QSizeF m_size;
    double m_width = 0;
};
