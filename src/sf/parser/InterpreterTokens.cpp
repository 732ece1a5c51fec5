// The interpreter's splitting and tokenizing of definition texts.

#include "sf/parser/Interpreter.h"

#include <array>

namespace sf::parser {

namespace {

// Whether the pair of one-character operators forms a two-character operator:
// <= == >= != && ||.
bool joins(const QString& first, const QString& second) {
    if (first.size() != 1 || second.size() != 1) {
        return false;
    }
    const QChar a = first.at(0);
    const QChar b = second.at(0);
    if (b == QLatin1Char('=')) {
        return a == QLatin1Char('<') || a == QLatin1Char('=') || a == QLatin1Char('>') ||
               a == QLatin1Char('!');
    }
    return (a == QLatin1Char('&') && b == QLatin1Char('&')) ||
           (a == QLatin1Char('|') && b == QLatin1Char('|'));
}

bool isQuoted(const QString& text) {
    return text.startsWith(QLatin1Char('"')) && text.endsWith(QLatin1Char('"'));
}

// Whether the double quote at position i counts towards opening or closing a quoted
// text: always at position 0, elsewhere only when not escaped by a backslash.
bool quoteCounts(const QString& text, int i) {
    return text.at(i) == QLatin1Char('"') && (i == 0 || text.at(i - 1) != QLatin1Char('\\'));
}

// One character of TOKEN_REGEX: [ ] , ( ) { } ? : & | = < > ! ` - + * / ^ and the blanks
// that \s matches (tab, line feed, vertical tab, form feed, carriage return, space).
bool isTokenDelimiter(QChar c) {
    switch (c.unicode()) {
    case '[':
    case ']':
    case ',':
    case '(':
    case ')':
    case '{':
    case '}':
    case '?':
    case ':':
    case '&':
    case '|':
    case '=':
    case '<':
    case '>':
    case '!':
    case '`':
    case '-':
    case '+':
    case '*':
    case '/':
    case '^':
    case ' ':
    case '\t':
    case '\n':
    case '\v':
    case '\f':
    case '\r':
        return true;
    default:
        return false;
    }
}

enum class Piece { Text, Delimiter, Whole };

// walkPieces for the delimiters of TOKEN_REGEX (one character each) in a single pass:
// the quote count of the current piece is kept as the text is read, so a delimiter is
// cut exactly when an even number of counting quotes lies between the piece's start and
// it, as walkPieces decides.
template <typename Emit> bool walkTokenPieces(const QString& text, Emit& visit) {
    const int n = static_cast<int>(text.size());
    const QChar* chars = text.constData();
    int start = 0;
    bool quoted = false;
    bool anyDelimiter = false;
    for (int i = 0; i < n; ++i) {
        const QChar c = chars[i];
        if (c == QLatin1Char('"')) {
            if (i == 0 || chars[i - 1] != QLatin1Char('\\')) {
                quoted = !quoted;
            }
            continue;
        }
        if (!isTokenDelimiter(c)) {
            continue;
        }
        anyDelimiter = true;
        if (quoted) {
            continue;
        }
        if (i > start) {
            visit(start, i - start, Piece::Text);
        }
        visit(i, 1, Piece::Delimiter);
        start = i + 1;
    }
    if (!anyDelimiter) {
        visit(0, n, Piece::Whole);
    } else {
        visit(start, n - start, Piece::Text);
    }
    return true;
}

// Walks text cut at each match of delimiters outside double quotes. visit(begin, length,
// kind) gets the pieces in order: the text between delimiters (when not empty, and always
// the last one; to be trimmed) and each delimiter, or, without any delimiter, the Whole
// text as it is. False for an empty text or an invalid expression.
template <typename Emit>
bool walkPieces(const QString& text, const QRegularExpression& delimiters, Emit visit) {
    if (text.isEmpty() || !delimiters.isValid()) {
        return false;
    }
    // The next delimiter at or after `from`: its position and length (at least one
    // character, so that every step moves on). False when there is none.
    const bool tokenDelimiters = delimiters.pattern() == TOKEN_REGEX.pattern() &&
                                 delimiters.patternOptions() == TOKEN_REGEX.patternOptions();
    if (tokenDelimiters) {
        return walkTokenPieces(text, visit);
    }
    auto nextDelimiter = [&](int from, int* pos, int* len) {
        if (from >= text.size()) {
            return false;
        }
        const QRegularExpressionMatch m = delimiters.match(text, from);
        if (!m.hasMatch() || m.capturedStart() >= text.size()) {
            return false;
        }
        *pos = m.capturedStart();
        *len = qMax(1, m.capturedLength());
        return true;
    };

    int p = 0;
    int len = 1;
    int start = 0;
    bool more = nextDelimiter(0, &p, &len);
    if (!more) {
        visit(0, static_cast<int>(text.size()), Piece::Whole);
        return true;
    }
    int counted = 0;
    int quotes = 0;
    while (more) {
        // Skip delimiters inside a quoted text: an odd number of counting quotes lies
        // between the start of the piece and the delimiter.
        for (; counted < p; ++counted) {
            quotes += quoteCounts(text, counted) ? 1 : 0;
        }
        if (quotes % 2 != 0) {
            more = nextDelimiter(p + len, &p, &len);
            continue;
        }
        if (p > start) {
            visit(start, p - start, Piece::Text);
        }
        visit(p, len, Piece::Delimiter);
        start = p + len;
        counted = start;
        quotes = 0;
        more = nextDelimiter(start, &p, &len);
    }
    visit(start, static_cast<int>(text.size()) - start, Piece::Text);
    return true;
}

// The tokens of the one-character ASCII pieces, made once: tokenizing copies them
// instead of allocating and recognizing a string per delimiter.
const Token& asciiToken(char16_t c) {
    static const QList<Token> tokens = [] {
        QList<Token> all;
        all.reserve(128);
        for (int i = 0; i < 128; ++i) {
            all.append(Token(QString(QChar(i))));
        }
        return all;
    }();
    return tokens.at(c);
}

// The blanks that \s matches, which make a one-character piece WhiteSpace.
bool isBlank(char16_t c) {
    return c == ' ' || (c >= 0x09 && c <= 0x0D);
}

// The text of a piece, shared with an earlier piece of the same text where possible:
// definitions repeat their words (kinds, formats, small numbers, units), and a shared
// string costs no allocation. A small direct-mapped table per thread, bounded in size.
QString sharedText(QStringView piece) {
    constexpr size_t SLOTS = 512;
    constexpr qsizetype LONGEST = 24;
    if (piece.size() > LONGEST) {
        return piece.toString();
    }
    thread_local std::array<QString, SLOTS> recent;
    quint32 hash = 2166136261u; // FNV-1a over the UTF-16 code units
    for (const QChar c : piece) {
        hash = (hash ^ c.unicode()) * 16777619u;
    }
    QString& slot = recent[hash % SLOTS];
    if (slot != piece) {
        slot = piece.toString();
    }
    return slot;
}

} // namespace

bool Interpreter::splitInput(const QString& text, QStringList* out,
                             const QRegularExpression& delimiters, bool keepDelimiters) {
    if (!out || text.isEmpty() || !delimiters.isValid()) {
        return false;
    }
    out->clear();
    return walkPieces(text, delimiters, [&](int begin, int length, Piece kind) {
        if (kind == Piece::Text) {
            out->append(QStringView(text).mid(begin, length).trimmed().toString());
        } else if (kind == Piece::Whole || keepDelimiters) {
            out->append(text.mid(begin, length));
        }
    });
}

bool Interpreter::tokenize(TokenList* out, const QString& text,
                           const QRegularExpression& delimiters) {
    if (!out || text.isEmpty() || !delimiters.isValid()) {
        return false;
    }
    out->clear();
    out->reserve(text.size() / 3 + 2);
    // Blank delimiters would be removed first thing by preprocessing: they are never
    // added. A trimmed piece is never blank.
    walkPieces(text, delimiters, [&](int begin, int length, Piece kind) {
        if (kind == Piece::Text) {
            const QStringView piece = QStringView(text).mid(begin, length).trimmed();
            if (!piece.isEmpty()) {
                out->append(Token(sharedText(piece)));
            }
            return;
        }
        const char16_t c = text.at(begin).unicode();
        if (length == 1 && c < 128) {
            if (!isBlank(c)) {
                out->append(asciiToken(c));
            }
            return;
        }
        Token token(text.mid(begin, length));
        if (token.getType() != WhiteSpace) {
            out->append(std::move(token));
        }
    });
    if (!preprocessTokenList(out)) {
        return false;
    }
    out->append(Token(QString(), End));
    return true;
}

bool Interpreter::preprocessTokenList(TokenList* tokens) {
    if (!tokens) {
        return false;
    }
    // Blanks first, so that the two halves of "< =" meet.
    for (int i = tokens->size() - 1; i >= 0; --i) {
        if (tokens->at(i).getType() == WhiteSpace) {
            tokens->removeAt(i);
        }
    }
    // The first token, the kind word, is never changed.
    for (int i = 1; i < tokens->size(); ++i) {
        Token& t = (*tokens)[i];
        if (t.getType() == LogicalOperator && i + 1 < tokens->size() &&
            tokens->at(i + 1).getType() == LogicalOperator &&
            joins(t.getPayload(), tokens->at(i + 1).getPayload())) {
            t.setPayload(t.getPayload() + tokens->at(i + 1).getPayload());
            tokens->removeAt(i + 1);
            continue;
        }
        if (t.getType() != String || isQuoted(t.getPayload())) {
            continue;
        }
        // An unquoted word names another setting. Name [ number ] is one reference
        // (only once: in Name[1][2] the second index stays apart, and tidying the list
        // again changes nothing).
        t.setType(Dependent);
        if (i + 3 < tokens->size() && tokens->at(i + 1).getType() == LBracket &&
            (tokens->at(i + 2).getType() == Numeric ||
             tokens->at(i + 2).getType() == Hexadecimal) &&
            tokens->at(i + 3).getType() == RBracket) {
            t.setPayload(t.getPayload() + tokens->at(i + 1).getPayload() +
                         tokens->at(i + 2).getPayload() + tokens->at(i + 3).getPayload());
            tokens->erase(tokens->begin() + i + 1, tokens->begin() + i + 4);
        }
    }
    return true;
}

} // namespace sf::parser
