#include "sf/parser/CalcParser.h"

#include "util/HexDigit.h"

#include <QVarLengthArray>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace sf::parser {

using detail::MathOp;

namespace {

constexpr double EPSILON = 2.220446049250313e-16;

// Expressions are short: their working lists live on the stack.
template <typename T> using SmallVector = QVarLengthArray<T, 24>;

// A plain decimal number ([-]digits[.digits]) read without going through the locale
// machinery of QString::toDouble; the result is the same correctly rounded double. False
// for any other text, which is then read by QString::toDouble.
bool plainDecimal(const QString& text, double* value) {
    constexpr int MAX_LENGTH = 64;
    const qsizetype n = text.size();
    if (n == 0 || n > MAX_LENGTH) {
        return false;
    }
    char buffer[MAX_LENGTH];
    bool digits = false;
    bool dot = false;
    for (qsizetype i = 0; i < n; ++i) {
        const char16_t c = text.at(i).unicode();
        if (c >= '0' && c <= '9') {
            digits = true;
        } else if (c == '.' && !dot) {
            dot = true;
        } else if (!(c == '-' && i == 0)) {
            return false;
        }
        buffer[i] = static_cast<char>(c);
    }
    if (!digits) {
        return false;
    }
    const std::from_chars_result r = std::from_chars(buffer, buffer + n, *value);
    return r.ec == std::errc() && r.ptr == buffer + n;
}

// One element of an expression after its tokens have been read.
struct Item {
    enum Kind { Number, Op, Open, Close };
    Kind kind;
    double value;
    MathOp op;
};

bool nonZero(double v) {
    return !(v == 0.0); // NaN counts as non-zero
}

bool isMinus(const Token& t) {
    return t.getType() == Operator && t.getPayload() == QLatin1String("-");
}

// How a minus sign reads after a token of this kind.
enum class MinusAfter { Unary, Binary, Boundary };

MinusAfter minusAfter(TokenType type) {
    switch (type) {
    case Operator:
    case LogicalOperator:
    case LParen:
    case LBracket:
    case LCurly:
    case TernaryOp:
    case TernaryOpSeparator:
        return MinusAfter::Unary;
    case String:
    case Numeric:
    case Hexadecimal:
    case Dependent:
    case NegDependent:
    case RParen:
    case RBracket:
    case RCurly:
        return MinusAfter::Binary;
    default:
        return MinusAfter::Boundary; // Separator, Range, End, Undefined, ...
    }
}

TokenType closerOf(TokenType opener) {
    switch (opener) {
    case LParen:
        return RParen;
    case LBracket:
        return RBracket;
    default:
        return RCurly;
    }
}

// Index of the token that closes the group opened at `open`, counting nesting of the
// same kind; -1 when the group is not closed.
int matchingCloser(const TokenList& tokens, int open) {
    const TokenType opener = tokens.at(open).getType();
    const TokenType closer = closerOf(opener);
    int depth = 0;
    for (int i = open; i < tokens.size(); ++i) {
        const TokenType t = tokens.at(i).getType();
        if (t == opener) {
            ++depth;
        } else if (t == closer && --depth == 0) {
            return i;
        }
    }
    return -1;
}

QString flipSign(const QString& text) {
    return text.startsWith(QLatin1Char('-')) ? text.mid(1) : QLatin1Char('-') + text;
}

// Folds the unary minus at index i into what follows it. False when nothing follows that
// a sign can apply to.
bool foldMinus(TokenList& tokens, int i) {
    if (i + 1 >= tokens.size()) {
        return false;
    }
    Token& next = tokens[i + 1];
    switch (next.getType()) {
    case Numeric:
    case Hexadecimal:
        next.setPayload(flipSign(next.getPayload()));
        tokens.removeAt(i);
        return true;
    case Dependent:
        next.setType(NegDependent);
        tokens.removeAt(i);
        return true;
    case NegDependent:
        next.setType(Dependent);
        tokens.removeAt(i);
        return true;
    case LParen:
    case LBracket:
    case LCurly: {
        const int close = matchingCloser(tokens, i + 1);
        if (close < 0) {
            return false;
        }
        // - group  ->  ( -1 * group )
        tokens.insert(close + 1, Token(QLatin1Char(')'), RParen));
        tokens[i] = Token(QLatin1Char('('), LParen);
        tokens.insert(i + 1, Token(QStringLiteral("*"), Operator));
        tokens.insert(i + 1, Token(QStringLiteral("-1"), Numeric));
        return true;
    }
    default:
        return false;
    }
}

// Reads the tokens into items: numbers, operators and parentheses. Fails on any other
// token, on an operator text that is no operator and on an End token that is not last.
bool readItems(const TokenList& tokens, SmallVector<Item>* items) {
    items->clear();
    items->reserve(tokens.size());
    for (int i = 0; i < tokens.size(); ++i) {
        const Token& t = tokens.at(i);
        switch (t.getType()) {
        case WhiteSpace:
            break;
        case End:
            if (i != tokens.size() - 1) {
                return false;
            }
            break;
        case Numeric:
        case Hexadecimal: {
            double v = 0.0;
            if (!CalcParser::tokenValue(t, &v)) {
                return false;
            }
            items->push_back({Item::Number, v, MathOp()});
            break;
        }
        case Operator:
        case LogicalOperator: {
            const MathOp op(t);
            if (op.getType() == MathOp::None) {
                return false;
            }
            items->push_back({Item::Op, 0.0, op});
            break;
        }
        case LParen:
            items->push_back({Item::Open, 0.0, MathOp()});
            break;
        case RParen:
            items->push_back({Item::Close, 0.0, MathOp()});
            break;
        default:
            return false; // references, strings, separators, ranges, braces, ...
        }
    }
    return true;
}

} // namespace

