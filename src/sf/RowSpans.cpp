#include "sf/RowSpans.h"

namespace sf {

namespace {

int lowBit(int index) {
    return index & -index;
}

} // namespace

void RowSpans::clear() {
    m_spans.clear();
    m_tree.clear();
    m_total = 0;
}

void RowSpans::reserve(int rows) {
    if (rows > 0) {
        m_spans.reserve(static_cast<std::size_t>(rows));
        m_tree.reserve(static_cast<std::size_t>(rows));
    }
}

void RowSpans::append(int span) {
    const int index = count() + 1; // 1-based position of the new row in the tree
    // The new node sums the rows (index - lowbit(index)) .. index - 1: the new row and
    // the rows before it that the node covers.
    const int node = span + offset(index - 1) - offset(index - lowBit(index));
    m_spans.push_back(span);
    m_tree.push_back(node);
    m_total += span;
}

void RowSpans::set(int row, int span) {
    if (row < 0 || row >= count())
        return;
    const int delta = span - m_spans[static_cast<std::size_t>(row)];
    if (delta == 0)
        return;
    m_spans[static_cast<std::size_t>(row)] = span;
    m_total += delta;
    for (int index = row + 1; index <= count(); index += lowBit(index))
        m_tree[static_cast<std::size_t>(index - 1)] += delta;
}

int RowSpans::span(int row) const {
    if (row < 0 || row >= count())
        return 0;
    return m_spans[static_cast<std::size_t>(row)];
}

int RowSpans::offset(int row) const {
    if (row > count())
        row = count();
    int sum = 0;
    for (int index = row; index > 0; index -= lowBit(index))
        sum += m_tree[static_cast<std::size_t>(index - 1)];
    return sum;
}

int RowSpans::rowAt(int position) const {
    if (position < 0 || position >= m_total)
        return -1;
    int step = 1;
    while (step * 2 <= count())
        step *= 2;
    // Find the most rows whose heights add up to no more than position: the next row
    // covers it.
    int rows = 0;
    int rest = position;
    for (; step > 0; step /= 2) {
        const int next = rows + step;
        if (next <= count() && m_tree[static_cast<std::size_t>(next - 1)] <= rest) {
            rows = next;
            rest -= m_tree[static_cast<std::size_t>(next - 1)];
        }
    }
    return rows;
}

} // namespace sf
