#include "ui/KXFileView.h"

#include "sf/SettingManager.h"
#include "sf/SettingsTableModel.h"
#include "sf/ui/SettingsTableView.h"
#include "ui/KXFileModel.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QTextBrowser>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

namespace ui {

KXFileView::KXFileView(KXFileModel* file, QWidget* parent) : QWidget(parent), m_file(file) {
    m_search = new QLineEdit(this);
    m_search->setPlaceholderText(tr("Search settings by name or help text"));
    m_search->setClearButtonEnabled(true);
    m_categories = new QListWidget(this);
    m_categories->setMaximumWidth(220);
    m_scroll = new QScrollArea(this);
    m_scroll->setWidgetResizable(true);
    m_status = new QLabel(this);
    m_status->setWordWrap(true);
    m_status->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_help = new QTextBrowser(this);
    m_help->setOpenExternalLinks(false);
    auto* reset = new QPushButton(tr("Reset to default"), this);
    reset->setToolTip(tr("Put the selected setting back to the value of the firmware's "
                         "default setup (undo takes it back)"));

    // Tab goes from the search to the category list, the tables, the help and the reset;
    // each table takes its place after the one before it as it is made.
    setTabOrder(m_search, m_categories);
    setTabOrder(m_categories, m_help);
    setTabOrder(m_help, reset);

    auto* page = new QWidget(m_scroll);
    auto* pageLayout = new QVBoxLayout(page);
    for (size_t i = 0; i < file->tables().size(); ++i) {
        auto* section = new QWidget(page);
        auto* sectionLayout = new QVBoxLayout(section);
        sectionLayout->setContentsMargins(0, 8, 0, 4);
        auto* title = new QLabel(file->tableTitles().value(int(i)), section);
        QFont font = title->font();
        font.setPointSizeF(font.pointSizeF() * 1.3);
        font.setBold(true);
        title->setFont(font);
        sectionLayout->addWidget(title);
        pageLayout->addWidget(section);
        m_sections.push_back(section);
        m_tables.push_back(nullptr);
        m_categories->addItem(file->tableTitles().value(int(i)));
        connect(file->tables()[i].get(), &sf::SettingsTableModel::editRefused, this,
                [this](const QString& message) {
                    m_status->setText(message);
                    emit settingTip(message);
                });
        connect(file->tables()[i].get(), &sf::SettingsTableModel::reloadAllEditors, this,
                &KXFileView::activateVisibleTables, Qt::QueuedConnection);
    }
    // The first table now, to measure by; the others as they come near the screen, and
    // the rest right after the first paint (a dozen tables made at once are a good part
    // of the time before the window first shows).
    for (size_t i = 0; i < m_sections.size(); ++i) {
        if (i == 0) {
            table(0);
            continue;
        }
        const QSize size = estimatedSize(i);
        auto* standIn = new QWidget(m_sections[i]);
        standIn->setFixedHeight(size.height());
        standIn->setMinimumWidth(size.width());
        m_sections[i]->layout()->addWidget(standIn);
    }
    pageLayout->addStretch(1);
    m_scroll->setWidget(page);
    page->installEventFilter(this);

    auto* side = new QWidget(this);
    auto* sideLayout = new QVBoxLayout(side);
    sideLayout->setContentsMargins(0, 0, 0, 0);
    sideLayout->addWidget(m_status);
    sideLayout->addWidget(m_help, 1);
    sideLayout->addWidget(reset);

    // The tables take what the window grows by; the list and the help keep usable widths
    // and are never collapsed away (the help holds "Reset to default").
    auto* splitter = new QSplitter(this);
    splitter->addWidget(m_categories);
    splitter->addWidget(m_scroll);
    splitter->addWidget(side);
    splitter->setStretchFactor(0, 0);
    splitter->setStretchFactor(1, 1);
    splitter->setStretchFactor(2, 0);
    m_categories->setMinimumWidth(100);
    side->setMinimumWidth(160);
    m_scroll->setMinimumWidth(200);
    for (int i = 0; i < splitter->count(); ++i) {
        splitter->setCollapsible(i, false);
    }
    splitter->setSizes({150, 640, 230});
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_search);
    layout->addWidget(splitter, 1);

