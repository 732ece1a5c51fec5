#include "util/Uploader.h"
#include "util/Logging.h"

#include "app/Constants.h"

#include <QDebug>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QSerialPortInfo>
#include <QTextStream>
#include <QTimer>

namespace util {

namespace {

int g_searchWaitMs = Uploader::TIMEOUT_SEARCH;
int g_readWriteWaitMs = Uploader::TIMEOUT_READWRITE;
int g_exitWaitMs = 30000;

const QString SERIAL_LOG = QStringLiteral("serialout.log");

// One row of the error check: any of its texts in the output raises its message and
// shows its text.
struct ErrorRow {
    QStringList texts;
    SuplMessage message;
    const QString* userText;
};

const QList<ErrorRow>& errorRows() {
    static const QList<ErrorRow> rows{
        {{MSG_SUPL_ERROR_DEBUG_WRITE}, ERROR_DEBUG_WRITE, &MSG_ERROR_MISC},
        {{MSG_SUPL_ERROR_INPUT_FILENAME}, ERROR_COMM, &MSG_ERROR_COMM},
        {{MSG_SUPL_ERROR_BOOTLOADER_VERSION_0, MSG_SUPL_ERROR_BOOTLOADER_VERSION_1,
          MSG_SUPL_ERROR_BOOTLOADER_VERSION_2},
         ERROR_COMM,
         &MSG_ERROR_COMM},
        {{MSG_SUPL_ERROR_SERIAL_PORT_OPEN}, ERROR_COMM, &MSG_ERROR_COMM},
        {{MSG_SUPL_ERROR_SEARCH_TIMEOUT}, ERROR_SEARCH_TIMEOUT, &MSG_ERROR_COMM},
        {{MSG_SUPL_ERROR_DEVICE_FILE}, ERROR_COMM, &MSG_ERROR_COMM},
        {{MSG_SUPL_ERROR_ARGUMENT}, ERROR_COMM, &MSG_ERROR_COMM},
        {{MSG_SUPL_ERROR_PORT_NAME}, ERROR_COMM, &MSG_ERROR_COMM},
        {{MSG_SUPL_ERROR_DEBUG_SERIAL_FILE}, ERROR_DEBUG_SERIAL_FILE, &MSG_ERROR_MISC},
        {{MSG_SUPL_ERROR_FILE_WRITE_ERROR_0, MSG_SUPL_ERROR_FILE_WRITE_ERROR_1},
         ERROR_FILE_WRITE,
         &MSG_ERROR_READ},
        {{MSG_SUPL_ERROR_HEX_LOAD_0, MSG_SUPL_ERROR_HEX_LOAD_1, MSG_SUPL_ERROR_HEX_LOAD_2},
         ERROR_HEX,
         &MSG_ERROR_WRITE},
        {{MSG_SUPL_WARN_TRUNCATED_HIGH, MSG_SUPL_WARN_TRUNCATED_LOW, MSG_SUPL_WARN_TOO_MUCH_DATA},
         ERROR_HEX,
         &MSG_ERROR_WRITE},
        {MSG_SUPL_ERRORS_COMM, ERROR_COMM, &MSG_ERROR_COMM},
        {{MSG_SUPL_ERROR_NO_FILE_NAME}, ERROR_HEX, &MSG_ERROR_WRITE},
        {MSG_SUPL_ERRORS_INPUT_FILE, ERROR_HEX, &MSG_ERROR_WRITE},
        {{MSG_SUPL_ERROR_DEVICE_SIZE}, ERROR_COMM, &MSG_ERROR_COMM}};
    return rows;
}

// An integer with the base taken from the text (0x hexadecimal, leading 0 octal).
bool toNumber(const QStringList& fields, int index, qint32* out) {
    bool ok = false;
    const qint32 value = fields.value(index).toInt(&ok, 0);
    if (ok) {
        *out = value;
    }
    return ok;
}

} // namespace

Uploader::Uploader(QObject* parent) : QObject(parent), process(new QProcess(this)) {
    process->setWorkingDirectory(ui::PATH_DATA);
    connect(process, &QProcess::readyReadStandardOutput, this, &Uploader::processOutput);
    connect(process, &QProcess::errorOccurred, this, &Uploader::processOutput);
}

Uploader::~Uploader() {
    killProcess();
}

void Uploader::setWaits(int searchMs, int readWriteMs, int exitMs) {
    g_searchWaitMs = searchMs;
    g_readWriteWaitMs = readWriteMs;
    g_exitWaitMs = exitMs;
}

void Uploader::findComPorts() {
    comList.clear();
    const QList<QSerialPortInfo> ports = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo& port : ports) {
        comList.append(ui::PATH_DEV + port.portName());
    }
    const QString extra = qEnvironmentVariable(EXTRA_PORTS_VARIABLE);
    for (const QString& path : extra.split(QLatin1Char(':'), Qt::SkipEmptyParts)) {
        comList.append(path);
    }
}

