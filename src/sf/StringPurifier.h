#pragma once

#include "sf/parser/Token.h"

#include <QPair>
#include <QString>
#include <QVarLengthArray>

#include <functional>

namespace sf {

// Cleans the string fields of a definition: removes the quotes around texts and resolves
// their escapes, and checks that every terminal of a string field (a ternary's branches,
// a case block's entries) is one string.
class StringPurifier {
public:
    using Reporter = std::function<void(const QString&)>;

    // Purifies one String or Dependent token in place. Read left to right remembering the
    // previous character: a quote is removed (after a backslash the backslash is removed
    // and the quote kept); a tilde after a backslash replaces the backslash, a tilde right
    // after a quote is removed, other tildes stay; a backslash after a backslash is
    // removed and forgets the previous character. False, leaving the token unchanged, for
    // any other kind of token and for a text with an odd number of delimiting quotes.
    static bool purifyToken(parser::Token& token);

    // Messages name the definition line as it was before purifying (every payload
    // followed by a space); it is only built when a message needs it.
    StringPurifier(parser::TokenList& tokens, Reporter report);

    // Purifies the terminals of [begin, end) in place. Conditions and case selectors are
    // left alone. An unquoted terminal (a Dependent) is accepted after a warning and
    // becomes a String.
    bool purifyRange(int begin, int end);

private:
    bool purifyCase(int open, int end);
    bool purifyTerminal(int begin, int end);
    int firstBrace(int begin, int end) const;
    QString line() const;

    parser::TokenList& m_tokens;
    Reporter m_report;
    // Payloads of the tokens purified so far, as they were: (position, payload).
    QVarLengthArray<QPair<int, QString>, 4> m_originals;
};

} // namespace sf
