// The grid of a category: columns, linking and unlinking rows and cells, and the
// bookkeeping of which setting sits where.
#include "sf/Category.h"

#include "sf/CategoryIndex.h"
#include "sf/Setting.h"

#include <algorithm>
#include <utility>

namespace sf {

// --- Structure --------------------------------------------------------------------------

bool Category::ensureColumns(int column) {
    if (column < 0 || column >= MAX_COLUMNS)
        return false;
    while (m_heads.size() <= column)
        addColumn();
    return true;
}

void Category::addColumn() {
    CategoryIndex* head = nullptr;
    CategoryIndex* above = nullptr;
    if (!m_heads.isEmpty()) {
        for (CategoryIndex* left = m_heads.last(); left; left = left->m_next) {
            auto* filler = new CategoryIndex(left->m_size, -1, above, nullptr, nullptr);
            filler->m_expanded = left->m_expanded;
            filler->m_cachedRow = left->m_cachedRow;
            filler->m_left = left;
            left->m_right = filler;
            if (above)
                above->m_next = filler;
            else
                head = filler;
            above = filler;
        }
    }
    m_heads.append(head);
    m_tails.append(above);
}

Category::RowCells Category::makeRow(CategoryIndex* cell, int column) const {
    RowCells cells(m_heads.size());
    for (int index = 0; index < cells.size(); ++index)
        cells[index] =
            index == column ? cell : new CategoryIndex(DEFAULT_SIZE, -1, nullptr, nullptr, nullptr);
    return cells;
}

void Category::linkRowBefore(const RowCells& cells, CategoryIndex* beforeHead) {
    const int columns = cells.size();
    for (int column = 0; column < columns; ++column) {
        CategoryIndex* cell = cells.at(column);
        cell->m_left = column > 0 ? cells.at(column - 1) : nullptr;
        cell->m_right = column + 1 < columns ? cells.at(column + 1) : nullptr;
    }
    CategoryIndex* before = beforeHead;
    for (int column = 0; column < columns; ++column) {
        CategoryIndex* cell = cells.at(column);
        CategoryIndex* previous = before ? before->m_previous : m_tails.at(column);
        cell->m_previous = previous;
        cell->m_next = before;
        if (previous)
            previous->m_next = cell;
        else
            m_heads[column] = cell;
        if (before) {
            before->m_previous = cell;
            before = before->m_right;
        } else {
            m_tails[column] = cell;
        }
    }
    ++m_rowCount;
}

void Category::unlinkRow(CategoryIndex* head) {
    int column = 0;
    for (CategoryIndex* cell = head; cell; cell = cell->m_right, ++column) {
        CategoryIndex* previous = cell->m_previous;
        CategoryIndex* next = cell->m_next;
        if (previous)
            previous->m_next = next;
        else
            m_heads[column] = next;
        if (next)
            next->m_previous = previous;
        else
            m_tails[column] = previous;
        cell->m_previous = cell->m_next = nullptr;
    }
    --m_rowCount;
}

void Category::replaceCell(CategoryIndex* old, CategoryIndex* replacement) {
    replacement->m_left = old->m_left;
    replacement->m_right = old->m_right;
    replacement->m_previous = old->m_previous;
    replacement->m_next = old->m_next;
    replacement->m_expanded = old->m_expanded;
    replacement->m_cachedRow = old->m_cachedRow;
    replacement->setSize(old->m_size);
    if (old->m_left)
        old->m_left->m_right = replacement;
    if (old->m_right)
        old->m_right->m_left = replacement;
    if (old->m_previous)
        old->m_previous->m_next = replacement;
    if (old->m_next)
        old->m_next->m_previous = replacement;
    for (int column = 0; column < m_heads.size(); ++column) {
        if (m_heads.at(column) == old)
            m_heads[column] = replacement;
        if (m_tails.at(column) == old)
            m_tails[column] = replacement;
    }
    if (m_cache.valid && !old->m_left && old->m_cachedRow >= 0 &&
        old->m_cachedRow < static_cast<int>(m_cache.heads.size()) &&
        m_cache.heads[static_cast<std::size_t>(old->m_cachedRow)] == old)
        m_cache.heads[static_cast<std::size_t>(old->m_cachedRow)] = replacement;
    old->m_left = old->m_right = old->m_previous = old->m_next = nullptr;
    delete old;
}

void Category::destroyRow(CategoryIndex* head) {
    QVector<CategoryIndex*> cells;
    for (CategoryIndex* cell = head; cell; cell = cell->m_right)
        cells.append(cell);
    unlinkRow(head);
    for (CategoryIndex* cell : std::as_const(cells))
        forgetCell(cell, false);
    for (CategoryIndex* cell : std::as_const(cells)) {
        cell->m_left = cell->m_right = nullptr;
        delete cell;
    }
    invalidate();
}

// --- Bookkeeping ------------------------------------------------------------------------

bool Category::canPlace(const CategoryIndex* cell) const {
    if (!cell || cell->m_left || cell->m_right || cell->m_previous || cell->m_next ||
        m_heads.contains(const_cast<CategoryIndex*>(cell)))
        return false;
    return !cell->m_content ||
           !m_placed.contains(placement(cell->m_content, cell->m_forcedSubIndex));
}

void Category::registerCell(CategoryIndex* cell) {
    Setting* setting = cell->m_content;
    if (!setting)
        return;
    m_placed.insert(placement(setting, cell->m_forcedSubIndex));
    Cells& cells = m_cells[setting];
    if (cells.count++ > 0)
        return;
    cells.first = cell;
    m_settings.append(setting);
    setting->setCategory(m_label);
    if (setting->isHidden())
        m_hidden.insert(setting);
    if (m_codeNamesValid && !m_byCodeName.contains(setting->getCodeName()))
        m_byCodeName.insert(setting->getCodeName(), setting);
    if (m_wsiValid) {
        const QString wsi = setting->helpIdentifier();
        if (!wsi.isEmpty() && !m_byWsi.contains(wsi))
            m_byWsi.insert(wsi, setting);
    }
}

void Category::registerRow(CategoryIndex* cell) {
    if (!cell->m_content)
        return;
    RowList& rows = m_rowsByKey[RowKey(cell->m_content->getBaseCodeName(), cell->m_forcedSubIndex)];
    CategoryIndex* head = rowHead(cell);
    for (CategoryIndex* member : std::as_const(rows)) {
        if (rowHead(member) == head)
            return;
    }
    rows.append(cell);
}

void Category::forgetCell(CategoryIndex* cell, bool keepRow) {
    Setting* setting = cell->m_content;
    if (!setting)
        return;
    const int forced = cell->m_forcedSubIndex;
    m_placed.remove(placement(setting, forced));

    const RowKey key(setting->getBaseCodeName(), forced);
    auto rows = m_rowsByKey.find(key);
    if (rows != m_rowsByKey.end()) {
        const int at = rows->indexOf(cell);
        if (at >= 0) {
            CategoryIndex* other = nullptr;
            for (CategoryIndex* member = keepRow ? rowHead(cell) : nullptr; member && !other;
                 member = member->m_right) {
                if (member != cell && member->m_content && member->m_forcedSubIndex == forced &&
                    member->m_content->getBaseCodeName() == key.first)
                    other = member;
            }
            if (other)
                (*rows)[at] = other;
            else
                rows->remove(at);
            if (rows->isEmpty())
                m_rowsByKey.erase(rows);
        }
    }

    auto cells = m_cells.find(setting);
    if (cells == m_cells.end())
        return;
    if (--cells->count > 0) {
        if (cells->first == cell) {
            // Another cell shows the same setting (another sub-index): it becomes the first.
            CategoryIndex* other = nullptr;
            for (CategoryIndex* head : std::as_const(m_heads)) {
                for (CategoryIndex* member = head; member && !other; member = member->m_next) {
                    if (member != cell && member->m_content == setting)
                        other = member;
                }
            }
            cells->first = other;
        }
        return;
    }
    m_cells.erase(cells);
    m_hidden.remove(setting);
    m_settings.removeOne(setting);
    m_codeNamesValid = false;
    m_wsiValid = false;
}

bool Category::placeInRow(CategoryIndex* cell, CategoryIndex* head, int column) {
    CategoryIndex* target = cellInRow(head, column);
    if (!target || !target->isFiller())
        return false;
    replaceCell(target, cell);
    head = rowHead(cell);
    normalizeRow(head);
    cacheRowSpan(head); // the row may have grown, or been shown by a setting that is not hidden
    return true;
}

void Category::placeInNewRow(CategoryIndex* cell, int column, CategoryIndex* beforeHead) {
    const RowCells cells = makeRow(cell, column);
    linkRowBefore(cells, beforeHead);
    CategoryIndex* head = cells.first();
    head->m_expanded = false;
    normalizeRow(head);
    if (beforeHead)
        invalidate();
    else
        cacheAppendedRow(head);
}

} // namespace sf
