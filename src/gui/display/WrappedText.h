#pragma once

#include <QFont>
#include <QPainterPath>
#include <QRectF>
#include <QString>
#include <QTextLayout>

#include <memory>

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

private:
    QPointF origin(const QRectF& rect) const;

    std::unique_ptr<QTextLayout> m_layout;
    int m_lines = 0;
    QSizeF m_size;
    double m_width = 0;
};
