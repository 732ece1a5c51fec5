#include "app/AppModel.h"

#include "ui/FileModel.h"

namespace ui {

AppModel::AppModel(QObject* parent) : QObject(parent) {}

// The open files are children of the model and go with it.
AppModel::~AppModel() = default;

void AppModel::addVersion(const util::VersionContainer& version) {
    if (m_catalogue.add(version)) {
        emit versionsChanged();
    }
}

void AppModel::addVersions(const QList<util::VersionContainer>& versions) {
    for (const util::VersionContainer& v : versions) {
        addVersion(v);
    }
}

void AppModel::clearVersions() {
    if (!m_catalogue.isEmpty()) {
        m_catalogue.clear();
        emit versionsChanged();
    }
}

const util::VersionContainer* AppModel::find(QString util::VersionContainer::*field,
                                             const QString& text) const {
    for (const util::VersionContainer& v : m_catalogue.versions()) {
        if (v.*field == text) {
            return &v;
        }
    }
    return nullptr;
}

bool AppModel::containsKxsVersion(const QString& kxs) const {
    return find(&util::VersionContainer::kxsVersion, kxs) != nullptr;
}

bool AppModel::containsFwVersion(const QString& fw) const {
    return find(&util::VersionContainer::fwVersion, fw) != nullptr;
}

bool AppModel::containsEnqVersion(const QString& enq) const {
    return find(&util::VersionContainer::enqString, enq) != nullptr;
}

util::VersionContainer AppModel::getVersionByFw(const QString& fw) const {
    const util::VersionContainer* v = find(&util::VersionContainer::fwVersion, fw);
    return v ? *v : util::VersionContainer();
}

util::VersionContainer AppModel::getVersionByEnq(const QString& enq) const {
    const util::VersionContainer* v = find(&util::VersionContainer::enqString, enq);
    return v ? *v : util::VersionContainer();
}

QList<util::VersionContainer> AppModel::getVersionsByKxs(const QString& kxs) const {
    return m_catalogue.sharingLayout(kxs);
}

void AppModel::setDefaultVersion(const util::VersionContainer& version) {
    if (!(m_default == version) || m_default.kxsFormat != version.kxsFormat) {
        m_default = version;
        emit defaultVersionChanged(version);
    }
}

void AppModel::change(bool& field, bool value, FlagSignal signal) {
    if (field != value) {
        field = value;
        emit(this->*signal)(value);
    }
}

void AppModel::change(QString& field, const QString& value, TextSignal signal) {
    if (field != value) {
        field = value;
        emit(this->*signal)(value);
    }
}

void AppModel::setSuplAvailable(bool on) {
    change(m_suplAvailable, on, &AppModel::suplAvailableChanged);
}
void AppModel::setNewEnabled(bool on) {
    change(m_newEnabled, on, &AppModel::newEnabledChanged);
}
void AppModel::setOpenEnabled(bool on) {
    change(m_openEnabled, on, &AppModel::openEnabledChanged);
}
void AppModel::setSaveEnabled(bool on) {
    change(m_saveEnabled, on, &AppModel::saveEnabledChanged);
}
void AppModel::setReadEnabled(bool on) {
    change(m_readEnabled, on, &AppModel::readEnabledChanged);
}
void AppModel::setWriteEnabled(bool on) {
    change(m_writeEnabled, on, &AppModel::writeEnabledChanged);
}
void AppModel::setUndoEnabled(bool on) {
    change(m_undoEnabled, on, &AppModel::undoEnabledChanged);
}
void AppModel::setRedoEnabled(bool on) {
    change(m_redoEnabled, on, &AppModel::redoEnabledChanged);
}
void AppModel::setShowProtected(bool on) {
    change(m_showProtected, on, &AppModel::showProtectedChanged);
}
void AppModel::setMultipleEnabled(bool on) {
    change(m_multipleEnabled, on, &AppModel::multipleEnabledChanged);
}
void AppModel::setTitle(const QString& title) {
    change(m_title, title, &AppModel::titleChanged);
}
void AppModel::setLastOpenDir(const QString& dir) {
    change(m_lastOpenDir, dir, &AppModel::lastOpenDirChanged);
}
void AppModel::setLastPort(const QString& port) {
    change(m_lastPort, port, &AppModel::lastPortChanged);
}

void AppModel::addFile(FileModel* file) {
    file->setParent(this);
    m_files.append(file);
    emit fileAdded(file);
}

void AppModel::removeFile(FileModel* file) {
    const int index = m_files.indexOf(file);
    if (index < 0) {
        return;
    }
    m_files.removeAt(index);
    emit fileRemoved(file);
    if (m_current >= m_files.size()) {
        setCurrentIndex(static_cast<int>(m_files.size()) - 1);
    }
    file->deleteLater();
}

void AppModel::setCurrentIndex(int index) {
    if (index < -1 || index >= m_files.size()) {
        index = m_files.isEmpty() ? -1 : 0;
    }
    if (m_current != index) {
        m_current = index;
        emit currentIndexChanged(index);
    }
}

FileModel* AppModel::getCurrentFile() const {
    return m_current >= 0 && m_current < m_files.size() ? m_files.at(m_current) : nullptr;
}

} // namespace ui
