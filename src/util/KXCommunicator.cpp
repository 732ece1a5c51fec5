#include "util/KXCommunicator.h"
#include "util/Logging.h"

#include <QDebug>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QSerialPort>
#include <QTimer>

#include <memory>

namespace util {

namespace {

constexpr char ACK = 0x06;
constexpr char EOT = 0x04;
constexpr int WRITE_WAIT_MS = 50;
constexpr qint32 ENQ_BAUD = 9600;

int g_answerWaitMs = 1000;

// Opens the port for reading and writing at the enquiry rate; null when it does not open.
std::unique_ptr<QSerialPort> openPort(const QString& portName) {
    auto port = std::make_unique<QSerialPort>(portName);
    if (!port->open(QIODevice::ReadWrite)) {
        return nullptr;
    }
    port->setBaudRate(ENQ_BAUD);
    return port;
}

// Clears the port and sends one enquiry byte; false when it could not be written in time.
bool sendEnquiry(QSerialPort& port) {
    port.clear();
    const char enq = ENQUIRE;
    return port.write(&enq, 1) == 1 && port.waitForBytesWritten(WRITE_WAIT_MS);
}

QString frameText(const QByteArray& received) {
    int start = 0;
    int count = 0;
    if (!KXCommunicator::findResponse(received.constData(), static_cast<int>(received.size()),
                                      &start, &count)) {
        return QString();
    }
    return QString::fromLatin1(received.constData() + start, count);
}

} // namespace

KXCommunicator::KXCommunicator(QObject* parent) : QObject(parent) {}

KXCommunicator::~KXCommunicator() = default;

int KXCommunicator::answerWaitMs() {
    return g_answerWaitMs;
}

void KXCommunicator::setAnswerWaitMs(int ms) {
    g_answerWaitMs = ms;
}

bool KXCommunicator::findResponse(const char* buffer, int length, int* start, int* count) {
    if (length < 1) {
        return false;
    }
    int ack = -1;
    int end = -1;
    for (int i = 0; i < length && end < 0; ++i) {
        if (buffer[i] == ACK) {
            ack = i;
            if (i == length - 1) {
                return false;
            }
        } else if (buffer[i] == EOT && ack >= 0) {
            end = i;
        }
    }
    if (end < 0) {
        return false;
    }
    *start = ack + 1;
    *count = end - ack - 1;
    return *count >= 1;
}

QString KXCommunicator::getParsedENQVersion(const QString& portName, int attempts) {
    std::unique_ptr<QSerialPort> port = openPort(portName);
    if (!port) {
        return QString();
    }
    QByteArray received; // kept across attempts: a frame may end in a later one
    for (int attempt = 1; attempt <= attempts; ++attempt) {
        qCDebug(util::lcDevice).noquote().nospace() << "ENQ attempt " << attempt;
        if (!sendEnquiry(*port)) {
            continue;
        }
        QEventLoop loop;
        QTimer timer;
        timer.setSingleShot(true);
        QObject::connect(port.get(), &QSerialPort::readyRead, &loop, &QEventLoop::quit);
        QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
        timer.start(g_answerWaitMs);
        while (timer.remainingTime() >= 1) {
            if (port->bytesAvailable() <= 0) {
                qCDebug(util::lcDevice) << "No data RX?";
                loop.exec();
                continue;
            }
            const QByteArray chunk = port->readAll();
            // The chunk up to its first NUL byte, through text and back.
            const int nul = chunk.indexOf('\0');
            received += QString::fromUtf8(nul < 0 ? chunk : chunk.left(nul)).toUtf8();
            const QString text = frameText(received);
            if (!text.isNull()) {
                port->close();
                return text;
            }
            loop.exec();
        }
    }
    port->close();
    return QString();
}

QString KXCommunicator::getParsedENQVersionBlocking(const QString& portName, int attempts) {
    std::unique_ptr<QSerialPort> port = openPort(portName);
    if (!port) {
        return QString();
    }
    QByteArray received;
    for (int attempt = 1; attempt <= attempts; ++attempt) {
        qCDebug(util::lcDevice).noquote().nospace() << "ENQ attempt " << attempt;
        if (!sendEnquiry(*port) || !port->waitForReadyRead(g_answerWaitMs) ||
            port->bytesAvailable() <= 0) {
            continue;
        }
        received += port->readAll();
        const QString text = frameText(received);
        if (!text.isNull()) {
            return text; // the port closes with its object
        }
    }
    port->close();
    return QString();
}

} // namespace util
