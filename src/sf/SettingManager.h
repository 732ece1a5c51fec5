#pragma once

#include "sf/SettingHost.h"
#include "sf/SettingTypes.h"
#include "sf/UndoHistory.h"

#include <QAbstractItemModel>
#include <QByteArray>
#include <QHash>
#include <QList>
#include <QModelIndex>
#include <QPair>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include <functional>
#include <memory>
#include <vector>

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
// The models in the manager's signals; Qt 6 knows such pointers by itself.
Q_DECLARE_METATYPE(const QAbstractItemModel*)
#endif

namespace util {
class VersionContainer;
}

namespace sf {

class ActionTracker;
class Category;
class RawSetting;
class Setting;
class SettingFactory;
class TableMapping;

namespace parser {
class HexParser;
class Interpreter;
} // namespace parser

// Owns everything one open setup file knows about its settings: the raw settings (the
// bytes of the image), the typed settings built from them, the categories they are
// grouped in, the help texts, the undo history and the mapping of categories onto table
// models. Loads a setup image against a version's layout, answers reads and writes of
// values by code name, by help identifier (WSI) or by table index, records every change
// for undo, and writes the values back into an image.
//
// Ownership: settings are shared between the manager and the category cells that show
// them through their reference count; the manager holds one reference of its own, so a
// setting lives exactly as long as the manager. Pointers handed out (settings,
// categories, raw settings, actions) stay valid until clear(), a new load or
// destruction (actions: until they are discarded from the undo history).
//
// Categories: a setting belongs to the category heading that precedes it in the layout
// file. Settings before the first heading, or whose heading is unknown, go to the
// category UNCATEGORIZED_LABEL / UNCATEGORIZED_TITLE, created when first needed and
// placed at UNCATEGORIZED_OFFSET in the category list. See docs/setting-manager.md.
//
// Nothing throws; failures are reported by results and by problem(QString).
class SettingManager : public SettingHost {
    Q_OBJECT
public:
    static const QString CATEGORY_WSI_SUFFIX; // "@99999": help identifier of a category heading
    static const QString UNCATEGORIZED_LABEL; // "UC"
    static const QString UNCATEGORIZED_TITLE; // "Uncategorized"
    static constexpr int UNCATEGORIZED_OFFSET = 0;

    // Negative results of loadRawSettings.
    enum LoadError {
        LoadNoVersion = -1,       // the layout carries no version text
        LoadVersionMismatch = -2, // the image's recorded versions differ from the given ones
        LoadLayoutFailed = -3,    // the layout file cannot be opened
        LoadImageFailed = -4      // the setup image cannot be read
    };

    // Bits of getIndexFlags.
    enum IndexFlag {
        FlagPresent = 1,           // a setting is present
        FlagEnabled = 2,           // the category and the setting are enabled (with 4)
        FlagEditable = 4,          // the category and the setting are enabled (with 2)
        FlagSubIndex = 8,          // the index is a sub-index row
        FlagExpandable = 16,       // the setting is expandable
        FlagMulti = 32,            // the setting is multi
        FlagEnabledByDefault = 64, // the setting is enabled by default
        FlagPresetEnabled = 128    // the setting's preset is enabled
    };

    explicit SettingManager(QObject* parent = nullptr);
    ~SettingManager() override;
    SettingManager(const SettingManager&) = delete;
    SettingManager& operator=(const SettingManager&) = delete;

    // ---- Loading ----------------------------------------------------------------------
    // Loads the setup image at fileName against the layout file of version
    // (version.kxsFilePath). Everything loaded before is dropped first (clear()).
    // Returns a LoadError, or the number of problems met: each raw setting whose bytes
    // the image does not hold and each setting the factory refused with error 3 count
    // one. Unless ignoreVersion, the image's firmware and layout versions must equal the
    // version's. The processor type is chosen from the layout's version text ("KX4" 2,
    // "KX3" 1, "Dravolin" 0, else unchanged). The help texts are read (readTooltips).
    int loadRawSettings(const util::VersionContainer& version, const QString& fileName,
                        bool ignoreVersion);
    // The same from layout bytes and HEX text in memory (no file access but the help file).
    int loadRawSettingsData(const util::VersionContainer& version, const QByteArray& layout,
                            const QByteArray& imageText, bool ignoreVersion);
    // Drops all settings, raw settings, categories, help texts, table mappings and the
    // undo history. The version identity and the processor type are kept.
    void clear();

