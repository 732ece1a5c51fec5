// kxsetup-cli migrate FILE --to FW [-o OUT] [--json]: carries FILE's settings into the
// default settings of firmware version FW as a firmware update does (firmware::
// migrateSettings), and says what was kept, what was converted and what stays at FW's
// defaults. With -o the result is written to OUT (a setup file of FW).
#include "Command.h"
#include "Problems.h"

#include "firmware/Migration.h"
#include "sf/SetupFile.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace {

const QString Cmd = QStringLiteral("migrate");

QStringList sortedKeys(const QHash<QString, int>& missing) {
    QStringList keys = missing.keys();
    std::sort(keys.begin(), keys.end(), [](const QString& a, const QString& b) {
        return a.compare(b, Qt::CaseInsensitive) < 0;
    });
    return keys;
}

int runMigrate(cli::Context& ctx) {
    QString to, output, error;
    bool hasTo = false, hasOutput = false;
    const bool json = cli::takeFlag(ctx.args, QStringLiteral("--json"));
    if (!cli::takeOption(ctx.args, QStringLiteral("--to"), to, hasTo, error) ||
        !cli::takeOption(ctx.args, QStringLiteral("-o"), output, hasOutput, error)) {
        return cli::usageError(ctx, Cmd, error);
    }
    if (!hasTo || ctx.args.size() != 1) {
        return cli::usageError(ctx, Cmd, QStringLiteral("give one setup file and --to FW"));
    }
    const QString path = ctx.filePath(ctx.args.first());
    sf::SetupFile old;
    if (!cli::openSetup(ctx, old, path)) {
        return cli::ExitInput;
    }
    util::VersionContainer version;
    if (!sf::SetupFile::catalogueVersion(to, &version, &error)) {
        return cli::inputError(ctx, to, error);
    }
    sf::SetupFile target;
    if (target.open(version.mapFilePath, version) < 0) {
        return cli::inputError(ctx, version.mapFilePath, QStringLiteral("cannot be opened"));
    }
    const firmware::Migration m = firmware::migrateSettings(old.manager(), target.manager());
    if (hasOutput && !target.saveTo(ctx.filePath(output), &error)) {
        return cli::inputError(ctx, output, error);
    }
    const QString from = old.version().fwVersion;
    const QStringList missing = sortedKeys(m.missing);
    if (json) {
        QJsonObject o{{QStringLiteral("from"), from},
                      {QStringLiteral("to"), version.fwVersion},
                      {QStringLiteral("kept"), int(m.report.kept.size())},
                      {QStringLiteral("converted"), QJsonArray::fromStringList(m.report.converted)},
                      {QStringLiteral("missing"), QJsonArray::fromStringList(missing)}};
        ctx.out << QJsonDocument(o).toJson(QJsonDocument::Compact) << "\n";
        return cli::ExitOk;
    }
    ctx.out << from << " -> " << version.fwVersion << ": " << m.report.kept.size() << " kept, "
            << m.report.converted.size() << " converted, " << m.report.defaults.size()
            << " at the new defaults\n";
    for (const firmware::MigrationRow& row : m.rows) {
        if (row.how == firmware::MigrationRow::Converted) {
            ctx.out << "converted " << row.key << " (" << row.setting << "): " << row.newValue
                    << "\n";
        }
    }
    for (const QString& key : missing) {
        ctx.out << "default   " << key << "\n";
    }
    return cli::ExitOk;
}

cli::Registrar reg({Cmd, QStringLiteral("migrate FILE --to FW [-o OUT] [--json]"),
                    QStringLiteral("Carry a setup's settings into another firmware version"),
                    runMigrate});

} // namespace
