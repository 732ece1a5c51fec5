#pragma once

#include "kxs/KxsFormat.h"

#include <QByteArray>
#include <QString>

#include <memory>

class QFile;

namespace kxs {
namespace parser {

// Reads a binary layout file (".kxs"): checks its header and offers lookup of entries
// by name and sequential iteration by entry type. It interprets nothing.
//
// The whole file is kept in memory; every returned entry and data pointer points into
// that copy and stays valid until the reader is closed or reopened. A returned entry
// always lies wholly inside the contents (length at least 10) and its data pointer has
// entrySize(entry) valid bytes behind it: entries that break either rule are never
// returned (see docs/layout-file-format.md).
class KxsParser {
public:
    KxsParser();
    ~KxsParser();
    KxsParser(const KxsParser&) = delete;
    KxsParser& operator=(const KxsParser&) = delete;

    // Closes whatever was open, then opens, reads and validates the file. The file stays
    // open while the reader is. On success the cursor is at the start of the names table.
    bool openKxsFile(const QString& path);
    // The same validation on bytes in memory. The bytes are shared, not copied: bytes
    // made with QByteArray::fromRawData must outlive the reader's use of them.
    bool openKxsData(const QByteArray& bytes);

    // Why these bytes are not an acceptable layout file, in a few words; empty when the
    // header passes the checks of opening.
    static QString headerProblem(const QByteArray& bytes);

    bool isOpen() const;
    // Releases the file and its contents; the cursor is left as it is.
    void close();
    // Cursor to the start of the names table, or to 0 when nothing is open.
    void reset();
    quint32 getOffset() const { return m_cursor; }
    void setOffset(quint32 offset) { m_cursor = offset; }

    // Open, and the cursor lies before the data section.
    bool hasNext() const;
    // Whether an entry of exactly this type lies at or after the cursor and before the
    // data section. The cursor is not moved.
    bool hasNext(quint8 type) const;

    // The next entry at or after the cursor whose type is the given type or 0; the
    // cursor is left just behind it. On failure the cursor is unchanged and the outputs
    // are not written.
    bool getNext(const kxs::NamesTableEntryV1** entry, const char** data, quint8 type);
    // The first entry of the names table with this name and, unless type is 0, this type.
    // Names compare over at most length - 10 bytes, stopping at a zero byte. On success
    // the cursor is left just behind the entry; on failure it is unchanged.
    bool getEntry(const kxs::NamesTableEntryV1** entry, const char** data, const QString& name,
                  quint8 type);

    // For tools that list a whole file: the entry at the cursor whatever its type, as long
    // as the cursor lies inside the names table (namesOffset + namesSize). The cursor
    // moves just behind it. data is null when the entry's data block lies outside the
    // contents. Fails, leaving the cursor, at the end of the names table or at an entry
    // that is not wholly inside it or whose length is below 10 (atEndOfNames() tells
    // which).
    bool getNextListed(const kxs::NamesTableEntryV1** entry, const char** data);
    // Whether the cursor is at or behind the end of the names table.
    bool atEndOfNames() const;
    // The decoded header, or null when not open.
    const kxs::KxsHeaderV1* header() const { return isOpen() ? &m_header : nullptr; }

    // The header's version text, empty when not open.
    QString getKxsVersion() const;
    // The header's format number, 0xFFFFFFFF when not open.
    quint32 getKxsFormat() const;

private:
    bool openBytes(const QByteArray& bytes);
    // The entry at pos if its fixed part and name lie inside [0, limit) and its length
    // is at least 10; else null.
    const kxs::NamesTableEntryV1* entryAt(quint64 pos, quint64 limit) const;
    // The entry's data block if it lies inside the contents; else null.
    const char* dataOf(const kxs::NamesTableEntryV1* entry) const;
    quint32 namesEnd() const { return m_header.namesOffset + m_header.namesSize; }
    quint64 fileSize() const { return static_cast<quint64>(m_bytes.size()); }

    std::unique_ptr<QFile> m_file;
    QByteArray m_bytes;
    kxs::KxsHeaderV1 m_header{};
    bool m_open = false;
    quint32 m_cursor = 0;
};

} // namespace parser
} // namespace kxs
