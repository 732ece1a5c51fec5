// Setting manager: categories shown by table models, cell flags and expansion.

#include "sf/SettingManager.h"

#include "sf/Category.h"
#include "sf/CategoryIndex.h"
#include "sf/Setting.h"
#include "sf/TableMapping.h"

namespace sf {

bool SettingManager::mapCategory(const QAbstractItemModel* model, const QString& categoryLabel) {
    return mapCategory(model, getCategory(categoryLabel));
}

bool SettingManager::mapCategory(const QAbstractItemModel* model, Category* category) {
    if (!model || !category || !m_categories.contains(category)) {
        return false;
    }
    const bool known = m_tables->hasModel(model);
    if (!m_tables->map(model, category)) {
        return false;
    }
    if (!known) {
        // Forget a model when it goes away; only its address is used then.
        connect(model, &QObject::destroyed, this, [this, model]() { m_tables->unmap(model); });
    }
    return true;
}

void SettingManager::unmap(const QAbstractItemModel* model) {
    if (model && m_tables->hasModel(model)) {
        disconnect(model, &QObject::destroyed, this, nullptr);
        m_tables->unmap(model);
    }
}

void SettingManager::unmap(const QAbstractItemModel* model, Category* category) {
    m_tables->unmap(model, category);
}

Category* SettingManager::getFirstUnmappedCategory() const {
    for (Category* category : m_categories) {
        if (!m_tables->isMapped(category)) {
            return category;
        }
    }
    return nullptr;
}

int SettingManager::modelSize(const QAbstractItemModel* model) const {
    return m_tables->size(model);
}

QList<Category*> SettingManager::mappedCategories(const QAbstractItemModel* model) const {
    return m_tables->categories(model);
}

QModelIndex SettingManager::modelIndex(const QAbstractItemModel* model,
                                       const Setting* setting) const {
    if (!model || !setting) {
        return QModelIndex();
    }
    int offset = 0;
    for (const Category* category : m_tables->categories(model)) {
        if (category->contains(setting)) {
            const CategoryPosition position = category->indexOf(setting);
            if (position.isValid()) {
                return model->index(offset + position.row, position.column);
            }
        }
        offset += category->getSize();
    }
    return QModelIndex();
}

QModelIndex SettingManager::modelIndex(const QAbstractItemModel* model,
                                       const QString& codeName) const {
    return modelIndex(model, getSetting(codeName));
}

Category* SettingManager::categoryIndex(const QModelIndex& index, int* categoryRow) const {
    return categoryIndex(index.model(), index.row(), categoryRow);
}

Category* SettingManager::categoryIndex(const QAbstractItemModel* model, int row,
                                        int* categoryRow) const {
    return m_tables->find(model, row, categoryRow);
}

Setting* SettingManager::getSetting(const QModelIndex& index, int* subIndex) const {
    if (subIndex) {
        *subIndex = -1;
    }
    int row = -1;
    const Category* category = categoryIndex(index, &row);
    return category ? category->getSettingAt(row, index.column(), subIndex) : nullptr;
}

int SettingManager::getIndexFlags(const QModelIndex& index) const {
    const int row = index.row();
    const int column = index.column();
    const QAbstractItemModel* model = index.model();
    if (row < 0 || column < 0 || !model || row >= modelSize(model) || column >= maxPresets()) {
        return 0;
    }
    int categoryRow = -1;
    const Category* category = categoryIndex(model, row, &categoryRow);
    if (!category) {
        return 0;
    }
    int line = 0;
    const CategoryIndex* cell = category->getAt(categoryRow, column, &line);
    int subIndex = -1;
    Setting* setting = category->getSettingAt(categoryRow, column, &subIndex);
    if (!setting) {
        // A filler, or a column this category does not have: the row still is a
        // sub-index row or a setting's own row (all cells of a row share their shape).
        if (!cell) {
            cell = category->getAt(categoryRow, 0, &line);
        }
        const bool subRow = cell && (cell->getForcedSubIndex() >= 0 || line > 0);
        return subRow ? FlagSubIndex : 0;
    }
    int flags = FlagPresent;
    if (category->isEnabled() && setting->isEnabled()) {
        flags |= FlagEnabled | FlagEditable;
    }
    if (subIndex >= 0 && setting->isMulti()) {
        flags |= FlagSubIndex;
    }
    if (setting->isExpandable()) {
        flags |= FlagExpandable;
    }
    if (setting->isMulti()) {
        flags |= FlagMulti;
    }
    if (setting->isEnabledByDefault()) {
        flags |= FlagEnabledByDefault;
    }
    if (category->isPresetEnabled(setting->getPreset())) {
        flags |= FlagPresetEnabled;
    }
    return flags;
}

// ---- Expansion --------------------------------------------------------------------------

bool SettingManager::expandSetting(const QString& codeName) {
    const Setting* setting = getSetting(codeName);
    Category* category = holderOf(setting);
    return category && category->expandSetting(category->findIndex(setting));
}

bool SettingManager::unexpandSetting(const QString& codeName) {
    const Setting* setting = getSetting(codeName);
    Category* category = holderOf(setting);
    return category && category->unexpandSetting(category->findIndex(setting));
}

bool SettingManager::isExpanded(const QString& codeName) const {
    return expandedState(getSetting(codeName));
}

bool SettingManager::expandSetting(const QModelIndex& index) {
    int row = -1;
    Category* category = categoryIndex(index, &row);
    return category && category->expandSetting(row, index.column());
}

bool SettingManager::unexpandSetting(const QModelIndex& index) {
    int row = -1;
    Category* category = categoryIndex(index, &row);
    return category && category->unexpandSetting(row, index.column());
}

bool SettingManager::isExpanded(const QModelIndex& index) const {
    int row = -1;
    const Category* category = categoryIndex(index, &row);
    return category && category->isExpanded(row, index.column());
}

void SettingManager::resolveExpansionIndex(int row, int oldSize, int newSize) {
    const auto* category = qobject_cast<const Category*>(sender());
    if (!category) {
        return;
    }
    for (const QAbstractItemModel* model : m_tables->models(category)) {
        const int offset = m_tables->offset(model, category);
        if (offset >= 0) {
            emit settingAboutToBeExpanded(model, offset + row, oldSize, newSize);
        }
    }
}

void SettingManager::expansionDone(int oldSize, int newSize) {
    const auto* category = qobject_cast<const Category*>(sender());
    if (!category) {
        return;
    }
    for (const QAbstractItemModel* model : m_tables->models(category)) {
        emit settingExpanded(model, oldSize, newSize);
    }
}

} // namespace sf