    // Takes ownership. The setting is placed in the category named by its getCategory()
    // (the uncategorized category when that is empty or unknown). A code name that is
    // already present keeps answering lookups with the first setting. False (setting
    // destroyed) for null.
    bool addSetting(Setting* setting);
    // Takes ownership and connects the category's expansion signals to
    // resolveExpansionIndex / expansionDone. False (nothing taken) for null.
    bool addCategory(Category* category);
    // Takes ownership of a raw setting; false (destroyed) for null or a code name that is
    // already present.
    bool addRawSetting(RawSetting* raw);

    // ---- Identity ---------------------------------------------------------------------
    const QString& getFwVersion() const { return m_fwVersion; }
    const QString& getKxsVersion() const { return m_kxsVersion; }
    const QString& getEnqString() const { return m_enqString; }
    void setVersion(const util::VersionContainer& version);
    // The processor type of the image (sf::parser::PhantomProcessor values).
    int get_processor_type() const { return m_processorType; }
    void set_processor_type(int type) { m_processorType = type; }
    // The processor type named by a layout version text: "KX4" 2, else "KX3" 1, else
    // "Dravolin" 0 (case-sensitive); `current` when none of them is in the text.
    static int processorTypeFor(const QString& layoutVersion, int current);

    // ---- SettingHost ------------------------------------------------------------------
    quint32 getKXSFormat() const override { return m_kxsFormat; }
    QString getTooltip(const QString& wsi) const override;
    // The layout's string list; only while loading (the layout is closed afterwards),
    // empty otherwise. Results are cached per (name, countName) during a load.
    QStringList getStringList(const QString& name, const QString& countName) override;
    Setting* lookupSetting(const QString& codeName) override { return getSetting(codeName); }

    // ---- Lookup -----------------------------------------------------------------------
    Setting* getSetting(const QString& codeName) const;
    // Asks each category in order; the first hit wins. Null for an empty WSI.
    Setting* getSettingByWsi(const QString& wsi) const;
    // The setting shown at a table index and the sub-index that row shows (-1 for the
    // whole value). Null for fillers and indices that map to nothing.
    Setting* getSetting(const QModelIndex& index, int* subIndex = nullptr) const;
    bool contains(const QString& codeName) const { return getSetting(codeName) != nullptr; }
    bool containsWsi(const QString& wsi) const { return getSettingByWsi(wsi) != nullptr; }
    bool containsRaw(const QString& codeName) const { return getRawSetting(codeName) != nullptr; }
    RawSetting* getRawSetting(const QString& codeName) const;
    // The raw setting's bytes (as loaded or last copied back); empty when there is none.
    QByteArray getRawSettingData(const QString& codeName) const;
    // Copies bytes into the raw setting; false when there is none or the size differs.
    bool setRawSettingData(const QString& codeName, const QByteArray& bytes);
    // TypeNone when there is no such setting.
    SettingType getSettingType(const QString& codeName) const;
    bool isMultiSetting(const QString& codeName) const;
    // First category with that label, or null.
    Category* getCategory(const QString& label) const;
    // Title of the category with that label; empty when there is none.
    QString getCategoryTitle(const QString& label) const;
    QString getCategoryTitle(const Category* category) const;
    // False when there is no such category.
    bool isCategoryEnabled(const QString& label) const;
    // Help text of a category heading: getTooltip(label + CATEGORY_WSI_SUFFIX).
    QString getCategoryTooltip(const QString& label) const;

    // In layout order / category order.
    const QVector<Setting*>& getSettings() const { return m_settings; }
    const QVector<RawSetting*>& getRawSettings() const { return m_rawSettings; }
    const QVector<Category*>& getCategories() const { return m_categories; }

