#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <memory>
#include <vector>

namespace sf::parser {

// One Intel HEX record: length, 16-bit address, type, data bytes and checksum.
//
// The record owns its bytes. Records are kept by the hundred thousand for large
// images, so the bytes of short records (up to InlineCapacity, which covers the usual
// 16-byte lines) live inside the object itself and only longer records allocate.
// Every change recomputes the checksum, so getChecksum() always matches the contents.
class Inhex32Entry {
public:
    static constexpr quint8 TypeData = 0x00;
    static constexpr quint8 TypeEndOfFile = 0x01;
    static constexpr quint8 TypeExtendedLinear = 0x04;
    static constexpr quint8 TypeFwVersion = 0xC0;
    static constexpr quint8 TypeKxsVersion = 0xC1;
    static constexpr quint8 TypeEnqString = 0xC2;
    static constexpr int MaxLength = 255;

    // An empty data record at address 0.
    Inhex32Entry();
    // A record holding the first min(length, 255) bytes of data (none when data is null
    // or length is not positive).
    Inhex32Entry(quint8 type, quint16 address, const quint8* data, int length);
    Inhex32Entry(quint8 type, quint16 address, const QByteArray& data);
    // Copies duplicate the bytes and recompute the checksum.
    Inhex32Entry(const Inhex32Entry& other);
    Inhex32Entry& operator=(const Inhex32Entry& other);
    Inhex32Entry(Inhex32Entry&& other) noexcept;
    Inhex32Entry& operator=(Inhex32Entry&& other) noexcept;
    ~Inhex32Entry();

    // An extended linear address record naming the upper 16 address bits.
    static std::unique_ptr<Inhex32Entry> extendedAddress(quint16 upper);

    quint8 getLength() const { return m_length; }
    quint16 getAddress() const { return m_address; }
    quint8 getType() const { return m_type; }
    quint8 getChecksum() const { return m_checksum; }
    // The bytes, or null when the record is empty.
    const quint8* getData() const;
    QByteArray getDataBytes() const;

    void setAddress(quint16 address);
    void setType(quint8 type);

    bool isData() const { return m_type == TypeData; }
    bool isExtendedAddress() const { return m_type == TypeExtendedLinear; }
    bool isEndOfFile() const { return m_type == TypeEndOfFile; }
    // The upper address bits an extended-address record names: its first two bytes, high
    // byte first; 0 when the record holds fewer than two bytes.
    quint16 upperAddress() const;

    // Two's complement of the byte sum; stores and returns it.
    quint8 computeChecksum();

    // Drops the first min(n, length) bytes and advances the address (modulo 64 KiB) by
    // as many. Returns the new length. A negative n drops nothing.
    int removeFromLeft(int n);
    // Drops the last min(n, length) bytes. Returns the new length.
    int removeFromRight(int n);
    // Keeps bytes 0..a (inclusive) here and returns a new record with bytes b..length-1 at
    // address + b and the same type; the bytes a+1..b-1 are dropped. Returns nothing and
    // leaves the record unchanged unless 0 <= a < b < length.
    std::unique_ptr<Inhex32Entry> split(int a, int b);

    // Appends two upper-case hexadecimal digits.
    static void byteToHex(quint8 byte, QString& text);
    // The record as text lines of at most maxPerLine data bytes each (255 when
    // maxPerLine is not positive), each ending in sf::parser::NEWLINE.
    QString toString(int maxPerLine = MaxLength) const;
    // Appends the same text as toString to a byte buffer.
    void appendText(QByteArray& out, int maxPerLine = MaxLength) const;
    // Appends one record line; length must be 0..255.
    static void appendLine(QByteArray& out, quint8 type, quint16 address, const quint8* data,
                           int length);
    // One record line of up to 255 bytes of data (more are cut off).
    static QByteArray line(quint8 type, quint16 address, const QByteArray& data);

    // Same type, address and bytes.
    bool operator==(const Inhex32Entry& other) const;
    bool operator!=(const Inhex32Entry& other) const { return !(*this == other); }

private:
    static constexpr int InlineCapacity = 18;

    quint8* bytes();
    quint8* heapPointer() const;
    void setHeapPointer(quint8* p);
    void assign(const quint8* data, int length);
    void release();
    void shrinkTo(int offset, int length);

    // Field order keeps the object at 24 bytes: the bytes of records up to
    // InlineCapacity long are stored in m_store, longer records keep a heap pointer there.
    quint8 m_length = 0;
    quint8 m_type = TypeData;
    quint8 m_checksum = 0;
    quint16 m_address = 0;
    quint8 m_store[InlineCapacity] = {};
};

// Record lists handed between the image reader and its callers; each owns its records.
using RecordList = std::vector<std::unique_ptr<Inhex32Entry>>;

} // namespace sf::parser
