#include "firmware/Bootloader.h"
#include "util/Logging.h"

#include "app/Constants.h"
#include "util/SuplTexts.h"

#include <QRegularExpression>

namespace firmware {

namespace {

int g_delayMs = 1000;

struct Row {
    QStringList texts; // any of them
    QString shown;
    bool red;
};

QString upgradeText() {
    return QStringLiteral("\nProgram requires an update to program this device, please download "
                          "the latest software from ") +
           bootloader::SITE + QStringLiteral("!\n");
}

// The failures and warnings after the progress rows, each tested on its own, in order.
const QList<Row>& rows() {
    using namespace util;
    static const QString debugFile = QStringLiteral(
        "\nUnable to create \"serial_communication_record.txt\", future debugging may be "
        "impaired.\n");
    static const QString badName = QStringLiteral(
        "\nInput Firmware file name contains illegal characters. Please rename and load again.\n");
    static const QList<Row> all{
        {{MSG_SUPL_ERROR_DEBUG_WRITE}, debugFile, false},
        {{MSG_SUPL_ERROR_INPUT_FILENAME}, badName, true},
        {{MSG_SUPL_ERROR_BOOTLOADER_VERSION_0, MSG_SUPL_ERROR_BOOTLOADER_VERSION_1,
          MSG_SUPL_ERROR_BOOTLOADER_VERSION_2},
         upgradeText(),
         true},
        {{MSG_SUPL_ERROR_SERIAL_PORT_OPEN},
         QStringLiteral("\nThis serial port is unusable. Please check that the serial port isn't "
                        "being used by another program, and is installed correctly.\n"),
         true},
        {{MSG_SUPL_ERROR_SEARCH_TIMEOUT},
         QStringLiteral("\nUnable to find the device within a time limit of 30 seconds! Please "
                        "check connections and try again!\n"),
         true},
        {{MSG_SUPL_ERROR_DEVICE_FILE},
         QStringLiteral("\nCould not find device library file \"device.txt\" in the local "
                        "directory. Please replace this file or reinstall the program.\n"),
         true},
        {{MSG_SUPL_ERROR_ARGUMENT},
         QStringLiteral("\nCommand line tool incompatible with this helper program. Please "
                        "reinstall the latest upload program and try again!\n"),
         true},
        {{MSG_SUPL_ERROR_PORT_NAME},
         QStringLiteral("\nPlease select a serial port to use!\n"),
         true},
        {{MSG_SUPL_ERROR_DEBUG_SERIAL_FILE}, debugFile, true},
        {{MSG_SUPL_ERROR_FILE_WRITE_ERROR_0, MSG_SUPL_ERROR_FILE_WRITE_ERROR_1},
         QStringLiteral("\nUnable to write to the hard drive... Please check your computer and "
                        "try again.\n"),
         true},
        {{MSG_SUPL_ERROR_HEX_LOAD_0, MSG_SUPL_ERROR_HEX_LOAD_1, MSG_SUPL_ERROR_HEX_LOAD_2},
         QStringLiteral("\nUnable to use this firmware file. Please ensure the file loaded is a "
                        "valid firmware file for your device, and is not corrupt!\n"),
         true},
        {{MSG_SUPL_WARN_TRUNCATED_HIGH, MSG_SUPL_WARN_TRUNCATED_LOW, MSG_SUPL_WARN_TOO_MUCH_DATA},
         QStringLiteral("\nThis file specifies more data than the current device can hold. The "
                        "firmware may not behave as expected.\n"),
         false},
        {MSG_SUPL_ERRORS_COMM +
             QStringList{QStringLiteral("read at word address %d fail!"),
                         QStringLiteral("send reset failed!"), QStringLiteral("Timeout!"),
                         QStringLiteral("no stx char!"), QStringLiteral("no second stx char!"),
                         QStringLiteral("no ending char!"), QStringLiteral("checksum error:")},
         QStringLiteral("\nCommunication error! Please ensure all cables are secure and in good "
                        "repair!\n"),
         true},
        {{MSG_SUPL_ERROR_NO_FILE_NAME}, badName, true},
        {MSG_SUPL_ERRORS_INPUT_FILE,
         QStringLiteral("\nFile could not be uploaded to device. Please ensure the firmware file "
                        "is not corrupt and is a valid firmware file from ") +
             bootloader::SITE + QStringLiteral("!\n"),
         true},
        {{MSG_SUPL_ERROR_DEVICE_SIZE},
         QStringLiteral("\nError with device configuration. Please check that device.txt is not "
                        "corrupt, and reinstall the tool if necessary.\n"),
         true}};
    return all;
}

// The whole line of the output that holds the first of the texts it holds.
QString lineHolding(const QString& output, const QStringList& texts) {
    for (const QString& line : output.split(QLatin1Char('\n'))) {
        for (const QString& text : texts) {
            if (line.contains(text)) {
                return line.trimmed().section(QLatin1Char('\r'), -1).trimmed();
            }
        }
    }
    return QString();
}

bool containsAny(const QString& output, const QStringList& texts) {
    for (const QString& text : texts) {
        if (output.contains(text)) {
            return true;
        }
    }
    return false;
}

} // namespace

const QColor bootloader::GREEN(0, 255, 50);
const QColor bootloader::RED(255, 0, 0);
const QColor bootloader::WHITE(255, 255, 255);
const QString bootloader::SITE = QStringLiteral("www.tessen-technologies.example");

void bootloader::setDelayMs(int ms) {
    g_delayMs = ms;
}

bootloader::bootloader(QObject* parent)
    : QObject(parent), process(new QProcess(this)), logFile(QStringLiteral("verbose_output.txt")) {
    process->setWorkingDirectory(ui::PATH_DATA);
    process->setProcessChannelMode(QProcess::MergedChannels);
    connect(process, &QProcess::readyReadStandardOutput, this, &bootloader::textready);
    connect(process, &QProcess::errorOccurred, this, &bootloader::errorslot);
    connect(process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            [this](int code) { supl_finished(code); });
    delay.setSingleShot(true);
    connect(&delay, &QTimer::timeout, this, &bootloader::run_update_firmware);
    logFile.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text);
}

