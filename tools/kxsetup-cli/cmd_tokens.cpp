// kxsetup-cli tokens: shows how a setting definition is cut into tokens.
#include "Command.h"

#include "sf/parser/Interpreter.h"
#include "sf/parser/Token.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

using sf::parser::Interpreter;
using sf::parser::TokenList;

int runTokens(cli::Context& ctx) {
    const bool json = cli::takeFlag(ctx.args, QStringLiteral("--json"));
    if (ctx.args.size() != 1) {
        return cli::usageError(ctx, QStringLiteral("tokens"),
                               ctx.args.isEmpty()
                                   ? QStringLiteral("tokens needs the definition text")
                                   : QStringLiteral("tokens takes one definition text (quote it)"));
    }
    const QString text = ctx.args.first();
    TokenList tokens;
    if (!Interpreter::tokenize(&tokens, text, sf::parser::TOKEN_REGEX)) {
        ctx.err << "kxsetup-cli: tokens: cannot tokenize an empty definition\n";
        return cli::ExitInput;
    }
    if (json) {
        QJsonArray list;
        for (const sf::parser::Token& t : tokens) {
            QJsonObject o;
            o.insert(QStringLiteral("type"), static_cast<int>(t.getType()));
            o.insert(QStringLiteral("name"), sf::parser::getTokenTypeString(t.getType()));
            o.insert(QStringLiteral("payload"), t.getPayload());
            list.append(o);
        }
        QJsonObject root;
        root.insert(QStringLiteral("tokens"), list);
        ctx.out << QString::fromUtf8(QJsonDocument(root).toJson(QJsonDocument::Compact)) << "\n";
        return cli::ExitOk;
    }
    for (const sf::parser::Token& t : tokens) {
        ctx.out << sf::parser::getTokenTypeString(t.getType()) << '\t' << t.getPayload() << '\n';
    }
    return cli::ExitOk;
}

cli::Registrar reg({QStringLiteral("tokens"), QStringLiteral("tokens 'DEFINITION' [--json]"),
                    QStringLiteral("Show the tokens of a setting definition text"), runTokens});

} // namespace
