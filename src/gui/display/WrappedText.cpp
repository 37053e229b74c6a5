#include "gui/display/WrappedText.h"

#include <QGlyphRun>
#include <QPainter>
#include <QRawFont>
#include <QTextOption>

#include <QHash>

#include <algorithm>
#include <cmath>

namespace {

// Glyph outlines by font and glyph. Asking the font engine for an outline runs the font's
// hinting program each time, the main cost of drawing an outlined line, while lyrics reuse a
// few hundred glyphs. The fonts are named, not held, so nothing outlives the application's.
class OutlineMemo {
public:
    explicit OutlineMemo(const QRawFont& font)
        : m_font(font)
        , m_outlines(memo()[QStringList{
              font.familyName(), font.styleName(), QString::number(font.pixelSize()),
              QString::number(font.weight()), QString::number(int(font.style())),
              QString::number(int(font.hintingPreference()))}
                                .join(QLatin1Char('|'))])
    {
    }

    QPainterPath outline(quint32 glyph)
    {
        const auto found = m_outlines.constFind(glyph);
        if (found != m_outlines.cend())
            return *found;
        if (m_outlines.size() >= 4096) // a CJK lyric may use thousands: keep it bounded
            m_outlines.clear();
        return *m_outlines.insert(glyph, m_font.pathForGlyph(glyph));
    }

    // Bounded: beyond this many fonts the memo starts again.
    static void trim()
    {
        if (memo().size() > 16)
            memo().clear();
    }

private:
    static QHash<QString, QHash<quint32, QPainterPath>>& memo()
    {
        static QHash<QString, QHash<quint32, QPainterPath>> outlines;
        return outlines;
    }

    const QRawFont& m_font;
    QHash<quint32, QPainterPath>& m_outlines;
};

} // namespace

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
    OutlineMemo::trim();
    const QPointF at = origin(rect);
    for (int i = 0; i < m_lines; ++i) {
        const QTextLine line = m_layout->lineAt(i);
        for (const QGlyphRun& run : line.glyphRuns()) {
            const QRawFont font = run.rawFont();
            OutlineMemo outlines(font);
            const auto indexes = run.glyphIndexes();
            const auto positions = run.positions();
            for (qsizetype g = 0; g < indexes.size(); ++g)
                path.addPath(outlines.outline(indexes[g]).translated(at + positions[g]));
        }
    }
    return path;
}

std::vector<KaraokeTextLine> WrappedText::lineBoxes(const QRectF& rect) const
{
    std::vector<KaraokeTextLine> boxes;
    const QPointF at = origin(rect);
    for (int i = 0; i < m_lines; ++i) {
        const QTextLine line = m_layout->lineAt(i);
        boxes.push_back({line.textStart(), line.textStart() + line.textLength(),
                         QRectF(rect.left(), at.y() + line.y(), rect.width(), line.height())});
    }
    return boxes;
}

double WrappedText::caretX(int line, qsizetype index, const QRectF& rect) const
{
    if (line < 0 || line >= m_lines)
        return rect.left();
    const QTextLine text = m_layout->lineAt(line);
    return origin(rect).x() + text.cursorToX(int(index));
}