    m_scroll->setFocusPolicy(Qt::NoFocus);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget*, QWidget* now) { focusMoved(now); });

    connect(m_search, &QLineEdit::textChanged, this, &KXFileView::search);
    connect(m_categories, &QListWidget::currentRowChanged, this, &KXFileView::showCategory);
    connect(reset, &QPushButton::clicked, this, &KXFileView::resetSelectedToDefault);
    connect(file, &KXFileModel::jumpToIndex, this, &KXFileView::jumpTo);
    connect(m_scroll->verticalScrollBar(), &QScrollBar::valueChanged, this,
            &KXFileView::activateVisibleTables);
    connect(m_scroll->horizontalScrollBar(), &QScrollBar::valueChanged, this,
            &KXFileView::activateVisibleTables);

    // The help pane shows a setting from the start: the first one of the first table.
    for (size_t i = 0; i < m_tables.size(); ++i) {
        sf::ui::SettingsTableView* view = table(i);
        const QAbstractItemModel* model = view->model();
        for (int row = 0; row < model->rowCount() && !m_selected.isValid(); ++row) {
            if (model->flags(model->index(row, 0)) & Qt::ItemIsEnabled) {
                view->setCurrentIndex(model->index(row, 0));
            }
        }
        if (m_selected.isValid()) {
            break;
        }
    }
}

void KXFileView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    activateVisibleTables();
}

void KXFileView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    activateVisibleTables();
}

bool KXFileView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_scroll->widget() && event->type() == QEvent::Paint) {
        // The tables first shown have painted: the others are made next.
        m_scroll->widget()->removeEventFilter(this);
        QTimer::singleShot(0, this, &KXFileView::makeAllTables);
    }
    return QWidget::eventFilter(watched, event);
}

const std::vector<sf::ui::SettingsTableView*>& KXFileView::tables() {
    makeAllTables();
    return m_tables;
}

void KXFileView::makeAllTables() {
    for (size_t i = 0; i < m_tables.size(); ++i) {
        table(i);
    }
}

QSize KXFileView::estimatedSize(size_t i) const {
    const sf::ui::SettingsTableView* first = m_tables.front();
    const QAbstractItemModel* model = m_file->tables()[i].get();
    const int frame = 2 * first->frameWidth();
    return {first->verticalHeader()->sizeHint().width() +
                model->columnCount() * first->horizontalHeader()->minimumSectionSize() + frame,
            first->horizontalHeader()->sizeHint().height() +
                model->rowCount() * first->verticalHeader()->defaultSectionSize() + frame};
}

sf::ui::SettingsTableView* KXFileView::table(size_t i) {
    if (m_tables[i]) {
        return m_tables[i];
    }
    QWidget* section = m_sections[i];
    auto* view = new sf::ui::SettingsTableView(section);
    view->setEditorsActive(false);
    view->setModel(m_file->tables()[i].get());
    QLayout* layout = section->layout();
    if (QLayoutItem* standIn = layout->count() > 1 ? layout->takeAt(1) : nullptr) {
        delete standIn->widget();
        delete standIn;
    }
    layout->addWidget(view);
    view->show();
    m_tables[i] = view;

    QWidget* before = m_categories; // the nearest table above it already made, or the list
    for (size_t k = i; k-- > 0;) {
        if (m_tables[k]) {
            before = m_tables[k];
            break;
        }
    }
    setTabOrder(before, view);
    connect(view->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this, view](const QModelIndex& current) {
                if (current.isValid()) { // a table that loses its cursor keeps the help
                    selectionMoved(current);
                    ensureCellVisible(view, current);
                }
            });
    connect(view, &sf::ui::SettingsTableView::leftTable, this,
            [this, i](bool up, int column) { moveToNextTable(i, up, column); });
    return view;
}

