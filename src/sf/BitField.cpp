#include "sf/BitField.h"

namespace sf {

bool BitField::offset(int subIndex, int sizeBytes, int sizeBits, bool checkSizeBits, int* byteIndex,
                      int* bit) {
    if (subIndex < 0 || !byteIndex || !bit) {
        return false;
    }
    const int b = subIndex % 8;
    const int byte = sizeBytes - subIndex / 8 - 1;
    // The position within the byte is compared, not the sub-index: in a 16-bit field
    // every position passes, in a 3-bit field positions 3 to 7 fail.
    if (checkSizeBits && b >= sizeBits) {
        return false;
    }
    if (byte < 0 || byte >= sizeBytes) {
        return false;
    }
    *byteIndex = byte;
    *bit = b;
    return true;
}

bool BitField::getBit(const char* data, int byteIndex, int bit) {
    return (static_cast<quint8>(data[byteIndex]) >> bit) & 1u;
}

bool BitField::setBit(char* data, int byteIndex, int bit, bool value) {
    if (getBit(data, byteIndex, bit) == value) {
        return false;
    }
    data[byteIndex] = static_cast<char>(static_cast<quint8>(data[byteIndex]) ^ (1u << bit));
    return true;
}

bool BitField::readUnsigned(const QByteArray& bytes, quint64* value) {
    if (!value || bytes.isEmpty() || bytes.size() > 8) {
        return false;
    }
    quint64 v = 0;
    for (const char c : bytes) {
        v = (v << 8) | static_cast<quint8>(c);
    }
    *value = v;
    return true;
}

void BitField::writeUnsigned(quint64 value, char* bytes, int size) {
    for (int k = 0; k < size; ++k) {
        bytes[size - 1 - k] = k < 8 ? static_cast<char>((value >> (8 * k)) & 0xFF) : '\0';
    }
}

} // namespace sf
