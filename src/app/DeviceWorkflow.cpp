#include "app/DeviceWorkflow.h"

#include "app/AppController.h"
#include "app/AppModel.h"
#include "app/Constants.h"
#include "sf/SetupComparison.h"
#include "sf/SetupFile.h"
#include "ui/AppView.h"
#include "ui/DifferencesDialog.h"
#include "ui/KXFileModel.h"
#include "ui/ProgressDialog.h"
#include "ui/Prompts.h"
#include "util/ConnectionDoctor.h"
#include "util/KXCommunicator.h"
#include "util/SerialPorts.h"
#include "util/SerialSystem.h"
#include "util/Uploader.h"

#include <QDebug>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QTimer>

namespace ui {

namespace {
constexpr int ENQ_ATTEMPTS = 3;
int g_retryWaitMs = 1000;
} // namespace

void DeviceWorkflow::setRetryWaitMs(int ms) {
    g_retryWaitMs = ms;
}

DeviceWorkflow::~DeviceWorkflow() {
    delete progress;
}

bool DeviceWorkflow::promptForCom(const QString& title) {
    util::Uploader& supl = c.uploader();
    AppModel& model = *c.getModel();
    if (supl.getComList().isEmpty()) {
        supl.findComPorts(); // the scan after start-up has not run yet
    }
    for (;;) {
        const PortAnswer answer = c.prompts().choosePort(
            util::describePorts(supl.getComList()), supl.getComIndex(), model.getLastPort(), title);
        if (answer.kind == PortAnswer::Refresh) {
            if (c.getView()) {
                c.getView()->setEnabled(false);
            }
            supl.findComPorts();
            if (c.getView()) {
                c.getView()->setEnabled(true);
            }
            continue;
        }
        if (answer.kind == PortAnswer::Check) {
            checkConnection(answer.port);
            continue;
        }
        if (answer.kind != PortAnswer::Ok || answer.port.isEmpty()) {
            return false;
        }
        // A typed path the platform does not list is listed from now on.
        if (!supl.getComList().contains(answer.port)) {
            util::addExtraPort(answer.port);
            supl.findComPorts();
        }
        supl.setSerialPort(answer.port);
        model.setLastPort(answer.port);
        return true;
    }
}

void DeviceWorkflow::checkConnection(const QString& port) {
    util::LinuxSerialSystem machine;
    if (c.getView()) {
        c.getView()->setEnabled(false);
    }
    const util::DoctorReport report =
        util::examineConnection(serialSystem ? *serialSystem : machine, port);
    if (c.getView()) {
        c.getView()->setEnabled(true);
    }
    if (!report.port.isEmpty()) {
        c.getModel()->setLastPort(report.port);
    }
    c.prompts().message(report.ok() ? QMessageBox::Information : QMessageBox::Warning,
                        TITLE_CHECK_CONNECTION, report.text());
}

void DeviceWorkflow::startProgress(const QString& title, QWidget* parent, bool showErrors) {
    if (!progress) {
        progress = new ProgressDialog(title, parent);
    }
    progress->setWindowTitle(title);
    util::Uploader& supl = c.uploader();
    progressText = QObject::connect(&supl, &util::Uploader::suplProgress, progress,
                                    &ProgressDialog::setProgressText);
    wires << QObject::connect(&supl, &util::Uploader::setProgress, progress,
                              &ProgressDialog::setProgress);
    wires << QObject::connect(progress, &ProgressDialog::aborted, &c,
                              &AppController::transferAborted);
    if (showErrors) {
        wires << QObject::connect(&supl, &util::Uploader::suplError, &c, &AppController::showError);
    }
    progress->show();
}

void DeviceWorkflow::endProgress() {
    for (const QMetaObject::Connection& w : wires) {
        QObject::disconnect(w);
    }
    wires.clear();
    QObject::disconnect(progressText);
    if (progress) {
        progress->finish();
    }
}

QString DeviceWorkflow::detectVersion() {
    progress->setProgressText(MESSAGE_DETECT_VERSION);
    const QString enq =
        c.communicator().getParsedENQVersion(c.uploader().getSerialPort(), ENQ_ATTEMPTS);
    qDebug().noquote() << "Got" << enq << "for version string";
    return enq;
}

void DeviceWorkflow::sendReset() {
    const bool wasVisible = progress->isVisible();
    progress->show();
    progress->setProgressText(MESSAGE_RESETTING);
    QObject::disconnect(progressText);
    c.uploader().reset();
    progressText = QObject::connect(&c.uploader(), &util::Uploader::suplProgress, progress,
                                    &ProgressDialog::setProgressText);
    progress->setVisible(wasVisible);
}

void DeviceWorkflow::readPressed() {
    AppModel& model = *c.getModel();
    if (!promptForCom(TITLE_READ)) {
        return;
    }
    FileModel* previous = model.getMultipleEnabled() ? nullptr : model.getCurrentFile();
    if (previous && !c.prepareToClose(previous)) {
        return;
    }
    if (KXFileModel* file = readHelper(c.getView(), true)) {
        if (previous) {
            c.close(previous);
        }
        file->setStatus(STATUS_READ);
    }
}

util::VersionContainer DeviceWorkflow::versionForRead(const QString& enq, bool interactive) {
    AppModel& model = *c.getModel();
    if (!enq.isEmpty() && model.containsEnqVersion(enq)) {
        return model.getVersionByEnq(enq);
    }
    if (!interactive) {
        return util::VersionContainer();
    }
    if (!enq.isEmpty()) {
        return c.getVersionFromUser(
            model.getVersions(), MESSAGE_SELECT_VERSION_READ_MISMATCH.arg(util::printVersion(enq)),
            TITLE_VERSION_SELECT);
    }
    return c.getVersionFromUser(model.getVersions(), MESSAGE_SELECT_VERSION_READ, TITLE_VERSION);
}

KXFileModel* DeviceWorkflow::readHelper(QWidget* parent, bool interactive) {
    startProgress(TITLE_READ_PROGRESS, parent, true);
    const QString enq = detectVersion();
    if (progress->wasAborted()) {
        endProgress();
        return nullptr;
    }
    if (!c.uploader().readSettings(FILE_TEMP, true)) {
        endProgress();
        c.showError(ERROR_READHEX);
        return nullptr;
    }
    progress->hide();
    const util::VersionContainer version = versionForRead(enq, interactive);
    KXFileModel* file = nullptr;
    if (!version.fwVersion.isEmpty()) {
        file = c.open(PATH_DATA + FILE_TEMP, QString(), FILE_READ.arg(c.nextRead()), true, version);
    }
    progress->show();
    endProgress();
    return file;
}

KXFileModel* DeviceWorkflow::readCurrentSettings(const QString& port, const QString& title) {
    const QString here = QDir::currentPath();
    QDir::setCurrent(QStringLiteral(".."));
    util::Uploader& supl = c.uploader();
    if (!supl.getComList().contains(port)) {
        util::addExtraPort(port);
        supl.findComPorts();
    }
    supl.setSerialPort(port);
    c.getModel()->setLastPort(port);
    c.getModel()->setMultipleEnabled(true);
    KXFileModel* file = readHelper(nullptr, false);
    if (file) {
        file->setStatus(STATUS_READ);
        file->setTitle(title);
    }
    QDir::setCurrent(here);
    return file;
}

bool DeviceWorkflow::write(KXFileModel* file) {
    if (!file || !promptForCom(TITLE_WRITE)) {
        return false;
    }
    if (c.prompts().ask(QMessageBox::Question, TITLE_CONFIRM_WRITE, MESSAGE_CONFIRM_WRITE,
                        QString(), QMessageBox::Yes | QMessageBox::No,
                        QMessageBox::NoButton) != QMessageBox::Yes) {
        return false;
    }
    startProgress(TITLE_WRITE_PROGRESS, c.getView(), false);
    QString enq;
    for (;;) {
        enq = detectVersion();
        if (!enq.isEmpty()) {
            break;
        }
        const QMessageBox::StandardButton answer = c.promptUser(
            MESSAGE_WRITE_VERSION_NONE, DETAILS_WRITE_VERSION_NONE, TITLE_WRITE_CONFIRM,
            QMessageBox::Retry | QMessageBox::Ignore | QMessageBox::Cancel, QMessageBox::NoButton);
        if (answer == QMessageBox::Ignore) {
            break;
        }
        sendReset();
        if (answer != QMessageBox::Retry) {
            endProgress();
            return false;
        }
        QEventLoop pause;
        QTimer::singleShot(g_retryWaitMs, &pause, &QEventLoop::quit);
        pause.exec();
    }
    util::Uploader& supl = c.uploader();
    const auto fail = [this, &enq](const QString& error) {
        if (!error.isEmpty()) {
            c.showError(error);
        }
        if (!enq.isEmpty()) {
            sendReset();
        }
        endProgress();
        return false;
    };
    if (!supl.readSettings(FILE_TEMP, false)) {
        return fail(ERROR_READHEX);
    }
    if (!enq.isEmpty()) {
        AppModel& model = *c.getModel();
        const util::VersionContainer ours = model.getVersionByEnq(enq);
        const util::VersionContainer theirs = model.getVersionByFw(file->getFWVersion());
        if (ours.fwVersion.isEmpty()) {
            if (c.promptUser(MESSAGE_WRITE_UNKNOWN_KX_FW.arg(enq, file->getFWVersion()),
                             DETAILS_WRITE_VERSION_MISMATCH, TITLE_WRITE_CONFIRM,
                             QMessageBox::Yes | QMessageBox::No,
                             QMessageBox::No) != QMessageBox::Yes) {
                return fail(QString());
            }
        } else if (!theirs.fwVersion.isEmpty() &&
                   ours.kxsVersion.compare(theirs.kxsVersion, Qt::CaseInsensitive) != 0) {
            QStringList sharing;
            for (const util::VersionContainer& v : model.getVersionsByKxs(theirs.kxsVersion)) {
                sharing << QLatin1Char('"') + v.fwVersion + QLatin1Char('"');
            }
            return fail(
                ERROR_WRITE_KXS_VERSION_MISMATCH.arg(enq, sharing.join(QStringLiteral(", "))));
        }
    }
    progress->show();
    const QString temp = PATH_DATA + FILE_TEMP;
    if (!file->save(temp, false, true)) {
        return fail(ERROR_SAVEHEX.arg(temp));
    }
    if (!supl.writeSettings(FILE_TEMP, true)) {
        return fail(ERROR_WRITEHEX);
    }
    endProgress();
    file->setStatus(STATUS_WRITE.arg(file->getTitle()));
    return true;
}

void DeviceWorkflow::compare(KXFileModel* file) {
    if (!file || !promptForCom(QObject::tr("Compare with Korvex"))) {
        return;
    }
    startProgress(QObject::tr("Reading Setup from Korvex"), c.getView(), true);
    const QString enq = detectVersion();
    if (progress->wasAborted() || !c.uploader().readSettings(FILE_TEMP, true)) {
        const bool aborted = progress->wasAborted();
        endProgress();
        if (!aborted) {
            c.showError(ERROR_READHEX);
        }
        return;
    }
    endProgress();
    util::VersionContainer version = c.getModel()->getVersionByEnq(enq);
    if (version.fwVersion.isEmpty()) {
        version = versionForRead(enq, true);
    }
    if (version.fwVersion.isEmpty()) {
        return;
    }
    sf::SetupFile instrument;
    if (instrument.open(QFileInfo(PATH_DATA + FILE_TEMP).absoluteFilePath(), version) < 0) {
        c.showError(ERROR_READHEX);
        return;
    }
    const sf::Comparison differences = sf::compareSettings(*file->manager(), instrument.manager());
    DifferencesDialog dialog(differences, file->getTitle(), c.getView());
    c.prompts().run(dialog);
}

} // namespace ui
