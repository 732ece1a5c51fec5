#include "sf/ui/SettingsTableView.h"

#include "sf/SettingManager.h"
#include "sf/SettingsTableModel.h"
#include "sf/del/MultiDelegate.h"
#include "sf/ui/Editors.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLinearGradient>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionButton>

namespace sf::ui {

namespace {

constexpr int CHECK_MARGIN = 4;

} // namespace

SettingsTableView::SettingsTableView(QWidget* parent) : QTableView(parent) {
    setVerticalHeader(new PlainHeader(this));
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSelectionMode(QAbstractItemView::SingleSelection);
    // One cell is chosen at a time, so the corner has nothing to select: it is only the
    // header's face.
    setCornerButtonEnabled(false);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                    QAbstractItemView::AnyKeyPressed);
    setWordWrap(false);
    setTabKeyNavigation(false); // Tab goes on to the next part of the window; arrows move
    horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    horizontalHeader()->setMinimumSectionSize(140);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(28);
    connect(static_cast<PlainHeader*>(verticalHeader()), &PlainHeader::rowToggled, this,
            [this](int row) {
                if (m_model && m_model->rowNeedsCheckBox(row)) {
                    m_model->toggleRowEnabled(row);
                    loadEditors();
                }
            });
}

void SettingsTableView::setModel(QAbstractItemModel* model) {
    if (m_model) {
        disconnect(m_model, nullptr, this, nullptr);
    }
    QTableView::setModel(model); // closes the editors of the model before
    if (m_delegate) {            // a new model comes with a delegate of its own
        setItemDelegate(nullptr);
        delete m_delegate;
        m_delegate = nullptr;
    }
    m_rowOpened.clear();
    m_model = qobject_cast<SettingsTableModel*>(model);
    if (!m_model) {
        return;
    }
    m_delegate = new del::MultiDelegate(m_model->manager(), this);
    m_delegate->installDefaults();
    setItemDelegate(m_delegate);
    connect(m_model, &SettingsTableModel::sizeChanged, this, &SettingsTableView::recomputeSize);
    connect(m_model, &SettingsTableModel::updateEditorData, this,
            &SettingsTableView::updateEditorData);
    connect(m_model, &SettingsTableModel::reloadAllEditors, this, &SettingsTableView::loadEditors);
    connect(m_model, &SettingsTableModel::updateAllVisible, this,
            &SettingsTableView::updateAllVisible);
    connect(m_model, &QAbstractItemModel::modelReset, this, &SettingsTableView::loadEditors);
    loadEditors();
    recomputeSize();
}

void SettingsTableView::setEditorsActive(bool active) {
    if (active != m_editorsActive) {
        m_editorsActive = active;
        m_rowOpened.clear();
        loadEditors();
    }
}

void SettingsTableView::openRowEditors(int row) {
    for (int column = 0; column < m_model->columnCount(); ++column) {
        const QModelIndex index = m_model->index(row, column);
        const del::SettingDelegate* d = m_delegate->delegateFor(index);
        if (isPersistentEditorOpen(index)) {
            closePersistentEditor(index);
        }
        if (d && d->isPersistent(index) && (m_model->flags(index) & Qt::ItemIsEditable)) {
            openPersistentEditor(index);
            if (QWidget* editor = indexWidget(index)) {
                editor->installEventFilter(this);
            }
        }
    }
}

void SettingsTableView::openEditorsInRows(int first, int last) {
    if (!m_model || m_editorsActive) {
        return;
    }
    m_rowOpened.resize(m_model->rowCount());
    for (int row = qMax(0, first); row <= last && row < m_model->rowCount(); ++row) {
        if (!m_rowOpened.at(row)) {
            m_rowOpened[row] = true;
            openRowEditors(row);
        }
    }
}

void SettingsTableView::loadEditors() {
    if (!m_model) {
        return;
    }
    m_rowOpened.resize(m_model->rowCount());
    for (int row = 0; row < m_model->rowCount(); ++row) {
        if (m_editorsActive || m_rowOpened.at(row)) {
            openRowEditors(row);
        } else {
            for (int column = 0; column < m_model->columnCount(); ++column) {
                const QModelIndex index = m_model->index(row, column);
                if (isPersistentEditorOpen(index)) {
                    closePersistentEditor(index);
                }
            }
        }
    }
}

