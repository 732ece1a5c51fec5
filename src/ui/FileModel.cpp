#include "ui/FileModel.h"

namespace ui {

FileModel::FileModel(const QString& status, QObject* parent) : QObject(parent), m_status(status) {}

void FileModel::setModified(bool modified) {
    if (m_modified != modified) {
        m_modified = modified;
        emit modifiedChanged(modified);
    }
}

void FileModel::setPath(const QString& path) {
    if (m_path != path) {
        m_path = path;
        emit pathChanged(path);
    }
}

void FileModel::setTitle(const QString& title) {
    if (m_title != title) {
        m_title = title;
        emit titleChanged(title);
    }
}

void FileModel::setStatus(const QString& status) {
    if (m_status != status) {
        m_status = status;
        emit statusChanged(status);
    }
}

bool FileModel::save(const QString&, bool, bool) {
    return false;
}

bool FileModel::appendToFile(const QString&, bool, bool) {
    return false;
}

bool FileModel::close() {
    emit closed();
    return true;
}

void FileModel::setShowProtected(bool) {}

} // namespace ui
