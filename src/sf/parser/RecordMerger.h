#pragma once

#include "sf/parser/Inhex32Entry.h"
#include "sf/parser/PhantomBytes.h"

namespace sf::parser {

// Merges new records into an image's records: every existing data record that a new
// data record overlaps (full addresses, extended-address records tracked on both sides,
// end-of-file records ignored) is cut back: removed when wholly covered, trimmed when
// partly covered, split when the new record lies strictly inside it. A remaining piece
// made only of phantom bytes is dropped. Then copies of all new records are appended in
// their order.
//
// The overlaps are found against the sorted union of the new records' ranges, so the
// merge costs O((n + m) log n) rather than n * m; the result equals cutting the
// existing records by each new record in turn.
//
// The existing list's last upper address carries over into the appended records when
// they are written and read back. When the new list starts with data records before any
// extended-address record and the existing list ends with a non-zero upper address, an
// extended-address record for 0 is appended first, so that the new records keep the
// addresses they were built for.
class RecordMerger {
public:
    explicit RecordMerger(const PhantomBytes& phantom) : m_phantom(phantom) {}

    void combine(const RecordList& newRecords, RecordList& existing) const;

private:
    PhantomBytes m_phantom;
};

} // namespace sf::parser
