#include "support/LanguageSupport.h"

#include "sf/parser/Interpreter.h"

#include <QStringList>

namespace testsupport {

using namespace sf::parser;

TokenList tokensOf(const QString& text) {
    TokenList tokens;
    Interpreter::tokenize(&tokens, text, TOKEN_REGEX);
    return tokens;
}

QString renderTokens(const TokenList& tokens) {
    QStringList parts;
    for (const Token& t : tokens) {
        switch (t.getType()) {
        case End:
            parts.append(t.getPayload().isEmpty() ? QStringLiteral("$")
                                                  : QStringLiteral("End:") + t.getPayload());
            break;
        case Dependent:
            parts.append(QLatin1Char('@') + t.getPayload());
            break;
        case NegDependent:
            parts.append(QLatin1Char('~') + t.getPayload());
            break;
        case String:
            parts.append(QStringLiteral("s:") + t.getPayload());
            break;
        default:
            if (recognizeTokenType(t.getPayload()) == t.getType() || t.getType() == Numeric ||
                t.getType() == Hexadecimal || t.getType() == LogicalOperator) {
                parts.append(t.getPayload());
            } else {
                parts.append(getTokenTypeString(t.getType()) + QLatin1Char(':') + t.getPayload());
            }
        }
    }
    return parts.join(QLatin1Char(' '));
}

} // namespace testsupport
