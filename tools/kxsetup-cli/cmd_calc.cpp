// kxsetup-cli calc: evaluates an expression of the definition language, or applies a
// scale-factor chain to a value in either direction.
#include "Command.h"

#include "sf/parser/CalcParser.h"
#include "sf/parser/Interpreter.h"
#include "sf/parser/Token.h"

#include <cmath>

namespace {

using sf::parser::CalcParser;
using sf::parser::Interpreter;
using sf::parser::Token;
using sf::parser::TokenList;

// The shortest decimal text that reads back as exactly the same double; whole numbers
// below 2^53 without an exponent.
QString shortest(double v) {
    if (std::isfinite(v) && v == std::trunc(v) && std::fabs(v) < 9007199254740992.0) {
        return QString::number(v, 'f', 0);
    }
    for (int precision = 1; precision <= 17; ++precision) {
        const QString text = QString::number(v, 'g', precision);
        bool ok = false;
        if (text.toDouble(&ok) == v && ok) {
            return text;
        }
    }
    return QString::number(v, 'g', 17); // inf, nan
}

// Names of the references to settings in the list, which the command line cannot
// resolve.
QStringList references(const TokenList& tokens) {
    QStringList names;
    for (const Token& t : tokens) {
        if (t.getType() == sf::parser::Dependent || t.getType() == sf::parser::NegDependent ||
            t.getType() == sf::parser::String) {
            names.append(t.getPayload());
        }
    }
    return names;
}

int failed(cli::Context& ctx, const QString& what, const QString& text, const TokenList& tokens) {
    ctx.err << "kxsetup-cli: calc: cannot evaluate " << what << " \"" << text << "\"";
    const QStringList names = references(tokens);
    if (!names.isEmpty()) {
        ctx.err << " (it names " << names.join(QStringLiteral(", "))
                << ", which only a loaded layout can resolve)";
    }
    ctx.err << "\n";
    return cli::ExitInput;
}

int runCalc(cli::Context& ctx) {
    static const QString cmd = QStringLiteral("calc");
    QString forward;
    QString backward;
    bool hasForward = false;
    bool hasBackward = false;
    QString error;
    if (!cli::takeOption(ctx.args, QStringLiteral("--forward"), forward, hasForward, error) ||
        !cli::takeOption(ctx.args, QStringLiteral("--backward"), backward, hasBackward, error)) {
        return cli::usageError(ctx, cmd, error);
    }
    if (hasForward && hasBackward) {
        return cli::usageError(ctx, cmd, QStringLiteral("give --forward or --backward, not both"));
    }
    if (ctx.args.size() != 1) {
        return cli::usageError(ctx, cmd,
                               ctx.args.isEmpty()
                                   ? QStringLiteral("calc needs an expression")
                                   : QStringLiteral("calc takes one expression (quote it)"));
    }
    const QString text = ctx.args.first();
    double value = 0.0;
    if (hasForward || hasBackward) {
        bool ok = false;
        value = (hasForward ? forward : backward).toDouble(&ok);
        if (!ok) {
            return cli::usageError(
                ctx, cmd,
                QStringLiteral("\"%1\" is not a number").arg(hasForward ? forward : backward));
        }
    }

    TokenList tokens;
    if (!Interpreter::tokenize(&tokens, text, sf::parser::TOKEN_REGEX)) {
        return cli::usageError(ctx, cmd, QStringLiteral("the expression is empty"));
    }
    const TokenList shown = tokens; // the calculator consumes its list
    CalcParser calc;
    double result = 0.0;
    if (hasForward || hasBackward) {
        // A chain may be given as it stands in a definition, in square brackets.
        if (tokens.size() >= 3 && tokens.first().getType() == sf::parser::LBracket &&
            tokens.at(tokens.size() - 2).getType() == sf::parser::RBracket) {
            tokens.removeAt(tokens.size() - 2);
            tokens.removeFirst();
        }
        result = hasForward ? calc.calculateScaledFromRaw(value, tokens)
                            : calc.calculateRawFromScaled(value, tokens);
        if (!calc.lastCalcSuccessful()) {
            return failed(ctx, QStringLiteral("the scale chain"), text, shown);
        }
    } else {
        result = calc.calculate(tokens);
        if (!calc.lastCalcSuccessful()) {
            return failed(ctx, QStringLiteral("the expression"), text, shown);
        }
    }
    ctx.out << shortest(result) << "\n";
    return cli::ExitOk;
}

cli::Registrar reg({QStringLiteral("calc"),
                    QStringLiteral("calc 'EXPRESSION' | calc --forward|--backward VALUE 'CHAIN'"),
                    QStringLiteral("Evaluate an expression, or scale a value through a chain "
                                   "such as '*10/256'"),
                    runCalc});

} // namespace
