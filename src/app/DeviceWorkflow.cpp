#include "app/DeviceWorkflow.h"

#include "app/AppController.h"
#include "app/AppModel.h"
#include "app/Constants.h"
#include "app/WindowDecisions.h"
#include "device/CompareSettings.h"
#include "device/ReadSettings.h"
#include "device/WriteSettings.h"
#include "ui/AppView.h"
#include "ui/DifferencesDialog.h"
#include "ui/KXFileModel.h"
#include "ui/ProgressDialog.h"
#include "ui/Prompts.h"
#include "util/ConnectionDoctor.h"
#include "util/SerialPorts.h"
#include "util/SerialSystem.h"
#include "util/Uploader.h"

#include <QDir>

namespace ui {

void DeviceWorkflow::setRetryWaitMs(int ms) {
    device::Operation::setRetryWaitMs(ms);
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

void DeviceWorkflow::follow(device::Operation& operation) {
    QObject::connect(&operation, &device::Operation::status, progress,
                     &ProgressDialog::setProgressText);
    QObject::connect(&operation, &device::Operation::resetting, progress, [this](bool started) {
        // The reset's own texts stay off the dialog, which says what is being done.
        if (started) {
            resetWasVisible = progress->isVisible();
            progress->show();
            QObject::disconnect(progressText);
        } else {
            progressText = QObject::connect(&c.uploader(), &util::Uploader::suplProgress, progress,
                                            &ProgressDialog::setProgressText);
            progress->setVisible(resetWasVisible);
        }
    });
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

KXFileModel* DeviceWorkflow::readHelper(QWidget* parent, bool interactive) {
    startProgress(TITLE_READ_PROGRESS, parent, true);
    WindowDecisions decisions(c.prompts(), c.getView(), c.getModel()->getVersions(), progress);
    device::ReadSettings read(c.uploader(), c.getModel()->catalogue(), decisions);
    follow(read);
    if (!read.run(interactive)) {
        endProgress();
        if (read.errorString() == ERROR_READHEX) {
            c.showError(ERROR_READHEX);
        }
        return nullptr;
    }
    progress->hide();
    KXFileModel* file = c.open(device::ReadSettings::imagePath(), QString(),
                               FILE_READ.arg(c.nextRead()), true, read.version());
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
    WindowDecisions decisions(c.prompts(), c.getView(), c.getModel()->getVersions());
    device::WriteSettings write(c.uploader(), c.getModel()->catalogue(), decisions);
    decisions.setOnConfirmed([this, &decisions, &write] {
        startProgress(TITLE_WRITE_PROGRESS, c.getView(), false);
        decisions.setProgress(progress);
        follow(write);
    });
    const bool written = write.run(file->setupFile());
    if (!written && !write.errorString().isEmpty()) {
        c.showError(write.errorString());
    }
    endProgress();
    if (written) {
        file->setStatus(STATUS_WRITE.arg(file->getTitle()));
    }
    return written;
}

void DeviceWorkflow::compare(KXFileModel* file) {
    if (!file || !promptForCom(QObject::tr("Compare with Korvex"))) {
        return;
    }
    startProgress(QObject::tr("Reading Setup from Korvex"), c.getView(), true);
    WindowDecisions decisions(c.prompts(), c.getView(), c.getModel()->getVersions(), progress);
    device::CompareSettings compare(c.uploader(), c.getModel()->catalogue(), decisions);
    follow(compare);
    const bool compared = compare.run(file->setupFile());
    endProgress();
    if (!compared) {
        if (!compare.errorString().isEmpty()) {
            c.showError(compare.errorString());
        }
        return;
    }
    DifferencesDialog dialog(compare.differences(), file->getTitle(), c.getView());
    c.prompts().run(dialog);
}

} // namespace ui
