#include "sf/parser/RecordMerger.h"

#include "sf/parser/RecordWalk.h"

#include <algorithm>
#include <utility>

namespace sf::parser {

namespace {

struct Range {
    quint64 start;
    quint64 end; // exclusive
};

// The sorted, disjoint union of the new data records' ranges.
std::vector<Range> coveredRanges(const RecordList& records) {
    std::vector<Range> ranges;
    forEachDataRecord(records, [&ranges](const Inhex32Entry& r, quint64 start) {
        ranges.push_back({start, start + r.getLength()});
    });
    std::sort(ranges.begin(), ranges.end(),
              [](const Range& a, const Range& b) { return a.start < b.start; });
    std::vector<Range> merged;
    for (const Range& r : ranges) {
        if (!merged.empty() && r.start <= merged.back().end) {
            merged.back().end = std::max(merged.back().end, r.end);
        } else {
            merged.push_back(r);
        }
    }
    return merged;
}

// True when the new list has a data record before its first extended-address record.
bool startsWithoutUpper(const RecordList& records) {
    for (const auto& r : records) {
        if (r && r->isExtendedAddress()) {
            return false;
        }
        if (r && r->isData()) {
            return true;
        }
    }
    return false;
}

} // namespace

void RecordMerger::combine(const RecordList& newRecords, RecordList& existing) const {
    if (newRecords.empty()) {
        return;
    }
    const std::vector<Range> covered = coveredRanges(newRecords);
    RecordList result;
    result.reserve(existing.size() + newRecords.size() + 1);
    quint16 upper = 0;
    for (auto& record : existing) {
        if (!record) {
            continue;
        }
        if (record->isExtendedAddress()) {
            upper = record->upperAddress();
        }
        if (!record->isData() || record->getLength() == 0) {
            result.push_back(std::move(record));
            continue;
        }
        const quint64 start = fullAddress(upper, record->getAddress());
        const quint64 end = start + record->getLength();
        // First covered range that ends after this record starts.
        auto it = std::upper_bound(covered.begin(), covered.end(), start,
                                   [](quint64 value, const Range& r) { return value < r.end; });
        if (it == covered.end() || it->start >= end) {
            result.push_back(std::move(record));
            continue;
        }
        // Keep the uncovered pieces, in address order.
        quint64 cursor = start;
        auto keep = [&](quint64 from, quint64 to) {
            if (to <= from || m_phantom.allPhantom(from, to - from)) {
                return;
            }
            const int offset = static_cast<int>(from - start);
            // A piece of a record that reaches past a 64 KiB boundary may start beyond
            // it; it then gets its own upper address, and the old one is restored after.
            const quint16 pieceUpper = static_cast<quint16>(from >> 16);
            if (pieceUpper != upper) {
                result.push_back(Inhex32Entry::extendedAddress(pieceUpper));
            }
            result.push_back(std::make_unique<Inhex32Entry>(
                record->getType(), static_cast<quint16>(from & 0xFFFF), record->getData() + offset,
                static_cast<int>(to - from)));
            if (pieceUpper != upper) {
                result.push_back(Inhex32Entry::extendedAddress(upper));
            }
        };
        for (; it != covered.end() && it->start < end; ++it) {
            keep(cursor, std::min(it->start, end));
            cursor = std::max(cursor, it->end);
        }
        keep(cursor, end);
    }

    if (upper != 0 && startsWithoutUpper(newRecords)) {
        result.push_back(Inhex32Entry::extendedAddress(0));
    }
    for (const auto& r : newRecords) {
        if (r) {
            result.push_back(std::make_unique<Inhex32Entry>(*r));
        }
    }
    existing = std::move(result);
}

} // namespace sf::parser
