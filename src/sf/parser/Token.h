#pragma once

#include <QChar>
#include <QList>
#include <QMetaType>
#include <QRegularExpression>
#include <QString>

namespace sf::parser {

// The kind of a token of a setting definition. The values are stored nowhere but are
// part of the command-line tools' JSON output, so they stay fixed.
enum TokenType {
    Undefined = 0,      // made by the default constructor
    String,             // a word or a quoted text (the fallback of recognition)
    Numeric,            // a decimal number
    Hexadecimal,        // 0x1F or 1Fh
    Dependent,          // a reference to another setting by code name
    NegDependent,       // a negated reference (made by folding a unary minus)
    Operator,           // + - * / ^
    LogicalOperator,    // & | ! = < > and, after joining, && || == != <= >=
    LParen,             // (
    RParen,             // )
    LBracket,           // [
    RBracket,           // ]
    LCurly,             // { opens a case block
    RCurly,             // }
    Separator,          // , between the fields of a definition
    Range,              // ` between the two ends of a range
    TernaryOp,          // ?
    TernaryOpSeparator, // :
    WhiteSpace,         // blanks (removed by preprocessing)
    End,                // appended once after the last token of a definition
    SIZE                // count of the kinds, never a token's type
};

// Display name of a kind ("Numeric", ...); "UNKNOWN TYPE - ERROR" for any other value.
QString getTokenTypeString(int type);

// Recognition patterns indexed by kind; an empty pattern is never tried. A piece of
// text takes the first kind (in value order) whose pattern matches the whole text, or
// String when none does.
inline constexpr const char* TOKENS[SIZE] = {
    "",                                        // Undefined
    "",                                        // String
    "[0-9]*[.]?[0-9]+",                        // Numeric
    "((0x|0X)[0-9a-fA-F]+)|[0-9a-fA-F]+(h|H)", // Hexadecimal
    "",                                        // Dependent
    "",                                        // NegDependent
    "[-+*/^]",                                 // Operator
    "[&\\|!=<>]",                              // LogicalOperator
    "\\(",                                     // LParen
    "\\)",                                     // RParen
    "\\[",                                     // LBracket
    "\\]",                                     // RBracket
    "\\{",                                     // LCurly
    "\\}",                                     // RCurly
    ",",                                       // Separator
    "`",                                       // Range
    "\\?",                                     // TernaryOp
    ":",                                       // TernaryOpSeparator
    "\\s*",                                    // WhiteSpace
    "",                                        // End
};

// The kind of a piece of text by the patterns of TOKENS (whole-text match).
TokenType recognizeTokenType(const QString& text);

// One delimiter character of a definition text: a bracket, comma, parenthesis, brace,
// ? : & | = < > ! backtick, white space, - + * / or ^.
inline const QRegularExpression TOKEN_REGEX{QStringLiteral("[\\[\\],(){}?:&|=<>!`\\s\\-+*/\\^]")};

// Trailing markers of a definition: the setting is disabled / hidden.
inline const QString CUE_DISABLED = QStringLiteral("DIS");
inline const QString CUE_HIDDEN = QStringLiteral("HID");
// Indentation used in diagnostic output.
inline const QString SPACER = QStringLiteral("     ");

namespace detail {
class MathOp;
}

// One token of a definition: a payload text and a kind. A plain value.
class Token {
public:
    Token() = default;
    // Kind by recognition (see TOKENS).
    explicit Token(const QString& text);
    Token(const QString& text, TokenType type);
    Token(QChar c, TokenType type);
    // The characters are taken as Latin-1.
    Token(const char* text, TokenType type);
    // A Numeric token: general format with 6 significant digits (1e+06, 0.333333).
    explicit Token(double value);
    // An Operator token holding the operator's text (also for comparisons).
    explicit Token(const detail::MathOp& op);

    const QString& getPayload() const { return m_payload; }
    void setPayload(const QString& payload) { m_payload = payload; }
    TokenType getType() const { return m_type; }
    void setType(TokenType type) { m_type = type; }

    // Same kind and same payload.
    bool operator==(const Token& other) const {
        return m_type == other.m_type && m_payload == other.m_payload;
    }
    bool operator!=(const Token& other) const { return !(*this == other); }
    // Same payload (the kind is not compared).
    bool operator==(const QString& text) const { return m_payload == text; }
    bool operator!=(const QString& text) const { return !(*this == text); }

private:
    QString m_payload;
    TokenType m_type = Undefined;
};

} // namespace sf::parser

// A token moves in memory as its bytes (a string and a number): lists of tokens grow and
// shift without calling constructors.
Q_DECLARE_TYPEINFO(sf::parser::Token, Q_MOVABLE_TYPE);

namespace sf::parser {

// Definitions travel as lists of tokens ending with an End token.
using TokenList = QList<Token>;

} // namespace sf::parser

// Tokens, token lists (QList<Token>) and kinds can travel in QVariant and test tables.
Q_DECLARE_METATYPE(sf::parser::Token)
Q_DECLARE_METATYPE(sf::parser::TokenType)
