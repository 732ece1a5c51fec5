#pragma once

// Test data tables kept as text files under tests/data/tables/ instead of rows spelled out
// in C++. A table file holds a header line and one line per row, cells separated by " | ":
//
//     # comment lines and blank lines are skipped
//     row name            | definition:string | mode:int | expected
//     case picks entry 0  | {Mode1, 10, 20}   | 0        | 10
//
// The first cell of a row is the row's name. Header cells are column names with an
// optional type: string (the default), int (decimal or 0x...), uint, uint64, double, bool
// (true/false), bytes (hexadecimal bytes separated by blanks), text (a byte array of the
// cell's Latin-1 text), variant (a text; "int:N", "uint:N", "bool:B", "double:D",
// "list:A;B" typed values; "<none>" no value) or list (texts separated by ";"). Cells
// are trimmed; inside a cell "\s" is a blank, "\n" a line feed, "\r" a carriage return,
// "\t" a tab, "\|" a bar, "\xNN" a byte (Latin-1), "\\" a backslash.

#include <QString>

namespace testsupport {

// Declares the table's columns and adds its rows, from tests/data/tables/NAME. A file
// that cannot be read or a row that does not fit the header fails the test data.
void loadTable(const QString& name);
// The same for the table of the running test function: tst_hexparser_write's reformat
// reads hexparser-write-reformat.txt.
void loadTable();

// The text of a cell with its escapes resolved (exposed for the table's own test).
QString unescapeCell(const QString& cell);

} // namespace testsupport
