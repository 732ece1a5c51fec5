#pragma once

#include <QHash>
#include <QObject>
#include <QPair>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QVarLengthArray>
#include <QVector>

#include "sf/RowSpans.h"

#include <vector>

namespace sf {

class CategoryIndex;
class Setting;

// A cell's place in a category: a row (virtual, as a table shows it) and a preset column.
struct CategoryPosition {
    int row = -1;
    int column = -1;
    bool isValid() const { return row >= 0 && column >= 0; }
};

// One category heading of the layout and one table of the user interface.
//
// The settings are laid out as a grid of CategoryIndex cells: one column per preset and
// one row per base code name (and forced sub-index), so that the presets of one setting
// share a row. Every row has a cell in every column (fillers where a preset has no
// setting), and all cells of a row have the same size, so rows line up across presets.
//
// Rows are counted two ways. Literal rows count every row of the grid once. Virtual rows
// are the rows a table shows: a row occupies as many virtual rows as its cells' size, and
// rows whose settings are all hidden occupy none while hidden settings are not visible.
// Row and column arguments are virtual rows unless the method name says Literal.
class Category : public QObject {
    Q_OBJECT
public:
    static constexpr int DEFAULT_SIZE = 1;

    Category(const QString& name, const QString& label, const QString& presetName, bool enabled);
    // Destroys the grid; each cell drops its reference to its setting.
    ~Category() override;

    const QString& getName() const { return m_name; }
    const QString& getLabel() const { return m_label; }
    const QString& getPresetName() const { return m_presetName; }
    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled) { m_enabled = enabled; }

    // --- Shape -------------------------------------------------------------------------
    int numberOfPresets() const { return m_heads.size(); }
    // Virtual rows of column p; -1 for a column that does not exist, 0 for an empty one.
    int getPresetSize(int preset) const;
    // Column of a cell of this grid; -1 for no cell or a cell that is not in this grid.
    int getPreset(const CategoryIndex* cell) const;
    // Number of virtual rows (the table's row count).
    int getSize() const;
    // Number of literal rows.
    int getLiteralSize() const { return m_rowCount; }

    bool hiddenVisible() const { return m_hiddenVisible; }
    // Shows (true) or hides the rows whose settings are all hidden. Emits nothing; the
    // caller resets any table showing the category.
    void setHiddenVisible(bool visible);

    // Every setting of the category once, in the order they were added.
    const QVector<Setting*>& getSettings() const { return m_settings; }

    Setting* getPresetCount() const;
    void setPresetCount(Setting* counter);
    // True without a counter; otherwise whether the preset is not above the counter's raw
    // value (a counter holding 2 enables presets 0, 1 and 2).
    bool isPresetEnabled(int preset) const;

    // --- Adding and finding settings ---------------------------------------------------
    // Adds a setting in the column of its preset (presets below 0 go to column 0) and in
    // the row of its base code name and forced sub-index. Fails for no setting and for a
    // setting already placed with the same forced sub-index.
    bool appendSetting(Setting* setting, int forcedSubIndex = -1);
    bool contains(const Setting* setting) const;
    bool contains(const QString& codeName) const;
    Setting* findSetting(const QString& codeName) const;
    Setting* findSettingByWsi(const QString& wsi) const;
    // First cell of the setting (the one made when it was first added), or null.
    CategoryIndex* findIndex(const Setting* setting) const;
    // Virtual row and column of the setting's first cell; invalid when the setting is not
    // here or its row is not shown.
    CategoryPosition indexOf(const QString& codeName) const;
    CategoryPosition indexOf(const Setting* setting) const;

    // --- Cell access -------------------------------------------------------------------
    // Cell covering virtual row `row` of a column, or null; `line` receives the row's
    // position inside the cell (0 for the cell's first row).
    CategoryIndex* getAt(int row, int column, int* line = nullptr) const;
    CategoryIndex* getAtLiteral(int row, int column) const;
    // Setting shown at a virtual row and column (null for fillers and bad places) and the
    // sub-index that row shows: the cell's forced sub-index, else -1 on the cell's first
    // row and the row's position inside the cell minus one below it.
    Setting* getSettingAt(int row, int column, int* subIndex = nullptr) const;
    // Literal row of a cell of this grid, or -1.
    int getIndexLiteral(const CategoryIndex* cell) const;
    // Virtual row of a cell's first row, or -1 when the cell is not here or not shown.
    int getIndexVirtual(const CategoryIndex* cell) const;
    CategoryIndex* getLast(int column) const;
    // Whether the cell at a virtual row (or the given cell of this grid) holds a foldable
    // setting, shown whole, whose row is unfolded.
    bool isExpanded(int row, int column) const;
    bool isExpanded(const CategoryIndex* cell) const;

    // --- Layout maintenance ------------------------------------------------------------
    // Inserts a new row before literal row `row` (the literal size appends) holding a new,
    // unlinked cell in `column` and fillers elsewhere; takes ownership on success.
    bool insertIndex(CategoryIndex* cell, int row, int column);
    // Inserts a row of fillers before literal row `row`.
    bool insertFiller(int row);
    // Takes one setting cell out of the grid, leaving a filler; a row left without
    // settings is removed. Destroys the cell (and the setting with its last reference).
    bool remove(CategoryIndex* cell);
    // Removes and destroys the whole row the cell belongs to.
    bool removeChain(CategoryIndex* cell);
    // Puts a new, unlinked cell in `column` of literal row `row`, taking that row's filler;
    // when the place holds a setting, the cell gets a new row right below. Takes ownership.
    bool replaceNearest(CategoryIndex* cell, int row, int column);
    // Moves the cell's whole row so that it becomes literal row `row`.
    bool move(CategoryIndex* cell, int row);
    // Recomputes every row's size from its settings and folding state.
    void realign();
    // Checks the grid: links agree both ways, every column has a cell in every row, the
    // cells of a row have one size and one folding state, and that size fits the row.
    bool isAligned() const;
    // Recounts the virtual rows and returns the count.
    int updateSize();
    // Undoes insertIndex: takes the cell and its fillers out again and hands the cell back
    // to the caller, unlinked. Fails when the cell's row holds another setting.
    bool abortInsertIndex(CategoryIndex* cell);

