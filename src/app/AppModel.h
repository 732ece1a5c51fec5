#pragma once
// What the application knows for the length of a run: the catalogue of firmware
// versions and the default one, the enabled state of each command, the window title,
// the last folder and serial port used, the open files and which of them is current,
// and the single/multiple-file and show-protected modes. Every setter announces only
// a real change.
#include "util/VersionCatalogue.h"

#include <QList>
#include <QObject>
#include <QString>

namespace ui {

class FileModel;

class AppModel : public QObject {
    Q_OBJECT
public:
    explicit AppModel(QObject* parent = nullptr);
    ~AppModel() override;

    // ---- the catalogue, highest version first
    void addVersion(const util::VersionContainer& version);
    void addVersions(const QList<util::VersionContainer>& versions);
    void clearVersions();
    const QList<util::VersionContainer>& getVersions() const { return m_catalogue.versions(); }
    const util::VersionCatalogue& catalogue() const { return m_catalogue; }
    bool containsKxsVersion(const QString& kxs) const;
    bool containsFwVersion(const QString& fw) const;
    bool containsEnqVersion(const QString& enq) const;
    util::VersionContainer getVersionByFw(const QString& fw) const;
    util::VersionContainer getVersionByEnq(const QString& enq) const;
    QList<util::VersionContainer> getVersionsByKxs(const QString& kxs) const;
    void setDefaultVersion(const util::VersionContainer& version);
    const util::VersionContainer& getDefaultVersion() const { return m_default; }

    // ---- command states and modes
    bool getSuplAvailable() const { return m_suplAvailable; }
    bool getNewEnabled() const { return m_newEnabled; }
    bool getOpenEnabled() const { return m_openEnabled; }
    bool getSaveEnabled() const { return m_saveEnabled; }
    bool getReadEnabled() const { return m_readEnabled; }
    bool getWriteEnabled() const { return m_writeEnabled; }
    bool getUndoEnabled() const { return m_undoEnabled; }
    bool getRedoEnabled() const { return m_redoEnabled; }
    bool getShowProtected() const { return m_showProtected; }
    bool getMultipleEnabled() const { return m_multipleEnabled; }
    void setSuplAvailable(bool on);
    void setNewEnabled(bool on);
    void setOpenEnabled(bool on);
    void setSaveEnabled(bool on);
    void setReadEnabled(bool on);
    void setWriteEnabled(bool on);
    void setUndoEnabled(bool on);
    void setRedoEnabled(bool on);
    void setShowProtected(bool on);
    void setMultipleEnabled(bool on);

    const QString& getTitle() const { return m_title; }
    const QString& getLastOpenDir() const { return m_lastOpenDir; }
    const QString& getLastPort() const { return m_lastPort; }
    void setTitle(const QString& title);
    void setLastOpenDir(const QString& dir);
    void setLastPort(const QString& port);

    // ---- the open files, in tab order; the model owns them
    void addFile(FileModel* file);
    // Takes the file out and deletes it once control returns to the event loop.
    void removeFile(FileModel* file);
    const QList<FileModel*>& getFiles() const { return m_files; }
    int indexOf(const FileModel* file) const {
        return m_files.indexOf(const_cast<FileModel*>(file));
    }
    int getCurrentIndex() const { return m_current; }
    void setCurrentIndex(int index);
    // The current file, or null when none is open.
    FileModel* getCurrentFile() const;

signals:
    void defaultVersionChanged(const util::VersionContainer& version);
    void versionsChanged();
    void suplAvailableChanged(bool on);
    void newEnabledChanged(bool on);
    void openEnabledChanged(bool on);
    void saveEnabledChanged(bool on);
    void readEnabledChanged(bool on);
    void writeEnabledChanged(bool on);
    void undoEnabledChanged(bool on);
    void redoEnabledChanged(bool on);
    void showProtectedChanged(bool on);
    void multipleEnabledChanged(bool on);
    void titleChanged(const QString& title);
    void lastOpenDirChanged(const QString& dir);
    void lastPortChanged(const QString& port);
    void fileAdded(ui::FileModel* file);
    void fileRemoved(ui::FileModel* file);
    void currentIndexChanged(int index);

private:
    using FlagSignal = void (AppModel::*)(bool);
    using TextSignal = void (AppModel::*)(const QString&);
    void change(bool& field, bool value, FlagSignal signal);
    void change(QString& field, const QString& value, TextSignal signal);
    const util::VersionContainer* find(QString util::VersionContainer::*field,
                                       const QString& text) const;

    util::VersionCatalogue m_catalogue;
    util::VersionContainer m_default;
    bool m_suplAvailable = false;
    bool m_newEnabled = false;
    bool m_openEnabled = false;
    bool m_saveEnabled = false;
    bool m_readEnabled = false;
    bool m_writeEnabled = false;
    bool m_undoEnabled = false;
    bool m_redoEnabled = false;
    bool m_showProtected = false;
    bool m_multipleEnabled = false;
    QString m_title;
    QString m_lastOpenDir;
    QString m_lastPort;
    QList<FileModel*> m_files;
    int m_current = -1;
};

} // namespace ui
