#pragma once

namespace sf {

class Category;
class Setting;

// One cell of a category's grid: the rows that one setting (or a filler that keeps the
// rows of the preset columns aligned) occupies in one preset column.
//
// Cells are linked four ways: left and right to the cells of the same row in the
// neighbouring columns, previous and next to the cells above and below in the same
// column. A cell owns the chain below it (its next cell) and holds one reference to its
// setting; the last reference dropped destroys the setting.
class CategoryIndex {
public:
    // The size is raised to at least 1 and the forced sub-index to at least -1. The links
    // are stored as given; neighbours are not changed. A content setting's reference
    // count is raised by one.
    CategoryIndex(int size, int forcedSubIndex, CategoryIndex* previous, CategoryIndex* next,
                  Setting* content);
    // Lowers the content's reference count (destroying the setting when no reference is
    // left), joins the left and right siblings to each other, detaches the cell from the
    // cell above, and destroys every cell below it (without recursion).
    ~CategoryIndex();

    CategoryIndex(const CategoryIndex&) = delete;
    CategoryIndex& operator=(const CategoryIndex&) = delete;

    int getSize() const { return m_size; }
    void setSize(int size) { m_size = size < 1 ? 1 : size; }
    int getForcedSubIndex() const { return m_forcedSubIndex; }

    CategoryIndex* getLeft() const { return m_left; }
    CategoryIndex* getRight() const { return m_right; }
    CategoryIndex* getPrevious() const { return m_previous; }
    CategoryIndex* getNext() const { return m_next; }
    void setLeft(CategoryIndex* cell) { m_left = cell; }
    void setRight(CategoryIndex* cell) { m_right = cell; }
    void setPrevious(CategoryIndex* cell) { m_previous = cell; }
    void setNext(CategoryIndex* cell) { m_next = cell; }

    Setting* getContent() const { return m_content; }
    bool isFiller() const { return m_content == nullptr; }

    // Whether the row this cell belongs to is unfolded. Every cell of a row carries the
    // row's state, fillers included.
    bool isExpanded() const { return m_expanded; }
    void setExpanded(bool expanded) { m_expanded = expanded; }

    // Sum of the sizes of all cells above this one in its column (0 for the first cell).
    // Counts every cell, whether its row is shown or not; Category::getIndexVirtual gives
    // the row as a table shows it. Walks the column: linear in the cells above.
    int getVirtualOffset() const;

private:
    friend class Category;

    int m_size;
    int m_forcedSubIndex;
    CategoryIndex* m_left = nullptr;
    CategoryIndex* m_right = nullptr;
    CategoryIndex* m_previous;
    CategoryIndex* m_next;
    Setting* m_content;
    bool m_expanded = false;
    // Literal row of the cell, maintained by the owning category while its row cache is valid.
    int m_cachedRow = -1;
};

} // namespace sf
