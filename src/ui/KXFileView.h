#pragma once

// What a tab shows for one open setup file: every category as a titled table, a list of
// the categories to jump to, a search that keeps the rows whose name, help identifier
// or help text holds the words typed, and beside the tables the selected setting's
// status line and help text.

#include <QModelIndex>
#include <QWidget>

#include <vector>

class QLabel;
class QLineEdit;
class QListWidget;
class QScrollArea;
class QTextBrowser;

namespace sf::ui {
class SettingsTableView;
}

namespace ui {

class KXFileModel;

class KXFileView : public QWidget {
    Q_OBJECT
public:
    explicit KXFileView(KXFileModel* file, QWidget* parent = nullptr);

    KXFileModel* file() const { return m_file; }
    // Every category's table (made now where it has not been made yet).
    const std::vector<sf::ui::SettingsTableView*>& tables();
    // The number of rows the search leaves shown, over all tables.
    int shownRows() const;
    QString statusText() const;
    QString helpText() const;

public slots:
    // Keeps the rows that hold every word of text (case-insensitive); empty shows all.
    void search(const QString& text);
    // Types the text into the search box (which searches).
    void setSearchText(const QString& text);
    // Scrolls the cell into view and selects it.
    void jumpTo(const QModelIndex& index);
    // Resets the selected setting to its default value.
    void resetSelectedToDefault();

public:
    // The keys of the tables, as the Help menu lists them (HTML).
    static QString keysText();

signals:
    // The status-line text of the setting under the cursor or selected (empty when none).
    void settingTip(const QString& tip);

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // The tables open the editors of their rows as the rows come near the screen and
    // keep them; until then the cells are only painted (thousands of editor widgets
    // made at once would make opening and scrolling a large file slow).
    void activateVisibleTables();
    // Table number i, made in place of its stand-in the first time it is asked for.
    sf::ui::SettingsTableView* table(size_t i);
    void makeAllTables();
    // The height and width table number i will take, for its stand-in.
    QSize estimatedSize(size_t i) const;
    void showCategory(int row);
    void selectionMoved(const QModelIndex& index);
    // The cursor leaves table number `from` upwards or downwards: the next table with a
    // row shown takes it, in the same column where that column has a setting.
    void moveToNextTable(size_t from, bool up, int column);
    // The focus coming back to a table shows its current cell's help again.
    void focusMoved(QWidget* now);
    void ensureCellVisible(const sf::ui::SettingsTableView* view, const QModelIndex& index);
    bool rowMatches(const QModelIndex& first, const QStringList& words) const;

    KXFileModel* m_file;
    QLineEdit* m_search;
    QListWidget* m_categories;
    QScrollArea* m_scroll;
    QLabel* m_status;
    QTextBrowser* m_help;
    std::vector<sf::ui::SettingsTableView*> m_tables; // null until made
    std::vector<QWidget*> m_sections;                 // a title and its table
    QModelIndex m_selected;
};

} // namespace ui
