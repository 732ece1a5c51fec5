// kxsetup-cli versions [--json]: the firmware version catalogue as the application
// builds it at start-up from ./data/firmware/ and ./data/kxs/.
#include "Command.h"

#include "app/Constants.h"
#include "util/VersionCatalogue.h"
#include "util/VersionParser.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QString shownFirmware(const util::VersionContainer& v) {
    const QString shown = util::printVersion(v.fwVersion);
    return shown == v.fwVersion ? shown : QStringLiteral("%1 (%2)").arg(shown, v.fwVersion);
}

void printJson(cli::Context& ctx, const QList<util::VersionContainer>& versions) {
    QJsonArray list;
    for (const util::VersionContainer& v : versions) {
        QJsonObject o;
        o.insert(QStringLiteral("fw"), v.fwVersion);
        o.insert(QStringLiteral("fwShown"), util::printVersion(v.fwVersion));
        o.insert(QStringLiteral("kxs"), v.kxsVersion);
        o.insert(QStringLiteral("enq"), v.enqString);
        o.insert(QStringLiteral("kxsFile"), v.kxsFilePath);
        o.insert(QStringLiteral("mapFile"), v.mapFilePath);
        o.insert(QStringLiteral("group"), v.mapGroup);
        o.insert(QStringLiteral("format"), static_cast<qint64>(v.kxsFormat));
        list.append(o);
    }
    QJsonObject root;
    root.insert(QStringLiteral("versions"), list);
    ctx.out << QJsonDocument(root).toJson(QJsonDocument::Indented);
}

void printTable(cli::Context& ctx, const QList<util::VersionContainer>& versions) {
    if (versions.isEmpty()) {
        ctx.out << "No usable firmware versions in " << ui::PATH_FW << " (layouts in "
                << ui::PATH_KXS << ").\n";
        return;
    }
    const QStringList header{QStringLiteral("Firmware"), QStringLiteral("Layout"),
                             QStringLiteral("Format"), QStringLiteral("ENQ"),
                             QStringLiteral("Folder")};
    QList<QStringList> rows{header};
    for (const util::VersionContainer& v : versions) {
        rows.append({shownFirmware(v), v.kxsVersion, QString::number(v.kxsFormat), v.enqString,
                     v.mapGroup.isEmpty() ? QStringLiteral(".") : v.mapGroup});
    }
    QVector<int> widths(header.size(), 0);
    for (const QStringList& row : rows) {
        for (int c = 0; c < row.size(); ++c) {
            widths[c] = qMax(widths[c], row.at(c).size());
        }
    }
    for (const QStringList& row : rows) {
        QString line;
        for (int c = 0; c < row.size(); ++c) {
            line += c + 1 < row.size() ? row.at(c).leftJustified(widths[c] + 2) : row.at(c);
        }
        ctx.out << line.trimmed() << "\n";
    }
    ctx.out << "\n"
            << versions.size() << (versions.size() == 1 ? " version" : " versions")
            << ", highest first. Default: " << shownFirmware(versions.first()) << "\n";
}

int runVersions(cli::Context& ctx) {
    const bool json = cli::takeFlag(ctx.args, QStringLiteral("--json"));
    if (!ctx.args.isEmpty()) {
        return cli::usageError(ctx, QStringLiteral("versions"),
                               QStringLiteral("unexpected argument \"%1\"").arg(ctx.args.first()));
    }

    util::VersionParser parser;
    QObject::connect(&parser, &util::VersionParser::showError, [&ctx](const QString& text) {
        ctx.err << "kxsetup-cli: error: " << text << "\n";
        ctx.err.flush();
    });
    QObject::connect(&parser, &util::VersionParser::showWarning, [&ctx](const QString& text) {
        ctx.err << "kxsetup-cli: warning: " << text << "\n";
        ctx.err.flush();
    });
    util::VersionCatalogue catalogue;
    catalogue.enumerate(ui::PATH_FW, ui::PATH_KXS, parser);

    if (json) {
        printJson(ctx, catalogue.versions());
    } else {
        printTable(ctx, catalogue.versions());
    }
    return cli::ExitOk;
}

cli::Registrar reg({QStringLiteral("versions"), QStringLiteral("versions [--json]"),
                    QStringLiteral("List the firmware version catalogue of ./data/"), runVersions});

} // namespace
