// Writing a loaded image: the whole file, a reformatted file, or an address range.
#include "sf/parser/HexParser.h"

#include "sf/parser/HexTextWriter.h"
#include "sf/parser/RecordWalk.h"

#include <QSaveFile>

#include <algorithm>
#include <cstring>

namespace sf::parser {

namespace {

// Highest end (exclusive) extended linear addressing can describe.
constexpr quint64 AddressSpaceEnd = 0x100000000ull;

} // namespace

std::optional<std::pair<quint64, quint64>> HexParser::dataExtent() const {
    quint64 low = ~0ull;
    quint64 high = 0;
    forEachDataRecord(m_records, [&](const Inhex32Entry& r, quint64 start) {
        low = std::min(low, start);
        high = std::max(high, start + r.getLength());
    });
    if (high <= low) {
        return std::nullopt;
    }
    return std::make_pair(low, high);
}

void HexParser::writeMetadata(HexTextWriter& writer) const {
    writer.metadata(Inhex32Entry::TypeFwVersion, m_fwVersion);
    writer.metadata(Inhex32Entry::TypeKxsVersion, m_kxsVersion);
    writer.metadata(Inhex32Entry::TypeEnqString, m_enqString);
}

bool HexParser::writeFile(bool reformat, int lineLength) {
    if (!isWritable() || m_path.isEmpty()) {
        return false;
    }
    // The new text goes to a temporary file beside the old one, which is renamed over
    // it only when everything was written.
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    if (!writeToDevice(&file, reformat, lineLength)) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

bool HexParser::writeToDevice(QIODevice* device, bool reformat, int lineLength) const {
    if (!device || !device->isWritable()) {
        return false;
    }
    std::optional<std::pair<quint64, quint64>> extent;
    if (reformat) {
        extent = dataExtent();
        if (lineLength < 1 || lineLength > Inhex32Entry::MaxLength || !extent ||
            extent->second - extent->first > MAX_REFORMAT_SPAN ||
            extent->second > AddressSpaceEnd) {
            return false;
        }
    }
    HexTextWriter writer(device);
    writeMetadata(writer);
    if (!reformat) {
        for (const auto& r : m_records) {
            if (r) {
                writer.record(*r);
            }
        }
        writer.endOfFile();
        return writer.finish();
    }

    // One zero-filled block from the lowest to the highest address; records later in the
    // list win where records overlap.
    const quint64 start = extent->first;
    const quint64 end = extent->second;
    QByteArray block(static_cast<qsizetype>(end - start), '\0');
    forEachDataRecord(m_records, [&](const Inhex32Entry& r, quint64 at) {
        std::memcpy(block.data() + (at - start), r.getData(), r.getLength());
    });
    // Lines of lineLength bytes; a line never crosses a 64 KiB boundary, so every byte
    // keeps the upper address of the extended-address record before it.
    quint16 upper = 0;
    const quint8* bytes = reinterpret_cast<const quint8*>(block.constData());
    for (quint64 at = start; at < end;) {
        const quint16 lineUpper = static_cast<quint16>(at >> 16);
        if (lineUpper != upper) {
            writer.extendedAddress(lineUpper);
            upper = lineUpper;
        }
        const quint64 toBoundary = 0x10000 - (at & 0xFFFF);
        const int length = static_cast<int>(
            std::min<quint64>({static_cast<quint64>(lineLength), end - at, toBoundary}));
        writer.line(Inhex32Entry::TypeData, static_cast<quint16>(at & 0xFFFF), bytes + (at - start),
                    length);
        at += static_cast<quint64>(length);
    }
    writer.endOfFile();
    return writer.finish();
}

bool HexParser::copyToFile(QIODevice* file, quint32 from, quint32 to, bool withMetadata,
                           bool withEof) const {
    if (from >= to || !file || !file->isWritable()) {
        return false;
    }
    HexTextWriter writer(file);
    if (withMetadata) {
        writeMetadata(writer);
    }
    quint16 upperIn = 0;
    quint16 upperOut = 0;
    for (const auto& r : m_records) {
        if (!r) {
            continue;
        }
        if (r->isExtendedAddress()) {
            upperIn = r->upperAddress();
            continue;
        }
        if (!r->isData()) {
            continue;
        }
        const quint64 start = fullAddress(upperIn, r->getAddress());
        if (start < from || start >= to) {
            continue;
        }
        if (upperIn != upperOut) {
            writer.extendedAddress(upperIn);
            upperOut = upperIn;
        }
        const quint64 end = start + r->getLength();
        if (end > to) {
            writer.line(r->getType(), r->getAddress(), r->getData(), static_cast<int>(to - start));
            break;
        }
        writer.record(*r);
    }
    if (withEof) {
        writer.endOfFile();
    }
    return writer.finish();
}

} // namespace sf::parser
