#include "sf/parser/HexLineReader.h"

#include "util/HexDigit.h"

#include <QIODevice>

#include <algorithm>
#include <cstring>

namespace sf::parser {

namespace {

// Value of a hexadecimal digit, or -1.
struct HexTable {
    qint8 value[256];
    constexpr HexTable() : value() {
        for (unsigned i = 0; i < 256; ++i) {
            value[i] = static_cast<qint8>(util::hexDigitValue(i));
        }
    }
};
constexpr HexTable HEX;

// Number of line feeds in [begin, end).
qint64 countLineFeeds(const char* begin, const char* end) {
    qint64 n = 0;
    while (begin < end) {
        const void* hit = std::memchr(begin, '\n', static_cast<size_t>(end - begin));
        if (!hit) {
            break;
        }
        ++n;
        begin = static_cast<const char*>(hit) + 1;
    }
    return n;
}

} // namespace

HexLineReader::HexLineReader(QIODevice* device, qint64 chunkSize)
    : m_device(device), m_chunkSize(std::max<qint64>(chunkSize, 1024)) {}

// Makes at least count characters available from the current position, unless the
// device runs out first; true when they are there.
bool HexLineReader::ensure(qint64 count) {
    if (available() >= count) {
        return true;
    }
    if (m_deviceDone || !m_device) {
        return false;
    }
    // Move the unread tail to the front, then top up.
    const qint64 tail = available();
    if (m_pos > 0 && tail > 0) {
        std::memmove(m_buffer.data(), m_buffer.constData() + m_pos, static_cast<size_t>(tail));
    }
    m_pos = 0;
    m_end = tail;
    qint64 wanted = std::max(count, m_chunkSize);
    if (!m_device->isSequential()) {
        // Small files and buffers need no full chunk.
        wanted = std::max(count, std::min(wanted, tail + m_device->bytesAvailable()));
    }
    if (m_buffer.size() < wanted) {
        m_buffer.resize(static_cast<qsizetype>(wanted));
    }
    while (m_end < count && !m_deviceDone) {
        const qint64 got = m_device->read(m_buffer.data() + m_end, m_buffer.size() - m_end);
        if (got < 0) {
            m_readFailed = true;
            m_deviceDone = true;
        } else if (got == 0) {
            // A sequential device may just be waiting; we read what is there now.
            m_deviceDone =
                m_device->atEnd() || !m_device->isSequential() || !m_device->waitForReadyRead(0);
        } else {
            m_end += got;
        }
    }
    return available() >= count;
}

bool HexLineReader::atEnd() {
    return !ensure(1);
}

HexLineReader::Result HexLineReader::fail(const QString& what) {
    m_error = m_readFailed ? QStringLiteral("read error")
                           : QStringLiteral("line %1: %2").arg(m_line).arg(what);
    return Error;
}

void HexLineReader::skipPastLineFeed() {
    for (;;) {
        const char* begin = m_buffer.constData() + m_pos;
        const void* hit = std::memchr(begin, '\n', static_cast<size_t>(available()));
        if (hit) {
            m_pos = static_cast<const char*>(hit) - m_buffer.constData() + 1;
            ++m_line;
            return;
        }
        m_pos = m_end;
        if (!ensure(1)) {
            return;
        }
    }
}

void HexLineReader::skipLine() {
    skipPastLineFeed();
}

HexLineReader::Result HexLineReader::next(HexLineRecord& record) {
    // Blank space (line ends, spaces, tabs) with nothing after it ends the text as if it
    // were not there.
    for (;; ++m_pos) {
        if (!ensure(1)) {
            return m_readFailed ? fail(QString()) : End;
        }
        const char c = m_buffer.at(m_pos);
        if (c == '\n') {
            ++m_line;
        } else if (c != '\r' && c != ' ' && c != '\t') {
            break;
        }
    }
    // Skip to the colon, across line feeds and any other characters.
    for (;;) {
        if (!ensure(1)) {
            return fail(QStringLiteral("no record start (':') before the end of the text"));
        }
        const char* begin = m_buffer.constData() + m_pos;
        const char* end = m_buffer.constData() + m_end;
        const char* colon =
            static_cast<const char*>(std::memchr(begin, ':', static_cast<size_t>(end - begin)));
        m_line += countLineFeeds(begin, colon ? colon : end);
        if (colon) {
            m_pos = colon - m_buffer.constData() + 1;
            break;
        }
        m_pos = m_end;
    }

    // Length, address and type, then the data and the checksum.
    ensure(2);
    qint64 digits = std::min<qint64>(available(), 2);
    const uchar* p = reinterpret_cast<const uchar*>(m_buffer.constData() + m_pos);
    if (digits < 2) {
        return fail(QStringLiteral("record cut short"));
    }
    const int hi = HEX.value[p[0]];
    const int lo = HEX.value[p[1]];
    if (hi < 0 || lo < 0) {
        return fail(QStringLiteral("bad hexadecimal digits"));
    }
    const int length = (hi << 4) | lo;
    const qint64 need = 2 * (static_cast<qint64>(length) + 5);
    ensure(need);
    p = reinterpret_cast<const uchar*>(m_buffer.constData() + m_pos);
    digits = std::min(available(), need);
    quint8 header[4] = {};
    unsigned sum = 0;
    for (qint64 i = 0; i < need / 2; ++i) {
        if (2 * i + 2 > digits) {
            return fail(QStringLiteral("record cut short"));
        }
        const int h = HEX.value[p[2 * i]];
        const int l = HEX.value[p[2 * i + 1]];
        if (h < 0 || l < 0) {
            return fail(QStringLiteral("bad hexadecimal digits"));
        }
        const quint8 byte = static_cast<quint8>((h << 4) | l);
        sum += byte;
        if (i < 4) {
            header[i] = byte;
        } else if (i < 4 + length) {
            m_data[i - 4] = byte;
        } else {
            record.checksum = byte;
        }
    }
    if ((sum & 0xFF) != 0) {
        return fail(QStringLiteral("checksum mismatch"));
    }
    m_pos += need;
    record.length = header[0];
    record.address = static_cast<quint16>((header[1] << 8) | header[2]);
    record.type = header[3];
    record.data = length > 0 ? m_data : nullptr;
    skipPastLineFeed();
    return Record;
}

} // namespace sf::parser
