#pragma once

#include "sf/parser/MathOp.h"
#include "sf/parser/Token.h"

namespace sf::parser {

// Evaluates expression token lists to doubles and applies scale-factor chains (such as
// "*10/256") forwards (raw to shown value) and backwards (shown value to raw).
//
// Every calculation sets lastCalcSuccessful(); a failed one returns 0.0. The token lists
// handed in are consumed (left empty). Numbers are Numeric tokens (decimal text) and
// Hexadecimal tokens (0x1F, 1Fh); references to other settings must have been replaced
// by numbers before: a Dependent left in the list fails the calculation. A single End
// token at the very end of a list is accepted and ignored; WhiteSpace tokens are ignored.
class CalcParser {
public:
    CalcParser() = default;

    // Evaluates an expression such as "2 * (3 + 4) >= 10 && 1".
    double calculate(TokenList& tokens);
    // Applies the chain from its front: raw op1 n1 op2 n2 ...
    double calculateScaledFromRaw(double raw, TokenList& tokens);
    // Undoes the chain from its end with each operator inverted.
    double calculateRawFromScaled(double scaled, TokenList& tokens);

    bool lastCalcSuccessful() const { return m_lastCalcSuccessful; }

    // One operation, forwards or inverted (see the documentation of the layout language).
    // Fails (0.0, unsuccessful) for kind 0 or an unknown kind.
    double performMathOp(double a, double b, const detail::MathOp& op, bool inverse);

    // Exact equality, or a difference below the smaller value's magnitude times the
    // machine epsilon (the signed minimum, made absolute).
    static bool compareDouble(double a, double b);

    // Folds unary minus signs into the token after them (numbers change sign, Dependent
    // and NegDependent swap, groups become ( -1 * group )). With leadingMinusIsUnary
    // false a minus that stands first in the list is left alone (the start of a
    // scale-factor chain, where the value being scaled is the left operand). False when
    // a unary minus has nothing it can apply to; the list is then partly folded.
    static bool prepareUnaryOps(TokenList& tokens, bool leadingMinusIsUnary = true);

    // The value of a number token (Numeric, or Hexadecimal with 0x prefix or h suffix,
    // either with an optional leading minus). False for any other token.
    static bool tokenValue(const Token& token, double* value);
    // A value as the text of a Numeric token that reads back as the same value: 17
    // significant digits in general format (integers below 10^15 as plain digits, the
    // same text, made faster).
    static QString exactText(double value);

private:
    double calculateScaleFactorHelper(double value, TokenList& tokens, bool inverse);
    double fail();

    bool m_lastCalcSuccessful = false;
};

} // namespace sf::parser
