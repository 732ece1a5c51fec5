#include "sf/TableMapping.h"

#include "sf/Category.h"

namespace sf {

bool TableMapping::map(const QAbstractItemModel* model, Category* category) {
    if (!model || !category) {
        return false;
    }
    QVector<Category*>& list = m_byModel[model];
    if (list.contains(category)) {
        return false;
    }
    list.append(category);
    m_byCategory[category].append(model);
    return true;
}

void TableMapping::unmap(const QAbstractItemModel* model) {
    const auto it = m_byModel.constFind(model);
    if (it == m_byModel.constEnd()) {
        return;
    }
    const QVector<Category*> list = it.value();
    for (Category* category : list) {
        unmap(model, category);
    }
    m_byModel.remove(model);
}

void TableMapping::unmap(const QAbstractItemModel* model, Category* category) {
    auto it = m_byModel.find(model);
    if (it != m_byModel.end()) {
        it.value().removeAll(category);
    }
    auto byCategory = m_byCategory.find(category);
    if (byCategory != m_byCategory.end()) {
        byCategory.value().removeAll(model);
        if (byCategory.value().isEmpty()) {
            m_byCategory.erase(byCategory);
        }
    }
}

void TableMapping::clear() {
    m_byModel.clear();
    m_byCategory.clear();
}

bool TableMapping::isMapped(const Category* category) const {
    return m_byCategory.contains(category);
}

QList<Category*> TableMapping::categories(const QAbstractItemModel* model) const {
    const QVector<Category*> list = m_byModel.value(model);
    return QList<Category*>(list.begin(), list.end());
}

QList<const QAbstractItemModel*> TableMapping::models(const Category* category) const {
    const QVector<const QAbstractItemModel*> list = m_byCategory.value(category);
    return QList<const QAbstractItemModel*>(list.begin(), list.end());
}

int TableMapping::size(const QAbstractItemModel* model) const {
    int total = 0;
    const auto it = m_byModel.constFind(model);
    if (it == m_byModel.constEnd()) {
        return 0;
    }
    for (const Category* category : it.value()) {
        total += category->getSize();
    }
    return total;
}

int TableMapping::offset(const QAbstractItemModel* model, const Category* category) const {
    const auto it = m_byModel.constFind(model);
    if (it == m_byModel.constEnd()) {
        return -1;
    }
    int offset = 0;
    for (const Category* shown : it.value()) {
        if (shown == category) {
            return offset;
        }
        offset += shown->getSize();
    }
    return -1;
}

Category* TableMapping::find(const QAbstractItemModel* model, int row, int* categoryRow) const {
    const auto it = m_byModel.constFind(model);
    if (row < 0 || it == m_byModel.constEnd()) {
        return nullptr;
    }
    int offset = 0;
    for (Category* category : it.value()) {
        const int size = category->getSize();
        if (row < offset + size) {
            if (categoryRow) {
                *categoryRow = row - offset;
            }
            return category;
        }
        offset += size;
    }
    return nullptr;
}

} // namespace sf
