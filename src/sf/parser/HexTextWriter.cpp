#include "sf/parser/HexTextWriter.h"

#include "sf/parser/Inhex32Entry.h"

#include <QIODevice>

namespace sf::parser {

namespace {
constexpr qsizetype FlushSize = 64 * 1024;
}

HexTextWriter::HexTextWriter(QIODevice* device)
    : m_device(device), m_ok(device && device->isWritable()) {
    m_buffer.reserve(FlushSize + 1024);
}

void HexTextWriter::flushIfFull() {
    if (m_buffer.size() < FlushSize) {
        return;
    }
    if (m_ok && m_device->write(m_buffer) != m_buffer.size()) {
        m_ok = false;
    }
    m_buffer.clear();
}

void HexTextWriter::record(const Inhex32Entry& entry) {
    entry.appendText(m_buffer);
    flushIfFull();
}

void HexTextWriter::line(quint8 type, quint16 address, const quint8* data, int length) {
    Inhex32Entry::appendLine(m_buffer, type, address, data, length);
    flushIfFull();
}

void HexTextWriter::extendedAddress(quint16 upper) {
    const quint8 bytes[2] = {static_cast<quint8>(upper >> 8), static_cast<quint8>(upper & 0xFF)};
    line(Inhex32Entry::TypeExtendedLinear, 0, bytes, 2);
}

void HexTextWriter::endOfFile() {
    line(Inhex32Entry::TypeEndOfFile, 0, nullptr, 0);
}

void HexTextWriter::metadata(quint8 type, const QString& text) {
    if (text.isEmpty()) {
        return;
    }
    const QByteArray bytes = text.toLatin1().left(Inhex32Entry::MaxLength);
    line(type, 0, reinterpret_cast<const quint8*>(bytes.constData()),
         static_cast<int>(bytes.size()));
}

bool HexTextWriter::finish() {
    if (m_ok && !m_buffer.isEmpty() && m_device->write(m_buffer) != m_buffer.size()) {
        m_ok = false;
    }
    m_buffer.clear();
    return m_ok;
}

} // namespace sf::parser
