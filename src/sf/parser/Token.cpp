#include "sf/parser/Token.h"

#include "sf/parser/MathOp.h"

namespace sf::parser {

namespace {

const char* const TYPE_NAMES[SIZE + 1] = {"Undefined",  "String",
                                          "Numeric",    "Hexadecimal",
                                          "Dependent",  "NegDependent",
                                          "Operator",   "LogicalOperator",
                                          "LParen",     "RParen",
                                          "LBracket",   "RBracket",
                                          "LCurly",     "RCurly",
                                          "Separator",  "Range",
                                          "TernaryOp",  "TernaryOpSeparator",
                                          "WhiteSpace", "End",
                                          "SIZE"};

bool isDigit(QChar c) {
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

bool isHexDigit(QChar c) {
    return isDigit(c) || (c >= QLatin1Char('a') && c <= QLatin1Char('f')) ||
           (c >= QLatin1Char('A') && c <= QLatin1Char('F'));
}

// What the regular-expression class \s matches: the ASCII blanks (tab, line feed,
// vertical tab, form feed, carriage return, space).
bool isBlank(QChar c) {
    const ushort u = c.unicode();
    return u == ' ' || (u >= 0x09 && u <= 0x0D);
}

// [0-9]*[.]?[0-9]+ over the whole text.
bool isNumeric(const QString& t) {
    const int n = t.size();
    if (n == 0 || !isDigit(t.at(n - 1))) {
        return false;
    }
    bool dot = false;
    for (int i = 0; i < n; ++i) {
        const QChar c = t.at(i);
        if (c == QLatin1Char('.')) {
            if (dot) {
                return false;
            }
            dot = true;
        } else if (!isDigit(c)) {
            return false;
        }
    }
    return true;
}

bool allHexDigits(const QString& t, int from, int to) {
    if (from >= to) {
        return false;
    }
    for (int i = from; i < to; ++i) {
        if (!isHexDigit(t.at(i))) {
            return false;
        }
    }
    return true;
}

// ((0x|0X)[0-9a-fA-F]+)|[0-9a-fA-F]+(h|H) over the whole text.
bool isHexadecimal(const QString& t) {
    const int n = t.size();
    if (n >= 3 && t.at(0) == QLatin1Char('0') &&
        (t.at(1) == QLatin1Char('x') || t.at(1) == QLatin1Char('X')) && allHexDigits(t, 2, n)) {
        return true;
    }
    return n >= 2 && (t.at(n - 1) == QLatin1Char('h') || t.at(n - 1) == QLatin1Char('H')) &&
           allHexDigits(t, 0, n - 1);
}

TokenType singleCharType(QChar c) {
    switch (c.unicode()) {
    case '-':
    case '+':
    case '*':
    case '/':
    case '^':
        return Operator;
    case '&':
    case '|':
    case '!':
    case '=':
    case '<':
    case '>':
        return LogicalOperator;
    case '(':
        return LParen;
    case ')':
        return RParen;
    case '[':
        return LBracket;
    case ']':
        return RBracket;
    case '{':
        return LCurly;
    case '}':
        return RCurly;
    case ',':
        return Separator;
    case '`':
        return Range;
    case '?':
        return TernaryOp;
    case ':':
        return TernaryOpSeparator;
    default:
        return Undefined;
    }
}

} // namespace

QString getTokenTypeString(int type) {
    if (type < 0 || type > SIZE) {
        return QStringLiteral("UNKNOWN TYPE - ERROR");
    }
    return QString::fromLatin1(TYPE_NAMES[type]);
}

// Equivalent to trying the patterns of TOKENS in order (the tests check this against
// the patterns themselves), without running a regular expression per piece.
TokenType recognizeTokenType(const QString& text) {
    if (isNumeric(text)) {
        return Numeric;
    }
    if (isHexadecimal(text)) {
        return Hexadecimal;
    }
    if (text.size() == 1) {
        const TokenType single = singleCharType(text.at(0));
        if (single != Undefined) {
            return single;
        }
    }
    for (const QChar c : text) {
        if (!isBlank(c)) {
            return String;
        }
    }
    return WhiteSpace; // also the empty text, which \s* matches
}

Token::Token(const QString& text) : m_payload(text), m_type(recognizeTokenType(text)) {}

Token::Token(const QString& text, TokenType type) : m_payload(text), m_type(type) {}

Token::Token(QChar c, TokenType type) : m_payload(c), m_type(type) {}

Token::Token(const char* text, TokenType type)
    : m_payload(QString::fromLatin1(text)), m_type(type) {}

Token::Token(double value) : m_payload(QString::number(value, 'g', 6)), m_type(Numeric) {}

Token::Token(const detail::MathOp& op) : m_payload(op.toString()), m_type(Operator) {}

} // namespace sf::parser