bootloader::~bootloader() {
    stop();
}

bool bootloader::isRunning() const {
    return process->state() != QProcess::NotRunning;
}

void bootloader::stop() {
    if (isRunning()) {
        process->kill();
        process->waitForFinished(3000);
    }
}

void bootloader::log(const QString& text) {
    if (logFile.isOpen()) {
        logFile.write(text.toUtf8());
        logFile.flush();
    }
}

void bootloader::start(const QStringList& args) {
    const QString line = program + QLatin1Char(' ') + args.join(QLatin1Char(' '));
    qCDebug(util::lcFirmware).noquote() << "starting" << line;
    log(line + QLatin1Char('\n'));
    emit textreadysig(line + QLatin1Char('\n'));
    verifying = false;
    process->start(program, args, QIODevice::ReadWrite);
    process->waitForStarted(30000);
}

void bootloader::search() {
    emit changecolour(WHITE);
    start({util::ARG_SERIAL_PORT, serialPort, util::ARG_SEARCH});
}

void bootloader::flash() {
    if (serialPort.isEmpty()) {
        return;
    }
    start({util::ARG_SERIAL_PORT, serialPort, util::ARG_VERSION, identification,
           QStringLiteral("-wv"), firmwarePath, QStringLiteral("-x"),
           QStringLiteral("debugout.log")});
}

void bootloader::update_firmware() {
    emit textreadysig(QStringLiteral("Now flashing with %1\n").arg(firmwarePath));
    emit textreadysig(QStringLiteral("%1 detected with bootloader version\n").arg(identification));
    flash();
}

void bootloader::update_firmware_with_delay() {
    delay.start(g_delayMs);
}

void bootloader::run_update_firmware() {
    update_firmware();
}

void bootloader::textready() {
    const QString output = QString::fromLocal8Bit(process->readAllStandardOutput());
    log(output);
    interpret(output);
}

void bootloader::interpret(const QString& output) {
    using namespace util;
    if (output.contains(MSG_SUPL_WRITING_START)) {
        emit writing_started();
        emit textreadysig(QStringLiteral("Upload Progress   0%\n"));
    }
    if (output.contains(QLatin1String("Now verifying"))) {
        verifying = true;
        emit textreadysig(QStringLiteral("Upload complete, now verifying...\n"));
        emit textreadysig(QStringLiteral("Verify Progress  0%\n"));
    }
    if (output.contains(MSG_SUPL_VERIFY_PROGRESS)) {
        // The figure after the first carriage return (the helper rewrites its line),
        // or the last one in the chunk.
        const int cr = static_cast<int>(output.indexOf(QLatin1Char('\r')));
        const QString part = cr >= 0 ? output.mid(cr + 1) : output;
        static const QRegularExpression figure(QStringLiteral("Progress\\s*(\\d+)%"));
        QString percent;
        auto it = figure.globalMatch(part);
        while (it.hasNext()) {
            percent = it.next().captured(1);
        }
        if (!percent.isEmpty()) {
            emit textupdatesig(
                QStringLiteral("%1 Progress %2%")
                    .arg(verifying ? QStringLiteral("Verify") : QStringLiteral("Upload"))
                    .arg(percent, 3));
        }
    }
    if (output.contains(MSG_SUPL_RESET_SEND)) {
        emit textreadysig(QStringLiteral("Verify Progress 100%\r"));
        emit textreadysig(QStringLiteral("Upload Complete!\n"));
        emit changecolour(GREEN);
        emit fw_update_done();
    }
    const int reported = static_cast<int>(output.indexOf(MSG_SUPL_DEVICE_REPORTED));
    if (reported >= 0) {
        const QString id = output.mid(reported + MSG_SUPL_DEVICE_REPORTED.size())
                               .section(QLatin1Char('\n'), 0, 0)
                               .trimmed();
        identification = id;
        emit version_received(id);
    }
    for (const Row& row : rows()) {
        if (containsAny(output, row.texts)) {
            emit textreadysig(row.shown);
            if (row.red) {
                emit changecolour(RED);
                emit helper_failed(lineHolding(output, row.texts), row.shown.trimmed());
            }
        }
    }
    if (!output.contains(MSG_SUPL_READ_COMPLETE) && !output.contains(MSG_SUPL_SEARCH_WAIT_1)) {
        emit textreadysig(output);
    }
}

void bootloader::errorslot(QProcess::ProcessError error) {
    QString text;
    switch (error) {
    case QProcess::FailedToStart:
        text = QStringLiteral("Failed to start!");
        break;
    case QProcess::Crashed:
        text = QStringLiteral("Crashed!");
        break;
    case QProcess::Timedout:
        text = QStringLiteral("Timed out!");
        break;
    case QProcess::WriteError:
        text = QStringLiteral("Write error!");
        break;
    case QProcess::ReadError:
        text = QStringLiteral("Read error!");
        break;
    case QProcess::UnknownError:
        text = QStringLiteral("Unknown error!");
        break;
    default:
        text = QStringLiteral("invalid error code!");
    }
    const QString line = QStringLiteral("Error occurred: %1 (state %2: %3)\n")
                             .arg(text)
                             .arg(int(process->state()))
                             .arg(process->errorString());
    log(line);
    emit textreadysig(line);
    emit changecolour(RED);
}

void bootloader::supl_finished(int) {
    emit supl_closed();
}

} // namespace firmware
