#pragma once

#include <cstddef>
#include <vector>

// Row heights with their running tops, for lists of any length: changing one height, finding a
// row's top and finding the row under a point each cost O(log n) (a Fenwick tree), so a list
// of 200,000 rows can refine its heights one by one as they are measured.
class RowHeights {
public:
    void assign(std::vector<double> heights);
    std::size_t size() const { return m_heights.size(); }
    double height(std::size_t row) const { return m_heights[row]; }
    void setHeight(std::size_t row, double height);
    // The sum of the heights of the rows before row.
    double top(std::size_t row) const;
    double total() const { return m_total; }
    // The last row whose top is at or above y (rows of no height before it are passed over);
    // y must lie within [0, total()).
    std::size_t rowAt(double y) const;

private:
    std::vector<double> m_heights;
    std::vector<double> m_tree; // 1-based partial sums
    double m_total = 0;
};
