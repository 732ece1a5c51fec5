#pragma once

// Building Intel HEX text and record lists for the tests, independently of the code
// under test (checksums are computed here from scratch).
//
// Record lists are written in a compact notation, one token per record, separated by
// blanks:
//   X0001           extended linear address record for upper address 0x0001
//   DE000:0102A0    data record at 0xE000 with bytes 01 02 A0 ("DE000:" is empty)
//   F               end-of-file record
//   T05@0000:0102   record of any other type (hex) at an address

#include "sf/parser/Inhex32Entry.h"

#include <QByteArray>
#include <QString>

#include <map>

namespace testsupport::hex {

// The checksum byte of a record: two's complement of the sum of all other bytes.
quint8 checksum(quint8 type, quint16 address, const QByteArray& data);
// One record line, "\r\n"-terminated, upper-case digits.
QByteArray line(quint8 type, quint16 address, const QByteArray& data);
QByteArray dataLine(quint16 address, const QByteArray& data);
QByteArray extLine(quint16 upper);
QByteArray eofLine();
QByteArray metaLine(quint8 type, const QByteArray& text);
// The text lines of records in the notation above (no metadata, no added end record).
QByteArray text(const QString& notation);

// Records from the notation (a malformed token aborts the test program).
sf::parser::RecordList records(const QString& notation);
// The notation of a record list; data bytes in upper-case hex.
QString dump(const sf::parser::RecordList& list);
QString dump(const sf::parser::Inhex32Entry& record);

// Full address -> byte of the data records, later records winning where they overlap
// (upper addresses from the extended-address records before them).
std::map<quint64, quint8> byteMap(const sf::parser::RecordList& list);
// Number of byte addresses that two or more data records claim.
int overlappingBytes(const sf::parser::RecordList& list);

// True when every line of the text is a record whose bytes sum to 0 modulo 256.
bool allChecksumsValid(const QByteArray& text);

} // namespace testsupport::hex