// ---------------------------------------------------------------------------------------
// Primitives

bool CalcParser::compareDouble(double a, double b) {
    if (a == b) {
        return true;
    }
    return std::fabs(a - b) < std::fabs(std::min(a, b)) * EPSILON;
}

double CalcParser::performMathOp(double a, double b, const MathOp& op, bool inverse) {
    m_lastCalcSuccessful = true;
    switch (op.getType()) {
    case MathOp::Add:
        return inverse ? a - b : a + b;
    case MathOp::Subtract:
        return inverse ? a + b : a - b;
    case MathOp::Multiply:
        return inverse ? a / b : a * b;
    case MathOp::Divide:
        return inverse ? a * b : a / b;
    case MathOp::Power:
        return inverse ? std::pow(a, 1.0 / b) : std::pow(a, b);
    case MathOp::Or:
        return (nonZero(a) || nonZero(b)) != inverse ? 1.0 : 0.0;
    case MathOp::And:
        return (nonZero(a) && nonZero(b)) != inverse ? 1.0 : 0.0;
    case MathOp::Equal:
        return compareDouble(a, b) != inverse ? 1.0 : 0.0;
    case MathOp::NotEqual:
        return !compareDouble(a, b) != inverse ? 1.0 : 0.0;
    case MathOp::Less:
        if (compareDouble(a, b)) {
            return inverse ? 1.0 : 0.0;
        }
        return (a < b) != inverse ? 1.0 : 0.0;
    case MathOp::LessEqual:
        if (compareDouble(a, b)) {
            return inverse ? 0.0 : 1.0;
        }
        return (a <= b) != inverse ? 1.0 : 0.0;
    case MathOp::Greater:
        if (compareDouble(a, b)) {
            return inverse ? 1.0 : 0.0;
        }
        return (a > b) != inverse ? 1.0 : 0.0;
    case MathOp::GreaterEqual:
        if (compareDouble(a, b)) {
            return inverse ? 0.0 : 1.0;
        }
        return (a >= b) != inverse ? 1.0 : 0.0;
    default:
        m_lastCalcSuccessful = false;
        return 0.0;
    }
}

QString CalcParser::exactText(double value) {
    constexpr double PLAIN_LIMIT = 1e15;
    if (std::isfinite(value) && value == std::trunc(value) && std::fabs(value) < PLAIN_LIMIT) {
        return QString::number(static_cast<qint64>(value));
    }
    return QString::number(value, 'g', 17);
}

bool CalcParser::tokenValue(const Token& token, double* value) {
    if (!value) {
        return false;
    }
    QString text = token.getPayload();
    if (token.getType() == Numeric) {
        if (plainDecimal(text, value)) {
            return true;
        }
        bool ok = false;
        const double v = text.toDouble(&ok);
        if (!ok) {
            return false;
        }
        *value = v;
        return true;
    }
    if (token.getType() != Hexadecimal) {
        return false;
    }
    const bool negative = text.startsWith(QLatin1Char('-'));
    if (negative) {
        text.remove(0, 1);
    }
    int from = 0;
    int to = text.size();
    if (text.startsWith(QLatin1String("0x")) || text.startsWith(QLatin1String("0X"))) {
        from = 2;
    } else if (text.endsWith(QLatin1Char('h')) || text.endsWith(QLatin1Char('H'))) {
        to -= 1;
    } else {
        return false;
    }
    if (from >= to) {
        return false;
    }
    double v = 0.0;
    for (int i = from; i < to; ++i) {
        const int digit = util::hexDigitValue(text.at(i).unicode());
        if (digit < 0) {
            return false;
        }
        v = v * 16.0 + digit;
    }
    *value = negative ? -v : v;
    return true;
}

// ---------------------------------------------------------------------------------------
// Unary minus signs

bool CalcParser::prepareUnaryOps(TokenList& tokens, bool leadingMinusIsUnary) {
    // Right to left, so that in "- - 5" the inner sign is folded before the outer one
    // looks at what follows it. The kind of the token before a minus is read from the
    // tokens to its left, which are not yet changed.
    for (int i = tokens.size() - 1; i >= 0; --i) {
        if (!isMinus(tokens.at(i))) {
            continue;
        }
        int before = i - 1;
        while (before >= 0 && tokens.at(before).getType() == WhiteSpace) {
            --before;
        }
        MinusAfter reading = MinusAfter::Boundary;
        if (before >= 0) {
            reading = minusAfter(tokens.at(before).getType());
        } else if (!leadingMinusIsUnary) {
            reading = MinusAfter::Binary;
        }
        if (reading == MinusAfter::Binary) {
            continue;
        }
        if (!foldMinus(tokens, i)) {
            return false;
        }
    }
    return true;
}

