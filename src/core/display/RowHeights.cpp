#include "core/display/RowHeights.h"

#include <bit>

void RowHeights::assign(std::vector<double> heights)
{
    m_heights = std::move(heights);
    const std::size_t n = m_heights.size();
    m_tree.assign(n + 1, 0.0);
    m_total = 0;
    for (std::size_t i = 1; i <= n; ++i) {
        m_tree[i] += m_heights[i - 1];
        m_total += m_heights[i - 1];
        const std::size_t parent = i + (i & (~i + 1));
        if (parent <= n)
            m_tree[parent] += m_tree[i];
    }
}

void RowHeights::setHeight(std::size_t row, double height)
{
    const double delta = height - m_heights[row];
    if (delta == 0)
        return;
    m_heights[row] = height;
    m_total += delta;
    for (std::size_t i = row + 1; i < m_tree.size(); i += i & (~i + 1))
        m_tree[i] += delta;
}

double RowHeights::top(std::size_t row) const
{
    double sum = 0;
    for (std::size_t i = row; i > 0; i -= i & (~i + 1))
        sum += m_tree[i];
    return sum;
}

std::size_t RowHeights::rowAt(double y) const
{
    // Descend to the largest count of leading rows whose heights sum to at most y.
    std::size_t count = 0;
    double sum = 0;
    for (std::size_t step = std::bit_floor(m_heights.size()); step > 0; step >>= 1) {
        const std::size_t next = count + step;
        if (next < m_tree.size() && sum + m_tree[next] <= y) {
            count = next;
            sum += m_tree[next];
        }
    }
    return count;
}
