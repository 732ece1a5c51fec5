#include "sf/del/SettingDelegate.h"

#include "sf/BitLabels.h"
#include "sf/Setting.h"
#include "sf/SettingManager.h"
#include "sf/ui/Editors.h"

#include <QDoubleValidator>
#include <QLineEdit>

namespace sf::del {

namespace {

// The texts of a bit's two states: off first, then on.
QStringList bitTexts(const Setting* setting, int subIndex) {
    const QList<BitLabel>* labels = setting ? setting->bitLabels() : nullptr;
    if (!labels || subIndex < 0 || subIndex >= labels->size()) {
        return {};
    }
    const BitLabel& label = labels->at(subIndex);
    return {label.stateText(false), label.stateText(true)};
}

} // namespace

SettingDelegate::SettingDelegate(SettingManager* manager, bool persistent, QObject* parent)
    : QStyledItemDelegate(parent), m_manager(manager), m_persistent(persistent) {}

bool SettingDelegate::isPersistent(const QModelIndex&) const {
    return m_persistent;
}

Setting* SettingDelegate::settingAt(const QModelIndex& index, int* subIndex) const {
    return m_manager->getSetting(index, subIndex);
}

void SettingDelegate::commit(QWidget* editor) {
    if (!m_changingData) {
        emit const_cast<SettingDelegate*>(this)->commitData(editor);
    }
}

// ---- Numbers ----------------------------------------------------------------------------

NumDelegate::NumDelegate(SettingManager* manager, QObject* parent)
    : SettingDelegate(manager, false, parent) {}

QWidget* NumDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                   const QModelIndex&) const {
    auto* edit = new QLineEdit(parent);
    auto* validator = new QDoubleValidator(edit);
    validator->setLocale(QLocale::c());
    edit->setValidator(validator);
    auto* self = const_cast<NumDelegate*>(this);
    // Editing ends with Return and again when the closing editor loses the focus: only
    // a text the user changed since the last commit is committed.
    connect(edit, &QLineEdit::editingFinished, self, [self, edit] {
        if (edit->isModified()) {
            edit->setModified(false);
            self->commit(edit);
        }
    });
    return edit;
}

void NumDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    auto* edit = qobject_cast<QLineEdit*>(editor);
    if (!edit) {
        return;
    }
    const int precision = manager()->getSettingData(index, RolePrecision).toInt();
    if (auto* validator =
            qobject_cast<QDoubleValidator*>(const_cast<QValidator*>(edit->validator()))) {
        validator->setDecimals(precision); // no more digits than the setting shows
    }
    const_cast<NumDelegate*>(this)->setChangingData(true);
    edit->setText(QString::number(index.data(Qt::EditRole).toDouble(), 'f', precision));
    const_cast<NumDelegate*>(this)->setChangingData(false);
}

void NumDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                               const QModelIndex& index) const {
    // The text goes to the model as it is: the model refuses a value outside the range
    // or one the bytes cannot hold, and says so.
    if (auto* edit = qobject_cast<QLineEdit*>(editor)) {
        model->setData(index, edit->text(), Qt::EditRole);
    }
}

// ---- Bits of a bit field ------------------------------------------------------------------

BoolDelegate::BoolDelegate(SettingManager* manager, QObject* parent)
    : SettingDelegate(manager, true, parent) {}

bool BoolDelegate::isPersistent(const QModelIndex& index) const {
    int subIndex = -1;
    return settingAt(index, &subIndex) && subIndex >= 0; // only the rows of the bits
}

QWidget* BoolDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                    const QModelIndex& index) const {
    int subIndex = -1;
    const Setting* setting = settingAt(index, &subIndex);
    const QStringList texts = bitTexts(setting, subIndex);
    if (texts.isEmpty()) {
        return nullptr;
    }
    auto* box = new ui::ListComboBox(parent);
    box->addItems(texts);
    box->setMaxVisibleItems(int(texts.size()));
    auto* self = const_cast<BoolDelegate*>(this);
    connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), self,
            [self, box] { self->commit(box); });
    return box;
}

void BoolDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    if (auto* box = qobject_cast<ui::ListComboBox*>(editor)) {
        const_cast<BoolDelegate*>(this)->setChangingData(true);
        box->setCurrentIndex(index.data(Qt::EditRole).toBool() ? 1 : 0);
        const_cast<BoolDelegate*>(this)->setChangingData(false);
    }
}

void BoolDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                const QModelIndex& index) const {
    if (auto* box = qobject_cast<ui::ListComboBox*>(editor)) {
        model->setData(index, box->currentIndex() != 0, Qt::EditRole);
    }
}

// ---- Lists --------------------------------------------------------------------------------

ListDelegate::ListDelegate(SettingManager* manager, QObject* parent)
    : SettingDelegate(manager, true, parent) {}

QWidget* ListDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                    const QModelIndex& index) const {
    auto* box = new ui::ListComboBox(parent);
    box->addItems(index.data(Qt::DisplayRole).toStringList());
    auto* self = const_cast<ListDelegate*>(this);
    connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), self,
            [self, box] { self->commit(box); });
    return box;
}

void ListDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    if (auto* box = qobject_cast<ui::ListComboBox*>(editor)) {
        const_cast<ListDelegate*>(this)->setChangingData(true);
        box->setCurrentIndex(index.data(Qt::EditRole).toInt());
        const_cast<ListDelegate*>(this)->setChangingData(false);
    }
}

void ListDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                const QModelIndex& index) const {
    if (auto* box = qobject_cast<ui::ListComboBox*>(editor)) {
        model->setData(index, box->currentIndex(), Qt::EditRole);
    }
}

// ---- Check box groups -----------------------------------------------------------------------

CheckBoolDelegate::CheckBoolDelegate(SettingManager* manager, QObject* parent)
    : SettingDelegate(manager, true, parent) {}

QWidget* CheckBoolDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                         const QModelIndex& index) const {
    int subIndex = -1;
    if (!settingAt(index, &subIndex)) {
        return nullptr;
    }
    auto* self = const_cast<CheckBoolDelegate*>(this);
    if (subIndex >= 0) {
        auto* box = new ui::CheckBoolBox(parent);
        connect(box, &QCheckBox::toggled, self, [self, box] { self->commit(box); });
        return box;
    }
    auto* button = new ui::BoolButton(parent);
    const QPersistentModelIndex cell(index);
    connect(button, &QPushButton::released, self, [self, button, cell] {
        if (!cell.isValid()) {
            return;
        }
        const bool expanded = self->manager()->isExpanded(cell);
        if (!expanded && button->getState()) {
            self->manager()->expandSetting(cell);
        } else if (expanded && !button->getState()) {
            self->manager()->unexpandSetting(cell);
        }
    });
    return button;
}

void CheckBoolDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    auto* self = const_cast<CheckBoolDelegate*>(this);
    self->setChangingData(true);
    if (auto* box = qobject_cast<ui::CheckBoolBox*>(editor)) {
        box->setChecked(index.data(Qt::EditRole).toBool());
        box->setText(index.data(Qt::DisplayRole).toString());
    } else if (auto* button = qobject_cast<ui::BoolButton*>(editor)) {
        button->setState(manager()->isExpanded(index));
        button->setText(index.data(Qt::DisplayRole).toString());
    }
    self->setChangingData(false);
}

void CheckBoolDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                     const QModelIndex& index) const {
    if (auto* box = qobject_cast<ui::CheckBoolBox*>(editor)) {
        model->setData(index, box->isChecked(), Qt::EditRole);
    }
}

} // namespace sf::del
