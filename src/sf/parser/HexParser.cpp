#include "sf/parser/HexParser.h"

#include "sf/RawSetting.h"
#include "sf/parser/HexLineReader.h"
#include "sf/parser/HexTextWriter.h"
#include "sf/parser/RecordMerger.h"
#include "sf/parser/RecordWalk.h"

#include <QBuffer>
#include <QFile>
#include <QSaveFile>

#include <algorithm>
#include <cstring>

namespace sf::parser {

namespace {

// Highest end (exclusive) a record can reach in the 16-bit address space readData uses.
constexpr quint64 MaxRecordEnd16 = 0xFFFF + Inhex32Entry::MaxLength;
// Typical length of a 16-byte record line, used to size the record list up front.
constexpr qint64 TypicalLineLength = 44;

bool mayRead(QIODevice::OpenMode mode) {
    return mode.testFlag(QIODevice::ReadOnly) && !mode.testFlag(QIODevice::Truncate) &&
           !mode.testFlag(QIODevice::Append) && !mode.testFlag(QIODevice::NewOnly);
}

} // namespace

HexParser::HexParser() = default;

bool HexParser::loadHex(const QString& path, int processor, QIODevice::OpenMode mode) {
    close();
    m_error.clear();
    if (path.isEmpty()) {
        m_error = QStringLiteral("no file name");
        return false;
    }
    if (!mayRead(mode)) {
        m_error = QStringLiteral("open mode does not allow reading the file unchanged");
        return false;
    }
    QFile file(path);
    if (!file.open(mode | QIODevice::ExistingOnly)) {
        m_error = file.errorString();
        return false;
    }
    if (!parse(&file, processor)) {
        return false;
    }
    m_path = path;
    m_mode = mode;
    return true;
}

bool HexParser::loadHex(QIODevice* device, int processor) {
    close();
    m_error.clear();
    if (!device || !device->isReadable()) {
        m_error = QStringLiteral("device not open for reading");
        return false;
    }
    if (!parse(device, processor)) {
        return false;
    }
    m_mode = device->openMode();
    return true;
}

bool HexParser::loadHexData(const QByteArray& text, int processor) {
    QByteArray shared = text; // implicitly shared, not copied
    QBuffer buffer(&shared);
    buffer.open(QIODevice::ReadOnly);
    if (!loadHex(&buffer, processor)) {
        return false;
    }
    m_mode = QIODevice::ReadWrite;
    return true;
}

bool HexParser::parse(QIODevice* device, int processor) {
    RecordList records;
    if (!device->isSequential()) {
        const qint64 estimate = (device->size() - device->pos()) / TypicalLineLength + 16;
        records.reserve(static_cast<size_t>(std::clamp<qint64>(estimate, 16, 1 << 24)));
    }
    QString texts[3];
    HexLineReader reader(device);
    HexLineRecord line;
    for (;;) {
        const HexLineReader::Result result = reader.next(line);
        if (result == HexLineReader::End) {
            break;
        }
        if (result == HexLineReader::Error) {
            m_error = reader.errorString();
            return false;
        }
        switch (line.type) {
        case Inhex32Entry::TypeEndOfFile:
            break;
        case Inhex32Entry::TypeFwVersion:
        case Inhex32Entry::TypeKxsVersion:
        case Inhex32Entry::TypeEnqString:
            texts[line.type - Inhex32Entry::TypeFwVersion] =
                QString::fromLatin1(reinterpret_cast<const char*>(line.data), line.length);
            break;
        default:
            records.push_back(
                std::make_unique<Inhex32Entry>(line.type, line.address, line.data, line.length));
        }
    }
    records.shrink_to_fit();
    m_records = std::move(records);
    m_fwVersion = texts[0];
    m_kxsVersion = texts[1];
    m_enqString = texts[2];
    m_processor = processor;
    m_phantom = PhantomBytes(PhantomBytes::periodFor(processor));
    if (processor == PhantomNone) {
        m_startAddress = NONE_START_ADDRESS;
        m_settingsEndAddress = NONE_SETTINGS_END_ADDRESS;
        m_endAddress = NONE_END_ADDRESS;
    } else {
        m_startAddress = DEFAULT_START_ADDRESS;
        m_settingsEndAddress = DEFAULT_SETTINGS_END_ADDRESS;
        m_endAddress = DEFAULT_END_ADDRESS;
    }
    m_open = true;
    return true;
}

void HexParser::close() {
    RecordList().swap(m_records);
    m_open = false;
    m_path.clear();
    m_mode = QIODevice::NotOpen;
}

// ---- metadata readers ----

namespace {

// The first text of each wanted type (index 0 firmware, 1 layout, 2 ENQ); stops when all
// wanted texts are found or the text ends.
void readMetadataTexts(QIODevice* device, const bool wanted[3], QString texts[3]) {
    if (!device || !device->isReadable()) {
        return;
    }
    bool missing[3] = {wanted[0], wanted[1], wanted[2]};
    HexLineReader reader(device, 16 * 1024);
    HexLineRecord line;
    while (missing[0] || missing[1] || missing[2]) {
        const HexLineReader::Result result = reader.next(line);
        if (result == HexLineReader::End) {
            return;
        }
        if (result == HexLineReader::Error) {
            if (reader.atEnd()) {
                return;
            }
            reader.skipLine();
            continue;
        }
        const int slot = line.type - Inhex32Entry::TypeFwVersion;
        if (slot >= 0 && slot < 3 && missing[slot]) {
            int length = line.length;
            while (length > 0 && line.data[length - 1] == 0) {
                --length;
            }
            texts[slot] = QString::fromLatin1(reinterpret_cast<const char*>(line.data), length);
            missing[slot] = false;
        }
    }
}

} // namespace

QString HexParser::readMetadata(QIODevice* device, quint8 type) {
    const int slot = type - Inhex32Entry::TypeFwVersion;
    if (slot < 0 || slot >= 3) {
        return QString();
    }
    bool wanted[3] = {false, false, false};
    wanted[slot] = true;
    QString texts[3];
    readMetadataTexts(device, wanted, texts);
    return texts[slot];
}

HexParser::Metadata HexParser::readAllMetadata(const QString& path) {
    Metadata m;
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly)) {
        return m;
    }
    const bool wanted[3] = {true, true, true};
    QString texts[3];
    readMetadataTexts(&file, wanted, texts);
    m.fwVersion = texts[0];
    m.kxsVersion = texts[1];
    m.enqString = texts[2];
    return m;
}