void Uploader::setSerialPort(const QString& path) {
    const int index = path.isEmpty() ? -1 : static_cast<int>(comList.indexOf(path));
    comIndex = index < 0 ? 0 : index;
}

void Uploader::stop(bool kill) {
    if (process->state() == QProcess::NotRunning) {
        return;
    }
    if (kill) {
        process->kill();
    } else {
        process->terminate();
    }
}

void Uploader::killProcess() {
    if (process->state() != QProcess::NotRunning) {
        process->kill();
        process->waitForFinished(3000); // reaped: no helper outlives an operation
    }
}

QString Uploader::num2hex(unsigned value) {
    const QString digits = QString::number(value, 16);
    return (digits.size() % 2 == 0 ? QStringLiteral("0x") : QStringLiteral("0x0")) + digits;
}

void Uploader::receiveMessage(SuplMessage message) {
    if (message == NONE) {
        return;
    }
    messages.enqueue(message);
    emit messageReady();
}

SuplMessage Uploader::nextMessage() {
    return messages.isEmpty() ? NONE : messages.dequeue();
}

void Uploader::clearMessages() {
    messages.clear();
    output.clear();
}

void Uploader::requestQuit() {
    receiveMessage(QUIT);
}

void Uploader::processOutput() {
    classifyOutput(process->readAllStandardOutput());
}

void Uploader::classifyOutput(const QByteArray& bytes) {
    QByteArray chunk = bytes;
    const int nul = static_cast<int>(chunk.indexOf('\0'));
    if (nul >= 0) {
        chunk.truncate(nul);
    }
    output = QString::fromUtf8(chunk);
    qCDebug(util::lcDevice).noquote().nospace() << "from supl received " << output;
    if (output.isEmpty()) {
        return;
    }
    if (output.contains(MSG_SUPL_WRITING_START)) {
        receiveMessage(WRITING_START);
    }
    if (output.contains(MSG_SUPL_READ_COMPLETE)) {
        receiveMessage(COMPLETE);
    }
    if (output.contains(MSG_SUPL_UPLOAD_PROGRESS)) {
        receiveMessage(PROGRESS);
    } else if (output.contains(MSG_SUPL_VERIFY_PROGRESS)) {
        receiveMessage(PROGRESS);
    }
    if (output.contains(MSG_SUPL_RESET_SEND)) {
        receiveMessage(COMPLETE);
    }
    if (output.contains(MSG_SUPL_SEARCH_WAIT_0)) {
        receiveMessage(SEARCH_WAIT);
    } else if (output.contains(MSG_SUPL_SEARCH_WAIT_1)) {
        receiveMessage(SEARCH_WAIT);
    }
    if (output.contains(MSG_SUPL_DEVICE_REPORTED)) {
        receiveMessage(DEVICE_REPORTED);
    }
}

bool Uploader::errorCheck() {
    bool hit = false;
    for (const ErrorRow& row : errorRows()) {
        for (const QString& text : row.texts) {
            if (output.contains(text)) {
                receiveMessage(row.message);
                reportError(*row.userText);
                hit = true;
                break;
            }
        }
    }
    return hit;
}

bool Uploader::waitForMessage(int timeoutMs, const QStringList& args, SuplMessage expected) {
    QEventLoop loop;
    QTimer timer;
    timer.setSingleShot(true);
    timer.setInterval(timeoutMs);
    clearMessages();
    connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    connect(this, &Uploader::messageReady, &loop, &QEventLoop::quit);

    const QString program = QStringLiteral("./") + ui::FILE_SUPL;
    if (!QFileInfo(process->workingDirectory() + program).isFile()) {
        reportError(MSG_ERROR_NO_SUPL);
        return false;
    }
    qCDebug(util::lcDevice).noquote().nospace()
        << "Starting " << program << " with args " << args.join(QLatin1Char(' '));
    process->start(program, args, QIODevice::ReadWrite);
    timer.start();
    while (timer.isActive()) {
        while (hasMessage()) {
            if (errorCheck()) {
                killProcess();
                searchNeeded = true;
                return false;
            }
            const SuplMessage message = nextMessage();
            if (message == expected) {
                return true;
            }
            if (message == QUIT) {
                killProcess();
                reportError(MSG_ERROR_QUIT);
                return false;
            }
        }
        loop.exec();
    }
    killProcess();
    reportError(MSG_ERROR_TIMEOUT);
    searchNeeded = true;
    return false;
}

bool Uploader::waitForRW(QStringList args, const QString& doneText) {
    if (!waitForMessage(g_readWriteWaitMs, args, COMPLETE)) {
        return false;
    }
    // A helper that has already exited has finished within the wait.
    const bool finished =
        process->state() == QProcess::NotRunning || process->waitForFinished(g_exitWaitMs);
    emit setProgress(100);
    killProcess();
    emit suplProgress(doneText);
    return finished;
}

