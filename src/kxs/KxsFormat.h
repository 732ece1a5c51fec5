#pragma once

// The binary layout file format (".kxs"): a 40-byte header, a names table of
// variable-length entries and a data section the entries point into. Every
// multi-byte number is little-endian; texts are Latin-1.
//
// Header:
//   0  6  magic "KXDATA" (no terminator)
//   6  16 version text, ended by a zero byte when shorter than 16 bytes
//   22 2  format number (1000 or 1001)
//   24 4  namesOffset   offset of the names table
//   28 4  namesSize     size of the names table
//   32 4  dataOffset    offset of the data section (entry offsets are relative to it)
//   36 4  dataSize      size of the data section
//
// Names table entry:
//   0  1  length  total size of the entry, name included
//   1  1  type    EntryTypeV1
//   2  4  offset  of the entry's data, relative to dataOffset
//   6  4  size    of the entry's data
//   10 length-10  name, Latin-1, may end with a zero byte inside the field
//
// The helpers below read numbers byte by byte, so they are safe on any alignment and
// host byte order. They never check bounds: the caller passes pointers that have the
// stated number of valid bytes behind them.

#include <QByteArray>
#include <QString>
#include <QtEndian>
#include <QtGlobal>

#include <cstring>

namespace kxs {

enum EntryTypeV1 : quint8 {
    EntryAny = 0,
    EntrySetting = 1,
    EntryInteger = 2,
    EntryString = 3,
    EntryCategory = 4
};

// The six magic bytes at the start of every layout file (no terminating zero).
constexpr const char KXS_MAGIC_FILE_ID[] = "KXDATA";
constexpr int KXS_MAGIC_SIZE = 6;
constexpr int KXS_VERSION_SIZE = 16;
constexpr int KXS_HEADER_SIZE = 40;
constexpr quint32 KXS_FORMAT_1000 = 1000;
constexpr quint32 KXS_FORMAT_1001 = 1001;

// Field offsets inside the header.
constexpr int KXS_HEADER_MAGIC = 0;
constexpr int KXS_HEADER_VERSION = 6;
constexpr int KXS_HEADER_FORMAT = 22;
constexpr int KXS_HEADER_NAMES_OFFSET = 24;
constexpr int KXS_HEADER_NAMES_SIZE = 28;
constexpr int KXS_HEADER_DATA_OFFSET = 32;
constexpr int KXS_HEADER_DATA_SIZE = 36;

// Size of an entry's fixed part; the name follows it.
constexpr int KXS_ENTRY_FIXED_SIZE = 10;
// Largest entry (its length is one byte).
constexpr int KXS_ENTRY_MAX_LENGTH = 255;

inline bool isSupportedFormat(quint32 format) {
    return format == KXS_FORMAT_1000 || format == KXS_FORMAT_1001;
}

inline quint16 readLE16(const char* p) {
    return qFromLittleEndian<quint16>(reinterpret_cast<const uchar*>(p));
}
inline quint32 readLE32(const char* p) {
    return qFromLittleEndian<quint32>(reinterpret_cast<const uchar*>(p));
}
inline quint64 readLE64(const char* p) {
    return qFromLittleEndian<quint64>(reinterpret_cast<const uchar*>(p));
}

// Appends v as 2, 4 or 8 little-endian bytes.
inline void appendLE16(QByteArray& out, quint16 v) {
    uchar b[2];
    qToLittleEndian<quint16>(v, b);
    out.append(reinterpret_cast<const char*>(b), 2);
}
inline void appendLE32(QByteArray& out, quint32 v) {
    uchar b[4];
    qToLittleEndian<quint32>(v, b);
    out.append(reinterpret_cast<const char*>(b), 4);
}
inline void appendLE64(QByteArray& out, quint64 v) {
    uchar b[8];
    qToLittleEndian<quint64>(v, b);
    out.append(reinterpret_cast<const char*>(b), 8);
}

// The decoded header, in host byte order.
struct KxsHeaderV1 {
    char magic[KXS_MAGIC_SIZE];
    char version[KXS_VERSION_SIZE];
    quint16 format;
    quint32 namesOffset;
    quint32 namesSize;
    quint32 dataOffset;
    quint32 dataSize;
};

// Decodes the first KXS_HEADER_SIZE bytes; false when fewer bytes are given. Nothing
// else is checked here.
inline bool readHeader(const char* bytes, qint64 size, KxsHeaderV1* out) {
    if (!bytes || !out || size < KXS_HEADER_SIZE) {
        return false;
    }
    std::memcpy(out->magic, bytes + KXS_HEADER_MAGIC, KXS_MAGIC_SIZE);
    std::memcpy(out->version, bytes + KXS_HEADER_VERSION, KXS_VERSION_SIZE);
    out->format = readLE16(bytes + KXS_HEADER_FORMAT);
    out->namesOffset = readLE32(bytes + KXS_HEADER_NAMES_OFFSET);
    out->namesSize = readLE32(bytes + KXS_HEADER_NAMES_SIZE);
    out->dataOffset = readLE32(bytes + KXS_HEADER_DATA_OFFSET);
    out->dataSize = readLE32(bytes + KXS_HEADER_DATA_SIZE);
    return true;
}

// The version text of a header: up to 16 bytes, up to the first zero byte.
inline QString headerVersion(const KxsHeaderV1& header) {
    int n = 0;
    while (n < KXS_VERSION_SIZE && header.version[n] != '\0') {
        ++n;
    }
    return QString::fromLatin1(header.version, n);
}

#pragma pack(push, 1)
// One names-table entry as it lies in the file; the name bytes follow the fixed part.
// The struct is packed (alignment 1), so a pointer into the file contents is valid at
// any address. The multi-byte fields are in file (little-endian) order: read them with
// entryOffset()/entrySize(), which work on any host.
struct NamesTableEntryV1 {
    quint8 length;
    quint8 type;
    quint32 offset;
    quint32 size;
};
#pragma pack(pop)

static_assert(sizeof(NamesTableEntryV1) == KXS_ENTRY_FIXED_SIZE,
              "names table entry fixed part must be 10 bytes");
static_assert(alignof(NamesTableEntryV1) == 1, "names table entry must be packed");

inline const char* entryBytes(const NamesTableEntryV1* e) {
    return reinterpret_cast<const char*>(e);
}
inline quint8 entryLength(const NamesTableEntryV1* e) {
    return static_cast<quint8>(entryBytes(e)[0]);
}
inline quint8 entryType(const NamesTableEntryV1* e) {
    return static_cast<quint8>(entryBytes(e)[1]);
}
inline quint32 entryOffset(const NamesTableEntryV1* e) {
    return readLE32(entryBytes(e) + 2);
}
inline quint32 entrySize(const NamesTableEntryV1* e) {
    return readLE32(entryBytes(e) + 6);
}

// Size of the name field (length - 10; 0 for a malformed length below 10).
inline int entryNameFieldSize(const NamesTableEntryV1* e) {
    const int length = entryLength(e);
    return length > KXS_ENTRY_FIXED_SIZE ? length - KXS_ENTRY_FIXED_SIZE : 0;
}

// The name bytes (entryNameFieldSize() of them).
inline const char* entryNameBytes(const NamesTableEntryV1* e) {
    return entryBytes(e) + KXS_ENTRY_FIXED_SIZE;
}

// The entry's name: Latin-1, up to the first zero byte inside its field. Only valid
// for entries the reader returned (whole entry inside the file contents).
inline QString entryName(const NamesTableEntryV1* e) {
    const int field = entryNameFieldSize(e);
    const char* name = entryNameBytes(e);
    int n = 0;
    while (n < field && name[n] != '\0') {
        ++n;
    }
    return QString::fromLatin1(name, n);
}

// ---- Decoding entry data blocks. Each takes the entry and the data pointer the
// reader returned (entrySize(e) valid bytes) and fails on a block of the wrong shape.

// A setting: bytes 0-3 address, 4-7 size in bytes (signed), 8.. the definition text.
struct SettingData {
    quint32 address = 0;
    qint32 sizeBytes = 0;
    QString definition;
};
// Only the size in bytes of a setting entry (the definition is not decoded); false
// exactly when readSettingData is.
inline bool readSettingSize(const NamesTableEntryV1* e, const char* data, qint32* sizeBytes) {
    if (!data || !sizeBytes || entrySize(e) < 8) {
        return false;
    }
    *sizeBytes = static_cast<qint32>(readLE32(data + 4));
    return true;
}
inline bool readSettingData(const NamesTableEntryV1* e, const char* data, SettingData* out) {
    const quint32 size = entrySize(e);
    if (!data || !out || size < 8) {
        return false;
    }
    out->address = readLE32(data);
    out->sizeBytes = static_cast<qint32>(readLE32(data + 4));
    out->definition = QString::fromLatin1(data + 8, static_cast<int>(size - 8));
    return true;
}

// A category: byte 0 length A of the title, byte 1 length B of the preset name, then
// A bytes of title and B bytes of preset name.
struct CategoryData {
    QString title;
    QString preset;
};
inline bool readCategoryData(const NamesTableEntryV1* e, const char* data, CategoryData* out) {
    const quint32 size = entrySize(e);
    if (!data || !out || size < 2) {
        return false;
    }
    const quint32 a = static_cast<quint8>(data[0]);
    const quint32 b = static_cast<quint8>(data[1]);
    if (2 + a + b > size) {
        return false;
    }
    out->title = QString::fromLatin1(data + 2, static_cast<int>(a));
    out->preset = QString::fromLatin1(data + 2 + a, static_cast<int>(b));
    return true;
}

// An integer constant of 1, 2, 4 or 8 bytes (the full value; users of 8-byte constants
// take the low 32 bits).
inline bool readIntegerData(const NamesTableEntryV1* e, const char* data, quint64* out) {
    if (!data || !out) {
        return false;
    }
    switch (entrySize(e)) {
    case 1:
        *out = static_cast<quint8>(data[0]);
        return true;
    case 2:
        *out = readLE16(data);
        return true;
    case 4:
        *out = readLE32(data);
        return true;
    case 8:
        *out = readLE64(data);
        return true;
    default:
        return false;
    }
}

// A string: the whole data block, Latin-1.
inline QString readStringData(const NamesTableEntryV1* e, const char* data) {
    if (!data) {
        return QString();
    }
    return QString::fromLatin1(data, static_cast<int>(entrySize(e)));
}

} // namespace kxs
