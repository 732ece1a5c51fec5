// kxsetup-cli set FILE NAME=VALUE... [--from FILE] [-o OUT] [--layout L.kxs] [--quiet]:
// edits settings through the setting manager as the settings table does and saves the
// file as the application saves it. Nothing is written when any value is refused.
#include "Command.h"
#include "Problems.h"

#include "sf/SettingAssignment.h"
#include "sf/SettingText.h"
#include "sf/SetupFile.h"

#include "sf/Setting.h"
#include "sf/SettingManager.h"

#include <QFile>
#include <QHash>

namespace {

struct Snapshot {
    QByteArray bytes;
    QString shown;
};

QHash<const sf::Setting*, Snapshot> snapshot(sf::SettingManager& manager) {
    QHash<const sf::Setting*, Snapshot> all;
    for (sf::Setting* s : manager.getSettings()) {
        all.insert(s, {s->getBytes(), sf::shownText(manager, {s, -1})});
    }
    return all;
}

int runSet(cli::Context& ctx) {
    const QString cmd = QStringLiteral("set");
    QString out, layout, from, error;
    bool hasOut = false, hasLayout = false, hasFrom = false;
    // Both spellings are taken out of the arguments, whichever is given.
    const bool quietLong = cli::takeFlag(ctx.args, QStringLiteral("--quiet"));
    const bool quietShort = cli::takeFlag(ctx.args, QStringLiteral("-q"));
    const bool quiet = quietLong || quietShort;
    if (!cli::takeOption(ctx.args, QStringLiteral("-o"), out, hasOut, error) ||
        !cli::takeOption(ctx.args, QStringLiteral("--layout"), layout, hasLayout, error) ||
        !cli::takeOption(ctx.args, QStringLiteral("--from"), from, hasFrom, error)) {
        return cli::usageError(ctx, cmd, error);
    }
    if (ctx.args.isEmpty()) {
        return cli::usageError(ctx, cmd, QStringLiteral("no file given"));
    }
    const QString file = ctx.filePath(ctx.args.takeFirst());
    QList<sf::Assignment> assignments;
    if (hasFrom) {
        QFile f(ctx.filePath(from));
        if (!f.open(QIODevice::ReadOnly)) {
            return cli::inputError(ctx, from, QStringLiteral("cannot read: ") + f.errorString());
        }
        if (!sf::parseAssignments(f.readAll(), from, &assignments, &error)) {
            return cli::usageError(ctx, cmd, error);
        }
    }
    for (const QString& arg : ctx.args) {
        sf::Assignment a;
        if (!sf::parseAssignment(arg, &a)) {
            return cli::usageError(ctx, cmd,
                                   QStringLiteral("expected NAME=VALUE, got \"%1\"").arg(arg));
        }
        assignments.append(a);
    }
    if (assignments.isEmpty()) {
        return cli::usageError(ctx, cmd, QStringLiteral("no NAME=VALUE given"));
    }

    sf::SetupFile setup;
    if (!cli::openSetup(ctx, setup, file, hasLayout ? ctx.filePath(layout) : QString())) {
        return cli::ExitInput;
    }
    sf::SettingManager& manager = setup.manager();
    const QHash<const sf::Setting*, Snapshot> before = snapshot(manager);
    for (const sf::Assignment& a : assignments) {
        if (sf::assign(setup, a, &error) == sf::AssignResult::Refused) {
            return cli::inputError(ctx, file, error + QStringLiteral("; nothing written"));
        }
    }
    const QString target = hasOut ? ctx.filePath(out) : file;
    if (!setup.saveTo(target, &error)) {
        return cli::inputError(ctx, target, error);
    }
    if (!quiet) {
        // Every setting whose bytes changed: the ones named and the dependents that
        // were re-evaluated with them.
        for (sf::Setting* s : manager.getSettings()) {
            const Snapshot& was = before.value(s);
            if (was.bytes != s->getBytes()) {
                ctx.out << s->getCodeName() << ": " << was.shown << " -> "
                        << sf::shownText(manager, {s, -1}) << "\n";
            }
        }
    }
    return cli::ExitOk;
}

cli::Registrar reg(
    {QStringLiteral("set"),
     QStringLiteral("set FILE NAME=VALUE... [--from ASSIGNMENTS] [-o OUT] [--layout L.kxs] [-q]"),
     QStringLiteral("Change settings as the settings table does and save like the application"),
     runSet});

} // namespace