void SettingsTableView::updateEditorData() {
    if (!m_model) {
        return;
    }
    for (int row = 0; row < m_model->rowCount(); ++row) {
        for (int column = 0; column < m_model->columnCount(); ++column) {
            const QModelIndex index = m_model->index(row, column);
            if (QWidget* editor = indexWidget(index)) {
                m_delegate->setEditorData(editor, index);
            }
        }
    }
    viewport()->update();
}

void SettingsTableView::updateAllVisible() {
    viewport()->update();
    verticalHeader()->viewport()->update();
}

void SettingsTableView::recomputeSize() {
    if (!m_model) {
        return;
    }
    int height = horizontalHeader()->isHidden() ? 0 : horizontalHeader()->sizeHint().height();
    for (int row = 0; row < m_model->rowCount(); ++row) {
        height += isRowHidden(row) ? 0 : rowHeight(row);
    }
    setFixedHeight(height + 2 * frameWidth());
    // Never narrower than its columns at their smallest: a page of tables scrolls
    // sideways instead of cutting columns off.
    setMinimumWidth(verticalHeader()->sizeHint().width() +
                    m_model->columnCount() * horizontalHeader()->minimumSectionSize() +
                    2 * frameWidth());
}

void SettingsTableView::invokeMenu(const QModelIndex& index, const QPoint& globalPosition) {
    if (QMenu* menu = m_delegate ? m_delegate->menuFor(index) : nullptr) {
        setCurrentIndex(index);
        menu->exec(globalPosition);
    }
}

void SettingsTableView::installContextMenu(QMenu* menu, SettingType type) {
    if (!m_delegate) {
        return;
    }
    m_delegate->setMenu(type, menu);
    for (QAction* action : menu->actions()) {
        connect(action, &QAction::triggered, this, [this] { emit edit(currentIndex()); });
    }
}

void SettingsTableView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    if (m_model && current.isValid()) {
        emit settingTip(m_model->manager()->getSettingData(current, RoleStatus).toString());
    }
}

bool SettingsTableView::keyToEditor(QKeyEvent* event) {
    QWidget* editor = indexWidget(currentIndex());
    const int key = event->key();
    const bool space = key == Qt::Key_Space && event->modifiers() == Qt::NoModifier;
    const bool open = key == Qt::Key_Return || key == Qt::Key_Enter ||
                      (key == Qt::Key_Down && (event->modifiers() & Qt::AltModifier));
    if (auto* box = qobject_cast<ListComboBox*>(editor)) {
        if (space && box->count() == 2) { // a bit: its other label
            box->setCurrentIndex(1 - box->currentIndex());
            return true;
        }
        if (open) {
            box->showPopup();
            return true;
        }
    } else if (auto* check = qobject_cast<QAbstractButton*>(editor)) {
        if (space || key == Qt::Key_Return || key == Qt::Key_Enter) {
            check->click();
            return true;
        }
    }
    return false;
}

bool SettingsTableView::eventFilter(QObject* watched, QEvent* event) {
    auto* editor = qobject_cast<QWidget*>(watched);
    if (event->type() == QEvent::MouseButtonPress && editor &&
        editor->parentWidget() == viewport()) {
        const QModelIndex cell = indexAt(editor->geometry().center());
        if (cell.isValid() && cell != currentIndex()) {
            setCurrentIndex(cell);
        }
        setFocus(Qt::MouseFocusReason);
    }
    return QTableView::eventFilter(watched, event);
}

void SettingsTableView::keyPressEvent(QKeyEvent* event) {
    const QModelIndex current = currentIndex();
    if (m_model && current.isValid() && state() != EditingState) {
        if (keyToEditor(event)) {
            return;
        }
        const int key = event->key();
        if ((key == Qt::Key_Return || key == Qt::Key_Enter) &&
            QAbstractItemView::edit(current, EditKeyPressed, event)) {
            return;
        }
        if ((key == Qt::Key_Up || key == Qt::Key_Down) && event->modifiers() == Qt::NoModifier) {
            const QModelIndex next =
                moveCursor(key == Qt::Key_Up ? MoveUp : MoveDown, Qt::NoModifier);
            if (!next.isValid() || next == current) {
                emit leftTable(key == Qt::Key_Up, current.column());
                return;
            }
        }
    }
    if (m_model && current.isValid() && event->matches(QKeySequence::Copy)) {
        QGuiApplication::clipboard()->setText(m_model->text(currentIndex()));
        return;
    }
    if (m_model && currentIndex().isValid() && event->matches(QKeySequence::Paste)) {
        m_model->setText(currentIndex(), QGuiApplication::clipboard()->text());
        return;
    }
    QTableView::keyPressEvent(event);
}

// ---- Row header ---------------------------------------------------------------------------

