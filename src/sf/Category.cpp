// A category: its presets and shape, adding and finding settings, and cell access.
#include "sf/Category.h"

#include "sf/CategoryIndex.h"
#include "sf/Setting.h"

#include <algorithm>
#include <utility>

namespace sf {

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

} // namespace sf