QString HexParser::readMetadata(const QString& path, quint8 type) {
    if (path.isEmpty()) {
        return QString();
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return QString();
    }
    return readMetadata(&file, type);
}

QString HexParser::getFwVersion(const QString& path) {
    return readMetadata(path, Inhex32Entry::TypeFwVersion);
}
QString HexParser::getKxsVersion(const QString& path) {
    return readMetadata(path, Inhex32Entry::TypeKxsVersion);
}
QString HexParser::getEnqString(const QString& path) {
    return readMetadata(path, Inhex32Entry::TypeEnqString);
}
QString HexParser::getFwVersion(QIODevice* device) {
    return readMetadata(device, Inhex32Entry::TypeFwVersion);
}
QString HexParser::getKxsVersion(QIODevice* device) {
    return readMetadata(device, Inhex32Entry::TypeKxsVersion);
}
QString HexParser::getEnqString(QIODevice* device) {
    return readMetadata(device, Inhex32Entry::TypeEnqString);
}

// ---- reading settings bytes ----

std::optional<QByteArray> HexParser::readData(quint32 address, quint32 count) const {
    if (!m_open) {
        return std::nullopt;
    }
    const quint64 span = countBytesWithPhantoms(address, count);
    if (span == 0) {
        return QByteArray();
    }
    // Records are looked up by 16-bit address, so nothing lies beyond this end.
    if (address + span > MaxRecordEnd16 || m_records.empty()) {
        return std::nullopt;
    }
    QByteArray buffer(static_cast<qsizetype>(span), '\0');
    const size_t n = m_records.size();
    size_t index = 0;
    quint64 current = address;
    quint64 filled = 0;
    while (filled < span) {
        const Inhex32Entry* found = nullptr;
        for (size_t step = 0; step < n; ++step) {
            const Inhex32Entry* r = m_records[index].get();
            if (r && r->isEndOfFile()) {
                index = 0; // an end-of-file record ends the pass
                continue;
            }
            if (r && r->isData() && current >= r->getAddress() &&
                current < static_cast<quint64>(r->getAddress()) + r->getLength()) {
                found = r;
                break;
            }
            index = (index + 1) % n;
        }
        if (!found) {
            return std::nullopt;
        }
        const quint64 offset = current - found->getAddress();
        const quint64 take = std::min<quint64>(found->getLength() - offset, span - filled);
        std::memcpy(buffer.data() + filled, found->getData() + offset, static_cast<size_t>(take));
        filled += take;
        current += take;
        index = (index + 1) % n;
    }
    return m_phantom.remove(buffer, address, span);
}

