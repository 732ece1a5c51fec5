#pragma once

#include "util/LinkProtocol.h"

#include <QFile>
#include <QSerialPort>
#include <QString>

// The helper's side of the serial line: opening the port, the entry procedure, and
// requests with their replies, each retried a few times. Every byte is recorded in the
// log file when one is given ("TX ..." and "RX ..." lines of hexadecimal bytes).
class HelperLink {
public:
    bool open(const QString& port, const QString& logFile, int baud, QString* error);
    // Sync bytes until the instrument answers with one, then its identifier.
    bool enter(QString* id, QString* error);
    // Sends the request and waits for its reply; a refusal, a damaged or missing reply
    // is retried up to three times.
    bool request(util::link::Command command, const QByteArray& payload, util::link::Frame* reply,
                 int waitMs = 400);

private:
    bool send(const QByteArray& bytes);
    QByteArray receive(int waitMs);
    void log(const char* direction, const QByteArray& bytes);

    QSerialPort m_port;
    QFile m_log;
    util::link::FrameDecoder m_decoder{QByteArray() + util::link::ACK + util::link::NAK};
};