bool Uploader::searchForDevice() {
    maxBaud = DEFAULT_BAUD;
    const QStringList args{ARG_SERIAL_PORT, comList.at(comIndex), ARG_SEARCH};
    if (!waitForMessage(g_searchWaitMs, args, DEVICE_REPORTED)) {
        qCDebug(util::lcDevice) << "Timed out!";
        return false;
    }
    if (process->state() != QProcess::NotRunning) {
        process->waitForFinished(g_exitWaitMs);
    }
    killProcess();
    qCDebug(util::lcDevice).noquote().nospace() << "supl got " << output;
    deviceVersion = output.section(QLatin1Char(':'), 1, 1)
                        .section(QLatin1Char('\n'), 0, 0)
                        .simplified()
                        .right(4);
    qCDebug(util::lcDevice).noquote().nospace() << "Version: " << deviceVersion;
    return loadDeviceParameters(ui::PATH_AND_FILE_DEVICE);
}

bool Uploader::probeForDevice() {
    quiet = true;
    const bool found = searchForDevice();
    quiet = false;
    return found;
}

void Uploader::reportError(const QString& text) {
    if (quiet) {
        qCDebug(util::lcDevice).noquote() << "probe:" << text;
    } else {
        emit suplError(text);
    }
}

bool Uploader::loadDeviceParameters(const QString& path) {
    if (path.isEmpty() || deviceVersion.isEmpty()) {
        reportError(MSG_ERROR_DEVICE_FILE);
        return false;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        reportError(MSG_ERROR_DEVICE_FILE);
        return false;
    }
    QTextStream in(&file);
    QString line;
    bool found = false;
    while (!found && in.readLineInto(&line)) {
        found = line.contains(deviceVersion);
    }
    if (!found) {
        reportError(MSG_ERROR_DEVICE_PROCESS);
        return false;
    }
    const QStringList fields = line.split(QLatin1Char('\t'), Qt::SkipEmptyParts);
    qint32 wordSizeValue = 0;
    bool ok = toNumber(fields, OFFSET_MAXBAUD, &maxBaud);
    if (ok) {
        deviceName = fields.value(OFFSET_DEVICE);
        ok = toNumber(fields, OFFSET_EEPROM_START, &eepromStart) &&
             toNumber(fields, OFFSET_EEPROM_END, &eepromEnd) &&
             toNumber(fields, OFFSET_WORDSIZE, &wordSizeValue);
    }
    if (!ok) {
        reportError(MSG_ERROR_DEVICE_PROCESS);
        return false;
    }
    wordSize = static_cast<quint8>(wordSizeValue & 0xFF);
    return true;
}

bool Uploader::prepareRWConnection(bool searchNextTime) {
    if (comIndex >= comList.size()) {
        return false;
    }
    emit setProgress(33);
    emit suplProgress(MSG_PROG_SEARCHING);
    if (searchNeeded) {
        qCDebug(util::lcDevice) << "Searching for device";
        if (!searchForDevice()) {
            qCDebug(util::lcDevice) << "Could not find device";
            return false;
        }
    }
    searchNeeded = searchNextTime;
    emit setProgress(66);
    emit suplProgress(MSG_PROG_FOUND);
    return true;
}

QStringList Uploader::deviceArgs(bool resetAfter) const {
    QStringList args{ARG_VERSION, deviceVersion, ARG_SERIAL_PORT, comList.at(comIndex)};
    if (resetAfter) {
        args << ARG_RESET;
    }
    return args;
}

bool Uploader::readSettings(const QString& file, bool resetAfter) {
    if (!prepareRWConnection(resetAfter)) {
        qCDebug(util::lcDevice) << "Could not prepare RW connection";
        return false;
    }
    const QStringList args = deviceArgs(resetAfter)
                             << ARG_READ_WORD_ADDRESS_RANGE << num2hex(unsigned(eepromStart))
                             << num2hex(unsigned(eepromEnd)) << file << QStringLiteral("-x")
                             << SERIAL_LOG;
    emit suplProgress(MSG_PROG_READ);
    return waitForRW(args, MSG_PROG_DONE_READ);
}

bool Uploader::writeSettings(const QString& file, bool resetAfter) {
    if (!prepareRWConnection(resetAfter)) {
        return false;
    }
    const QStringList args = deviceArgs(resetAfter)
                             << ARG_WRITE_WORD_ADDRESS_RANGE << num2hex(unsigned(eepromStart))
                             << num2hex(unsigned(eepromEnd)) << file << ARG_VERIFY << file
                             << QStringLiteral("-x") << SERIAL_LOG;
    emit suplProgress(MSG_PROG_WRITE);
    return waitForRW(args, MSG_PROG_DONE_WRITE);
}

bool Uploader::reset() {
    if (!prepareRWConnection(true)) {
        return false;
    }
    emit suplProgress(MSG_PROG_RESET);
    return waitForRW(
        QStringList{ARG_VERSION, deviceVersion, ARG_SERIAL_PORT, comList.at(comIndex), ARG_RESET},
        MSG_PROG_RESET_DONE);
}

} // namespace util