// ---------------------------------------------------------------------------------------
// Evaluation

double CalcParser::fail() {
    m_lastCalcSuccessful = false;
    return 0.0;
}

namespace {

// Evaluates a flat run of items (no parentheses): it must alternate number, operator,
// number, ..., number. Shunting-yard to reverse Polish order (equal precedence pops, so
// every operator is left-associative), then a stack evaluation.
bool evaluateFlat(CalcParser& calc, const Item* begin, const Item* end, double* result) {
    const std::ptrdiff_t n = end - begin;
    if (n <= 0 || n % 2 == 0) {
        return false;
    }
    for (std::ptrdiff_t i = 0; i < n; ++i) {
        if (begin[i].kind != ((i % 2 == 0) ? Item::Number : Item::Op)) {
            return false;
        }
    }

    SmallVector<const Item*> rpn;
    SmallVector<const Item*> ops;
    rpn.reserve(n);
    for (const Item* it = begin; it != end; ++it) {
        if (it->kind == Item::Number) {
            rpn.push_back(it);
            continue;
        }
        const int prec = it->op.getPrecedence();
        while (!ops.empty() && ops.back()->op.getPrecedence() >= prec) {
            rpn.push_back(ops.back());
            ops.pop_back();
        }
        ops.push_back(it);
    }
    while (!ops.empty()) {
        rpn.push_back(ops.back());
        ops.pop_back();
    }

    SmallVector<double> stack;
    stack.reserve(rpn.size());
    for (const Item* it : rpn) {
        if (it->kind == Item::Number) {
            stack.push_back(it->value);
            continue;
        }
        if (stack.size() < 2) {
            return false; // too few operands
        }
        const double b = stack.back();
        stack.pop_back();
        const double a = stack.back();
        stack.back() = calc.performMathOp(a, b, it->op, false);
        if (!calc.lastCalcSuccessful()) {
            return false;
        }
    }
    if (stack.size() != 1) {
        return false; // leftover values
    }
    *result = stack.front();
    return true;
}

// Evaluates every parenthesised group, innermost first, and puts its value in its place,
// until no parentheses are left. Fails on an unbalanced parenthesis, an empty group or a
// group that does not evaluate.
bool collapseGroups(CalcParser& calc, SmallVector<Item>& items) {
    SmallVector<qsizetype> opens;
    for (qsizetype i = 0; i < items.size(); ++i) {
        if (items[i].kind == Item::Open) {
            opens.push_back(i);
            continue;
        }
        if (items[i].kind != Item::Close) {
            continue;
        }
        if (opens.empty()) {
            return false;
        }
        const qsizetype open = opens.back();
        opens.pop_back();
        double value = 0.0;
        if (!evaluateFlat(calc, items.data() + open + 1, items.data() + i, &value)) {
            return false;
        }
        items[open] = {Item::Number, value, MathOp()};
        items.erase(items.cbegin() + open + 1, items.cbegin() + i + 1);
        i = open;
    }
    return opens.empty();
}

} // namespace

double CalcParser::calculate(TokenList& tokens) {
    TokenList list;
    list.swap(tokens);
    SmallVector<Item> items;
    if (!prepareUnaryOps(list, true) || !readItems(list, &items) || !collapseGroups(*this, items)) {
        return fail();
    }
    double result = 0.0;
    if (!evaluateFlat(*this, items.data(), items.data() + items.size(), &result)) {
        return fail();
    }
    m_lastCalcSuccessful = true;
    return result;
}

double CalcParser::calculateScaledFromRaw(double raw, TokenList& tokens) {
    return calculateScaleFactorHelper(raw, tokens, false);
}

double CalcParser::calculateRawFromScaled(double scaled, TokenList& tokens) {
    return calculateScaleFactorHelper(scaled, tokens, true);
}

double CalcParser::calculateScaleFactorHelper(double value, TokenList& tokens, bool inverse) {
    TokenList list;
    list.swap(tokens);
    SmallVector<Item> items;
    // The value being scaled is the left operand of the chain's first operator, so a
    // minus at the very start is a subtraction, not a sign.
    if (!prepareUnaryOps(list, false) || !readItems(list, &items) ||
        !collapseGroups(*this, items)) {
        return fail();
    }
    const qsizetype n = items.size();
    if (n % 2 != 0) {
        return fail(); // a lone operator or number is left over
    }
    for (qsizetype step = 0; step < n / 2; ++step) {
        // Forwards: operator and number from the front. Backwards: from the end.
        const qsizetype at = inverse ? n - 2 * (step + 1) : 2 * step;
        const Item& op = items[at];
        const Item& number = items[at + 1];
        if (op.kind != Item::Op || number.kind != Item::Number) {
            return fail();
        }
        value = performMathOp(value, number.value, op.op, inverse);
        if (!m_lastCalcSuccessful) {
            return fail();
        }
    }
    m_lastCalcSuccessful = true;
    return value;
}

} // namespace sf::parser