void KXFileView::activateVisibleTables() {
    if (!isVisible()) {
        return; // the sections have no places yet
    }
    m_scroll->widget()->layout()->activate();
    const int height = m_scroll->viewport()->height();
    const int top = m_scroll->verticalScrollBar()->value() - height / 4;
    const int bottom = top + height + height / 2;
    bool made = false;
    for (size_t i = 0; i < m_sections.size(); ++i) {
        const QWidget* section = m_sections[i];
        if (!m_tables[i] && section->y() <= bottom && section->y() + section->height() >= top) {
            table(i);
            made = true;
        }
    }
    if (made) {
        m_scroll->widget()->layout()->activate();
    }
    for (size_t i = 0; i < m_sections.size(); ++i) {
        const QWidget* section = m_sections[i];
        sf::ui::SettingsTableView* view = m_tables[i];
        if (!view) {
            continue;
        }
        const int viewTop = section->y() + view->y() + view->viewport()->y();
        if (!section->isVisibleTo(this) || viewTop > bottom ||
            section->y() + section->height() < top) {
            continue;
        }
        const int first = view->rowAt(qMax(0, top - viewTop));
        const int last = view->rowAt(bottom - viewTop);
        view->openEditorsInRows(first < 0 ? 0 : first,
                                last < 0 ? view->model()->rowCount() - 1 : last);
    }
}

void KXFileView::showCategory(int row) {
    if (row >= 0 && row < int(m_sections.size())) {
        m_scroll->verticalScrollBar()->setValue(m_sections[size_t(row)]->y());
    }
}

void KXFileView::selectionMoved(const QModelIndex& index) {
    m_selected = index;
    const sf::SettingManager* manager = m_file->manager();
    const QString tip = manager->getSettingData(index, sf::RoleStatus).toString();
    m_status->setText(tip);
    emit settingTip(tip);
    const QString help = manager->getSettingData(index, sf::RoleToolTip).toString();
    m_help->setHtml(help.isEmpty() ? tr("<i>No help text for this setting.</i>") : help);
}

void KXFileView::ensureCellVisible(const sf::ui::SettingsTableView* view,
                                   const QModelIndex& index) {
    if (!index.isValid() || !isVisible()) { // a hidden view has no places yet
        return;
    }
    m_scroll->widget()->layout()->activate();
    const QRect cell = view->visualRect(index);
    const QPoint centre = view->viewport()->mapTo(m_scroll->widget(), cell.center());
    m_scroll->ensureVisible(centre.x(), centre.y(), cell.width() / 2 + 2, cell.height());
    activateVisibleTables();
}

void KXFileView::moveToNextTable(size_t from, bool up, int column) {
    for (size_t i = up ? from - 1 : from + 1; i < m_tables.size(); up ? --i : ++i) {
        sf::ui::SettingsTableView* view = table(i);
        const QAbstractItemModel* model = view->model();
        if (m_sections[i]->isHidden()) {
            continue;
        }
        // The nearest row shown, in the column if it has a setting there, else the first.
        for (int k = 0; k < model->rowCount(); ++k) {
            const int row = up ? model->rowCount() - 1 - k : k;
            if (view->isRowHidden(row)) {
                continue;
            }
            QModelIndex target = model->index(row, qMin(column, model->columnCount() - 1));
            if (!(model->flags(target) & Qt::ItemIsEnabled)) {
                target = model->index(row, 0);
            }
            if (model->flags(target) & Qt::ItemIsEnabled) {
                view->setFocus(Qt::OtherFocusReason);
                view->setCurrentIndex(target);
                return;
            }
        }
    }
}

void KXFileView::focusMoved(QWidget* now) {
    auto* view = qobject_cast<sf::ui::SettingsTableView*>(now);
    // Only a cell other than the one shown: an editor closing gives the focus back to its
    // table, and a refusal's message stays until the cursor moves.
    if (view && view->currentIndex().isValid() && view->currentIndex() != m_selected &&
        std::find(m_tables.begin(), m_tables.end(), view) != m_tables.end()) {
        selectionMoved(view->currentIndex());
    }
}