    // --- Folding -----------------------------------------------------------------------
    // Unfolds or folds the row of the expandable setting at a virtual row (or in a cell).
    // Every cell of the row takes the largest size its settings ask for. When the row is
    // shown and its size changes, settingAboutToBeExpanded is emitted before and
    // settingExpanded after the change. Fails when the cell holds no expandable setting
    // shown whole (forced sub-index -1) or the row already is in that state.
    bool expandSetting(int row, int column);
    bool unexpandSetting(int row, int column);
    bool expandSetting(CategoryIndex* cell);
    bool unexpandSetting(CategoryIndex* cell);

signals:
    // `row` is the virtual row of the row's first line; the row grows or shrinks from
    // oldSize to newSize rows, so rows row + oldSize .. row + newSize - 1 are inserted,
    // or rows row + newSize .. row + oldSize - 1 removed.
    void settingAboutToBeExpanded(int row, int oldSize, int newSize);
    void settingExpanded(int oldSize, int newSize);
    void problem(const QString& message);

private:
    // Guards against absurd definitions: no real preset number or group comes near these.
    static constexpr int MAX_COLUMNS = 64;
    static constexpr int MAX_CELL_SIZE = 4096;
    static QPair<const Setting*, int> placement(const Setting* setting, int forcedSubIndex) {
        return qMakePair(setting, forcedSubIndex);
    }

    using RowKey = QPair<QString, int>;

    // Literal rows and their shown heights (0 for rows that are not shown), rebuilt after
    // structural changes and kept up to date through folding and appends.
    struct RowCache {
        bool valid = false;
        std::vector<CategoryIndex*> heads; // literal row -> its cell in column 0
        RowSpans spans;
    };

    bool owns(const CategoryIndex* cell) const;
    static CategoryIndex* rowHead(CategoryIndex* cell);
    static CategoryIndex* cellInRow(CategoryIndex* head, int column);
    bool rowIsHidden(const CategoryIndex* head) const;
    bool rowIsShown(const CategoryIndex* head) const;
    static bool isFoldable(const CategoryIndex* cell);
    static int desiredCellSize(const CategoryIndex* cell, bool expanded);
    static int desiredRowSize(CategoryIndex* head, bool expanded);
    static bool rowHasSetting(CategoryIndex* head);
    static void setRowShape(CategoryIndex* head, int size, bool expanded);
    static void normalizeRow(CategoryIndex* head);

    void ensureCache() const;
    void invalidate() { m_cache.valid = false; }
    void cacheAppendedRow(CategoryIndex* head) const;
    void cacheRowSpan(CategoryIndex* head);

    bool ensureColumns(int column);
    void addColumn();
    // The cells of one row, left to right (a few preset columns: kept on the stack).
    using RowCells = QVarLengthArray<CategoryIndex*, 8>;
    RowCells makeRow(CategoryIndex* cell, int column) const;
    void linkRowBefore(const RowCells& cells, CategoryIndex* beforeHead);
    void unlinkRow(CategoryIndex* head);
    void replaceCell(CategoryIndex* old, CategoryIndex* replacement);
    void destroyRow(CategoryIndex* head);

    bool canPlace(const CategoryIndex* cell) const;
    void registerCell(CategoryIndex* cell);
    void registerRow(CategoryIndex* cell);
    void forgetCell(CategoryIndex* cell, bool keepRow);
    bool placeInRow(CategoryIndex* cell, CategoryIndex* head, int column);
    void placeInNewRow(CategoryIndex* cell, int column, CategoryIndex* beforeHead);
    bool setRowExpanded(CategoryIndex* cell, bool expanded);
    void ensureCodeNames() const;

    QString m_name;
    QString m_label;
    QString m_presetName;
    QPointer<Setting> m_presetCount;
    QVector<Setting*> m_settings;
    QVector<CategoryIndex*> m_heads;
    QVector<CategoryIndex*> m_tails;
    bool m_enabled;
    bool m_hiddenVisible = false;
    int m_rowCount = 0;

    // Per setting: its first cell and how many cells show it.
    struct Cells {
        CategoryIndex* first = nullptr;
        int count = 0;
    };
    QHash<const Setting*, Cells> m_cells;
    QSet<const Setting*> m_hidden;
    QSet<QPair<const Setting*, int>> m_placed;
    // First cells of the rows of each key (usually one row: kept inside the table).
    using RowList = QVarLengthArray<CategoryIndex*, 2>;
    QHash<RowKey, RowList> m_rowsByKey;

    mutable RowCache m_cache;
    // Lookup tables built on first use (first setting added wins).
    mutable QHash<QString, Setting*> m_byCodeName;
    mutable bool m_codeNamesValid = false;
    mutable QHash<QString, Setting*> m_byWsi;
    mutable bool m_wsiValid = false;
};

} // namespace sf
