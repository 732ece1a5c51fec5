#pragma once

#include "sf/parser/Token.h"

#include <QString>
#include <QVarLengthArray>

#include <functional>

namespace sf {

// Finds the fields of a definition token list and resolves their case blocks and
// ternaries.
//
// A definition is a sequence of fields separated by Separator tokens outside braces. A
// field may be
//   - a ternary spanning the whole field: condition ? tokens : tokens (nesting allowed in
//     either branch, no braces anywhere in it);
//   - tokens in which every case block { selector, entry0, entry1, ... } at the field's
//     top level is replaced by one entry: the selector is evaluated, truncated toward zero
//     and picks entry 0, 1, ...; a value outside the entries (or not a number) picks the
//     last entry. Entries are taken as written (no nested blocks or ternaries).
class FieldEvaluator {
public:
    using Reporter = std::function<void(const QString&)>;
    // Evaluates a condition or selector to a number; false when it cannot be evaluated.
    using Condition = std::function<bool(parser::TokenList, double*)>;

    // The token range [begin, end) of the field at position (0 = the first field); end is
    // the Separator or End token after it (or the list's size). False when the list ends
    // (End token or no more tokens) before the field starts, or when a closing brace has
    // no opening one.
    static bool locate(const parser::TokenList& tokens, int position, int* begin, int* end);

    struct Range {
        int begin;
        int end;
    };
    using Ranges = QVarLengthArray<Range, 16>;
    // Every field in one pass: entry k is the field at position k; positions past the
    // last entry have no field.
    static void locateAll(const parser::TokenList& tokens, Ranges* out);

    // Messages name the fault; the caller appends the definition line it belongs to.
    FieldEvaluator(const parser::TokenList& tokens, Condition condition, Reporter report);

    // The tokens of [begin, end) with the ternary or the case blocks resolved. False, with a
    // message for malformed blocks and ternaries, or when a condition fails.
    bool evaluate(int begin, int end, parser::TokenList* out) const;

    // Index of the ':' matching the '?' at question within [question, end), counting
    // nested ternaries; -1 when there is none. *anySeparator tells whether a ':' was seen.
    static int matchingSeparator(const parser::TokenList& tokens, int question, int end,
                                 bool* anySeparator);
    // Index of the '}' closing the '{' at open within [open, end); -1 when there is none.
    static int matchingCurly(const parser::TokenList& tokens, int open, int end);

private:
    bool evaluateCase(int open, int close, parser::TokenList* out) const;
    void report(const QString& message) const;

    const parser::TokenList& m_tokens;
    Condition m_condition;
    Reporter m_report;
};

} // namespace sf
