#include "sf/NumericPreprocessor.h"

#include "sf/parser/CalcParser.h"
#include "sf/parser/MathOp.h"

namespace sf {

using parser::Token;
using parser::TokenList;
using parser::TokenType;

namespace {

bool isOperand(TokenType t) {
    return t == parser::Numeric || t == parser::Hexadecimal || t == parser::Dependent ||
           t == parser::NegDependent || t == parser::LParen;
}

} // namespace

bool NumericPreprocessor::rewrite(TokenList& tokens, int from, quint32 format) {
    if (from < 0) {
        return false;
    }
    int open = -1;
    int depth = 0;
    for (int i = from; i < tokens.size() && open < 0; ++i) {
        const TokenType t = tokens.at(i).getType();
        if (t == parser::LBracket) {
            open = i;
        } else if (t == parser::RBracket || t == parser::End ||
                   (t == parser::Separator && depth == 0)) {
            return false;
        } else if (t == parser::LCurly) {
            ++depth;
        } else if (t == parser::RCurly) {
            --depth;
        }
    }
    if (open < 0) {
        return false;
    }
    int close = -1;
    int nesting = 0;
    for (int i = open; i < tokens.size(); ++i) {
        const TokenType t = tokens.at(i).getType();
        if (t == parser::End) {
            break;
        }
        if (t == parser::LBracket) {
            ++nesting;
        } else if (t == parser::RBracket && --nesting == 0) {
            close = i;
            break;
        }
    }
    if (close < 0) {
        return false;
    }
    for (int i = open + 1; i < close; ++i) {
        Token& token = tokens[i];
        switch (token.getType()) {
        case parser::Hexadecimal: {
            double value = 0.0;
            if (!parser::CalcParser::tokenValue(token, &value)) {
                return false;
            }
            token = Token(parser::CalcParser::exactText(value), parser::Numeric);
            break;
        }
        case parser::Operator:
        case parser::LogicalOperator: {
            const parser::detail::MathOp op(token);
            if (op.getType() == parser::detail::MathOp::None) {
                return false;
            }
            // Already in its written form after an earlier rewrite: left as it is.
            if (token.getType() != parser::Operator ||
                token.getPayload() !=
                    QLatin1String(parser::detail::MathOp::OP_CHARS[op.getType()])) {
                token = Token(op);
            }
            break;
        }
        default:
            break;
        }
    }
    if (format == FORMAT_IMPLICIT_MULTIPLY && open + 1 < close &&
        isOperand(tokens.at(open + 1).getType())) {
        tokens.insert(open + 1, Token(QStringLiteral("*"), parser::Operator));
    }
    return true;
}

} // namespace sf
