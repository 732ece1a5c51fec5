#include "ui/KXFileView.h"

#include "sf/SettingManager.h"
#include "sf/SettingsTableModel.h"
#include "sf/ui/SettingsTableView.h"
#include "ui/KXFileModel.h"

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
#include <QVBoxLayout>

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

    auto* page = new QWidget(m_scroll);
    auto* pageLayout = new QVBoxLayout(page);
    const auto& tables = file->tables();
    for (size_t i = 0; i < tables.size(); ++i) {
        auto* section = new QWidget(page);
        auto* sectionLayout = new QVBoxLayout(section);
        sectionLayout->setContentsMargins(0, 8, 0, 4);
        auto* title = new QLabel(file->tableTitles().value(int(i)), section);
        QFont font = title->font();
        font.setPointSizeF(font.pointSizeF() * 1.3);
        font.setBold(true);
        title->setFont(font);
        auto* view = new sf::ui::SettingsTableView(section);
        view->setEditorsActive(false);
        view->setModel(tables[i].get());
        sectionLayout->addWidget(title);
        sectionLayout->addWidget(view);
        pageLayout->addWidget(section);
        m_sections.push_back(section);
        m_tables.push_back(view);
        m_categories->addItem(file->tableTitles().value(int(i)));
        connect(view, &sf::ui::SettingsTableView::settingTip, m_status, &QLabel::setText);
        connect(view, &sf::ui::SettingsTableView::settingTip, this, &KXFileView::settingTip);
        connect(tables[i].get(), &sf::SettingsTableModel::reloadAllEditors, this,
                &KXFileView::activateVisibleTables, Qt::QueuedConnection);
        connect(view->selectionModel(), &QItemSelectionModel::currentChanged, this,
                [this](const QModelIndex& current) { selectionMoved(current); });
    }
    pageLayout->addStretch(1);
    m_scroll->setWidget(page);

    auto* side = new QWidget(this);
    auto* sideLayout = new QVBoxLayout(side);
    sideLayout->setContentsMargins(0, 0, 0, 0);
    sideLayout->addWidget(m_status);
    sideLayout->addWidget(m_help, 1);
    sideLayout->addWidget(reset);

    auto* splitter = new QSplitter(this);
    splitter->addWidget(m_categories);
    splitter->addWidget(m_scroll);
    splitter->addWidget(side);
    splitter->setStretchFactor(1, 3);
    splitter->setStretchFactor(2, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_search);
    layout->addWidget(splitter, 1);

    connect(m_search, &QLineEdit::textChanged, this, &KXFileView::search);
    connect(m_categories, &QListWidget::currentRowChanged, this, &KXFileView::showCategory);
    connect(reset, &QPushButton::clicked, this, &KXFileView::resetSelectedToDefault);
    connect(file, &KXFileModel::jumpToIndex, this, &KXFileView::jumpTo);
    connect(m_scroll->verticalScrollBar(), &QScrollBar::valueChanged, this,
            &KXFileView::activateVisibleTables);
}

void KXFileView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    activateVisibleTables();
}

void KXFileView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    activateVisibleTables();
}

void KXFileView::activateVisibleTables() {
    if (!isVisible()) {
        return; // the sections have no places yet
    }
    m_scroll->widget()->layout()->activate();
    const int height = m_scroll->viewport()->height();
    const int top = m_scroll->verticalScrollBar()->value() - height / 4;
    const int bottom = top + height + height / 2;
    for (size_t i = 0; i < m_sections.size(); ++i) {
        const QWidget* section = m_sections[i];
        sf::ui::SettingsTableView* view = m_tables[i];
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
    const QString help = manager->getSettingData(index, sf::RoleToolTip).toString();
    m_help->setHtml(help.isEmpty() ? tr("<i>No help text for this setting.</i>") : help);
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
        const QAbstractItemModel* model = m_tables[i]->model();
        for (int row = 0; row < model->rowCount() && !m_sections[i]->isHidden(); ++row) {
            shown += m_tables[i]->isRowHidden(row) ? 0 : 1;
        }
    }
    return shown;
}

void KXFileView::jumpTo(const QModelIndex& index) {
    for (size_t i = 0; i < m_tables.size(); ++i) {
        sf::ui::SettingsTableView* view = m_tables[i];
        if (view->model() != index.model()) {
            continue;
        }
        view->setCurrentIndex(index);
        const QRect cell = view->visualRect(index);
        m_scroll->ensureVisible(0, m_sections[i]->y() + view->y() + cell.center().y(), 0,
                                cell.height() * 2);
        activateVisibleTables();
    }
}

void KXFileView::resetSelectedToDefault() {
    if (m_selected.isValid()) {
        m_file->resetToDefault(m_selected);
    }
}

} // namespace ui