    // ---- Values -----------------------------------------------------------------------
    // A setting's answer for a role; with subIndex >= 0 the answer of that sub-index of a
    // multi setting. An expandable setting asked for RoleDisplay answers as
    // RoleExpandedDisplay while unfolded and RoleFoldedDisplay while folded. Invalid when
    // there is no such setting.
    QVariant getSettingData(const QString& codeName, DataRole role, int subIndex = -1) const;
    QVariant getSettingDataByWsi(const QString& wsi, DataRole role, int subIndex = -1) const;
    QVariant getSettingData(const QModelIndex& index, DataRole role) const;
    // Changes a value through setSettingDataHelper (recorded for undo). False when there
    // is no such setting or the kind refuses the value (including a bit set to the state
    // it already has).
    bool setSettingData(const QVariant& value, const QString& codeName, int subIndex = -1);
    bool setSettingData(const QVariant& value, const QModelIndex& index);
    bool setSettingDataByWsi(const QVariant& value, const QString& wsi, int subIndex = -1);
    // The one path by which values change: prepares a tracker, sets the value (the
    // sub-index form for a multi setting with subIndex >= 0), and, when the bytes
    // changed, completes the tracker (records the change, emits settingModified,
    // re-evaluates dependents, updates the presets). A successful set that leaves the
    // bytes as they were records nothing. Edits are never merged with the previous group.
    bool setSettingDataHelper(Setting* setting, const QVariant& value, int subIndex = -1);

    // ---- Enable state -----------------------------------------------------------------
    bool isEnabled(const QString& codeName) const;
    bool isEnabled(const QModelIndex& index) const;
    bool isEnabledByDefault(const QString& codeName) const;
    bool isEnabledByDefault(const QModelIndex& index) const;
    // Emits settingModified() when the state changes. Not recorded for undo.
    bool setEnabled(const QString& codeName, bool enabled);
    bool setEnabled(Setting* setting, bool enabled);
    bool setEnabled(const QModelIndex& index, bool enabled);

    // ---- Sizes ------------------------------------------------------------------------
    // Largest numberOfPresets of all categories; 0 without categories.
    int maxPresets() const;
    // Sum of the categories' sizes (rows); 0 without categories.
    int totalSize() const;

    bool hiddenVisible() const { return m_hiddenVisible; }
    // Shows or hides the hidden settings' rows in every category; emits layoutReset().
    void setHiddenVisible(bool visible);

    // ---- Help -------------------------------------------------------------------------
    // Reads getTooltipFilename(getFwVersion()) (relative to the working directory); a
    // missing file leaves the help empty. Returns the number of help texts read.
    int readTooltips();
    // Parses help HTML: every div with an id gives a WSI and its text (both trimmed);
    // a later div with the same id replaces an earlier one. Returns the count added.
    int parseTooltips(const QString& html);
    // "data/help/" + fwVersion + "_help.html" under the working directory.
    static QString getTooltipFilename(const QString& fwVersion);
    const QHash<QString, QString>& getTooltips() const { return m_tooltips; }

    // ---- Write-back -------------------------------------------------------------------
    // Copies the settings' bytes and enabled states into the raw settings (layout order)
    // and returns the number of raw settings that will be written.
    int copyDataToRawSettings(bool onlyEnabled);
    // Writes the settings into the existing setup file fileName: loads it, copies values
    // back, builds records for the raw settings whose address lies in [from, to) and
    // replaces the file's records with them (replace) or merges them in, records the
    // manager's versions and identification text, and rewrites the file (reformat:
    // one block, gaps zero-filled, 16 bytes per line). False on any failure and when
    // nothing is to be written.
    bool writeAppendRawSettings(const QString& fileName, bool reformat, bool onlyEnabled,
                                bool replace, quint32 from, quint32 to);
    // writeAppendRawSettings without replacing: the records are merged in.
    bool appendRawSettings(const QString& fileName, bool reformat, bool onlyEnabled, quint32 from,
                           quint32 to);
    // The same on HEX text in memory: *imageText is read and replaced by the new image.
    bool writeAppendRawSettingsData(QByteArray* imageText, bool reformat, bool onlyEnabled,
                                    bool replace, quint32 from, quint32 to);
    // Copies, for every raw setting of this manager's layout (skipping disabled ones when
    // onlyEnabled), its bytes from the setup file source into the setup file destination
    // (merged, destination's metadata kept). Settings whose bytes source does not hold
    // are skipped. The manager's own values are not touched. Returns the number of
    // settings copied, or -1 when either file cannot be read or written.
    int appendRawSettingsFromHexFile(const QString& source, const QString& destination,
                                     bool onlyEnabled);

