#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

class QIODevice;

namespace sf::parser {

// One record as read from the text; data points into the reader and stays valid until
// the next call of next().
struct HexLineRecord {
    quint8 length = 0;
    quint16 address = 0;
    quint8 type = 0;
    quint8 checksum = 0;
    const quint8* data = nullptr;
};

// Reads Intel HEX records from an open device in chunks, so that a large file is never
// held in memory as text. Each record: skip to a colon (line feeds included), read the
// digit pairs of length, address, type, data and checksum, check the checksum, then skip
// to just past the next line feed.
class HexLineReader {
public:
    enum Result { Record, End, Error };

    explicit HexLineReader(QIODevice* device, qint64 chunkSize = 256 * 1024);

    // The next record; End when nothing but blank space (line ends, spaces, tabs) is left;
    // Error for a malformed record, for remaining text without a record start, or for a
    // read failure.
    Result next(HexLineRecord& record);
    // True when no characters are left.
    bool atEnd();
    // After an Error: skip to just past the next line feed so that scanning can go on.
    void skipLine();

    // What went wrong, with the line number of the failing record.
    const QString& errorString() const { return m_error; }
    // Number of the line that holds the current position (1-based).
    qint64 lineNumber() const { return m_line; }

private:
    bool ensure(qint64 count);
    qint64 available() const { return m_end - m_pos; }
    Result fail(const QString& what);
    void skipPastLineFeed();

    QIODevice* m_device;
    qint64 m_chunkSize;
    QByteArray m_buffer;
    qint64 m_pos = 0;
    qint64 m_end = 0;
    bool m_deviceDone = false;
    bool m_readFailed = false;
    qint64 m_line = 1;
    QString m_error;
    quint8 m_data[256] = {};
};

} // namespace sf::parser
