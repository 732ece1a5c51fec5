// kxsetup-cli firmware fetch [--url URL] [--json] | clear --yes: new firmware versions from
// the download server into the data folder (firmware::FirmwareDownload, the application's
// downloader), and removing all firmware as File > Remove All Firmware does.
#include "Command.h"
#include "Problems.h"

#include "app/Constants.h"
#include "firmware/FirmwareArchive.h"
#include "firmware/FirmwareDownload.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const QString Cmd = QStringLiteral("firmware");

int runFetch(cli::Context& ctx) {
    QString url = firmware::FirmwareDownload::defaultUrl();
    QString error;
    bool found = false;
    const bool json = cli::takeFlag(ctx.args, QStringLiteral("--json"));
    if (!cli::takeOption(ctx.args, QStringLiteral("--url"), url, found, error) ||
        !ctx.args.isEmpty()) {
        return cli::usageError(
            ctx, Cmd,
            error.isEmpty() ? QStringLiteral("firmware fetch takes --url and --json") : error);
    }
    firmware::FirmwareDownload download;
    if (!json) {
        QObject::connect(&download, &firmware::FirmwareDownload::message,
                         [&ctx](const QString& text) {
                             ctx.err << text << "\n";
                             ctx.err.flush();
                         });
    }
    const firmware::FirmwareDownload::Result r =
        download.fetch(url, ui::PATH_DATA, ui::FILE_FIRMWARE_LIST);
    if (json) {
        QJsonArray refused;
        for (const auto& item : r.refused) {
            refused.append(QJsonObject{{QStringLiteral("archive"), item.first},
                                       {QStringLiteral("reason"), item.second}});
        }
        QJsonObject o{{QStringLiteral("installed"), QJsonArray::fromStringList(r.installed)},
                      {QStringLiteral("refused"), refused}};
        if (!r.error.isEmpty()) {
            o.insert(QStringLiteral("error"), r.error);
        }
        ctx.out << QJsonDocument(o).toJson(QJsonDocument::Compact) << "\n";
        return r.ok() ? cli::ExitOk : cli::ExitInput;
    }
    if (!r.error.isEmpty()) {
        return cli::inputError(ctx, url, r.error);
    }
    for (const QString& archive : r.installed) {
        ctx.out << "installed " << archive << "\n";
    }
    for (const auto& item : r.refused) {
        ctx.out << "refused   " << item.first << ": " << item.second << "\n";
    }
    if (r.installed.isEmpty() && r.refused.isEmpty()) {
        ctx.out << "no new firmware\n";
    }
    return r.ok() ? cli::ExitOk : cli::ExitInput;
}

int runFirmware(cli::Context& ctx) {
    const QString what = ctx.args.isEmpty() ? QString() : ctx.args.takeFirst();
    if (what == QLatin1String("fetch")) {
        return runFetch(ctx);
    }
    if (what == QLatin1String("clear")) {
        if (ctx.args != QStringList{QStringLiteral("--yes")}) {
            return cli::usageError(ctx, Cmd,
                                   QStringLiteral("firmware clear deletes every firmware, layout "
                                                  "and help file; confirm with --yes"));
        }
        const int removed = firmware::removeAllFirmware(ui::PATH_FW, ui::PATH_KXS, ui::PATH_HELP,
                                                        ui::FILE_FIRMWARE_LIST);
        ctx.out << removed << " files deleted\n";
        return cli::ExitOk;
    }
    return cli::usageError(ctx, Cmd, QStringLiteral("give fetch or clear"));
}

cli::Registrar reg({Cmd, QStringLiteral("firmware fetch [--url URL] [--json] | clear --yes"),
                    QStringLiteral("Get new firmware from the download server, or remove it all"),
                    runFirmware});

} // namespace
