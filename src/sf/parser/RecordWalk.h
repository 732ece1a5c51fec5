#pragma once

#include "sf/parser/Inhex32Entry.h"

#include <QtGlobal>

namespace sf::parser {

// The 32-bit address of a record: the upper 16 bits from the extended linear address
// record before it, the lower 16 from the record itself.
inline quint64 fullAddress(quint16 upper, quint16 address) {
    return (static_cast<quint64>(upper) << 16) + address;
}

// Calls visit(record, start) for every data record holding at least one byte, in list
// order, start being its full address. Records is a list of (smart) pointers to records;
// empty places are skipped.
template <typename Records, typename Visit>
void forEachDataRecord(const Records& records, Visit visit) {
    quint16 upper = 0;
    for (const auto& r : records) {
        if (!r) {
            continue;
        }
        if (r->isExtendedAddress()) {
            upper = r->upperAddress();
        } else if (r->isData() && r->getLength() > 0) {
            visit(*r, fullAddress(upper, r->getAddress()));
        }
    }
}

} // namespace sf::parser
