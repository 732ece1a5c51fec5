#pragma once

#include <vector>

namespace sf {

// The heights of a list of rows (each 0 or more) with running offsets: the position of a
// row and the row at a position in O(log n), a height changed in O(log n), a row appended
// in O(log n). Used by Category to turn literal rows into table rows and back.
class RowSpans {
public:
    void clear();
    void reserve(int rows);
    int count() const { return static_cast<int>(m_spans.size()); }
    int total() const { return m_total; }

    void append(int span);
    // Changes one row's height; ignored for a row that does not exist.
    void set(int row, int span);
    // Height of a row, 0 for a row that does not exist.
    int span(int row) const;
    // Sum of the heights of the rows before `row` (clamped to 0 .. count()).
    int offset(int row) const;
    // The row covering `position` (a row of height 0 covers nothing); -1 outside 0 .. total() - 1.
    int rowAt(int position) const;

private:
    std::vector<int> m_spans;
    std::vector<int> m_tree; // Fenwick tree: m_tree[i - 1] sums rows (i - lowbit(i)) .. i - 1
    int m_total = 0;
};

} // namespace sf
