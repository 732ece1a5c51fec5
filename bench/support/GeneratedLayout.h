#pragma once

// Generated layouts and setup images of any size for the benchmarks.

#include "util/VersionContainer.h"

#include <QByteArray>
#include <QString>

namespace benchdata {

// A layout of `count` settings in categories of 100, in groups of ten:
//   0     G<g>Base      u8 number 0`255 (two dependents)
//   1, 2  Dep<g>a/b     u16 numbers whose upper bound is G<g>Base * 4, scaled /10
//   3     G<g>Flags     16-bit bit field with three labels
//   4     G<g>Boxes     checkbool[8] with three boxes
//   5     G<g>Mode      list over one of five shared string lists
//   6, 7  Pre<g>x1/x2   u8 numbers for presets 0 and 1 (one row, two columns)
//   8, 9  Num<g>a/b     plain u16 numbers with a help identifier
// Only the Pre settings end in a preset character (a digit, A or B), as in a real layout:
// every category has two preset columns. Every setting gets bytes of its own from
// address 0 on.
struct Generated {
    QByteArray layout;
    QByteArray image;
};

Generated generate(int count);
// The version the generated image records (no layout path: the layout is in memory).
util::VersionContainer version();

} // namespace benchdata
