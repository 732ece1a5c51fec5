#pragma once

#include <QHash>
#include <QList>
#include <QVector>

class QAbstractItemModel;

namespace sf {

class Category;

// Which categories each table model shows, one below the other: model rows are turned
// into (category, row within it) and back. Row counts are read from the categories at
// every call, so folding, unfolding and hidden rows need no bookkeeping here. Models and
// categories are not owned.
class TableMapping {
public:
    // Appends the category to the model's list; false for null arguments or a category
    // the model already shows.
    bool map(const QAbstractItemModel* model, Category* category);
    void unmap(const QAbstractItemModel* model);
    void unmap(const QAbstractItemModel* model, Category* category);
    void clear();

    bool isMapped(const Category* category) const;
    bool hasModel(const QAbstractItemModel* model) const { return m_byModel.contains(model); }
    QList<Category*> categories(const QAbstractItemModel* model) const;
    // Models showing the category, in the order they were mapped.
    QList<const QAbstractItemModel*> models(const Category* category) const;

    // Sum of the sizes of the model's categories.
    int size(const QAbstractItemModel* model) const;
    // First model row of the category in the model, or -1.
    int offset(const QAbstractItemModel* model, const Category* category) const;
    // The category covering a model row and the row inside it; null for none.
    Category* find(const QAbstractItemModel* model, int row, int* categoryRow) const;

private:
    QHash<const QAbstractItemModel*, QVector<Category*>> m_byModel;
    QHash<const Category*, QVector<const QAbstractItemModel*>> m_byCategory;
};

} // namespace sf
