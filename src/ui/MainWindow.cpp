#include "ui/MainWindow.h"

#include "app/AppModel.h"
#include "app/Constants.h"
#include "app/WindowDecisions.h"
#include "device/Models.h"
#include "device/UpdateFirmware.h"
#include "firmware/Bootloader.h"
#include "sf/SetupFile.h"
#include "ui/KXFileModel.h"
#include "ui/Prompts.h"
#include "util/KXCommunicator.h"
#include "util/SerialPorts.h"
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
#include <QTimer>
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
        m_versions->addItem(
            tr("Firmware %1 (%2)").arg(util::printVersion(v.fwVersion), device::modelOf(v)),
            v.fwVersion);
    }
    selectVersion(defaultVersion.fwVersion);
    connect(m_versions, QOverload<int>::of(&QComboBox::activated), this,
            &MainWindow::targetChanged);
    connect(refresh, &QPushButton::clicked, this, &MainWindow::refreshPorts);
    connect(m_port, QOverload<int>::of(&QComboBox::activated), this,
            &MainWindow::identifyInstrument);
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
    util::Uploader scan;
    scan.findComPorts();
    const QString current = port().isEmpty() ? m_model->getLastPort() : port();
    const QList<util::SerialPortDescription> ports = util::describePorts(scan.getComList());
    m_port->clear();
    for (const util::SerialPortDescription& p : ports) {
        m_port->addItem(util::portText(p), p.path);
    }
    const int row = util::preselectedPort(ports, current);
    if (row >= 0) {
        m_port->setCurrentIndex(row);
    } else {
        setPort(current);
    }
}

void MainWindow::setPort(const QString& path) {
    const int row = m_port->findData(path);
    if (row >= 0) {
        m_port->setCurrentIndex(row);
    } else {
        m_port->setCurrentText(path);
    }
}

QString MainWindow::port() const {
    const int row = m_port->currentIndex();
    if (row >= 0 && m_port->currentText() == m_port->itemText(row)) {
        return m_port->itemData(row).toString();
    }
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
        // Full only once the update is done and checked.
        m_progress->setValue(qMin(99, m.captured(1).toInt()));
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
    setBusy(false);
    emit showError(text);
    emit updateFinished(false);
    return false;
}

void MainWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // The port used last is chosen already: find the firmware for what it runs.
    if (!m_model->getLastPort().isEmpty() && port() == m_model->getLastPort()) {
        QTimer::singleShot(0, this, &MainWindow::identifyInstrument);
    }
}

void MainWindow::identifyInstrument() {
    const QString path = port();
    if (path.isEmpty() || m_busy) {
        return;
    }
    util::KXCommunicator communicator;
    const QString enq = communicator.getParsedENQVersion(path, 1);
    const util::VersionContainer current = m_model->getVersionByEnq(enq);
    if (enq.isEmpty() || current.fwVersion.isEmpty()) {
        return;
    }
    for (const util::VersionContainer& v : m_model->getVersions()) {
        if (device::sameModel(v, current)) { // the catalogue lists the newest first
            selectVersion(v.fwVersion);
            appendLog(tr("This %1 runs firmware %2; firmware %3 is the newest for it.")
                          .arg(device::modelOf(current), util::printVersion(current.fwVersion),
                               util::printVersion(v.fwVersion)));
            return;
        }
    }
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

    util::Uploader uploader;
    uploader.findComPorts();
    if (!uploader.getComList().contains(path)) {
        util::addExtraPort(path);
        uploader.findComPorts();
    }
    uploader.setSerialPort(path);
    WindowDecisions decisions(prompts(), this, m_model->getVersions());
    device::UpdateFirmware update(uploader, m_model->catalogue(), decisions);
    update.setSettingsReader([this, &path](const QString& title) -> sf::SetupFile* {
        // The controller reads from the folder above: the update works in the data folder.
        const QString here = QDir::currentPath();
        QDir::setCurrent(PATH_DATA);
        KXFileModel* file = emit readSettings(path, title);
        QDir::setCurrent(here);
        return file ? &file->setupFile() : nullptr;
    });
    connect(&update, &device::UpdateFirmware::log, this, &MainWindow::appendLog);
    connect(&update, &device::Operation::status, this, &MainWindow::appendLog);
    connect(&update, &device::UpdateFirmware::progressLine, this, &MainWindow::replaceProgressLine);
    connect(&update, &device::UpdateFirmware::colour, this,
            [this](const QColor& c) { m_colour = c; });
    if (!update.run(m_target, !m_reset->isChecked())) {
        if (!update.errorString().isEmpty()) {
            return fail(update.errorString());
        }
        setBusy(false);
        emit updateFinished(false);
        return false;
    }
    m_progress->setValue(100);
    m_colour = firmware::bootloader::GREEN;
    appendLog(tr("Update complete."));
    setBusy(false);
    emit updateFinished(true);
    return true;
}

} // namespace ui
