// kxsetup-cli get FILE NAME... [--display] [--layout L.kxs]: one line per name with the
// setting's edit value (or, with --display, what the table shows).
#include "Command.h"
#include "Problems.h"

#include "sf/SettingText.h"
#include "sf/SetupFile.h"

namespace {

int runGet(cli::Context& ctx) {
    const QString cmd = QStringLiteral("get");
    QString layout, error;
    bool hasLayout = false;
    const bool display = cli::takeFlag(ctx.args, QStringLiteral("--display"));
    if (!cli::takeOption(ctx.args, QStringLiteral("--layout"), layout, hasLayout, error)) {
        return cli::usageError(ctx, cmd, error);
    }
    if (ctx.args.size() < 2) {
        return cli::usageError(ctx, cmd, QStringLiteral("give a file and at least one name"));
    }
    const QString file = ctx.filePath(ctx.args.takeFirst());
    sf::SetupFile setup;
    if (!cli::openSetup(ctx, setup, file, hasLayout ? ctx.filePath(layout) : QString())) {
        return cli::ExitInput;
    }
    QList<sf::SettingRef> refs;
    for (const QString& name : ctx.args) {
        sf::SettingRef ref;
        if (!setup.resolve(name, &ref, &error)) {
            return cli::inputError(ctx, file, error);
        }
        refs.append(ref);
    }
    for (const sf::SettingRef& ref : refs) {
        ctx.out << (display ? sf::shownText(setup.manager(), ref)
                            : sf::valueText(setup.manager(), ref))
                << "\n";
    }
    return cli::ExitOk;
}

cli::Registrar
    reg({QStringLiteral("get"), QStringLiteral("get FILE NAME... [--display] [--layout L.kxs]"),
         QStringLiteral("Print settings by code name, help identifier or NAME[bit]"), runGet});

} // namespace
