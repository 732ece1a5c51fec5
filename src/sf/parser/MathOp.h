#pragma once

#include <QString>
#include <QtGlobal>

namespace sf::parser {

class Token;

namespace detail {

// One operator of the expression language: a kind (index into OP_CHARS) with its text
// and precedence. A plain value. Kinds beyond the table are kept as given but have the
// text of kind 0 and precedence 0, and every calculation with them fails.
class MathOp {
public:
    enum Kind : quint32 {
        None = 0,     // "u": no operator
        Add = 1,      // +
        Subtract = 2, // -
        Multiply = 3, // *
        Divide = 4,   // /
        Power = 5,    // ^
        Or = 6,       // ||
        And = 7,      // &&
        Equal = 8,    // ==
        NotEqual = 9, // !=
        Less = 10,    // <
        LessEqual = 11,
        Greater = 12,
        GreaterEqual = 13,
    };
    static constexpr quint32 KIND_COUNT = 14;
    // Operator texts and precedences (higher binds tighter), indexed by kind.
    static const char* const OP_CHARS[KIND_COUNT];
    static const int OP_PREC[KIND_COUNT];

    MathOp() = default;
    explicit MathOp(quint32 kind) : m_kind(kind) {}
    // Exact match against OP_CHARS; kind 0 for any other text.
    explicit MathOp(const QString& text);
    // Only Operator and LogicalOperator tokens are looked up; any other token gives
    // kind 0.
    explicit MathOp(const Token& token);

    QString toString() const;
    int getPrecedence() const;
    quint32 getType() const { return m_kind; }

    bool operator==(const MathOp& other) const { return m_kind == other.m_kind; }
    bool operator!=(const MathOp& other) const { return m_kind != other.m_kind; }

    // Whether the text is one of the operator texts (kinds 1 to 13).
    static bool isOpChar(const QString& text);

private:
    quint32 m_kind = None;
};

} // namespace detail
} // namespace sf::parser
