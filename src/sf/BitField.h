#pragma once

#include <QByteArray>
#include <QtGlobal>

namespace sf {

// Bit and integer access to a setting's bytes as they lie in the setup image: most
// significant byte first, bit 0 in the last byte.
class BitField {
public:
    // Byte and bit of sub-index k: bit k mod 8 of byte (sizeBytes - 1 - k / 8). Fails for
    // a negative k, a byte outside the data and, when checkSizeBits is set, for a bit
    // position within its byte (k mod 8, not k) that is not below sizeBits.
    static bool offset(int subIndex, int sizeBytes, int sizeBits, bool checkSizeBits,
                       int* byteIndex, int* bit);
    // State of one bit of data.
    static bool getBit(const char* data, int byteIndex, int bit);
    // Sets or clears one bit; false (nothing written) when it already has that state.
    static bool setBit(char* data, int byteIndex, int bit, bool value);
    // The unsigned integer of 1 to 8 bytes; false for other lengths.
    static bool readUnsigned(const QByteArray& bytes, quint64* value);
    // value's low 8 * size bits into size bytes, most significant first (leading bytes of
    // a field longer than 8 bytes become 0).
    static void writeUnsigned(quint64 value, char* bytes, int size);
};

} // namespace sf
