#include "ui/MainWindow.h"

#include "app/AppModel.h"
#include "app/Constants.h"
#include "firmware/Bootloader.h"
#include "firmware/FirmwareUpdate.h"
#include "ui/KXFileModel.h"
#include "ui/MigrationDialog.h"
#include "ui/Prompts.h"
#include "util/Uploader.h"
#include "util/VersionParser.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QTextEdit>
#include <QVBoxLayout>

namespace ui {

MainWindow::MainWindow(AppModel* model, const util::VersionContainer& defaultVersion,
                       QWidget* parent)
    : QWidget(parent), m_model(model), m_target(defaultVersion), m_port(new QComboBox(this)),
      m_versions(new QComboBox(this)),
      m_reset(new QCheckBox(tr("Reset settings to defaults"), this)),
      m_start(new QPushButton(tr("&Update Firmware"), this)), m_log(new QTextEdit(this)),
      m_progress(new QProgressBar(this)), m_state(new QLabel(this)) {
    setWindowTitle(tr("Update Korvex Firmware"));
    setAttribute(Qt::WA_DeleteOnClose);
    m_port->setEditable(true);
    auto* refresh = new QPushButton(tr("Refresh"), this);
    auto* other = new QPushButton(tr("Other file..."), this);
    for (const util::VersionContainer& v : m_model->getVersions()) {
        m_versions->addItem(tr("Firmware %1").arg(util::printVersion(v.fwVersion)), v.fwVersion);
    }
    selectVersion(defaultVersion.fwVersion);
    connect(m_versions, QOverload<int>::of(&QComboBox::activated), this,
            &MainWindow::targetChanged);
    connect(refresh, &QPushButton::clicked, this, &MainWindow::refreshPorts);
    connect(other, &QPushButton::clicked, this, &MainWindow::chooseFile);
    connect(m_start, &QPushButton::clicked, this, &MainWindow::startUpdate);
    m_reset->setToolTip(tr("Flash the new firmware with its own default settings instead of "
                           "carrying your settings across. Needed when the instrument no longer "
                           "answers."));

    auto* portRow = new QHBoxLayout;
    portRow->addWidget(m_port, 1);
    portRow->addWidget(refresh);
    auto* versionRow = new QHBoxLayout;
    versionRow->addWidget(m_versions, 1);
    versionRow->addWidget(other);
    auto* form = new QFormLayout;
    form->addRow(tr("Serial port:"), portRow);
    form->addRow(tr("New firmware:"), versionRow);
    form->addRow(QString(), m_reset);
    m_log->setReadOnly(true);
    m_log->setPlaceholderText(
        tr("Connect the Korvex, turn it on in its normal display mode, choose its port and the "
           "new firmware, then press Update Firmware. Each step is shown here."));
    m_log->setStyleSheet(QStringLiteral("QTextEdit { background: #202428; color: white; }"));
    m_progress->setRange(0, 100);
    m_progress->setValue(0);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_start);
    layout->addWidget(m_log, 1);
    layout->addWidget(m_progress);
    layout->addWidget(m_state);
    resize(640, 520);
    refreshPorts();
}

MainWindow::~MainWindow() = default;

void MainWindow::setPrompts(Prompts* prompts) {
    m_prompts = prompts;
}

Prompts& MainWindow::prompts() {
    if (!m_prompts) {
        m_ownPrompts = std::make_unique<DialogPrompts>(this);
        m_prompts = m_ownPrompts.get();
    }
    return *m_prompts;
}

void MainWindow::refreshPorts() {
    util::Uploader ports;
    ports.findComPorts();
    const QString current = port().isEmpty() ? m_model->getLastPort() : port();
    m_port->clear();
    m_port->addItems(ports.getComList());
    setPort(current);
}

void MainWindow::setPort(const QString& path) {
    m_port->setCurrentText(path);
}

QString MainWindow::port() const {
    return m_port->currentText().trimmed();
}

void MainWindow::selectVersion(const QString& fwVersion) {
    const int row = m_versions->findData(fwVersion);
    if (row >= 0) {
        m_versions->setCurrentIndex(row);
        targetChanged();
    }
}

void MainWindow::targetChanged() {
    const QString fw = m_versions->currentData().toString();
    if (!fw.isEmpty()) {
        m_target = m_model->getVersionByFw(fw);
    }
}

void MainWindow::chooseFile() {
    const QString path = prompts().openFileName(tr("Choose a firmware file"), PATH_FW, FILTER_FW);
    if (path.isEmpty()) {
        return;
    }
    util::VersionParser parser;
    connect(&parser, &util::VersionParser::showError, this, &MainWindow::showError);
    connect(&parser, &util::VersionParser::showWarning, this, &MainWindow::showError);
    const QFileInfo file(path);
    const util::VersionContainer version =
        parser.parseFirmwareFile(file.fileName(), file.absoluteDir(), QDir(PATH_KXS));
    if (version.fwVersion.isEmpty()) {
        return;
    }
    m_target = version;
    m_versions->addItem(
        tr("%1 (firmware %2)").arg(file.fileName(), util::printVersion(version.fwVersion)));
    m_versions->setCurrentIndex(m_versions->count() - 1);
}

void MainWindow::setResetSettings(bool reset) {
    m_reset->setChecked(reset);
}

QString MainWindow::logText() const {
    return m_log->toPlainText();
}

