#include "app/FileWorkflow.h"
#include "util/Logging.h"

#include "app/AppController.h"
#include "app/AppModel.h"
#include "app/Constants.h"
#include "sf/SetupFile.h"
#include "ui/AppView.h"
#include "ui/KXFileModel.h"
#include "ui/KXFileView.h"
#include "ui/Prompts.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFileInfo>

namespace ui {

util::VersionContainer FileWorkflow::versionOf(const QString& path) {
    AppModel& model = *c.getModel();
    const QString fw = sf::SetupFile::recordedFirmware(path);
    if (!fw.isEmpty() && model.containsFwVersion(fw)) {
        return model.getVersionByFw(fw);
    }
    if (!fw.isEmpty()) {
        return c.getVersionFromUser(
            model.getVersions(), MESSAGE_SELECT_VERSION_OPEN_MISMATCH.arg(util::printVersion(fw)),
            TITLE_VERSION_SELECT);
    }
    return c.getVersionFromUser(model.getVersions(), MESSAGE_SELECT_VERSION_OPEN, TITLE_VERSION);
}

KXFileModel* FileWorkflow::open(const QString& path, const QString& savePath, const QString& title,
                                bool modified, const util::VersionContainer& forcedVersion) {
    if (path.isEmpty()) {
        return nullptr;
    }
    AppModel& model = *c.getModel();
    if (!savePath.isEmpty()) {
        const QFileInfo target(savePath);
        const QList<FileModel*>& open = model.getFiles();
        for (int i = 0; i < open.size(); ++i) {
            if (!open.at(i)->getPath().isEmpty() && QFileInfo(open.at(i)->getPath()) == target) {
                model.setCurrentIndex(i);
                return nullptr;
            }
        }
    }
    const util::VersionContainer version =
        forcedVersion.fwVersion.isEmpty() ? versionOf(path) : forcedVersion;
    if (version.fwVersion.isEmpty()) {
        return nullptr;
    }
    auto* file = new KXFileModel(STATUS_DEFAULT);
    QObject::connect(file, &KXFileModel::settingsLoadError, &c, &AppController::settingsLoadError);
    QObject::connect(file, &KXFileModel::problem, &c, &AppController::showWarning);
    qCDebug(util::lcFile).noquote()
        << "Opening" << path << "with version" << version.fwVersion << "to path" << savePath;
    if (!file->open(QFileInfo(path).absoluteFilePath(), version)) {
        c.showError(ERROR_OPENHEX.arg(path));
        delete file;
        return nullptr;
    }
    file->setShowProtected(model.getShowProtected());
    model.addFile(file);
    file->setPath(savePath);
    file->setTitle(title);
    file->setModified(modified);
    // The command states follow the file that is current.
    const auto follow = [this, file] {
        if (c.getModel()->getCurrentFile() == file) {
            c.updateFlags();
        }
    };
    QObject::connect(file, &FileModel::undoEnabledChanged, &c, follow);
    QObject::connect(file, &FileModel::redoEnabledChanged, &c, follow);
    if (AppView* view = c.getView()) {
        view->addFileView(new KXFileView(file));
    } else {
        model.setCurrentIndex(model.indexOf(file));
    }
    c.updateFlags();
    return file;
}

FileModel* FileWorkflow::replaced(bool* proceed) {
    AppModel& model = *c.getModel();
    FileModel* current = model.getMultipleEnabled() ? nullptr : model.getCurrentFile();
    *proceed = !current || c.prepareToClose(current);
    return current;
}

void FileWorkflow::newFile() {
    AppModel& model = *c.getModel();
    const QList<util::VersionContainer>& versions = model.getVersions();
    if (versions.isEmpty()) {
        return;
    }
    const util::VersionContainer version =
        versions.size() == 1
            ? versions.first()
            : c.getVersionFromUser(versions, MESSAGE_SELECT_VERSION_NEW, TITLE_VERSION_SELECT);
    if (version.fwVersion.isEmpty()) {
        return;
    }
    bool proceed = false;
    FileModel* previous = replaced(&proceed);
    if (!proceed) {
        return;
    }
    const int number = c.nextUntitled();
    if (KXFileModel* file =
            open(version.mapFilePath, QString(), FILE_UNTITLED.arg(number), false, version)) {
        if (previous) {
            c.close(previous);
        }
        file->setStatus(STATUS_CREATED);
    }
}

void FileWorkflow::openFile() {
    const QString path = c.prompts().openFileName(TITLE_OPEN, c.getModel()->getLastOpenDir(),
                                                  FILTER_HEX + QStringLiteral(";;") + FILTER_ALL);
    if (!path.isEmpty()) {
        openPath(path);
    }
}

void FileWorkflow::openPath(const QString& path) {
    bool proceed = false;
    FileModel* previous = replaced(&proceed);
    if (!proceed) {
        return;
    }
    c.getModel()->setLastOpenDir(QFileInfo(path).absolutePath());
    if (KXFileModel* file = open(path, path, AppController::getFileNameFromPath(path), false,
                                 util::VersionContainer())) {
        if (previous) {
            c.close(previous);
        }
        file->setStatus(STATUS_OPENED.arg(path));
    }
}

void FileWorkflow::saveCurrent(bool saveAs) {
    if (FileModel* file = c.getModel()->getCurrentFile(); file && save(file, saveAs)) {
        file->setStatus(STATUS_SAVED.arg(file->getTitle()));
    }
}

bool FileWorkflow::save(FileModel* file, bool saveAs) {
    QString target = file->getPath();
    if (target.isEmpty() || saveAs) {
        const QString start = target.isEmpty() ? PATH_SAVED + file->getTitle() : target;
        target = c.prompts().saveFileName(TITLE_SAVE, start, FILTER_HEX);
        if (target.isEmpty()) {
            return false;
        }
    }
    const QFileInfo info(target);
    if (c.isFirmwareFile(target) || info == QFileInfo(PATH_AND_FILE_SUPL) ||
        info == QFileInfo(PATH_AND_FILE_DEVICE)) {
        c.showError(ERROR_BADIDEA);
        return false;
    }
    if (info == QFileInfo(PATH_DATA + FILE_TEMP) &&
        c.promptUser(MESSAGE_SAVE_TEMP, DETAILS_SAVE_TEMP, TITLE_SAVE_TEMP,
                     QMessageBox::Save | QMessageBox::Cancel,
                     QMessageBox::NoButton) != QMessageBox::Save) {
        return false;
    }
    if (!file->save(target, true, false)) {
        c.showError(ERROR_SAVEHEX.arg(file->getPath()));
        return false;
    }
    file->setModified(false);
    file->setPath(target);
    file->setTitle(AppController::getFileNameFromPath(target));
    return true;
}

void FileWorkflow::exit() {
    AppModel& model = *c.getModel();
    const QList<FileModel*> open = model.getFiles();
    for (FileModel* file : open) {
        if (!c.prepareToClose(file)) {
            return;
        }
    }
    for (FileModel* file : open) {
        c.close(file);
    }
    QCoreApplication::exit(0);
}

} // namespace ui
