// kxsetup-cli diff A B [--json]: the settings whose values differ between two setup or
// firmware files (of the same or of different firmware versions), matched by help
// identifier (WSI) and then by code name, and the settings found in only one of them.
#include "Command.h"
#include "Problems.h"

#include "sf/SettingText.h"
#include "sf/SetupFile.h"

#include "sf/RawSetting.h"
#include "sf/Setting.h"
#include "sf/SettingManager.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

namespace {

struct Difference {
    QString nameA;
    QString nameB;
    QString wsi;   // help identifier of a setting
    QString label; // label of a bit
    QString from;
    QString to;
};

struct Comparison {
    QList<Difference> differ;
    QList<sf::Setting*> onlyA;
    QList<sf::Setting*> onlyB;
};

QList<sf::Setting*> inLayoutOrder(sf::SettingManager& manager) {
    QList<sf::Setting*> settings;
    for (const sf::RawSetting* raw : manager.getRawSettings()) {
        if (sf::Setting* s = manager.getSetting(raw->getCodeName())) {
            settings.append(s);
        }
    }
    return settings;
}

// The counterpart of a setting of A in B: the setting of the same help identifier,
// else the one of the same code name when that has no help identifier of its own
// found in A.
sf::Setting* counterpart(sf::SettingManager& a, sf::SettingManager& b, sf::Setting* s) {
    const QString wsi = s->helpIdentifier();
    if (!wsi.isEmpty()) {
        if (sf::Setting* byWsi = b.getSettingByWsi(wsi)) {
            return byWsi;
        }
    }
    sf::Setting* byName = b.getSetting(s->getCodeName());
    if (byName && byName->getType() == s->getType()) {
        const QString otherWsi = byName->helpIdentifier();
        if (otherWsi.isEmpty() || otherWsi == wsi || !a.getSettingByWsi(otherWsi)) {
            return byName;
        }
    }
    return nullptr;
}

// Bits are compared by label, so a bit that moved within its field still matches.
void compareBits(sf::SettingManager& a, sf::SettingManager& b, sf::Setting* sa, sf::Setting* sb,
                 QList<Difference>* out) {
    const QStringList labelsA = sf::bitLabelTexts(sa);
    const QStringList labelsB = sf::bitLabelTexts(sb);
    for (int i = 0; i < labelsA.size(); ++i) {
        const int j = labelsB.indexOf(labelsA.at(i));
        if (j < 0) {
            continue;
        }
        const bool va = a.getSettingData(sa->getCodeName(), sf::RoleEdit, i).toBool();
        const bool vb = b.getSettingData(sb->getCodeName(), sf::RoleEdit, j).toBool();
        if (va != vb) {
            out->append({QStringLiteral("%1[%2]").arg(sa->getCodeName()).arg(i),
                         QStringLiteral("%1[%2]").arg(sb->getCodeName()).arg(j), QString(),
                         labelsA.at(i), sf::shownText(a, {sa, i}), sf::shownText(b, {sb, j})});
        }
    }
}

bool sameValue(sf::SettingManager& a, sf::SettingManager& b, sf::Setting* sa, sf::Setting* sb) {
    if (sa->getType() == sf::TypeNum) {
        return a.getSettingData(sa->getCodeName(), sf::RoleEdit) ==
               b.getSettingData(sb->getCodeName(), sf::RoleEdit);
    }
    // Lists by the chosen text (the option lists of two layouts may differ).
    return sf::shownText(a, {sa, -1}) == sf::shownText(b, {sb, -1});
}

Comparison compare(sf::SettingManager& a, sf::SettingManager& b) {
    Comparison c;
    QSet<sf::Setting*> matched;
    for (sf::Setting* sa : inLayoutOrder(a)) {
        sf::Setting* sb = counterpart(a, b, sa);
        if (!sb || matched.contains(sb)) {
            c.onlyA.append(sa);
            continue;
        }
        matched.insert(sb);
        const bool multi = sa->getType() == sf::TypeBool || sa->getType() == sf::TypeCheckBool;
        if (multi && sb->getType() == sa->getType()) {
            compareBits(a, b, sa, sb, &c.differ);
        } else if (!sameValue(a, b, sa, sb)) {
            c.differ.append({sa->getCodeName(), sb->getCodeName(), sa->helpIdentifier(), QString(),
                             sf::shownText(a, {sa, -1}), sf::shownText(b, {sb, -1})});
        }
    }
    for (sf::Setting* sb : inLayoutOrder(b)) {
        if (!matched.contains(sb)) {
            c.onlyB.append(sb);
        }
    }
    return c;
}

QString named(const QString& a, const QString& b) {
    return a == b ? a : QStringLiteral("%1 / %2").arg(a, b);
}

QString namedSetting(sf::Setting* s) {
    const QString wsi = s->helpIdentifier();
    return wsi.isEmpty() ? s->getCodeName() : QStringLiteral("%1 (%2)").arg(s->getCodeName(), wsi);
}

void printPlain(cli::Context& ctx, sf::SetupFile& a, sf::SetupFile& b, const Comparison& c) {
    ctx.out << "--- " << a.path() << " (firmware " << a.manager().getFwVersion() << ")\n"
            << "+++ " << b.path() << " (firmware " << b.manager().getFwVersion() << ")\n";
    for (const Difference& d : c.differ) {
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

void printJson(cli::Context& ctx, sf::SetupFile& a, sf::SetupFile& b, const Comparison& c) {
    QJsonArray differ;
    for (const Difference& d : c.differ) {
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
    QString error;
    const QString fileA = ctx.filePath(ctx.args.at(0));
    const QString fileB = ctx.filePath(ctx.args.at(1));
    if (!a.open(fileA, QString(), &error)) {
        return cli::inputError(ctx, fileA, error);
    }
    if (!b.open(fileB, QString(), &error)) {
        return cli::inputError(ctx, fileB, error);
    }
    cli::warnProblems(ctx, a);
    cli::warnProblems(ctx, b);
    const Comparison c = compare(a.manager(), b.manager());
    if (json) {
        printJson(ctx, a, b, c);
    } else {
        printPlain(ctx, a, b, c);
    }
    return cli::ExitOk;
}

cli::Registrar reg({QStringLiteral("diff"), QStringLiteral("diff A B [--json]"),
                    QStringLiteral("Compare the settings of two files by help identifier and name"),
                    runDiff});

} // namespace
