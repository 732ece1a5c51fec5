#include "sf/parser/Inhex32Entry.h"

#include "app/Constants.h"

#include <algorithm>
#include <cstring>

namespace sf::parser {

namespace {

const char HEX_DIGITS[] = "0123456789ABCDEF";

const QByteArray& lineEnd() {
    static const QByteArray text = NEWLINE.toLatin1();
    return text;
}

} // namespace

Inhex32Entry::Inhex32Entry() {
    computeChecksum();
}

Inhex32Entry::Inhex32Entry(quint8 type, quint16 address, const quint8* data, int length)
    : m_type(type), m_address(address) {
    assign(data, data ? std::clamp(length, 0, MaxLength) : 0);
    computeChecksum();
}

Inhex32Entry::Inhex32Entry(quint8 type, quint16 address, const QByteArray& data)
    : Inhex32Entry(type, address, reinterpret_cast<const quint8*>(data.constData()),
                   static_cast<int>(std::min<qsizetype>(data.size(), MaxLength))) {}

Inhex32Entry::Inhex32Entry(const Inhex32Entry& other)
    : m_type(other.m_type), m_address(other.m_address) {
    assign(other.getData(), other.m_length);
    computeChecksum();
}

Inhex32Entry& Inhex32Entry::operator=(const Inhex32Entry& other) {
    if (this != &other) {
        release();
        m_type = other.m_type;
        m_address = other.m_address;
        assign(other.getData(), other.m_length);
        computeChecksum();
    }
    return *this;
}

Inhex32Entry::Inhex32Entry(Inhex32Entry&& other) noexcept
    : m_length(other.m_length), m_type(other.m_type), m_checksum(other.m_checksum),
      m_address(other.m_address) {
    std::memcpy(m_store, other.m_store, InlineCapacity);
    other.m_length = 0; // the heap block, if any, now belongs to this record
    other.computeChecksum();
}

Inhex32Entry& Inhex32Entry::operator=(Inhex32Entry&& other) noexcept {
    if (this != &other) {
        release();
        m_length = other.m_length;
        m_type = other.m_type;
        m_checksum = other.m_checksum;
        m_address = other.m_address;
        std::memcpy(m_store, other.m_store, InlineCapacity);
        other.m_length = 0;
        other.computeChecksum();
    }
    return *this;
}

Inhex32Entry::~Inhex32Entry() {
    release();
}

std::unique_ptr<Inhex32Entry> Inhex32Entry::extendedAddress(quint16 upper) {
    const quint8 bytes[2] = {static_cast<quint8>(upper >> 8), static_cast<quint8>(upper & 0xFF)};
    return std::make_unique<Inhex32Entry>(TypeExtendedLinear, 0, bytes, 2);
}

quint8* Inhex32Entry::heapPointer() const {
    quint8* p = nullptr;
    std::memcpy(&p, m_store, sizeof p);
    return p;
}

void Inhex32Entry::setHeapPointer(quint8* p) {
    std::memcpy(m_store, &p, sizeof p);
}

const quint8* Inhex32Entry::getData() const {
    if (m_length == 0) {
        return nullptr;
    }
    return m_length <= InlineCapacity ? m_store : heapPointer();
}

quint8* Inhex32Entry::bytes() {
    return const_cast<quint8*>(getData());
}

QByteArray Inhex32Entry::getDataBytes() const {
    return QByteArray(reinterpret_cast<const char*>(getData()), m_length);
}

void Inhex32Entry::assign(const quint8* data, int length) {
    m_length = static_cast<quint8>(length);
    if (length <= 0) {
        m_length = 0;
        return;
    }
    if (length <= InlineCapacity) {
        std::memcpy(m_store, data, static_cast<size_t>(length));
    } else {
        quint8* p = new quint8[static_cast<size_t>(length)];
        std::memcpy(p, data, static_cast<size_t>(length));
        setHeapPointer(p);
    }
}

void Inhex32Entry::release() {
    if (m_length > InlineCapacity) {
        delete[] heapPointer();
    }
    m_length = 0;
}

// Keeps `length` bytes starting at `offset`, moving them inline when they fit.
void Inhex32Entry::shrinkTo(int offset, int length) {
    if (m_length > InlineCapacity) {
        quint8* p = heapPointer();
        if (length <= InlineCapacity) {
            std::memcpy(m_store, p + offset, static_cast<size_t>(length));
            delete[] p;
        } else {
            std::memmove(p, p + offset, static_cast<size_t>(length));
        }
    } else if (offset > 0 && length > 0) {
        std::memmove(m_store, m_store + offset, static_cast<size_t>(length));
    }
    m_length = static_cast<quint8>(length);
}

void Inhex32Entry::setAddress(quint16 address) {
    m_address = address;
    computeChecksum();
}

void Inhex32Entry::setType(quint8 type) {
    m_type = type;
    computeChecksum();
}

quint16 Inhex32Entry::upperAddress() const {
    if (m_length < 2) {
        return 0;
    }
    const quint8* d = getData();
    return static_cast<quint16>((d[0] << 8) | d[1]);
}

quint8 Inhex32Entry::computeChecksum() {
    unsigned sum = m_length + (m_address >> 8) + (m_address & 0xFF) + m_type;
    const quint8* d = getData();
    for (int i = 0; i < m_length; ++i) {
        sum += d[i];
    }
    m_checksum = static_cast<quint8>(0x100 - (sum & 0xFF));
    return m_checksum;
}

int Inhex32Entry::removeFromLeft(int n) {
    const int drop = std::clamp(n, 0, static_cast<int>(m_length));
    if (drop > 0) {
        shrinkTo(drop, m_length - drop);
        m_address = static_cast<quint16>(m_address + drop);
        computeChecksum();
    }
    return m_length;
}

int Inhex32Entry::removeFromRight(int n) {
    const int drop = std::clamp(n, 0, static_cast<int>(m_length));
    if (drop > 0) {
        shrinkTo(0, m_length - drop);
        computeChecksum();
    }
    return m_length;
}

std::unique_ptr<Inhex32Entry> Inhex32Entry::split(int a, int b) {
    if (a < 0 || a >= b || b >= m_length) {
        return nullptr;
    }
    auto tail = std::make_unique<Inhex32Entry>(m_type, static_cast<quint16>(m_address + b),
                                               getData() + b, m_length - b);
    shrinkTo(0, a + 1);
    computeChecksum();
    return tail;
}

void Inhex32Entry::byteToHex(quint8 byte, QString& text) {
    text += QLatin1Char(HEX_DIGITS[byte >> 4]);
    text += QLatin1Char(HEX_DIGITS[byte & 0x0F]);
}

void Inhex32Entry::appendLine(QByteArray& out, quint8 type, quint16 address, const quint8* data,
                              int length) {
    const QByteArray& newline = lineEnd();
    const qsizetype start = out.size();
    out.resize(start + 1 + 2 * (length + 5) + newline.size());
    char* p = out.data() + start;
    unsigned sum = 0;
    auto put = [&p, &sum](quint8 byte) {
        *p++ = HEX_DIGITS[byte >> 4];
        *p++ = HEX_DIGITS[byte & 0x0F];
        sum += byte;
    };
    *p++ = ':';
    put(static_cast<quint8>(length));
    put(static_cast<quint8>(address >> 8));
    put(static_cast<quint8>(address & 0xFF));
    put(type);
    for (int i = 0; i < length; ++i) {
        put(data[i]);
    }
    put(static_cast<quint8>(0x100 - (sum & 0xFF)));
    std::memcpy(p, newline.constData(), static_cast<size_t>(newline.size()));
}

QByteArray Inhex32Entry::line(quint8 type, quint16 address, const QByteArray& data) {
    QByteArray out;
    appendLine(out, type, address, reinterpret_cast<const quint8*>(data.constData()),
               static_cast<int>(std::min<qsizetype>(data.size(), MaxLength)));
    return out;
}

void Inhex32Entry::appendText(QByteArray& out, int maxPerLine) const {
    const int perLine = maxPerLine > 0 ? std::min(maxPerLine, MaxLength) : MaxLength;
    const quint8* d = getData();
    int offset = 0;
    do {
        const int n = std::min(perLine, m_length - offset);
        appendLine(out, m_type, static_cast<quint16>(m_address + offset), d ? d + offset : d, n);
        offset += n;
    } while (offset < m_length);
}

QString Inhex32Entry::toString(int maxPerLine) const {
    QByteArray text;
    appendText(text, maxPerLine);
    return QString::fromLatin1(text);
}

bool Inhex32Entry::operator==(const Inhex32Entry& other) const {
    return m_type == other.m_type && m_address == other.m_address && m_length == other.m_length &&
           (m_length == 0 || std::memcmp(getData(), other.getData(), m_length) == 0);
}

} // namespace sf::parser
