#pragma once

// The delegates that make the settings table's editors, one per setting kind.

#include "sf/SettingTypes.h"

#include <QStyledItemDelegate>

namespace sf {
class Setting;
class SettingManager;
} // namespace sf

namespace sf::del {

class SettingDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    SettingDelegate(SettingManager* manager, bool persistent, QObject* parent = nullptr);
    SettingManager* manager() const { return m_manager; }
    // Whether the table keeps this delegate's editor open in every cell.
    virtual bool isPersistent(const QModelIndex& index) const;

protected:
    // The setting of a cell and the sub-index (bit) the row shows.
    Setting* settingAt(const QModelIndex& index, int* subIndex = nullptr) const;
    // While an editor is being filled its change signals do not commit.
    bool changingData() const { return m_changingData; }
    void setChangingData(bool changing) { m_changingData = changing; }
    void commit(QWidget* editor);

private:
    SettingManager* m_manager;
    bool m_persistent;
    bool m_changingData = false;
};

// Numbers: a line edit for a decimal number, in fixed notation with the setting's
// precision; committed when editing finishes.
class NumDelegate : public SettingDelegate {
    Q_OBJECT
public:
    explicit NumDelegate(SettingManager* manager, QObject* parent = nullptr);
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
};

// One bit of a bit field: its two labels in a combo box, committed when chosen.
class BoolDelegate : public SettingDelegate {
    Q_OBJECT
public:
    explicit BoolDelegate(SettingManager* manager, QObject* parent = nullptr);
    bool isPersistent(const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
};

// A list: its options in a combo box, committed when chosen.
class ListDelegate : public SettingDelegate {
    Q_OBJECT
public:
    explicit ListDelegate(SettingManager* manager, QObject* parent = nullptr);
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
};

// A check box group: a check box on each box's row, and on the group's own row a button
// that unfolds the group (one row per box) and folds it again.
class CheckBoolDelegate : public SettingDelegate {
    Q_OBJECT
public:
    explicit CheckBoolDelegate(SettingManager* manager, QObject* parent = nullptr);
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
};

} // namespace sf::del
