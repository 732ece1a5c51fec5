#pragma once

#include <QString>
#include <QVector>

namespace kxs {
namespace compiler {

// One piece of a layout source line: a bare word (also the single characters { and })
// or a double-quoted text with its escapes resolved.
struct SourceToken {
    enum Kind { Word, Quoted };
    Kind kind = Word;
    QString text;
};

// Splits one line of layout source into tokens. Blanks separate words; a # outside a
// quoted text starts a comment that runs to the end of the line; an = outside a quoted
// text ends the scan and everything after it is kept verbatim (the definition text of a
// setting). Quoted texts know the escapes \" \\ \n \t and \xHH.
class SourceScanner {
public:
    // False (with error()) for an unterminated quoted text or an unknown escape.
    bool scan(const QString& line);

    const QVector<SourceToken>& tokens() const { return m_tokens; }
    // Whether an = was found, and the text after it with surrounding blanks removed.
    bool hasDefinition() const { return m_hasDefinition; }
    const QString& definition() const { return m_definition; }
    const QString& error() const { return m_error; }

private:
    bool scanQuoted(const QString& line, int* pos);

    QVector<SourceToken> m_tokens;
    bool m_hasDefinition = false;
    QString m_definition;
    QString m_error;
};

} // namespace compiler
} // namespace kxs
