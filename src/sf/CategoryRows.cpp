// Row spans and folding of a category: inserting, moving and removing cells, folding
// and unfolding foldable settings, row shapes and the cache of row starts.
#include "sf/Category.h"

#include "sf/CategoryIndex.h"
#include "sf/Setting.h"

#include <algorithm>
#include <utility>

namespace sf {

// --- Layout maintenance -----------------------------------------------------------------

bool Category::insertIndex(CategoryIndex* cell, int row, int column) {
    if (!canPlace(cell) || row < 0 || row > m_rowCount || !ensureColumns(column))
        return false;
    ensureCache();
    CategoryIndex* before =
        row < m_rowCount ? m_cache.heads[static_cast<std::size_t>(row)] : nullptr;
    registerCell(cell);
    placeInNewRow(cell, column, before);
    registerRow(cell);
    return true;
}

bool Category::insertFiller(int row) {
    if (row < 0 || row > m_rowCount || !ensureColumns(0))
        return false;
    ensureCache();
    CategoryIndex* before =
        row < m_rowCount ? m_cache.heads[static_cast<std::size_t>(row)] : nullptr;
    placeInNewRow(new CategoryIndex(DEFAULT_SIZE, -1, nullptr, nullptr, nullptr), 0, before);
    return true;
}

bool Category::remove(CategoryIndex* cell) {
    if (!owns(cell))
        return false;
    if (cell->isFiller()) {
        CategoryIndex* head = rowHead(cell);
        if (rowHasSetting(head))
            return false; // the filler keeps its row aligned
        destroyRow(head);
        return true;
    }
    forgetCell(cell, true);
    auto* filler = new CategoryIndex(cell->m_size, -1, nullptr, nullptr, nullptr);
    replaceCell(cell, filler); // may destroy the setting with its last reference
    CategoryIndex* head = rowHead(filler);
    if (rowHasSetting(head))
        normalizeRow(head);
    else
        destroyRow(head);
    invalidate();
    return true;
}

bool Category::removeChain(CategoryIndex* cell) {
    if (!owns(cell))
        return false;
    destroyRow(rowHead(cell));
    return true;
}

bool Category::replaceNearest(CategoryIndex* cell, int row, int column) {
    if (!canPlace(cell) || row < 0 || row > m_rowCount || !ensureColumns(column))
        return false;
    ensureCache();
    registerCell(cell);
    if (row == m_rowCount) {
        placeInNewRow(cell, column, nullptr);
    } else {
        CategoryIndex* head = m_cache.heads[static_cast<std::size_t>(row)];
        if (!placeInRow(cell, head, column))
            placeInNewRow(cell, column, head->m_next);
    }
    registerRow(cell);
    return true;
}

bool Category::move(CategoryIndex* cell, int row) {
    if (!owns(cell) || row < 0 || row >= m_rowCount)
        return false;
    CategoryIndex* head = rowHead(cell);
    const int from = head->m_cachedRow;
    if (row == from)
        return true;
    // Place among the other rows: position `row` of the grid without the moved row.
    CategoryIndex* before = nullptr;
    if (row < m_rowCount - 1)
        before = m_cache.heads[static_cast<std::size_t>(row < from ? row : row + 1)];
    RowCells cells;
    for (CategoryIndex* member = head; member; member = member->m_right)
        cells.append(member);
    unlinkRow(head);
    linkRowBefore(cells, before);
    invalidate();
    return true;
}

void Category::realign() {
    for (CategoryIndex* head = m_heads.isEmpty() ? nullptr : m_heads.first(); head;
         head = head->m_next) {
        bool expanded = false;
        for (CategoryIndex* cell = head; cell; cell = cell->m_right)
            expanded = expanded || cell->m_expanded;
        head->m_expanded = expanded;
        normalizeRow(head);
    }
    invalidate();
}

bool Category::isAligned() const {
    const int columns = m_heads.size();
    if (m_tails.size() != columns)
        return false;
    for (int column = 0; column < columns; ++column) {
        const CategoryIndex* previous = nullptr;
        int count = 0;
        for (const CategoryIndex* cell = m_heads.at(column); cell; cell = cell->m_next) {
            if (cell->m_previous != previous || ++count > m_rowCount)
                return false;
            previous = cell;
        }
        if (count != m_rowCount || m_tails.at(column) != previous)
            return false;
    }
    if (columns == 0)
        return m_rowCount == 0;

    // Rows: walk the columns side by side and compare each row's cells.
    QVector<const CategoryIndex*> above(columns, nullptr);
    for (CategoryIndex* head = m_heads.first(); head; head = head->m_next) {
        if (head->m_left)
            return false;
        const CategoryIndex* cell = head;
        const CategoryIndex* prior = nullptr;
        for (int column = 0; column < columns; ++column) {
            if (!cell || cell->m_previous != above.at(column) || cell->m_left != prior)
                return false;
            if (cell->m_size != head->m_size || cell->m_expanded != head->m_expanded)
                return false;
            above[column] = cell;
            prior = cell;
            cell = cell->m_right;
        }
        if (cell)
            return false;
        if (head->m_size != desiredRowSize(head, head->m_expanded))
            return false;
    }
    if (m_cache.valid) {
        int size = 0;
        for (CategoryIndex* head = m_heads.first(); head; head = head->m_next)
            size += rowIsShown(head) ? head->m_size : 0;
        if (size != m_cache.spans.total())
            return false;
    }
    return true;
}

int Category::updateSize() {
    invalidate();
    ensureCache();
    return m_cache.spans.total();
}

bool Category::abortInsertIndex(CategoryIndex* cell) {
    if (!owns(cell))
        return false;
    CategoryIndex* head = rowHead(cell);
    QVector<CategoryIndex*> cells;
    for (CategoryIndex* member = head; member; member = member->m_right) {
        if (member != cell && member->m_content)
            return false;
        cells.append(member);
    }
    unlinkRow(head);
    forgetCell(cell, false);
    for (CategoryIndex* member : std::as_const(cells)) {
        if (member != cell)
            delete member; // a filler; its destructor joins its neighbours
    }
    cell->m_left = cell->m_right = nullptr;
    cell->m_expanded = false;
    cell->m_cachedRow = -1;
    invalidate();
    return true;
}

// --- Folding ----------------------------------------------------------------------------

bool Category::expandSetting(int row, int column) {
    return setRowExpanded(getAt(row, column), true);
}

bool Category::unexpandSetting(int row, int column) {
    return setRowExpanded(getAt(row, column), false);
}

bool Category::expandSetting(CategoryIndex* cell) {
    return owns(cell) && setRowExpanded(cell, true);
}

bool Category::unexpandSetting(CategoryIndex* cell) {
    return owns(cell) && setRowExpanded(cell, false);
}

bool Category::setRowExpanded(CategoryIndex* cell, bool expanded) {
    if (!cell || !cell->m_content || cell->m_forcedSubIndex >= 0 ||
        !cell->m_content->isExpandable())
        return false;
    CategoryIndex* head = rowHead(cell);
    if (head->m_expanded == expanded)
        return false;
    ensureCache();
    const int row = getIndexVirtual(head);
    const int oldSize = head->m_size;
    const int newSize = desiredRowSize(head, expanded);
    const bool announce = row >= 0 && newSize != oldSize;
    if (announce)
        emit settingAboutToBeExpanded(row, oldSize, newSize);
    setRowShape(head, newSize, expanded);
    cacheRowSpan(head);
    if (announce)
        emit settingExpanded(oldSize, newSize);
    return true;
}

// --- Rows -------------------------------------------------------------------------------

bool Category::owns(const CategoryIndex* cell) const {
    if (!cell)
        return false;
    ensureCache();
    const CategoryIndex* head = cell;
    for (int steps = 0; head->m_left; ++steps) {
        if (steps > m_heads.size())
            return false;
        head = head->m_left;
    }
    const int row = head->m_cachedRow;
    return row >= 0 && row < static_cast<int>(m_cache.heads.size()) &&
           m_cache.heads[static_cast<std::size_t>(row)] == head && cell->m_cachedRow == row;
}

CategoryIndex* Category::rowHead(CategoryIndex* cell) {
    while (cell->m_left)
        cell = cell->m_left;
    return cell;
}

CategoryIndex* Category::cellInRow(CategoryIndex* head, int column) {
    CategoryIndex* cell = head;
    for (int step = 0; cell && step < column; ++step)
        cell = cell->m_right;
    return cell;
}

bool Category::rowIsHidden(const CategoryIndex* head) const {
    bool anySetting = false;
    for (const CategoryIndex* cell = head; cell; cell = cell->m_right) {
        if (!cell->m_content)
            continue;
        if (!m_hidden.contains(cell->m_content))
            return false;
        anySetting = true;
    }
    return anySetting;
}

bool Category::rowIsShown(const CategoryIndex* head) const {
    return m_hiddenVisible || !rowIsHidden(head);
}

bool Category::isFoldable(const CategoryIndex* cell) {
    return cell->m_content && cell->m_forcedSubIndex < 0 && cell->m_content->isExpandable();
}

int Category::desiredCellSize(const CategoryIndex* cell, bool expanded) {
    if (!isFoldable(cell))
        return DEFAULT_SIZE;
    Setting* group = cell->m_content;
    const int size = expanded ? group->unfoldedRows() : group->foldedRows();
    return std::min(std::max(size, 1), MAX_CELL_SIZE);
}

int Category::desiredRowSize(CategoryIndex* head, bool expanded) {
    int size = DEFAULT_SIZE;
    for (const CategoryIndex* cell = head; cell; cell = cell->m_right)
        size = std::max(size, desiredCellSize(cell, expanded));
    return size;
}

bool Category::rowHasSetting(CategoryIndex* head) {
    for (const CategoryIndex* cell = head; cell; cell = cell->m_right) {
        if (cell->m_content)
            return true;
    }
    return false;
}

void Category::setRowShape(CategoryIndex* head, int size, bool expanded) {
    for (CategoryIndex* cell = head; cell; cell = cell->m_right) {
        cell->setSize(size);
        cell->m_expanded = expanded;
    }
}

void Category::normalizeRow(CategoryIndex* head) {
    bool foldable = false;
    for (const CategoryIndex* cell = head; cell && !foldable; cell = cell->m_right)
        foldable = isFoldable(cell);
    const bool expanded = head->m_expanded && foldable;
    setRowShape(head, desiredRowSize(head, expanded), expanded);
}

// --- Row cache --------------------------------------------------------------------------

void Category::ensureCache() const {
    if (m_cache.valid)
        return;
    m_cache.heads.clear();
    m_cache.heads.reserve(static_cast<std::size_t>(m_rowCount));
    m_cache.spans.clear();
    m_cache.spans.reserve(m_rowCount);
    m_cache.valid = true;
    for (CategoryIndex* head = m_heads.isEmpty() ? nullptr : m_heads.first(); head;
         head = head->m_next)
        cacheAppendedRow(head);
}

void Category::cacheAppendedRow(CategoryIndex* head) const {
    if (!m_cache.valid)
        return;
    const int row = static_cast<int>(m_cache.heads.size());
    for (CategoryIndex* cell = head; cell; cell = cell->m_right)
        cell->m_cachedRow = row;
    m_cache.heads.push_back(head);
    m_cache.spans.append(rowIsShown(head) ? head->m_size : 0);
}

void Category::cacheRowSpan(CategoryIndex* head) {
    if (m_cache.valid)
        m_cache.spans.set(head->m_cachedRow, rowIsShown(head) ? head->m_size : 0);
}

} // namespace sf
