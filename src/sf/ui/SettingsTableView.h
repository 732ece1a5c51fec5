#pragma once

// A category's settings as a table with its editors open in the cells: the view of a
// SettingsTableModel, sized to show all its rows, with the row header of enable boxes.

#include "sf/SettingTypes.h"

#include <QHeaderView>
#include <QTableView>

class QMenu;

namespace sf {
class SettingsTableModel;
}

namespace sf::del {
class MultiDelegate;
}

namespace sf::ui {

class SettingsTableView : public QTableView {
    Q_OBJECT
public:
    explicit SettingsTableView(QWidget* parent = nullptr);

    // Shows the model with a MultiDelegate of every kind and the row header.
    void setModel(QAbstractItemModel* model) override;
    SettingsTableModel* settingsModel() const { return m_model; }
    del::MultiDelegate* multiDelegate() const { return m_delegate; }

    // Runs the context menu registered for the kind of the cell's setting.
    void invokeMenu(const QModelIndex& index, const QPoint& globalPosition);
    void installContextMenu(QMenu* menu, SettingType type);
    // Whether the table keeps its editors open in every row (the default). A page of many
    // tables turns that off and opens them row by row as rows come near the screen
    // (openEditorsInRows); rows once opened keep their editors.
    void setEditorsActive(bool active);
    bool editorsActive() const { return m_editorsActive; }
    void openEditorsInRows(int first, int last);

    // The view's own ways to start editing stay callable beside the signal below.
    using QTableView::edit;

public slots:
    // Opens an editor in every cell whose delegate keeps one open.
    void loadEditors();
    // Fills every open editor again from the model (also when the view itself asks).
    void updateEditorData() override;
    void updateAllVisible();
    // Fits the table's height to its rows, so that a page of tables scrolls as one.
    void recomputeSize();

signals:
    // The status-line text (data role 12) of the selected cell.
    void settingTip(const QString& text);
    // Asks to edit the cell of a context menu's action.
    void edit(const QModelIndex& index);
    // An arrow key went past the first (up) or last row a cell can be chosen in: the table
    // above or below takes the cursor on in that column.
    void leftTable(bool up, int column);

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    // The keys of the table (docs/tables.md): arrows move between cells and on into the
    // next table; Enter or F2 edits a number, and on a cell with an open editor Enter or
    // Alt+Down opens its list and Space toggles a bit or box (Space on a group's row folds
    // it); copy puts the current cell's value on the clipboard as text and paste sets the
    // cell from the clipboard's text as the command line's set would.
    void keyPressEvent(QKeyEvent* event) override;
    // A click into an editor open in a cell makes that cell the current one.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Space, Enter or Alt+Down on a cell whose editor stays open; false when it has none.
    bool keyToEditor(QKeyEvent* event);

protected:
private:
    SettingsTableModel* m_model = nullptr;
    del::MultiDelegate* m_delegate = nullptr;
    void openRowEditors(int row);

    bool m_editorsActive = true;
    QVector<bool> m_rowOpened; // while not active: the rows whose editors are open
};

// The row header: the settings' names, and an enable box on every row that may be
// switched on and off; a click on such a row header toggles the row.
class PlainHeader : public QHeaderView {
    Q_OBJECT
public:
    explicit PlainHeader(QWidget* parent = nullptr);
    void setModel(QAbstractItemModel* model) override;
    // A row header is as wide as its widest setting name, measured once per change of
    // the rows (the style's measure of every section is the costly part of opening a
    // file).
    QSize sizeHint() const override;

signals:
    void rowToggled(int row);

protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    void mousePressEvent(QMouseEvent* event) override;
    QSize sectionSizeFromContents(int logicalIndex) const override;

private:
    int checkWidth() const;
    mutable int m_width = -1;
};

} // namespace sf::ui
