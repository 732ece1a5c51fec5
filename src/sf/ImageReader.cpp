#include "sf/ImageReader.h"

#include "sf/parser/HexParser.h"
#include "sf/parser/Inhex32Entry.h"

#include <algorithm>
#include <cstring>

namespace sf {

namespace {

// Reads look records up by their 16-bit address, so no read reaches beyond this end.
constexpr quint64 MAX_RECORD_END_16 = 0xFFFF + parser::Inhex32Entry::MaxLength;

} // namespace

ImageReader::ImageReader(const parser::HexParser& image) : m_image(image) {
    if (!image.isOpen()) {
        return;
    }
    for (const auto& record : image.records()) {
        if (record && record->isData() && record->getLength() > 0) {
            const quint64 start = record->getAddress();
            m_ranges.push_back({start, start + record->getLength(), record.get()});
        }
    }
    std::stable_sort(m_ranges.begin(), m_ranges.end(),
                     [](const Range& a, const Range& b) { return a.start < b.start; });
    for (size_t i = 1; i < m_ranges.size(); ++i) {
        if (m_ranges[i].start < m_ranges[i - 1].end) {
            m_ranges.clear(); // overlapping records: the search order matters
            return;
        }
    }
    m_indexed = true;
}

std::optional<QByteArray> ImageReader::read(quint32 address, quint32 count) const {
    if (!m_indexed) {
        return m_image.readData(address, count);
    }
    const quint64 span = m_image.countBytesWithPhantoms(address, count);
    if (span == 0) {
        return QByteArray();
    }
    if (address + span > MAX_RECORD_END_16 || m_image.records().empty()) {
        return std::nullopt;
    }
    QByteArray buffer(static_cast<qsizetype>(span), '\0');
    quint64 current = address;
    quint64 filled = 0;
    while (filled < span) {
        // The last range starting at or before the current address.
        auto it = std::upper_bound(m_ranges.begin(), m_ranges.end(), current,
                                   [](quint64 value, const Range& r) { return value < r.start; });
        if (it == m_ranges.begin()) {
            return std::nullopt;
        }
        --it;
        if (current >= it->end) {
            return std::nullopt;
        }
        const quint64 offset = current - it->start;
        const quint64 take = std::min<quint64>(it->end - current, span - filled);
        std::memcpy(buffer.data() + filled, it->record->getData() + offset,
                    static_cast<size_t>(take));
        filled += take;
        current += take;
    }
    return m_image.removePhantomBytes(buffer, address, span);
}

} // namespace sf
