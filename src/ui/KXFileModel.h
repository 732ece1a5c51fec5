#pragma once

// An open setup file: its settings (through the settings library's one open and save
// path) and one table model per category, in category order.

#include "ui/FileModel.h"

#include <QModelIndex>

#include <memory>
#include <vector>

namespace util {
class VersionContainer;
}

namespace sf {
class Setting;
class SettingManager;
class SettingsTableModel;
class SetupFile;
} // namespace sf

namespace ui {

class KXFileModel : public FileModel {
    Q_OBJECT
public:
    explicit KXFileModel(const QString& status = QString(), QObject* parent = nullptr);
    ~KXFileModel() override;

    // Loads the file with the version chosen for it and builds a table per category. A
    // failed load or one with problems is reported through problem() and
    // settingsLoadError(result); false only for a failed load.
    bool open(const QString& path, const util::VersionContainer& version);

    sf::SettingManager* manager() const;
    sf::SetupFile& setupFile() const { return *m_file; }
    const std::vector<std::unique_ptr<sf::SettingsTableModel>>& tables() const { return m_tables; }
    // The title of each table (the category's), in the order of tables().
    const QStringList& tableTitles() const { return m_titles; }
    bool showProtected() const { return m_showProtected; }
    // The version's default settings (its firmware file), when they could be read.
    const sf::SettingManager* defaults() const;
    // Puts the default bytes back into the cell's setting, as one step undo takes back.
    bool resetToDefault(const QModelIndex& index);

    bool getUndoEnabled() const override;
    bool getRedoEnabled() const override;
    bool save(const QString& path, bool a, bool b) override;
    bool appendToFile(const QString& path, bool a, bool b) override;
    void setShowProtected(bool show) override;
    void undoAction() override;
    void redoAction() override;
    QString getFWVersion() const override;

signals:
    void settingsLoadError(int result);
    void jumpToIndex(const QModelIndex& index);
    void problem(const QString& message);
    void settingModified();

private:
    void onSettingModified();
    void jumpTo(const sf::Setting* changed);

    std::unique_ptr<sf::SetupFile> m_file;
    std::unique_ptr<sf::SetupFile> m_defaults;
    std::vector<std::unique_ptr<sf::SettingsTableModel>> m_tables;
    QStringList m_titles;
    bool m_showProtected = false;
};

} // namespace ui
