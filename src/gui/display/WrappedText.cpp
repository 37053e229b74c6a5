#include "display/WrappedText.h"

#include <QGlyphRun>
#include <QPainter>
#include <QRawFont>
#include <QTextOption>

#include <algorithm>
#include <cmath>

WrappedText::WrappedText(const QString& text, const QFont& font, double width, int maxLines,
                         double maxHeight)
    : m_layout(std::make_unique<QTextLayout>(text, font))
    , m_width(std::max(0.0, width))
{
    QTextOption option(Qt::AlignHCenter);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_layout->setTextOption(option);
    m_layout->setCacheEnabled(true);
    double height = 0;
    double widest = 0;
    m_layout->beginLayout();
    for (;;) {
        if (maxLines > 0 && m_lines >= maxLines)
            break;
        QTextLine line = m_layout->createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(m_width);
        if (maxHeight > 0 && m_lines > 0 && height + line.height() > maxHeight + 0.5)
            break; // laid out, but never drawn
        line.setPosition({0, height});
        height += line.height();
        widest = std::max(widest, line.naturalTextWidth());
        ++m_lines;
    }
    m_layout->endLayout();
    m_size = {std::ceil(std::min(widest, m_width)), std::ceil(height)};
}

QPointF WrappedText::origin(const QRectF& rect) const
{
    // Lines are centred in m_width; the block is centred in the rectangle, or starts at its
    // top when it does not fit, so that its first lines show.
    return {rect.x() + (rect.width() - m_width) * 0.5,
            rect.y() + std::max(0.0, (rect.height() - m_size.height()) * 0.5)};
}

void WrappedText::draw(QPainter& painter, const QRectF& rect, const QColor& color) const
{
    painter.save();
    painter.setPen(color);
    const QPointF at = origin(rect);
    for (int i = 0; i < m_lines; ++i)
        m_layout->lineAt(i).draw(&painter, at);
    painter.restore();
}

QPainterPath WrappedText::path(const QRectF& rect) const
{
    QPainterPath path;
    const QPointF at = origin(rect);
    for (int i = 0; i < m_lines; ++i) {
        const QTextLine line = m_layout->lineAt(i);
        for (const QGlyphRun& run : line.glyphRuns()) {
            const QRawFont font = run.rawFont();
            const auto indexes = run.glyphIndexes();
            const auto positions = run.positions();
            for (qsizetype g = 0; g < indexes.size(); ++g)
                path.addPath(font.pathForGlyph(indexes[g]).translated(at + positions[g]));
        }
    }
    return path;
}
