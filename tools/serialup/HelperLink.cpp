#include "HelperLink.h"

#include <QElapsedTimer>

#include <cstdio>

using namespace util::link;

namespace {

constexpr int SYNC_TRIES = 10;
constexpr int SYNC_WAIT_MS = 150;
constexpr int REQUEST_TRIES = 3;

void say(const char* text) {
    std::fputs(text, stdout);
    std::fflush(stdout);
}

} // namespace

bool HelperLink::open(const QString& port, const QString& logFile, int baud, QString* error) {
    if (!logFile.isEmpty()) {
        m_log.setFileName(logFile);
        if (!m_log.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text)) {
            *error = QStringLiteral("Could not open serial output file!");
            return false;
        }
    }
    m_port.setPortName(port);
    if (!m_port.open(QIODevice::ReadWrite)) {
        *error = QStringLiteral("Serial port %1 cannot be opened. Aborting...").arg(port);
        return false;
    }
    m_port.setBaudRate(baud);
    return true;
}

void HelperLink::log(const char* direction, const QByteArray& bytes) {
    if (m_log.isOpen() && !bytes.isEmpty()) {
        m_log.write(QByteArray(direction) + ' ' + bytes.toHex(' ') + '\n');
        m_log.flush();
    }
}

bool HelperLink::send(const QByteArray& bytes) {
    log("TX", bytes);
    return m_port.write(bytes) == bytes.size() && m_port.waitForBytesWritten(1000);
}

QByteArray HelperLink::receive(int waitMs) {
    QByteArray bytes;
    if (m_port.bytesAvailable() > 0 || m_port.waitForReadyRead(waitMs)) {
        bytes = m_port.readAll();
    }
    log("RX", bytes);
    return bytes;
}

bool HelperLink::enter(QString* id, QString* error) {
    bool synced = false;
    for (int attempt = 0; attempt < SYNC_TRIES && !synced; ++attempt) {
        say("Trying 0x55\n");
        m_port.clear();
        if (!send(QByteArray(1, SYNC))) {
            break;
        }
        QElapsedTimer timer;
        timer.start();
        while (!synced && timer.elapsed() < SYNC_WAIT_MS) {
            synced = receive(int(SYNC_WAIT_MS - timer.elapsed())).contains(SYNC);
        }
    }
    if (!synced) {
        *error = QStringLiteral("Did not succeed in KX entry procedure");
        return false;
    }
    say("Trying version command\n");
    Frame reply;
    if (!request(CmdVersion, QByteArray(), &reply) || reply.payload.size() != 4) {
        *error = QStringLiteral("Version request failed");
        return false;
    }
    *id = QString::fromLatin1(reply.payload);
    return true;
}

bool HelperLink::request(Command command, const QByteArray& payload, Frame* reply, int waitMs) {
    const QByteArray frame = encode(STX, command, payload);
    for (int attempt = 0; attempt < REQUEST_TRIES; ++attempt) {
        if (m_port.error() == QSerialPort::ResourceError || !m_port.isOpen()) {
            return false; // the line is gone (unplugged)
        }
        m_decoder.clear();
        if (!send(frame)) {
            return false;
        }
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < waitMs && m_port.error() != QSerialPort::ResourceError) {
            m_decoder.feed(receive(int(waitMs - timer.elapsed())));
            const FrameDecoder::Result result = m_decoder.next(reply);
            if (result == FrameDecoder::NeedMore) {
                continue;
            }
            if (result == FrameDecoder::Complete && reply->lead == ACK &&
                reply->command == command) {
                return true;
            }
            break; // a refusal or a damaged reply: ask again
        }
    }
    return false;
}
