#pragma once

#include <QFont>
#include <QHash>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include "core/display/LineReadings.h"
#include "core/display/RowHeights.h"

#include <functional>
#include <memory>
#include <vector>

class Lyric;
class TextMeasurer;

// The scrolling view's rows: blank padding rows above and below the lyric's lines, their
// heights and rectangles in content coordinates. Heights are recomputed on every reload from
// text measurements, which are remembered per text while the font and the view's size stay
// the same. A lyric of up to kMeasuredAtOnce lines is measured whole by the reload; a longer
// one starts from one line's height per row and each row is measured when it, or a row within
// a view's height of it, is first asked for, so installing 200,000 lines measures a screenful.
class LRCRowModel {
public:
    static constexpr int kMeasuredAtOnce = 500;
    // The secondary line's size against the row's font.
    static constexpr double kSecondaryScale = 0.7;

    explicit LRCRowModel(const TextMeasurer& measurer);

    // Not owned: the caller keeps the lyric alive while it is set (or sets another).
    void setParser(Lyric* parser) { m_parser = parser; }
    Lyric* parser() const { return m_parser; }
    int placeHolderCnt() const { return m_placeHolderCnt; }
    const QFont& font() const { return m_font; }
    void setFont(const QFont& font);
    int cellPadding() const { return m_cellPadding; }
    void setCellPadding(int padding) { m_cellPadding = padding; }
    QSizeF viewSize() const { return m_viewSize; }
    void setViewSize(QSizeF size);

    int lineCount() const;
    int numberOfRows() const { return lineCount() + 2 * m_placeHolderCnt; }
    // A translation line shown under its line answers that line's row.
    int rowIndexFromLRCindex(int index) const { return ownerOf(index) + m_placeHolderCnt; }
    // Where each reload takes how the lines read (none: as their content).
    using ReadingsSource = std::function<std::shared_ptr<const LineReadings>(const Lyric*)>;
    void setReadingsSource(ReadingsSource source) { m_readingsSource = std::move(source); }
    int ownerOf(int index) const { return m_readings ? m_readings->ownerOf(index) : index; }
    // The smaller line drawn under the row's text ("" for none), its font, and its height
    // (included in the row's).
    QString secondaryTextOfRow(int row) const;
    QFont secondaryFont() const;
    double secondaryHeightOfRow(int row) const;
    int realIndexTrimFromRow(int row) const;
    // The row's text: the line's content as it reads, or "" for a padding row.
    QString textOfRow(int row) const;

    // Recomputes every row's height and top from the present lyric, font and view size.
    void reloadData();
    // Rows whose height is still the one-line estimate of a long lyric.
    int unmeasuredRows() const { return m_unmeasured; }
    // The height as last reloaded or measured (0 for a row that does not exist).
    double heightForRow(int row) const;
    // The height computed afresh: half the view for a padding row; otherwise cellPadding plus
    // the measured height of the line followed by "aa" (half the font's line height for a
    // line without text) and of its secondary line, truncated to whole points; 0 for a line
    // shown under another.
    double heightOfCell(int row) const;
    QRectF rectForRow(int row) const;
    // Measures the rows within a view's height of the row, so that an offset computed for it
    // stays right while the view shows it (a no-op once every row is measured).
    void measureAround(int row) const;
    double contentHeight() const { return m_rows.total(); }
    // The row whose rectangle holds the content point's y, or -1.
    int rowAtY(double y) const;
    // The content offset that puts the row's centre at the view's centre, kept inside the
    // content as a list does when scrolling a row to the middle (rows around measured first).
    double offsetForRowAtMiddle(int row) const;

private:
    double measuredTextHeight(const QString& content) const;
    void measure(int row) const;

    const TextMeasurer& m_measurer;
    Lyric* m_parser = nullptr;
    ReadingsSource m_readingsSource;
    std::shared_ptr<const LineReadings> m_readings;
    const int m_placeHolderCnt = 1;
    QFont m_font;
    int m_cellPadding = 5;
    QSizeF m_viewSize;
    // Measuring on demand changes heights from const accessors.
    mutable RowHeights m_rows;
    mutable std::vector<bool> m_known;
    mutable int m_unmeasured = 0;
    mutable QHash<QString, double> m_measured; // text -> measured height, for m_font and size
};
