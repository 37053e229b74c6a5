#include "core/display/LRCRowModel.h"

#include "core/display/TextMeasurer.h"
#include "core/foundation/StringAdditions.h"
#include "core/lyric/Lyric.h"

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
    if (!item)
        return QStringLiteral("");
    return m_readings ? m_readings->textOf(index, item->content()) : item->content();
}

QString LRCRowModel::secondaryTextOfRow(int row) const
{
    const int index = realIndexTrimFromRow(row);
    return index < 0 || !m_readings ? QString() : m_readings->secondaryOf(index);
}

QFont LRCRowModel::secondaryFont() const
{
    QFont font = m_font;
    if (font.pixelSize() > 0)
        font.setPixelSize(std::max(1, int(std::round(font.pixelSize() * kSecondaryScale))));
    else
        font.setPointSizeF(std::max(1.0, font.pointSizeF() * kSecondaryScale));
    return font;
}

double LRCRowModel::secondaryHeightOfRow(int row) const
{
    const QString text = secondaryTextOfRow(row);
    if (!foundation::isNonEmpty(text))
        return 0;
    // Remembered apart from the main texts, which are measured in the larger font.
    const QString key = QChar(1) + text;
    // Lines under a line are separate lines of the layout.
    QString laidOut = text;
    laidOut.replace(QLatin1Char('\n'), QChar::LineSeparator);
    const auto found = m_measured.constFind(key);
    if (found != m_measured.cend())
        return *found;
    const double h =
        std::ceil(m_measurer.sizeWithFont(laidOut, secondaryFont(), m_viewSize).height());
    if (m_measured.size() >= kMaxMeasured)
        m_measured.clear();
    m_measured.insert(key, h);
    return h;
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
    const int index = realIndexTrimFromRow(row);
    if (index < 0)
        return m_viewSize.height() * 0.5;
    if (ownerOf(index) != index)
        return 0;
    double h = measuredTextHeight(textOfRow(row));
    if (h < 1.0)
        h = m_measurer.lineHeight(m_font) * 0.5;
    return std::trunc(m_cellPadding + h + secondaryHeightOfRow(row));
}

void LRCRowModel::reloadData()
{
    m_readings = m_readingsSource && m_parser ? m_readingsSource(m_parser) : nullptr;
    const int rows = numberOfRows();
    const bool atOnce = lineCount() <= kMeasuredAtOnce;
    // One line of text: what most rows of a long lyric turn out to be.
    const double estimate = std::trunc(
        m_cellPadding + std::min(std::ceil(m_measurer.lineHeight(m_font)), m_viewSize.height()));
    std::vector<double> heights(std::size_t(rows), 0.0);
    m_known.assign(std::size_t(rows), atOnce);
    m_unmeasured = 0;
    for (int row = 0; row < rows; ++row) {
        if (atOnce || realIndexTrimFromRow(row) < 0) {
            heights[std::size_t(row)] = std::max(0.0, heightOfCell(row));
            m_known[std::size_t(row)] = true;
        } else {
            heights[std::size_t(row)] = std::max(0.0, estimate);
            ++m_unmeasured;
        }
    }
    m_rows.assign(std::move(heights));
}

void LRCRowModel::measure(int row) const
{
    if (m_known[std::size_t(row)])
        return;
    m_known[std::size_t(row)] = true;
    --m_unmeasured;
    m_rows.setHeight(std::size_t(row), std::max(0.0, heightOfCell(row)));
}

void LRCRowModel::measureAround(int row) const
{
    if (m_unmeasured == 0 || row < 0 || std::size_t(row) >= m_rows.size())
        return;
    // A view's height each way: whatever the view shows with the row at its middle, and the
    // rows a scroll to it passes, have their real heights before an offset is computed.
    const double reach = std::max(1.0, m_viewSize.height());
    measure(row);
    double covered = 0;
    for (int r = row - 1; r >= 0 && covered < reach; --r) {
        measure(r);
        covered += m_rows.height(std::size_t(r));
    }
    covered = 0;
    for (int r = row + 1; r < int(m_rows.size()) && covered < reach; ++r) {
        measure(r);
        covered += m_rows.height(std::size_t(r));
    }
}

double LRCRowModel::heightForRow(int row) const
{
    if (row < 0 || std::size_t(row) >= m_rows.size())
        return 0;
    measure(row);
    return m_rows.height(std::size_t(row));
}

QRectF LRCRowModel::rectForRow(int row) const
{
    if (row < 0 || std::size_t(row) >= m_rows.size())
        return {};
    // Measuring a row moves only the rows after it, never its own top.
    measure(row);
    return {0, m_rows.top(std::size_t(row)), m_viewSize.width(), m_rows.height(std::size_t(row))};
}

int LRCRowModel::rowAtY(double y) const
{
    if (m_rows.size() == 0 || y < 0 || y >= m_rows.total())
        return -1;
    auto row = m_rows.rowAt(y);
    // Measured, the row may end above y: the answer is then further down.
    while (!m_known[row]) {
        measure(int(row));
        if (y >= m_rows.total())
            return -1;
        row = m_rows.rowAt(y);
    }
    return int(row);
}

double LRCRowModel::offsetForRowAtMiddle(int row) const
{
    measureAround(row);
    const QRectF rect = rectForRow(row);
    const double wanted = rect.y() + rect.height() * 0.5 - m_viewSize.height() * 0.5;
    const double maximum = std::max(0.0, contentHeight() - m_viewSize.height());
    return std::clamp(wanted, 0.0, maximum);
}