PlainHeader::PlainHeader(QWidget* parent) : QHeaderView(Qt::Vertical, parent) {
    setSectionsClickable(true);
    setHighlightSections(false);
}

void PlainHeader::setModel(QAbstractItemModel* model) {
    if (this->model()) {
        disconnect(this->model(), nullptr, this, nullptr);
    }
    QHeaderView::setModel(model);
    m_width = -1;
    if (!model) {
        return;
    }
    const auto forget = [this] { m_width = -1; };
    connect(model, &QAbstractItemModel::headerDataChanged, this, forget);
    connect(model, &QAbstractItemModel::modelReset, this, forget);
    connect(model, &QAbstractItemModel::layoutChanged, this, forget);
    connect(model, &QAbstractItemModel::rowsInserted, this, forget);
    connect(model, &QAbstractItemModel::rowsRemoved, this, forget);
}

int PlainHeader::checkWidth() const {
    return style()->pixelMetric(QStyle::PM_IndicatorWidth) + 3 * CHECK_MARGIN;
}

QSize PlainHeader::sizeHint() const {
    if (orientation() != Qt::Vertical || !model()) {
        return QHeaderView::sizeHint();
    }
    if (m_width < 0) {
        int widest = 0;
        for (int row = 0; row < count(); ++row) {
            const QVariant font = model()->headerData(row, Qt::Vertical, Qt::FontRole);
            const QFontMetrics metrics(font.isValid() ? font.value<QFont>() : this->font());
            widest =
                qMax(widest,
                     metrics.horizontalAdvance(model()->headerData(row, Qt::Vertical).toString()));
        }
        m_width = widest + 2 * style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this) +
                  checkWidth() + 4 * CHECK_MARGIN;
    }
    return QSize(m_width, defaultSectionSize());
}

QSize PlainHeader::sectionSizeFromContents(int logicalIndex) const {
    QSize size = QHeaderView::sectionSizeFromContents(logicalIndex);
    size.rwidth() += checkWidth();
    return size;
}

void PlainHeader::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const {
    const auto* table = qobject_cast<const SettingsTableModel*>(model());
    if (!table) {
        QHeaderView::paintSection(painter, rect, logicalIndex);
        return;
    }
    painter->save();
    // A light face with a darker edge at the bottom, in the row's own colour.
    const QColor face =
        table->headerData(logicalIndex, Qt::Vertical, Qt::BackgroundRole).value<QColor>();
    QLinearGradient gradient(rect.topLeft(), rect.bottomLeft());
    gradient.setColorAt(0.0, face.lighter(104));
    gradient.setColorAt(1.0, face.darker(108));
    painter->fillRect(rect, gradient);
    painter->setPen(SettingsTableModel::COLOUR_HEADER_GRADIENT_MID.lighter(150));
    painter->drawLine(rect.bottomLeft(), rect.bottomRight());
    painter->drawLine(rect.topRight(), rect.bottomRight());

    QRect textRect = rect.adjusted(CHECK_MARGIN, 0, -CHECK_MARGIN, 0);
    if (table->rowNeedsCheckBox(logicalIndex)) {
        QStyleOptionButton box;
        const int side = style()->pixelMetric(QStyle::PM_IndicatorWidth);
        box.rect = QRect(rect.left() + CHECK_MARGIN, rect.center().y() - side / 2, side, side);
        box.state =
            QStyle::State_Enabled |
            (table->manager()->isEnabled(table->index(logicalIndex, 0)) ? QStyle::State_On
                                                                        : QStyle::State_Off);
        style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, painter, this);
        textRect.setLeft(box.rect.right() + CHECK_MARGIN);
    }
    const QVariant foreground = table->headerData(logicalIndex, Qt::Vertical, Qt::ForegroundRole);
    painter->setPen(foreground.isValid() ? foreground.value<QColor>()
                                         : palette().color(QPalette::WindowText));
    painter->setFont(table->headerData(logicalIndex, Qt::Vertical, Qt::FontRole).value<QFont>());
    painter->drawText(textRect, Qt::AlignRight | Qt::AlignVCenter,
                      table->headerData(logicalIndex, Qt::Vertical).toString());
    painter->restore();
}

void PlainHeader::mousePressEvent(QMouseEvent* event) {
    const int row = logicalIndexAt(event->pos());
    if (row >= 0 && event->button() == Qt::LeftButton) {
        emit rowToggled(row);
        viewport()->update();
    }
    QHeaderView::mousePressEvent(event);
}

} // namespace sf::ui
