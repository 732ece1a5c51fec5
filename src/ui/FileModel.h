#pragma once

// What every open file has, whatever its kind: where it is saved, its tab title, its
// status text and whether it has unsaved changes. Setters announce only real changes.

#include <QObject>
#include <QString>

namespace ui {

class FileModel : public QObject {
    Q_OBJECT
public:
    explicit FileModel(const QString& status = QString(), QObject* parent = nullptr);

    bool isModified() const { return m_modified; }
    const QString& getPath() const { return m_path; }
    const QString& getTitle() const { return m_title; }
    const QString& getStatus() const { return m_status; }
    void setModified(bool modified);
    void setPath(const QString& path);
    void setTitle(const QString& title);
    void setStatus(const QString& status);

    virtual bool getUndoEnabled() const { return false; }
    virtual bool getRedoEnabled() const { return false; }
    // a and b: the manager's reformat and only-enabled flags.
    virtual bool save(const QString& path, bool a, bool b);
    virtual bool appendToFile(const QString& path, bool a, bool b);
    virtual bool close();
    virtual void setShowProtected(bool show);
    virtual void undoAction() {}
    virtual void redoAction() {}
    virtual QString getFWVersion() const { return QString(); }

signals:
    void modifiedChanged(bool modified);
    void pathChanged(const QString& path);
    void titleChanged(const QString& title);
    void statusChanged(const QString& status);
    void showProtectedChanged(bool show);
    void undoEnabledChanged(bool enabled);
    void redoEnabledChanged(bool enabled);
    void closed();

private:
    bool m_modified = false;
    QString m_path;
    QString m_title;
    QString m_status;
};

} // namespace ui
