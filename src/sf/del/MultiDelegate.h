#pragma once

// The delegate the settings table installs: it hands each cell to the delegate of its
// setting's kind.

#include "sf/del/SettingDelegate.h"

#include <QMap>

class QMenu;

namespace sf::del {

// The table's delegate: every operation goes to the delegate installed for the kind of
// the cell's setting; cells of other kinds (and empty cells) get the plain item delegate.
class MultiDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    MultiDelegate(SettingManager* manager, QObject* parent = nullptr);
    // Installs the delegates of every kind (owned by this object).
    void installDefaults();
    void setDelegate(SettingType type, SettingDelegate* delegate);
    SettingDelegate* delegateFor(const QModelIndex& index) const;
    void setMenu(SettingType type, QMenu* menu) { m_menus.insert(type, menu); }
    QMenu* menuFor(const QModelIndex& index) const;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

protected:
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;

private:
    SettingType typeAt(const QModelIndex& index) const;

    SettingManager* m_manager;
    QMap<SettingType, SettingDelegate*> m_delegates;
    QMap<SettingType, QMenu*> m_menus;
};

} // namespace sf::del
