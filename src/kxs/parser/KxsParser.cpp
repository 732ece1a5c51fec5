#include "kxs/parser/KxsParser.h"

#include <QFile>

#include <cstring>

namespace kxs {
namespace parser {

namespace {

// Whether the entry's name field equals the looked-up name: a byte-wise comparison over
// at most length - 10 bytes that stops at a zero byte (the looked-up name counts as
// ended by a zero byte). A stored name that fills its field without a terminator thus
// matches any longer looked-up name that begins with it.
bool nameMatches(const NamesTableEntryV1* entry, const QByteArray& key) {
    const int field = entryNameFieldSize(entry);
    const char* name = entryNameBytes(entry);
    for (int i = 0; i < field; ++i) {
        const char wanted = i < key.size() ? key.at(i) : '\0';
        if (name[i] != wanted) {
            return false;
        }
        if (wanted == '\0') {
            return true;
        }
    }
    return true;
}

} // namespace

KxsParser::KxsParser() = default;

KxsParser::~KxsParser() {
    close();
}

bool KxsParser::openKxsFile(const QString& path) {
    close();
    if (path.isEmpty()) {
        return false;
    }
    std::unique_ptr<QFile> file(new QFile(path));
    if (!file->open(QIODevice::ReadOnly) || !file->seek(0)) {
        return false;
    }
    const QByteArray bytes = file->readAll();
    if (file->error() != QFileDevice::NoError) {
        return false;
    }
    if (!openBytes(bytes)) {
        close();
        return false;
    }
    m_file = std::move(file);
    return true;
}

bool KxsParser::openKxsData(const QByteArray& bytes) {
    close();
    if (!openBytes(bytes)) {
        close();
        return false;
    }
    return true;
}

QString KxsParser::headerProblem(const QByteArray& bytes) {
    // Offsets are 32-bit: larger contents cannot be addressed by a valid file.
    if (static_cast<quint64>(bytes.size()) > 0xFFFFFFFFull) {
        return QStringLiteral("file is larger than 4 GiB");
    }
    KxsHeaderV1 header;
    if (!readHeader(bytes.constData(), bytes.size(), &header)) {
        return QStringLiteral("file is shorter than the %1-byte header").arg(KXS_HEADER_SIZE);
    }
    if (std::memcmp(header.magic, KXS_MAGIC_FILE_ID, KXS_MAGIC_SIZE) != 0) {
        return QStringLiteral("not a layout file (no KXDATA signature)");
    }
    if (!isSupportedFormat(header.format)) {
        return QStringLiteral("unsupported layout format %1").arg(header.format);
    }
    // Both sums wrap in 32 bits before the comparison, as the format has always done.
    const quint64 size = static_cast<quint64>(bytes.size());
    const quint32 dataEnd = header.dataOffset + header.dataSize;
    const quint32 namesTableEnd = header.namesOffset + header.namesSize;
    if (dataEnd > size) {
        return QStringLiteral("data section ends beyond the end of the file");
    }
    if (namesTableEnd > size) {
        return QStringLiteral("names table ends beyond the end of the file");
    }
    return QString();
}

bool KxsParser::openBytes(const QByteArray& bytes) {
    if (!headerProblem(bytes).isEmpty()) {
        return false;
    }
    readHeader(bytes.constData(), bytes.size(), &m_header);
    m_bytes = bytes;
    m_open = true;
    m_cursor = m_header.namesOffset;
    return true;
}

bool KxsParser::isOpen() const {
    if (!m_open) {
        return false;
    }
    return !m_file || m_file->isOpen();
}

void KxsParser::close() {
    if (m_file) {
        m_file->close();
        m_file.reset();
    }
    m_bytes = QByteArray();
    m_header = KxsHeaderV1{};
    m_open = false;
}

void KxsParser::reset() {
    m_cursor = isOpen() ? m_header.namesOffset : 0;
}

const NamesTableEntryV1* KxsParser::entryAt(quint64 pos, quint64 limit) const {
    if (limit > fileSize()) {
        limit = fileSize();
    }
    if (pos + KXS_ENTRY_FIXED_SIZE > limit) {
        return nullptr;
    }
    const auto* entry = reinterpret_cast<const NamesTableEntryV1*>(m_bytes.constData() + pos);
    const quint8 length = entryLength(entry);
    if (length < KXS_ENTRY_FIXED_SIZE || pos + length > limit) {
        return nullptr;
    }
    return entry;
}

const char* KxsParser::dataOf(const NamesTableEntryV1* entry) const {
    const quint64 start = static_cast<quint64>(m_header.dataOffset) + entryOffset(entry);
    if (start + entrySize(entry) > fileSize()) {
        return nullptr;
    }
    return m_bytes.constData() + start;
}

bool KxsParser::hasNext() const {
    return isOpen() && m_cursor < m_header.dataOffset;
}

bool KxsParser::hasNext(quint8 type) const {
    if (!isOpen()) {
        return false;
    }
    quint64 pos = m_cursor;
    while (pos < m_header.dataOffset) {
        const NamesTableEntryV1* entry = entryAt(pos, fileSize());
        if (!entry) {
            return false;
        }
        if (entryType(entry) == type && dataOf(entry)) {
            return true;
        }
        pos += entryLength(entry);
    }
    return false;
}

bool KxsParser::getNext(const NamesTableEntryV1** entry, const char** data, quint8 type) {
    if (!isOpen() || !entry || !data || !isSupportedFormat(m_header.format)) {
        return false;
    }
    // Iteration does not stop at the end of the names table; it stops at an entry that
    // does not lie wholly inside the contents or whose length is below 10.
    quint64 pos = m_cursor;
    for (;;) {
        const NamesTableEntryV1* candidate = entryAt(pos, fileSize());
        if (!candidate) {
            return false;
        }
        pos += entryLength(candidate);
        const quint8 candidateType = entryType(candidate);
        if (candidateType == type || candidateType == EntryAny) {
            // An entry whose data lies outside the contents is skipped.
            if (const char* block = dataOf(candidate)) {
                *entry = candidate;
                *data = block;
                m_cursor = static_cast<quint32>(pos);
                return true;
            }
        }
    }
}

bool KxsParser::getEntry(const NamesTableEntryV1** entry, const char** data, const QString& name,
                         quint8 type) {
    if (!isOpen() || !entry || !data || name.isEmpty() || !isSupportedFormat(m_header.format)) {
        return false;
    }
    const QByteArray key = name.toLatin1();
    const quint32 end = namesEnd();
    quint64 pos = m_header.namesOffset;
    while (pos < end) {
        // The walk stops at an entry that runs past the names table or has a length
        // below 10 (its successor cannot be found).
        const NamesTableEntryV1* candidate = entryAt(pos, end);
        if (!candidate) {
            return false;
        }
        pos += entryLength(candidate);
        if ((type == EntryAny || entryType(candidate) == type) && nameMatches(candidate, key)) {
            if (const char* block = dataOf(candidate)) {
                *entry = candidate;
                *data = block;
                m_cursor = static_cast<quint32>(pos);
                return true;
            }
        }
    }
    return false;
}

bool KxsParser::atEndOfNames() const {
    return !isOpen() || m_cursor >= namesEnd();
}

bool KxsParser::getNextListed(const NamesTableEntryV1** entry, const char** data) {
    if (!entry || !data || atEndOfNames()) {
        return false;
    }
    const NamesTableEntryV1* candidate = entryAt(m_cursor, namesEnd());
    if (!candidate) {
        return false;
    }
    *entry = candidate;
    *data = dataOf(candidate);
    m_cursor += entryLength(candidate);
    return true;
}

QString KxsParser::getKxsVersion() const {
    return isOpen() ? headerVersion(m_header) : QString();
}

quint32 KxsParser::getKxsFormat() const {
    return isOpen() ? m_header.format : 0xFFFFFFFFu;
}

} // namespace parser
} // namespace kxs
