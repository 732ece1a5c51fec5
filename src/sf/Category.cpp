#include "sf/Category.h"

#include "sf/CategoryIndex.h"
#include "sf/Setting.h"

#include <algorithm>
#include <utility>

namespace sf {

namespace {

// Guards against absurd definitions: no real preset number or group comes near these.
constexpr int MAX_COLUMNS = 64;
constexpr int MAX_CELL_SIZE = 4096;

QPair<const Setting*, int> placement(const Setting* setting, int forcedSubIndex) {
    return qMakePair(setting, forcedSubIndex);
}

} // namespace

Category::Category(const QString& name, const QString& label, const QString& presetName,
                   bool enabled)
    : m_name(name), m_label(label), m_presetName(presetName), m_enabled(enabled) {
    m_cache.valid = true; // the empty grid
}

Category::~Category() {
    m_cells.clear();
    m_rowsByKey.clear();
    m_settings.clear();
    for (CategoryIndex* head : std::as_const(m_heads))
        delete head; // each head takes its column with it
    m_heads.clear();
    m_tails.clear();
}

// --- Shape ------------------------------------------------------------------------------

int Category::getPresetSize(int preset) const {
    if (preset < 0 || preset >= m_heads.size())
        return -1;
    if (!m_heads.at(preset))
        return 0;
    // Every column has a cell of the row's size in every row, so each column is as long
    // as the grid (isAligned checks this).
    ensureCache();
    return m_cache.spans.total();
}

int Category::getPreset(const CategoryIndex* cell) const {
    if (!owns(cell))
        return -1;
    int column = 0;
    for (const CategoryIndex* left = cell->m_left; left; left = left->m_left)
        ++column;
    return column;
}

int Category::getSize() const {
    ensureCache();
    return m_cache.spans.total();
}

void Category::setHiddenVisible(bool visible) {
    if (visible == m_hiddenVisible)
        return;
    m_hiddenVisible = visible;
    invalidate();
}

Setting* Category::getPresetCount() const {
    return m_presetCount.data();
}

void Category::setPresetCount(Setting* counter) {
    m_presetCount = counter;
}

bool Category::isPresetEnabled(int preset) const {
    Setting* counter = m_presetCount.data();
    if (!counter)
        return true;
    const QVariant raw = counter->getData(RoleRaw);
    int value = 0;
    if (raw.userType() == QMetaType::QByteArray) {
        const QByteArray bytes = raw.toByteArray();
        value = bytes.isEmpty() ? 0 : static_cast<unsigned char>(bytes.at(0));
    } else {
        value = raw.toInt();
    }
    return preset <= value;
}

// --- Adding and finding settings --------------------------------------------------------

bool Category::appendSetting(Setting* setting, int forcedSubIndex) {
    if (!setting) {
        emit problem(QStringLiteral("Cannot add a missing setting to category ") + m_label);
        return false;
    }
    if (forcedSubIndex < -1)
        forcedSubIndex = -1;
    if (m_placed.contains(placement(setting, forcedSubIndex))) {
        emit problem(QStringLiteral("Setting ") + setting->getCodeName() +
                     QStringLiteral(" is already in category ") + m_label);
        return false;
    }
    const int column = std::max(0, setting->getPreset());
    if (!ensureColumns(column)) {
        emit problem(QStringLiteral("Setting ") + setting->getCodeName() +
                     QStringLiteral(" has an unusable preset in category ") + m_label);
        return false;
    }

    auto* cell = new CategoryIndex(DEFAULT_SIZE, forcedSubIndex, nullptr, nullptr, setting);
    registerCell(cell);
    // One lookup of the row key; placing cells does not touch the table of rows.
    const qsizetype known = m_rowsByKey.size();
    RowList& rows = m_rowsByKey[RowKey(setting->getBaseCodeName(), forcedSubIndex)];
    if (m_rowsByKey.size() != known) {
        placeInNewRow(cell, column, nullptr);
        rows.append(cell);
        return true;
    }
    for (CategoryIndex* member : std::as_const(rows)) {
        if (placeInRow(cell, rowHead(member), column))
            return true;
    }
    // Every row of this name already holds a setting in this column (two code names that
    // differ only in the preset character, such as X1 and XA): start a row right below.
    placeInNewRow(cell, column, rowHead(rows.last())->m_next);
    rows.append(cell);
    return true;
}

bool Category::contains(const Setting* setting) const {
    return setting && m_cells.contains(setting);
}

bool Category::contains(const QString& codeName) const {
    ensureCodeNames();
    return m_byCodeName.contains(codeName);
}

Setting* Category::findSetting(const QString& codeName) const {
    ensureCodeNames();
    return m_byCodeName.value(codeName, nullptr);
}

void Category::ensureCodeNames() const {
    if (m_codeNamesValid)
        return;
    m_byCodeName.clear();
    m_byCodeName.reserve(m_settings.size());
    for (Setting* setting : m_settings) {
        if (!m_byCodeName.contains(setting->getCodeName()))
            m_byCodeName.insert(setting->getCodeName(), setting);
    }
    m_codeNamesValid = true;
}

Setting* Category::findSettingByWsi(const QString& wsi) const {
    if (wsi.isEmpty())
        return nullptr;
    for (int attempt = 0; attempt < 2; ++attempt) {
        if (!m_wsiValid) {
            m_byWsi.clear();
            for (Setting* setting : m_settings) {
                const QString wsi = setting->helpIdentifier();
                if (!wsi.isEmpty() && !m_byWsi.contains(wsi))
                    m_byWsi.insert(wsi, setting);
            }
            m_wsiValid = true;
        }
        Setting* found = m_byWsi.value(wsi, nullptr);
        if (!found)
            return nullptr;
        if (found->helpIdentifier() == wsi)
            return found;
        m_wsiValid = false; // a WSI changed since the index was built
    }
    return nullptr;
}

CategoryIndex* Category::findIndex(const Setting* setting) const {
    const auto cells = m_cells.constFind(setting);
    return cells == m_cells.constEnd() ? nullptr : cells->first;
}

CategoryPosition Category::indexOf(const QString& codeName) const {
    return indexOf(findSetting(codeName));
}

CategoryPosition Category::indexOf(const Setting* setting) const {
    CategoryPosition position;
    CategoryIndex* cell = findIndex(setting);
    if (!cell)
        return position;
    const int row = getIndexVirtual(cell);
    if (row < 0)
        return position;
    position.row = row;
    position.column = getPreset(cell);
    return position;
}

// --- Cell access ------------------------------------------------------------------------

CategoryIndex* Category::getAt(int row, int column, int* line) const {
    if (line)
        *line = -1;
    if (row < 0 || column < 0 || column >= m_heads.size())
        return nullptr;
    ensureCache();
    const int literal = m_cache.spans.rowAt(row);
    if (literal < 0)
        return nullptr;
    if (line)
        *line = row - m_cache.spans.offset(literal);
    return cellInRow(m_cache.heads[static_cast<std::size_t>(literal)], column);
}

CategoryIndex* Category::getAtLiteral(int row, int column) const {
    if (row < 0 || row >= m_rowCount || column < 0 || column >= m_heads.size())
        return nullptr;
    ensureCache();
    return cellInRow(m_cache.heads[static_cast<std::size_t>(row)], column);
}

Setting* Category::getSettingAt(int row, int column, int* subIndex) const {
    int line = -1;
    CategoryIndex* cell = getAt(row, column, &line);
    if (subIndex)
        *subIndex = !cell ? -1 : cell->m_forcedSubIndex >= 0 ? cell->m_forcedSubIndex : line - 1;
    return cell ? cell->m_content : nullptr;
}

int Category::getIndexLiteral(const CategoryIndex* cell) const {
    if (!owns(cell))
        return -1;
    return cell->m_cachedRow;
}

int Category::getIndexVirtual(const CategoryIndex* cell) const {
    if (!owns(cell))
        return -1;
    const int row = cell->m_cachedRow;
    return m_cache.spans.span(row) > 0 ? m_cache.spans.offset(row) : -1;
}

CategoryIndex* Category::getLast(int column) const {
    if (column < 0 || column >= m_tails.size())
        return nullptr;
    return m_tails.at(column);
}

bool Category::isExpanded(int row, int column) const {
    const CategoryIndex* cell = getAt(row, column);
    return cell && isFoldable(cell) && cell->m_expanded;
}

bool Category::isExpanded(const CategoryIndex* cell) const {
    return owns(cell) && isFoldable(cell) && cell->m_expanded;
}

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
