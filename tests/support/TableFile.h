#pragma once

// Test data tables kept as text files under tests/data/tables/ instead of rows spelled out
// in C++. A table file holds a header line and one line per row, cells separated by " | ":
//
//     # comment lines and blank lines are skipped
//     row name            | definition:string | mode:int | expected
//     case picks entry 0  | {Mode1, 10, 20}   | 0        | 10
//
// The first cell of a row is the row's name. Header cells are column names with an
// optional type: string (the default), int (decimal or 0x...), uint, double, bool
// (true/false), bytes (hexadecimal bytes separated by blanks) or list (texts separated by
// ";"). Cells are trimmed; inside a cell "\s" is
// a blank, "\n" a line feed, "\r" a carriage return, "\t" a tab, "\|" a bar, "\xNN" a byte
// (Latin-1), "\\" a backslash.

#include <QString>

namespace testsupport {

// Declares the table's columns and adds its rows, from tests/data/tables/NAME. A file
// that cannot be read or a row that does not fit the header fails the test data.
void loadTable(const QString& name);

// The text of a cell with its escapes resolved (exposed for the table's own test).
QString unescapeCell(const QString& cell);

} // namespace testsupport