    // ---- Table indices ----------------------------------------------------------------
    // Bits of IndexFlag for a table cell; 0 when the index maps to nothing.
    int getIndexFlags(const QModelIndex& index) const;
    // Appends a category to the categories a table model shows (one below the other).
    // False when the category is unknown or already shown by that model.
    bool mapCategory(const QAbstractItemModel* model, const QString& categoryLabel);
    bool mapCategory(const QAbstractItemModel* model, Category* category);
    // Forgets a model (all its categories) / one category of a model. A destroyed model
    // is forgotten automatically.
    void unmap(const QAbstractItemModel* model);
    void unmap(const QAbstractItemModel* model, Category* category);
    // The first category (in category order) that no model shows, or null.
    Category* getFirstUnmappedCategory() const;
    // Rows of a model: the sum of its categories' sizes.
    int modelSize(const QAbstractItemModel* model) const;
    // The cell of the setting's first appearance in the model, or an invalid index.
    QModelIndex modelIndex(const QAbstractItemModel* model, const Setting* setting) const;
    QModelIndex modelIndex(const QAbstractItemModel* model, const QString& codeName) const;
    // The category a model row falls into and the row within it; null for none.
    Category* categoryIndex(const QModelIndex& index, int* categoryRow = nullptr) const;
    Category* categoryIndex(const QAbstractItemModel* model, int row,
                            int* categoryRow = nullptr) const;
    QList<Category*> mappedCategories(const QAbstractItemModel* model) const;

    // ---- Expansion --------------------------------------------------------------------
    // Unfold / fold the setting in the first category that holds it.
    bool expandSetting(const QString& codeName);
    bool unexpandSetting(const QString& codeName);
    bool isExpanded(const QString& codeName) const;
    bool expandSetting(const QModelIndex& index);
    bool unexpandSetting(const QModelIndex& index);
    bool isExpanded(const QModelIndex& index) const;

    // ---- Undo and redo ----------------------------------------------------------------
    // A tracker for the setting: sub-index -1, not chained, before = current bytes.
    std::unique_ptr<ActionTracker> prepTracker(Setting* setting) const;
    // after = current bytes; adds the tracker, emits settingModified(), re-evaluates the
    // dependents with recording on and updates the presets.
    void completeTracker(std::unique_ptr<ActionTracker> tracker, Setting* setting);
    // Discards every action after the current one, appends the tracker and makes it current.
    void addUndoAction(std::unique_ptr<ActionTracker> tracker);
    bool canUndo() const { return m_history.canUndo(); }
    bool canRedo() const { return m_history.canRedo(); }
    // Undoes the group ending at the current position (back to its unchained head) and
    // returns the head, or null when nothing can be undone. Undo and redo change exactly
    // the bytes the group recorded (see docs/setting-manager.md); ranges are re-evaluated.
    const ActionTracker* undoAction();
    // Redoes the next group (its head and the chained actions after it) and returns its
    // head, or null when nothing can be redone.
    const ActionTracker* redoAction();
    // Head of the group that ends at the current position; null when nothing can be undone.
    const ActionTracker* getPreviousUndoAction() const { return m_history.groupHead(); }
    void clearUndoList() { m_history.clear(); }
    const UndoHistory& undoHistory() const { return m_history; }

    // Re-evaluates the given dependents after a setting of `type` changed; a dependent
    // whose bytes change has its own dependents re-evaluated too (each setting at most
    // once per call). With record, every dependent whose bytes changed is added as a
    // chained action. Emits rowsChanged for the rows that changed, per model.
    void notifyChanges(SettingType type, const QList<Setting*>& settings, bool record);
    // Re-evaluates one setting after a setting it depends on changed.
    bool updateSetting(Setting* setting, SettingType changedType = TypeNone);
    // Re-reads the preset counters; emits presetsChanged() when a counter's value differs
    // from the last one seen.
    void updatePresets();
    // Makes the setting the preset counter of every category whose preset name is its
    // code name or base code name. Returns the number of categories.
    int setPresetsByName(Setting* counter);

    // ---- Carrying settings across firmware versions
    // A conversion for a setting whose meaning changed between layouts: (key, the old
    // settings, the new ones), true when it set the new value.
    using Transform = std::function<bool(const QString&, const SettingManager&, SettingManager&)>;
    using TransformTable = QHash<QString, Transform>;
    // What a merge did with each setting of the new layout (bits as NAME[k]).
    struct MergeReport {
        QStringList kept;      // copied from the old settings
        QStringList converted; // set by a conversion (the transform keys)
        QStringList defaults;  // left at the new firmware's defaults
    };
    // Copies into these settings (a firmware's defaults) every value of old that has a
    // counterpart: bits matched by label, other settings by help identifier (WSI), never
    // by code name or address; keys in transforms are computed by their conversion.
    // Settings without a counterpart keep their defaults and are counted in missing
    // (by display name, or the WSI or bit label between backticks).
    bool mergeSettings(const SettingManager& old, const TransformTable& transforms,
                       QHash<QString, int>& missing, MergeReport* report = nullptr);

