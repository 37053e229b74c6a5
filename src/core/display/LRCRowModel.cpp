#include "display/LRCRowModel.h"

#include "display/TextMeasurer.h"
#include "foundation/StringAdditions.h"
#include "lyric/Lyric.h"

#include <algorithm>
#include <cmath>

namespace {
// Beyond this many distinct texts the memo starts again, so a stream of lyrics cannot grow it.
constexpr qsizetype kMaxMeasured = 20000;
} // namespace

LRCRowModel::LRCRowModel(const TextMeasurer& measurer)
    : m_measurer(measurer)
    , m_font(QFont())
{
    m_font.setPointSizeF(16);
}

void LRCRowModel::setFont(const QFont& font)
{
    if (font == m_font)
        return;
    m_font = font;
    m_measured.clear();
}

void LRCRowModel::setViewSize(QSizeF size)
{
    if (size == m_viewSize)
        return;
    m_viewSize = size;
    m_measured.clear();
}

int LRCRowModel::lineCount() const
{
    return m_parser ? m_parser->lines() : 0;
}

int LRCRowModel::realIndexTrimFromRow(int row) const
{
    if (row < m_placeHolderCnt || row >= lineCount() + m_placeHolderCnt)
        return -1;
    return row - m_placeHolderCnt;
}

QString LRCRowModel::textOfRow(int row) const
{
    const int index = realIndexTrimFromRow(row);
    const LRCItem* item = index < 0 || !m_parser ? nullptr : m_parser->lrcItemAtIndex(index);
    return item ? item->content() : QStringLiteral("");
}

double LRCRowModel::measuredTextHeight(const QString& content) const
{
    const auto found = m_measured.constFind(content);
    if (found != m_measured.cend())
        return *found;
    // A line without text measures nothing; real text is measured with "aa" appended, so that
    // a line that only just fits in measurement still fits when drawn.
    const double h =
        foundation::isNonEmpty(content)
            ? m_measurer.sizeWithFont(content + QStringLiteral("aa"), m_font, m_viewSize).height()
            : 0.0;
    if (m_measured.size() >= kMaxMeasured)
        m_measured.clear();
    m_measured.insert(content, h);
    return h;
}

double LRCRowModel::heightOfCell(int row) const
{
    if (realIndexTrimFromRow(row) < 0)
        return m_viewSize.height() * 0.5;
    double h = measuredTextHeight(textOfRow(row));
    if (h < 1.0)
        h = m_measurer.lineHeight(m_font) * 0.5;
    return std::trunc(m_cellPadding + h);
}

void LRCRowModel::reloadData()
{
    const int rows = numberOfRows();
    m_heights.resize(std::size_t(rows));
    m_tops.resize(std::size_t(rows));
    double top = 0;
    for (int row = 0; row < rows; ++row) {
        const double height = std::max(0.0, heightOfCell(row));
        m_heights[std::size_t(row)] = height;
        m_tops[std::size_t(row)] = top;
        top += height;
    }
    m_contentHeight = top;
}

double LRCRowModel::heightForRow(int row) const
{
    if (row < 0 || std::size_t(row) >= m_heights.size())
        return 0;
    return m_heights[std::size_t(row)];
}

QRectF LRCRowModel::rectForRow(int row) const
{
    if (row < 0 || std::size_t(row) >= m_heights.size())
        return {};
    return {0, m_tops[std::size_t(row)], m_viewSize.width(), m_heights[std::size_t(row)]};
}

int LRCRowModel::rowAtY(double y) const
{
    if (m_tops.empty() || y < 0 || y >= m_contentHeight)
        return -1;
    const auto after = std::upper_bound(m_tops.begin(), m_tops.end(), y);
    return int(after - m_tops.begin()) - 1;
}

double LRCRowModel::offsetForRowAtMiddle(int row) const
{
    const QRectF rect = rectForRow(row);
    const double wanted = rect.y() + rect.height() * 0.5 - m_viewSize.height() * 0.5;
    const double maximum = std::max(0.0, m_contentHeight - m_viewSize.height());
    return std::clamp(wanted, 0.0, maximum);
}
