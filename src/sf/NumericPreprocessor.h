#pragma once

#include "sf/parser/Token.h"

#include <QtGlobal>

namespace sf {

// Rewrites the bracketed scale chain of a numeric field, such as [*10/256], into the form
// the calculator evaluates, according to the layout file's format number:
//   - both formats: Hexadecimal numbers become Numeric (decimal) tokens, and every
//     operator is re-rendered through the calculator's operator class (an operator text
//     the calculator does not know makes the rewrite fail);
//   - format 1000: a chain that starts with an operand (a number, a reference or a
//     parenthesis) gets an implicit "*" in front: [10/256] means [*10/256];
//   - format 1001 (and any other number): the chain is taken as written.
// Rewriting is idempotent, so it can run again before every evaluation.
class NumericPreprocessor {
public:
    static constexpr quint32 FORMAT_IMPLICIT_MULTIPLY = 1000;
    static constexpr quint32 FORMAT_CURRENT = 1001;

    // Looks for an LBracket in [from, ...) before any RBracket, End or Separator (outside
    // braces) and rewrites the part up to its matching RBracket in place. False when there
    // is no bracket or the bracketed part is malformed.
    static bool rewrite(parser::TokenList& tokens, int from, quint32 format);
};

} // namespace sf