    // Nominal cell voltage (volts) by battery chemistry, in table order. "LiPo" 3.6 while
    // "RCLiPo" 3.7 is intended.
    static const QVector<QPair<QString, double>>& getNominalCellVoltages();
    // 0 for an unknown chemistry.
    static double nominalCellVoltage(const QString& chemistry);

public slots:
    // Receive a category's settingAboutToBeExpanded / settingExpanded and announce the
    // change to every model showing that category.
    void resolveExpansionIndex(int row, int oldSize, int newSize);
    void expansionDone(int oldSize, int newSize);

signals:
    // A value or enable state changed (through the manager, or by undo/redo).
    void settingModified();
    // Rows row + oldSize .. row + newSize - 1 of the model are about to be inserted
    // (growing) or rows row + newSize .. row + oldSize - 1 removed (shrinking).
    void settingAboutToBeExpanded(const QAbstractItemModel* model, int row, int oldSize,
                                  int newSize);
    void settingExpanded(const QAbstractItemModel* model, int oldSize, int newSize);
    // Rows firstRow .. lastRow of the model show changed values.
    void rowsChanged(const QAbstractItemModel* model, int firstRow, int lastRow);
    // A preset counter changed: which preset columns are enabled may differ.
    void presetsChanged();
    // The shape of every table changed (hidden rows shown or hidden).
    void layoutReset();

private:
    struct LoadState;

    using ImageOpener = std::function<bool(parser::HexParser& image, int processorType)>;
    int loadCore(const util::VersionContainer& version, const QByteArray& layout,
                 const ImageOpener& openImage, bool ignoreVersion);
    int readSettingEntries(parser::HexParser& image, LoadState& state);
    int buildSettings(LoadState& state);
    Category* uncategorized();
    void invalidateWsiIndex() { m_wsiValid = false; }
    // Whether the setting's row is unfolded in the category that holds it.
    bool expandedState(const Setting* setting) const;
    QVariant answer(Setting* setting, DataRole role, int subIndex, bool expanded) const;
    Category* holderOf(const Setting* setting) const;
    bool mergeInto(parser::HexParser& image, bool onlyEnabled, bool replace, quint32 from,
                   quint32 to);
    void applyGroup(bool undo, int first, int last);
    // Re-evaluates dependents (see notifyChanges); every setting whose bytes changed is
    // appended to `changed` together with its bytes before the change.
    void notifyRecursive(SettingType type, const QList<Setting*>& settings, bool record,
                         QSet<Setting*>& visited, QList<QPair<Setting*, QByteArray>>& changed);
    void reportRows(const QList<Setting*>& settings);
    // The category of the setting's label (getCategory), remembered for the next one.
    Category* categoryOf(const Setting* setting);

    // Categories and settings.
    QVector<Category*> m_categories;
    QHash<QString, Category*> m_categoryByLabel;
    // The category last found for a label while settings are added.
    struct LastCategory {
        QString label;
        Category* category = nullptr;
    };
    LastCategory m_lastCategory;
    QVector<Setting*> m_settings;
    QHash<QString, Setting*> m_byName;
    QVector<RawSetting*> m_rawSettings;
    QHash<QString, RawSetting*> m_rawByName;
    mutable QHash<QString, Setting*> m_byWsi;
    mutable bool m_wsiValid = false;

    // Layout and image while loading.
    std::unique_ptr<parser::Interpreter> m_interpreter;
    std::unique_ptr<SettingFactory> m_factory;
    QHash<QPair<QString, QString>, QStringList> m_stringLists;

    // Identity.
    QString m_fwVersion;
    QString m_kxsVersion;
    QString m_enqString;
    quint32 m_kxsFormat = 0;
    int m_processorType = 2;

    QHash<QString, QString> m_tooltips;
    std::unique_ptr<TableMapping> m_tables;
    UndoHistory m_history;
    QHash<const Category*, int> m_presetValues;
    bool m_hiddenVisible = false;
};

} // namespace sf
