// kxsetup-cli diff A B [--json]: the settings whose values differ between two setup or
// firmware files (of the same or of different firmware versions), matched by help
// identifier (WSI) and then by code name, and the settings found in only one of them.
#include "Command.h"
#include "Problems.h"

#include "sf/SettingText.h"
#include "sf/SetupComparison.h"
#include "sf/SetupFile.h"

#include "sf/Setting.h"
#include "sf/SettingManager.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QString named(const QString& a, const QString& b) {
    return a == b ? a : QStringLiteral("%1 / %2").arg(a, b);
}

QString namedSetting(sf::Setting* s) {
    const QString wsi = s->helpIdentifier();
    return wsi.isEmpty() ? s->getCodeName() : QStringLiteral("%1 (%2)").arg(s->getCodeName(), wsi);
}

void printPlain(cli::Context& ctx, sf::SetupFile& a, sf::SetupFile& b, const sf::Comparison& c) {
    ctx.out << "--- " << a.path() << " (firmware " << a.manager().getFwVersion() << ")\n"
            << "+++ " << b.path() << " (firmware " << b.manager().getFwVersion() << ")\n";
    for (const sf::Difference& d : c.differ) {
        ctx.out << "~ " << named(d.nameA, d.nameB);
        if (!d.wsi.isEmpty() || !d.label.isEmpty()) {
            ctx.out << " (" << (d.wsi.isEmpty() ? d.label : d.wsi) << ")";
        }
        ctx.out << ": " << d.from << " -> " << d.to << "\n";
    }
    for (sf::Setting* s : c.onlyA) {
        ctx.out << "- " << namedSetting(s) << ": " << sf::shownText(a.manager(), {s, -1})
                << " (only in " << a.manager().getFwVersion() << ")\n";
    }
    for (sf::Setting* s : c.onlyB) {
        ctx.out << "+ " << namedSetting(s) << ": " << sf::shownText(b.manager(), {s, -1})
                << " (only in " << b.manager().getFwVersion() << ")\n";
    }
    ctx.out << c.differ.size() << " differ, " << c.onlyA.size() << " only in A, " << c.onlyB.size()
            << " only in B\n";
}

QJsonArray jsonOnly(sf::SettingManager& manager, const QList<sf::Setting*>& settings) {
    QJsonArray list;
    for (sf::Setting* s : settings) {
        QJsonObject o;
        o.insert(QStringLiteral("code"), s->getCodeName());
        o.insert(QStringLiteral("wsi"), s->helpIdentifier());
        o.insert(QStringLiteral("value"), sf::shownText(manager, {s, -1}));
        list.append(o);
    }
    return list;
}

void printJson(cli::Context& ctx, sf::SetupFile& a, sf::SetupFile& b, const sf::Comparison& c) {
    QJsonArray differ;
    for (const sf::Difference& d : c.differ) {
        QJsonObject o;
        o.insert(QStringLiteral("a"), d.nameA);
        o.insert(QStringLiteral("b"), d.nameB);
        if (!d.wsi.isEmpty()) {
            o.insert(QStringLiteral("wsi"), d.wsi);
        }
        if (!d.label.isEmpty()) {
            o.insert(QStringLiteral("label"), d.label);
        }
        o.insert(QStringLiteral("from"), d.from);
        o.insert(QStringLiteral("to"), d.to);
        differ.append(o);
    }
    QJsonObject root;
    root.insert(QStringLiteral("a"), a.manager().getFwVersion());
    root.insert(QStringLiteral("b"), b.manager().getFwVersion());
    root.insert(QStringLiteral("differ"), differ);
    root.insert(QStringLiteral("onlyA"), jsonOnly(a.manager(), c.onlyA));
    root.insert(QStringLiteral("onlyB"), jsonOnly(b.manager(), c.onlyB));
    ctx.out << QJsonDocument(root).toJson(QJsonDocument::Indented);
}

int runDiff(cli::Context& ctx) {
    const bool json = cli::takeFlag(ctx.args, QStringLiteral("--json"));
    if (ctx.args.size() != 2) {
        return cli::usageError(ctx, QStringLiteral("diff"), QStringLiteral("give two files"));
    }
    sf::SetupFile a;
    sf::SetupFile b;
    if (!cli::openSetup(ctx, a, ctx.filePath(ctx.args.at(0))) ||
        !cli::openSetup(ctx, b, ctx.filePath(ctx.args.at(1)))) {
        return cli::ExitInput;
    }
    cli::printDifferences(ctx, a, b, sf::compareSettings(a.manager(), b.manager()), json);
    return cli::ExitOk;
}

cli::Registrar reg({QStringLiteral("diff"), QStringLiteral("diff A B [--json]"),
                    QStringLiteral("Compare the settings of two files by help identifier and name"),
                    runDiff});

} // namespace

void cli::printDifferences(Context& ctx, sf::SetupFile& a, sf::SetupFile& b,
                           const sf::Comparison& c, bool json) {
    if (json) {
        printJson(ctx, a, b, c);
    } else {
        printPlain(ctx, a, b, c);
    }
}