QString KXFileView::keysText() {
    return tr("<table>"
              "<tr><td>Tab, Shift+Tab</td><td>search, categories, tables, help, "
              "Reset to default</td></tr>"
              "<tr><td>Arrow keys</td><td>move between cells, and on into the next "
              "table</td></tr>"
              "<tr><td>Enter, F2, typing</td><td>edit a number</td></tr>"
              "<tr><td>Enter, Alt+Down</td><td>open a list</td></tr>"
              "<tr><td>Space</td><td>switch a bit or a check box; unfold or fold a "
              "group</td></tr>"
              "<tr><td>Escape</td><td>cancel an edit or close a list</td></tr>"
              "<tr><td>Ctrl+C, Ctrl+V</td><td>copy a value, paste a value (checked "
              "like a typed one)</td></tr>"
              "</table>");
}

QString KXFileView::statusText() const {
    return m_status->text();
}

QString KXFileView::helpText() const {
    return m_help->toPlainText();
}

bool KXFileView::rowMatches(const QModelIndex& first, const QStringList& words) const {
    const sf::SettingManager* manager = m_file->manager();
    const QString haystack =
        first.model()->headerData(first.row(), Qt::Vertical).toString() + QLatin1Char(' ') +
        manager->getSettingData(first, sf::RoleStatus).toString() + QLatin1Char(' ') +
        manager->getSettingData(first, sf::RoleToolTip).toString();
    for (const QString& word : words) {
        if (!haystack.contains(word, Qt::CaseInsensitive)) {
            return false;
        }
    }
    return true;
}

void KXFileView::search(const QString& text) {
    const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    makeAllTables();
    for (size_t i = 0; i < m_tables.size(); ++i) {
        sf::ui::SettingsTableView* view = m_tables[i];
        const QAbstractItemModel* model = view->model();
        int shown = 0;
        const sf::SettingManager* manager = m_file->manager();
        for (int row = 0; row < model->rowCount(); ++row) {
            // A bit's row is kept with the setting it belongs to.
            const QModelIndex index = model->index(row, 0);
            int subIndex = -1;
            const sf::Setting* setting = manager->getSetting(index, &subIndex);
            const QModelIndex owner =
                setting && subIndex >= 0 ? manager->modelIndex(model, setting) : QModelIndex();
            const bool keep = words.isEmpty() || rowMatches(index, words) ||
                              (owner.isValid() && rowMatches(owner, words));
            view->setRowHidden(row, !keep);
            shown += keep ? 1 : 0;
        }
        view->recomputeSize();
        m_sections[i]->setVisible(shown > 0);
        m_categories->item(int(i))->setHidden(shown == 0);
    }
    activateVisibleTables();
}

void KXFileView::setSearchText(const QString& text) {
    m_search->setText(text);
}

int KXFileView::shownRows() const {
    int shown = 0;
    for (size_t i = 0; i < m_tables.size(); ++i) {
        const QAbstractItemModel* model = m_file->tables()[i].get();
        for (int row = 0; row < model->rowCount() && !m_sections[i]->isHidden(); ++row) {
            shown += m_tables[i] && m_tables[i]->isRowHidden(row) ? 0 : 1;
        }
    }
    return shown;
}

void KXFileView::jumpTo(const QModelIndex& index) {
    for (size_t i = 0; i < m_tables.size(); ++i) {
        if (m_file->tables()[i].get() != index.model()) {
            continue;
        }
        sf::ui::SettingsTableView* view = table(i);
        view->setCurrentIndex(index);
        ensureCellVisible(view, index);
    }
}

void KXFileView::resetSelectedToDefault() {
    if (m_selected.isValid()) {
        m_file->resetToDefault(m_selected);
    }
}

} // namespace ui
