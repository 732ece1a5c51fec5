// Fuzzes the definition tokenizer: split, tokenize and preprocess arbitrary text (Latin-1,
// as definitions are stored), fold unary signs, and preprocess token lists of arbitrary
// kinds. Checks the invariants every caller relies on.

#include "sf/parser/CalcParser.h"
#include "sf/parser/Interpreter.h"
#include "sf/parser/Token.h"

#include <QRegularExpression>
#include <QString>
#include <QStringList>

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

// Recognition as the pattern table states it, to hold the hand-written recogniser to it.
TokenType recognizeByPatterns(const QString& text) {
    static const QVector<QRegularExpression> patterns = [] {
        QVector<QRegularExpression> v;
        for (int t = 0; t < SIZE; ++t) {
            v.append(QRegularExpression(
                QRegularExpression::anchoredPattern(QString::fromLatin1(TOKENS[t]))));
        }
        return v;
    }();
    for (int t = 0; t < SIZE; ++t) {
        if (TOKENS[t][0] != '\0' && patterns.at(t).match(text).hasMatch()) {
            return static_cast<TokenType>(t);
        }
    }
    return String;
}

const char* const PAYLOADS[] = {"",  "1", "-", "(", ")",     "[",    "]",    "{", "}", "<",
                                "=", "&", "|", "!", "\"q\"", "Cell", "0x1F", ",", " ", "DIS"};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QString text =
        QString::fromLatin1(reinterpret_cast<const char*>(data), static_cast<int>(size));

    QStringList pieces;
    if (Interpreter::splitInput(text, &pieces, TOKEN_REGEX, true)) {
        for (const QString& piece : pieces) {
            check(recognizeTokenType(piece) == recognizeByPatterns(piece));
        }
    }
    // The shortcut for the token delimiters must split exactly as the pattern does.
    static const QRegularExpression wrapped(QStringLiteral("(?:%1)").arg(TOKEN_REGEX.pattern()));
    QStringList slow;
    Interpreter::splitInput(text, &slow, wrapped, true);
    check(slow == pieces || text.isEmpty());
    QStringList dropped;
    Interpreter::splitInput(text, &dropped, TOKEN_REGEX, false);

    TokenList tokens;
    if (Interpreter::tokenize(&tokens, text, TOKEN_REGEX)) {
        check(!tokens.isEmpty() && tokens.last().getType() == End);
        for (int i = 0; i < tokens.size(); ++i) {
            check(tokens.at(i).getType() != WhiteSpace);
            check(i == tokens.size() - 1 || tokens.at(i).getType() != End);
            check(i == 0 || tokens.at(i).getType() != String ||
                  tokens.at(i).getPayload().startsWith(QLatin1Char('"')));
        }
        // Preprocessing a tidied list again changes nothing.
        TokenList again = tokens;
        again.removeLast();
        check(Interpreter::preprocessTokenList(&again));
        again.append(Token(QString(), End));
        check(again == tokens);
        // Tokenizing is exactly one token per non-empty piece, tidied, then End.
        TokenList expected;
        for (const QString& piece : std::as_const(pieces)) {
            if (!piece.isEmpty()) {
                expected.append(Token(piece));
            }
        }
        check(Interpreter::preprocessTokenList(&expected));
        expected.append(Token(QString(), End));
        check(expected == tokens);

        TokenList folded = tokens;
        CalcParser::prepareUnaryOps(folded, true);
        TokenList chain = tokens;
        CalcParser::prepareUnaryOps(chain, false);
    } else {
        check(text.isEmpty());
    }

    // Token lists of any kinds, two bytes per token: kind and payload.
    TokenList arbitrary;
    for (size_t i = 0; i + 1 < size && i < 512; i += 2) {
        const auto type = static_cast<TokenType>(data[i] % (SIZE + 1));
        arbitrary.append(Token(QString::fromLatin1(PAYLOADS[data[i + 1] % 20]), type));
    }
    TokenList preprocessed = arbitrary;
    check(Interpreter::preprocessTokenList(&preprocessed));
    CalcParser::prepareUnaryOps(arbitrary, true);
    return 0;
}
