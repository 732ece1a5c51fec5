#include "sf/del/MultiDelegate.h"

#include "sf/Setting.h"
#include "sf/SettingManager.h"

namespace sf::del {

MultiDelegate::MultiDelegate(SettingManager* manager, QObject* parent)
    : QStyledItemDelegate(parent), m_manager(manager) {}

void MultiDelegate::installDefaults() {
    setDelegate(TypeNum, new NumDelegate(m_manager, this));
    setDelegate(TypeBool, new BoolDelegate(m_manager, this));
    setDelegate(TypeCheckBool, new CheckBoolDelegate(m_manager, this));
    setDelegate(TypeList, new ListDelegate(m_manager, this));
}

void MultiDelegate::setDelegate(SettingType type, SettingDelegate* delegate) {
    m_delegates.insert(type, delegate);
    // An editor's commit goes through this delegate, which the view knows.
    connect(delegate, &QAbstractItemDelegate::commitData, this, &QAbstractItemDelegate::commitData);
    connect(delegate, &QAbstractItemDelegate::closeEditor, this,
            &QAbstractItemDelegate::closeEditor);
}

SettingType MultiDelegate::typeAt(const QModelIndex& index) const {
    const Setting* setting = index.isValid() ? m_manager->getSetting(index) : nullptr;
    return setting ? setting->getType() : TypeNone;
}

SettingDelegate* MultiDelegate::delegateFor(const QModelIndex& index) const {
    return m_delegates.value(typeAt(index), nullptr);
}

QMenu* MultiDelegate::menuFor(const QModelIndex& index) const {
    return m_menus.value(typeAt(index), nullptr);
}

QWidget* MultiDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                     const QModelIndex& index) const {
    if (SettingDelegate* d = delegateFor(index)) {
        return d->createEditor(parent, option, index);
    }
    return nullptr; // an empty cell has nothing to edit
}

void MultiDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    if (SettingDelegate* d = delegateFor(index)) {
        d->setEditorData(editor, index);
    }
}

void MultiDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                 const QModelIndex& index) const {
    if (SettingDelegate* d = delegateFor(index)) {
        d->setModelData(editor, model, index);
    }
}

void MultiDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
    if (SettingDelegate* d = delegateFor(index)) {
        d->paint(painter, option, index);
    } else {
        QStyledItemDelegate::paint(painter, option, index);
    }
}

QSize MultiDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    SettingDelegate* d = delegateFor(index);
    return d ? d->sizeHint(option, index) : QStyledItemDelegate::sizeHint(option, index);
}

void MultiDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                         const QModelIndex& index) const {
    if (SettingDelegate* d = delegateFor(index)) {
        d->updateEditorGeometry(editor, option, index);
    } else {
        QStyledItemDelegate::updateEditorGeometry(editor, option, index);
    }
}

bool MultiDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                              const QStyleOptionViewItem& option, const QModelIndex& index) {
    SettingDelegate* d = delegateFor(index);
    return d ? d->helpEvent(event, view, option, index)
             : QStyledItemDelegate::helpEvent(event, view, option, index);
}

bool MultiDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
                                const QStyleOptionViewItem& option, const QModelIndex& index) {
    // Protected in the kind delegates, public in the base class.
    QAbstractItemDelegate* d = delegateFor(index);
    return d ? d->editorEvent(event, model, option, index)
             : QStyledItemDelegate::editorEvent(event, model, option, index);
}

} // namespace sf::del
