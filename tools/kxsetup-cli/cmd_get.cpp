// kxsetup-cli get FILE NAME... [--display] [--layout L.kxs]: one line per name with the
// setting's edit value (or, with --display, what the table shows).
#include "Command.h"

#include "SettingValues.h"
#include "SettingsSession.h"

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
    cli::SettingsSession session;
    if (!session.open(file, hasLayout ? ctx.filePath(layout) : QString(), &error)) {
        return cli::inputError(ctx, file, error);
    }
    cli::warnProblems(ctx, session);
    QList<cli::SettingRef> refs;
    for (const QString& name : ctx.args) {
        cli::SettingRef ref;
        if (!session.resolve(name, &ref, &error)) {
            return cli::inputError(ctx, file, error);
        }
        refs.append(ref);
    }
    for (const cli::SettingRef& ref : refs) {
        ctx.out << (display ? cli::shownText(session.manager(), ref)
                            : cli::valueText(session.manager(), ref))
                << "\n";
    }
    return cli::ExitOk;
}

cli::Registrar
    reg({QStringLiteral("get"), QStringLiteral("get FILE NAME... [--display] [--layout L.kxs]"),
         QStringLiteral("Print settings by code name, help identifier or NAME[bit]"), runGet});

} // namespace
