// Fuzzes the expression calculator: tokenize arbitrary text and calculate it, and apply
// the same tokens as a scale-factor chain forwards and backwards; also token lists of
// arbitrary kinds that tokenizing never makes. A failed calculation must report failure
// with 0.0; nothing may crash or hang.

#include "sf/parser/CalcParser.h"
#include "sf/parser/Interpreter.h"
#include "sf/parser/Token.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace sf::parser;

namespace {

void check(bool condition) {
    if (!condition) {
        std::abort();
    }
}

void runAll(const TokenList& tokens, double value) {
    CalcParser calc;
    TokenList a = tokens;
    const double r = calc.calculate(a);
    check(a.isEmpty());
    check(calc.lastCalcSuccessful() || r == 0.0);

    TokenList f = tokens;
    const double forward = calc.calculateScaledFromRaw(value, f);
    check(calc.lastCalcSuccessful() || forward == 0.0);

    TokenList b = tokens;
    const double backward = calc.calculateRawFromScaled(value, b);
    check(calc.lastCalcSuccessful() || backward == 0.0);
}

const char* const PAYLOADS[] = {"1", "-",  "+",  "*",   "/",     "^",   "(",    ")",
                                "<", "<=", "==", "&&",  "||",    "!",   "0x1F", "-2.5",
                                "",  "x",  ".5", "1e3", "-0x10", "10h", "nan",  "inf"};
constexpr int PAYLOAD_COUNT = sizeof(PAYLOADS) / sizeof(PAYLOADS[0]);

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) {
        return 0;
    }
    // The first byte picks the value scaled by the chain.
    const double values[] = {0.0, 1.0, -1.0, 1000.0, 39.0625, 1e300, -0.0, 255.0};
    const double value = values[data[0] % 8];
    const QString text =
        QString::fromLatin1(reinterpret_cast<const char*>(data + 1), static_cast<int>(size - 1));
    TokenList tokens;
    if (Interpreter::tokenize(&tokens, text, TOKEN_REGEX)) {
        runAll(tokens, value);
        tokens.removeLast(); // without End, as fields reach the calculator
        runAll(tokens, value);
    }

    TokenList arbitrary;
    for (size_t i = 1; i + 1 < size && i < 1024; i += 2) {
        const auto type = static_cast<TokenType>(data[i] % (SIZE + 1));
        arbitrary.append(Token(QString::fromLatin1(PAYLOADS[data[i + 1] % PAYLOAD_COUNT]), type));
    }
    runAll(arbitrary, value);
    return 0;
}
