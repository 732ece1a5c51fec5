#include "app/AppController.h"
#include "util/Logging.h"

#include "app/AppModel.h"
#include "app/Constants.h"
#include "app/DeviceWorkflow.h"
#include "app/FileWorkflow.h"
#include "firmware/FirmwareArchive.h"
#include "kxs/parser/KxsParser.h"
#include "sf/parser/HexParser.h"
#include "ui/AboutDialog.h"
#include "ui/AppView.h"
#include "ui/FirmwareDownloader.h"
#include "ui/HelpWindow.h"
#include "ui/KXFileModel.h"
#include "ui/MainWindow.h"
#include "ui/Prompts.h"
#include "ui/WindowPlacement.h"
#include "util/KXCommunicator.h"
#include "util/Uploader.h"
#include "util/VersionCatalogue.h"
#include "util/VersionParser.h"

#include <QAction>
#include <QCoreApplication>
#include <QDebug>
#include <QDirIterator>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTimer>

namespace ui {

namespace {

// The window's commands, each named once: the name of the view's action and the
// controller's slot it runs, connected with typed connections.
struct Command {
    const char* action;
    void (AppController::*run)();
};
const Command COMMANDS[] = {
    {"new", &AppController::newPressed},
    {"open", &AppController::openPressed},
    {"save", &AppController::savePressed},
    {"saveAs", &AppController::saveAsPressed},
    {"exit", &AppController::exitPressed},
    {"read", &AppController::readPressed},
    {"write", &AppController::writePressed},
    {"compare", &AppController::comparePressed},
    {"showProtected", &AppController::showProtectedPressed},
    {"enableMultiple", &AppController::enableMultiplePressed},
    {"undo", &AppController::undoPressed},
    {"redo", &AppController::redoPressed},
    {"about", &AppController::aboutPressed},
    {"help", &AppController::helpPressed},
    {"updateFirmware", &AppController::updateFirmwarePressed},
    {"getFirmware", &AppController::getFirmwarePressed},
    {"clearFirmware", &AppController::clearFirmwarePressed},
};

} // namespace

AppController::AppController(QObject* parent)
    : QObject(parent), supl(new util::Uploader), kxCommunicator(new util::KXCommunicator),
      hexParser(std::make_unique<sf::parser::HexParser>()),
      kxsParser(std::make_unique<kxs::parser::KxsParser>()),
      files(std::make_unique<FileWorkflow>(*this)),
      device(std::make_unique<DeviceWorkflow>(*this)) {
    connect(supl, &util::Uploader::suplError, this,
            [](const QString& text) { qCDebug(util::lcDevice).noquote() << "helper:" << text; });
}

AppController::~AppController() {
    delete help;
    delete firmwareUpdate;
    device.reset();
    delete supl;
    delete kxCommunicator;
}

void AppController::setModel(AppModel* m) {
    if (model == m) {
        return;
    }
    model = m;
    if (view) {
        view->setModel(model);
    }
}

void AppController::wireView(bool connectThem) {
    for (const Command& c : COMMANDS) {
        QAction* act = view->action(QLatin1String(c.action));
        if (connectThem) {
            connect(act, &QAction::triggered, this, c.run);
        } else {
            disconnect(act, &QAction::triggered, this, c.run);
        }
    }
    if (connectThem) {
        // Never disconnected: the old view's close stays connected when it is replaced.
        connect(view, &AppView::closePressed, this, &AppController::closePressed);
        connect(view, &AppView::indexChanged, this, &AppController::indexChanged);
        connect(view, &AppView::settingTip, this, &AppController::settingTipChanged);
    } else {
        disconnect(view, &AppView::indexChanged, this, &AppController::indexChanged);
        disconnect(view, &AppView::settingTip, this, &AppController::settingTipChanged);
    }
}

void AppController::setView(AppView* v) {
    if (view) {
        wireView(false);
    }
    view = v;
    if (!view) {
        return;
    }
    wireView(true);
    view->setModel(model);
    if (!currentPrompts || ownPrompts.get() == currentPrompts) {
        ownPrompts = std::make_unique<DialogPrompts>(view);
        currentPrompts = ownPrompts.get();
    }
}

void AppController::setPrompts(Prompts* p) {
    currentPrompts = p;
}

void AppController::setSerialSystem(util::SerialSystem* system) {
    device->setSerialSystem(system);
}

Prompts& AppController::prompts() {
    if (!currentPrompts) {
        ownPrompts = std::make_unique<DialogPrompts>(view);
        currentPrompts = ownPrompts.get();
    }
    return *currentPrompts;
}

bool AppController::initialize() {
    if (!enumerateVersions()) {
        showWarning(ERROR_NOTFOUND_KXS);
    }
    bool available = true;
    if (!QFileInfo::exists(PATH_AND_FILE_SUPL)) {
        showError(ERROR_NOTFOUND_SUPL.arg(PATH_AND_FILE_SUPL));
        available = false;
    } else if (!QFileInfo::exists(PATH_AND_FILE_DEVICE)) {
        showError(ERROR_NOTFOUND_SUPL.arg(PATH_AND_FILE_DEVICE));
        available = false;
    }
    const bool hasDefault = setDefaultVersion();
    model->setSuplAvailable(available);
    model->setNewEnabled(hasDefault);
    model->setOpenEnabled(true);
    model->setSaveEnabled(false);
    model->setReadEnabled(available);
    model->setWriteEnabled(false);
    model->setLastOpenDir(PATH_SAVED);

    // Also with no default version: the empty path then fails and says so.
    const int number = nextUntitled();
    if (KXFileModel* first = open(model->getDefaultVersion().mapFilePath, QString(),
                                  FILE_UNTITLED.arg(number), false, util::VersionContainer())) {
        first->setStatus(STATUS_DEFAULT);
    }

    const QString temp = PATH_DATA + FILE_TEMP;
    if (!QFileInfo::exists(temp)) {
        QFile scratch(temp);
        if (!scratch.open(QIODevice::WriteOnly)) {
            showError(ERROR_WRITE_PERMS.arg(temp));
            return false;
        }
        scratch.close();
    }
    if (available) {
        // Scanning the serial ports takes longer than everything else before the window
        // first paints, so a window that has not painted yet has it done right after (the
        // window paints for the first time only once).
        if (view && !view->hasPainted()) {
            connect(view, &AppView::firstPainted, supl, [this] { supl->findComPorts(); });
        } else {
            supl->findComPorts();
        }
    }
    return true;
}

bool AppController::enumerateVersions() {
    util::VersionParser parser;
    connect(&parser, &util::VersionParser::showError, this, &AppController::showError);
    connect(&parser, &util::VersionParser::showWarning, this, &AppController::showWarning);
    const QList<util::VersionContainer> found =
        util::VersionCatalogue::scanFirmwareFolder(PATH_FW, PATH_KXS, parser);
    if (found.isEmpty()) {
        return false;
    }
    model->addVersions(found);
    return true;
}

bool AppController::setDefaultVersion() {
    if (model->getVersions().isEmpty()) {
        return false;
    }
    model->setDefaultVersion(model->getVersions().first());
    return true;
}

bool AppController::isFirmwareFile(const QString& path) const {
    const QFileInfo target(path);
    for (const util::VersionContainer& v : model->getVersions()) {
        const QFileInfo defaults(v.mapFilePath);
        if (defaults.exists() && defaults == target) {
            return true;
        }
    }
    return false;
}

KXFileModel* AppController::open(const QString& path, const QString& savePath, const QString& title,
                                 bool modified, const util::VersionContainer& forcedVersion) {
    return files->open(path, savePath, title, modified, forcedVersion);
}

void AppController::openFiles(const QStringList& paths) {
    for (const QString& path : paths) {
        files->openPath(path);
    }
}

KXFileModel* AppController::currentFile() const {
    return model ? qobject_cast<KXFileModel*>(model->getCurrentFile()) : nullptr;
}

void AppController::close(FileModel* file) {
    file->close();
    model->removeFile(file);
    updateFlags();
}

void AppController::updateFlags() {
    FileModel* file = model->getCurrentFile();
    model->setNewEnabled(!model->getDefaultVersion().fwVersion.isEmpty());
    model->setOpenEnabled(true);
    model->setSaveEnabled(file != nullptr);
    model->setReadEnabled(model->getSuplAvailable());
    model->setWriteEnabled(file != nullptr && model->getSuplAvailable());
    model->setUndoEnabled(file && file->getUndoEnabled());
    model->setRedoEnabled(file && file->getRedoEnabled());
}

QMessageBox::StandardButton AppController::promptUser(const QString& text,
                                                      const QString& informative,
                                                      const QString& title,
                                                      QMessageBox::StandardButtons buttons,
                                                      QMessageBox::StandardButton defaultButton) {
    return prompts().ask(QMessageBox::Information, title, text, informative, buttons,
                         defaultButton);
}

util::VersionContainer
AppController::getVersionFromUser(const QList<util::VersionContainer>& versions,
                                  const QString& message, const QString& title) {
    return prompts().chooseVersion(versions, message, title);
}

QString AppController::getFileNameFromPath(const QString& path) {
    static const QRegularExpression directories(QStringLiteral("(/|\\\\)?(.*(/|\\\\))*"));
    QString name = path;
    return name.remove(directories);
}

void AppController::showError(const QString& text) {
    qCDebug(util::lcFile).noquote() << "error shown:" << text;
    prompts().message(QMessageBox::Critical, TITLE_ERROR, text);
}

void AppController::showWarning(const QString& text) {
    qCDebug(util::lcFile).noquote() << "warning shown:" << text;
    prompts().message(QMessageBox::Warning, TITLE_WARNING, text);
}

void AppController::settingsLoadError(int count) {
    showWarning(WARNING_SETTINGS_LOAD.arg(count));
}

void AppController::transferAborted() {
    supl->requestQuit();
}

void AppController::settingTipChanged(const QString& tip) {
    if (FileModel* file = model->getCurrentFile()) {
        file->setStatus(tip.isEmpty() ? STATUS_DEFAULT : tip);
    }
}

void AppController::indexChanged(int index) {
    model->setCurrentIndex(index);
    updateFlags();
}

void AppController::newPressed() {
    files->newFile();
}

void AppController::openPressed() {
    files->openFile();
}

void AppController::closePressed(int index) {
    if (index >= 0 && index < model->getFiles().size()) {
        FileModel* file = model->getFiles().at(index);
        if (prepareToClose(file)) {
            close(file);
        }
    }
}

void AppController::savePressed() {
    files->saveCurrent(false);
}

void AppController::saveAsPressed() {
    files->saveCurrent(true);
}

void AppController::exitPressed() {
    files->exit();
}

void AppController::readPressed() {
    device->readPressed();
}

void AppController::writePressed() {
    device->write(currentFile());
}

void AppController::comparePressed() {
    device->compare(currentFile());
}

KXFileModel* AppController::readCurrentSettings(const QString& port, const QString& title) {
    return device->readCurrentSettings(port, title);
}

void AppController::firmwareUpdateVersionSelected(const util::VersionContainer& version) {
    fwUpdateVersion.kxsVersion = version.kxsVersion;
    fwUpdateVersion.fwVersion = version.fwVersion;
    fwUpdateVersion.enqString = version.enqString;
    fwUpdateVersion.kxsFilePath = version.kxsFilePath;
    fwUpdateVersion.mapFilePath = version.mapFilePath;
    fwUpdateVersion.mapGroup = version.mapGroup;
    fwUpdateVersion.kxsFormat = version.kxsFormat;
}

void AppController::showProtectedPressed() {
    const bool show = !model->getShowProtected();
    model->setShowProtected(show);
    for (FileModel* file : model->getFiles()) {
        file->setShowProtected(show);
    }
}

void AppController::enableMultiplePressed() {
    if (!model->getMultipleEnabled() || model->getFiles().size() <= 1) {
        model->setMultipleEnabled(!model->getMultipleEnabled());
        return;
    }
    if (promptUser(MESSAGE_CLOSE_MULTIPLE, DETAILS_CLOSE_MULTIPLE, TITLE_CLOSE_MULTIPLE,
                   QMessageBox::Ok | QMessageBox::Cancel,
                   QMessageBox::NoButton) != QMessageBox::Ok) {
        return;
    }
    FileModel* current = model->getCurrentFile();
    for (FileModel* file : model->getFiles()) {
        if (file != current) {
            close(file);
        }
    }
    model->setMultipleEnabled(false);
}

void AppController::undoPressed() {
    if (FileModel* file = model->getCurrentFile()) {
        file->undoAction();
    }
}

void AppController::redoPressed() {
    if (FileModel* file = model->getCurrentFile()) {
        file->redoAction();
    }
}

void AppController::aboutPressed() {
    AboutDialog about(view);
    prompts().run(about);
}

void AppController::helpPressed() {
    FileModel* file = model->getCurrentFile();
    QFile page(QStringLiteral("data/help/") + (file ? file->getFWVersion() : QString()) +
               QStringLiteral("_help.html"));
    if (!file || !page.open(QIODevice::ReadOnly)) {
        prompts().message(QMessageBox::Information, QStringLiteral("Could not find help file"),
                          QStringLiteral("No help file found for this firmware version"));
        return;
    }
    QByteArray html = page.readAll();
    const int end = html.indexOf('\0');
    if (end >= 0) {
        html.truncate(end);
    }
    delete help;
    help = new HelpWindow(tr("Help for firmware %1").arg(util::printVersion(file->getFWVersion())),
                          QString::fromUtf8(html));
    ui::centreOver(help, view);
    help->show();
}

MainWindow* AppController::firmwareUpdateWindow() const {
    return firmwareUpdate;
}

void AppController::updateFirmwarePressed() {
    if (firmwareUpdate) {
        firmwareUpdate->raise();
        firmwareUpdate->activateWindow();
        return;
    }
    firmwareUpdate = new MainWindow(model, model->getDefaultVersion());
    firmwareUpdate->setPrompts(currentPrompts == ownPrompts.get() ? nullptr : currentPrompts);
    connect(firmwareUpdate, &MainWindow::showError, this, &AppController::showError);
    connect(firmwareUpdate, &MainWindow::readSettings, this, &AppController::readCurrentSettings);
    connect(firmwareUpdate, &MainWindow::versionSelected, this,
            &AppController::firmwareUpdateVersionSelected);
    // Its own window, opened over the main window (and its message boxes over it).
    ui::centreOver(firmwareUpdate, view);
    firmwareUpdate->show();
}

void AppController::getFirmwarePressed() {
    FirmwareDownloader downloader(prompts(), view);
    QEventLoop wait;
    connect(&downloader, &FirmwareDownloader::updateSuccess, &wait, &QEventLoop::quit);
    connect(&downloader, &FirmwareDownloader::updateFail, &wait, &QEventLoop::quit);
    QTimer::singleShot(0, &downloader, &FirmwareDownloader::start);
    wait.exec();
    rebuildCatalogue();
}

void AppController::clearFirmwarePressed() {
    const QMessageBox::StandardButton answer = prompts().ask(
        QMessageBox::Question, QStringLiteral("Careful! Delete All Firmware Files?"),
        QStringLiteral(
            "This will erase all firmware-related files in the data/firmware, data/kxs, and "
            "data/help directories.\nIt will also erase the firmware download history.\nYou "
            "should only use this option if something has gone wrong with your firmware "
            "directories, and you need to start fresh.\n\nAfter using this, you should use the "
            "\"Get New Firmware\" option to re-download all the firmware.\n\nAre you sure you "
            "want to delete all local firmware files?"),
        QString(), QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
    if (answer != QMessageBox::Yes) {
        return;
    }
    firmware::removeAllFirmware(PATH_FW, PATH_KXS, PATH_HELP, FILE_FIRMWARE_LIST);
    prompts().message(QMessageBox::Information, QStringLiteral("Firmware Deleted Successfuly"),
                      QStringLiteral("All firmware files and download history have been deleted."));
    rebuildCatalogue();
}

void AppController::rebuildCatalogue() {
    model->clearVersions();
    enumerateVersions();
    setDefaultVersion();
    updateFlags();
}

} // namespace ui