// ---- phantom bytes ----

quint64 HexParser::countBytesWithPhantoms(quint64 address, quint64 realCount) const {
    return m_phantom.countWithPhantoms(address, realCount);
}

quint64 HexParser::countBytesWithoutPhantoms(quint64 address, quint64 span) const {
    return m_phantom.countWithoutPhantoms(address, span);
}

QByteArray HexParser::insertPhantomBytes(const QByteArray& data, quint64 address,
                                         quint64 realCount) const {
    return m_phantom.insert(data, address, realCount);
}

QByteArray HexParser::removePhantomBytes(const QByteArray& data, quint64 address,
                                         quint64 span) const {
    return m_phantom.remove(data, address, span);
}

bool HexParser::allBytesArePhantom(const Inhex32Entry* record, quint16 upperAddress) const {
    if (!record || record->getLength() == 0) {
        return false;
    }
    return m_phantom.allPhantom(fullAddress(upperAddress, record->getAddress()),
                                record->getLength());
}

// ---- records from settings, merging ----

bool HexParser::getRawSettingsAsHexData(const QList<sf::RawSetting*>& settings, RecordList& out,
                                        bool onlyEnabled, quint32 from, quint32 to) const {
    quint16 upper = 0;
    for (auto it = out.rbegin(); it != out.rend(); ++it) {
        if (*it && (*it)->isExtendedAddress()) {
            upper = (*it)->upperAddress();
            break;
        }
    }
    for (const sf::RawSetting* setting : settings) {
        if (!setting || (onlyEnabled && !setting->isEnabled())) {
            continue;
        }
        const quint32 address = static_cast<quint32>(setting->getAddress());
        if (address < from || address >= to || setting->getSizeBytes() <= 0) {
            continue;
        }
        const quint64 realCount = static_cast<quint64>(setting->getSizeBytes());
        const QByteArray bytes = m_phantom.insert(setting->bytes(), address, realCount);
        const quint64 span = std::min<quint64>(countBytesWithPhantoms(address, realCount),
                                               static_cast<quint64>(bytes.size()));
        quint64 done = 0;
        while (done < span) {
            const quint64 current = address + done;
            const quint16 currentUpper = static_cast<quint16>(current >> 16);
            if (currentUpper != upper) {
                out.push_back(Inhex32Entry::extendedAddress(currentUpper));
                upper = currentUpper;
            }
            const quint64 toBoundary = 0x10000 - (current & 0xFFFF);
            const int length = static_cast<int>(
                std::min<quint64>({span - done, toBoundary, Inhex32Entry::MaxLength}));
            out.push_back(std::make_unique<Inhex32Entry>(
                Inhex32Entry::TypeData, static_cast<quint16>(current & 0xFFFF),
                reinterpret_cast<const quint8*>(bytes.constData()) + done, length));
            done += static_cast<quint64>(length);
        }
    }
    return true;
}

void HexParser::copyFileData(RecordList& out) const {
    out.reserve(out.size() + m_records.size());
    for (const auto& r : m_records) {
        if (r) {
            out.push_back(std::make_unique<Inhex32Entry>(*r));
        }
    }
}

bool HexParser::addToFile(const RecordList& newRecords) {
    if (newRecords.empty()) {
        return true;
    }
    if (!m_open || !m_mode.testFlag(QIODevice::ReadWrite)) {
        return false;
    }
    combineEntries(newRecords, m_records);
    return true;
}

void HexParser::combineEntries(const RecordList& newRecords, RecordList& existing) const {
    RecordMerger(m_phantom).combine(newRecords, existing);
}

bool HexParser::replaceFileContents(const RecordList& newRecords) {
    if (!m_open) {
        return false;
    }
    RecordList copies;
    copies.reserve(newRecords.size());
    for (const auto& r : newRecords) {
        if (r) {
            copies.push_back(std::make_unique<Inhex32Entry>(*r));
        }
    }
    m_records = std::move(copies);
    return true;
}

} // namespace sf::parser
