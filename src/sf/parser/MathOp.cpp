#include "sf/parser/MathOp.h"

#include "sf/parser/Token.h"

namespace sf::parser::detail {

const char* const MathOp::OP_CHARS[KIND_COUNT] = {"u",  "+",  "-",  "*", "/",  "^", "||",
                                                  "&&", "==", "!=", "<", "<=", ">", ">="};

// Logical or and and share the lowest precedence, so a mix of them evaluates left to right.
const int MathOp::OP_PREC[KIND_COUNT] = {0, 3, 3, 4, 4, 5, 1, 1, 2, 2, 2, 2, 2, 2};

namespace {

quint32 kindOf(const QString& text) {
    for (quint32 k = 1; k < MathOp::KIND_COUNT; ++k) {
        if (text == QLatin1String(MathOp::OP_CHARS[k])) {
            return k;
        }
    }
    return MathOp::None;
}

} // namespace

MathOp::MathOp(const QString& text) : m_kind(kindOf(text)) {}

MathOp::MathOp(const Token& token)
    : m_kind(token.getType() == Operator || token.getType() == LogicalOperator
                 ? kindOf(token.getPayload())
                 : None) {}

QString MathOp::toString() const {
    return QString::fromLatin1(OP_CHARS[m_kind < KIND_COUNT ? m_kind : None]);
}

int MathOp::getPrecedence() const {
    return m_kind < KIND_COUNT ? OP_PREC[m_kind] : 0;
}

bool MathOp::isOpChar(const QString& text) {
    return kindOf(text) != None;
}

} // namespace sf::parser::detail