void MainWindow::appendLog(const QString& text) {
    const QString shown = text.trimmed();
    if (shown.isEmpty()) {
        return;
    }
    m_progressLine = false;
    const QColor colour = m_colour.isValid() ? m_colour : QColor(Qt::white);
    m_log->append(QStringLiteral("<span style='color:%1'>%2</span>")
                      .arg(colour.name(), shown.toHtmlEscaped().replace(QLatin1Char('\n'),
                                                                        QStringLiteral("<br>"))));
}

void MainWindow::replaceProgressLine(const QString& text) {
    static const QRegularExpression figure(QStringLiteral("(\\d+)%"));
    const QRegularExpressionMatch m = figure.match(text);
    if (m.hasMatch()) {
        m_progress->setValue(m.captured(1).toInt());
    }
    m_state->setText(text.trimmed());
}

void MainWindow::setBusy(bool busy) {
    m_busy = busy;
    for (QWidget* w : findChildren<QWidget*>()) {
        if (w != m_log && w != m_progress && w != m_state && !w->inherits("QScrollBar")) {
            w->setEnabled(!busy);
        }
    }
}

bool MainWindow::fail(const QString& text) {
    m_colour = firmware::bootloader::RED;
    appendLog(text);
    emit showError(text);
    setBusy(false);
    emit updateFinished(false);
    return false;
}

bool MainWindow::prepareKeepingSettings(const QString& port, const QString& image) {
    firmware::FirmwareUpdate probe;
    appendLog(MESSAGE_DETECT_VERSION);
    const QString enq = probe.detectVersion(port);
    if (enq.isEmpty()) {
        return fail(MESSAGE_UPDATE_VERSION_NONE);
    }
    const util::VersionContainer current = m_model->getVersionByEnq(enq);
    if (current.fwVersion.isEmpty()) {
        return fail(tr("The Korvex runs firmware \"%1\", which this program does not know, so its "
                       "settings cannot be carried across. Update with \"Reset settings to "
                       "defaults\" checked, or get the newest firmware files first.")
                        .arg(enq));
    }
    appendLog(tr("The Korvex runs firmware %1. Reading its settings...")
                  .arg(util::printVersion(current.fwVersion)));
    // The controller reads from the folder above: the update works in the data folder.
    const QString here = QDir::currentPath();
    QDir::setCurrent(PATH_DATA);
    KXFileModel* old = emit readSettings(port, tr("Settings before the update.hex"));
    QDir::setCurrent(here);
    if (!old) {
        return fail(ERROR_READHEX);
    }
    QDir().mkpath(PATH_BACKUPS);
    const QString backup = prompts().saveFileName(
        TITLE_SAVE_BACKUP, firmware::FirmwareUpdate::backupPath(current.fwVersion), FILTER_HEX);
    if (!backup.isEmpty()) {
        appendLog(old->save(backup, true, false) ? tr("Backup saved in %1").arg(backup)
                                                 : ERROR_SAVEHEX.arg(backup));
    }
    firmware::Migration migration;
    QString error;
    if (!firmware::FirmwareUpdate::prepareImage(m_target, old->manager(), image, &migration,
                                                &error)) {
        return fail(error);
    }
    MigrationDialog preview(migration, util::printVersion(current.fwVersion),
                            util::printVersion(m_target.fwVersion), this);
    if (prompts().run(preview) != QDialog::Accepted) {
        QFile::remove(image);
        appendLog(tr("Update cancelled; nothing was flashed."));
        setBusy(false);
        emit updateFinished(false);
        return false;
    }
    return true;
}

bool MainWindow::startUpdate() {
    const QString path = port();
    if (path.isEmpty()) {
        return fail(tr("Please select a serial port to use!"));
    }
    if (m_target.fwVersion.isEmpty()) {
        return fail(tr("Please choose the firmware to put on the Korvex."));
    }
    setBusy(true);
    m_colour = QColor();
    m_progress->setValue(0);
    m_model->setLastPort(path);
    emit versionSelected(m_target);
    const QString image = QFileInfo(PATH_DATA + QStringLiteral("update.kxhex")).absoluteFilePath();
    if (m_reset->isChecked()) {
        QString error;
        if (!firmware::FirmwareUpdate::prepareImage(m_target, nullptr, image, nullptr, &error)) {
            return fail(error);
        }
    } else if (!prepareKeepingSettings(path, image)) {
        return false;
    }
    firmware::FirmwareUpdate update;
    connect(&update, &firmware::FirmwareUpdate::log, this, &MainWindow::appendLog);
    connect(&update, &firmware::FirmwareUpdate::progressLine, this,
            &MainWindow::replaceProgressLine);
    connect(&update, &firmware::FirmwareUpdate::colour, this,
            [this](const QColor& c) { m_colour = c; });
    const bool flashed = update.flash(path, image);
    QFile::remove(image);
    if (!flashed) {
        return fail(tr("The firmware update did not complete. The Korvex stays in its update mode "
                       "until it is updated: check the cable and run the update again."));
    }
    m_progress->setValue(100);
    if (!update.verify(path, m_target)) {
        return fail(tr("The firmware was written, but the Korvex does not answer as firmware %1.")
                        .arg(util::printVersion(m_target.fwVersion)));
    }
    m_colour = firmware::bootloader::GREEN;
    appendLog(tr("The Korvex now runs firmware %1.").arg(util::printVersion(m_target.fwVersion)));
    setBusy(false);
    emit updateFinished(true);
    return true;
}

} // namespace ui
