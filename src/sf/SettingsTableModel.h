#pragma once

// The settings of one or more categories as a table: one row per layout row, one column
// per preset. Everything shown comes from the setting manager by table index, and every
// change goes back through it, so undo and redo see each edit.

#include <QAbstractTableModel>
#include <QColor>
#include <QFont>

namespace sf {

class SettingManager;

class SettingsTableModel : public QAbstractTableModel {
    Q_OBJECT
public:
    static const QColor COLOUR_ENABLED;
    static const QColor COLOUR_DISABLED;
    static const QColor COLOUR_NONEXISTANT;
    static const QColor COLOUR_HEADER;
    static const QColor COLOUR_HEADER_DISABLED;
    static const QColor COLOUR_HEADER_DISABLED_TEXT;
    static const QColor COLOUR_DISABLED_PRESET;
    static const QColor COLOUR_HEADER_GRADIENT_EDGE;
    static const QColor COLOUR_HEADER_GRADIENT_MID;
    static const QColor COLOUR_CHANGED;      // a value that differs from the default
    static const QColor COLOUR_OUT_OF_RANGE; // a value its (dependent) range no longer holds

    // The manager is not owned; categories are shown once mapped onto this model
    // (SettingManager::mapCategory).
    explicit SettingsTableModel(SettingManager* manager, QObject* parent = nullptr);

    SettingManager* manager() const { return m_manager; }
    // The version's default settings, to mark the cells that differ (bold, in blue); null
    // for no marks. Not owned.
    void setDefaults(const SettingManager* defaults);
    // Whether the cell's setting holds other bytes than the same setting of the defaults.
    bool differsFromDefault(const QModelIndex& index) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    // A number is set through its text (sf::assignText): a value out of its range, or
    // one its bytes cannot hold, is refused with editRefused and the cell keeps its value.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    // Sets a cell from text as the command line's set does (a paste); false after
    // editRefused when the text is refused or the cell shows nothing to set.
    bool setText(const QModelIndex& index, const QString& text);
    // The cell's value as text the way setText reads it (a copy).
    QString text(const QModelIndex& index) const;
    // Whether the cell's number is outside its current range, and why (empty when not).
    bool outOfRange(const QModelIndex& index) const;
    QString outOfRangeReason(const QModelIndex& index) const;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

    // A row header carries an enable check box unless the row shows a sub-index or a
    // setting that is enabled by default.
    bool rowNeedsCheckBox(int row) const;
    // Enables a disabled row (disables an enabled one) in every preset column.
    void toggleRowEnabled(int row);
    void setFontSize(int points);
    // Announces that every cell may show something new.
    void refreshAll();

signals:
    void sizeChanged();
    void updateEditorData();
    void reloadAllEditors();
    void updateAllVisible();
    void updateData(const QModelIndex& from, const QModelIndex& to);
    // An edit or paste was refused; message says why, in the command line's words.
    void editRefused(const QString& message);

public slots:
    // From the manager, for any model: rows inserted below an unfolding setting or removed
    // below a folding one.
    void settingAboutToBeExpanded(const QAbstractItemModel* model, int row, int oldSize,
                                  int newSize);
    void settingExpanded(const QAbstractItemModel* model, int oldSize, int newSize);

private:
    void rowsChanged(const QAbstractItemModel* model, int firstRow, int lastRow);
    QString columnTitle(int column) const;

    SettingManager* m_manager;
    const SettingManager* m_defaults = nullptr;
    QFont m_changedFont;
    QFont m_font;
    QFont m_headerFont;         // row headers of a foldable setting's bits: 11 points, upright
    QFont m_titleFont;          // the horizontal header
    int m_pendingExpansion = 0; // +1 inserting, -1 removing, 0 none
};

} // namespace sf
