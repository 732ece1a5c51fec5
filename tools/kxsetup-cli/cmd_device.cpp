// kxsetup-cli device ...: the instrument on a serial port, through the same version query
// and helper driver the application uses (util::KXCommunicator, util::Uploader).
#include "Command.h"
#include "Problems.h"

#include "app/Constants.h"
#include "firmware/FirmwareUpdate.h"
#include "sf/SetupFile.h"
#include "sf/parser/HexParser.h"
#include "util/KXCommunicator.h"
#include "util/SerialPorts.h"
#include "util/Uploader.h"
#include "util/VersionCatalogue.h"
#include "util/VersionParser.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

namespace {

const QString Cmd = QStringLiteral("device");
constexpr int ENQ_ATTEMPTS = 3;

QList<util::VersionContainer> catalogue() {
    util::VersionParser parser;
    util::VersionCatalogue versions;
    versions.enumerate(ui::PATH_FW, ui::PATH_KXS, parser);
    return versions.versions();
}

const util::VersionContainer* byEnq(const QList<util::VersionContainer>& all, const QString& enq) {
    for (const util::VersionContainer& v : all) {
        if (!enq.isEmpty() && v.enqString == enq) {
            return &v;
        }
    }
    return nullptr;
}

const util::VersionContainer* byFw(const QList<util::VersionContainer>& all, const QString& fw) {
    for (const util::VersionContainer& v : all) {
        if (!fw.isEmpty() && v.fwVersion == fw) {
            return &v;
        }
    }
    return nullptr;
}

// The driver on the given port (listed after the enumerated ones when it is not among
// them), its progress and errors as lines on the error stream.
class Transfer {
public:
    Transfer(cli::Context& ctx, const QString& port) : m_ctx(ctx) {
        util::addExtraPort(port);
        uploader.findComPorts();
        uploader.setSerialPort(port);
        QObject::connect(&uploader, &util::Uploader::suplProgress, [this](const QString& text) {
            m_ctx.err << text.section(QLatin1Char('\n'), 0, 0) << "\n";
            m_ctx.err.flush();
        });
        QObject::connect(&uploader, &util::Uploader::suplError, [this](const QString& text) {
            m_ctx.err << "kxsetup-cli: " << text << "\n";
            m_ctx.err.flush();
        });
    }
    util::Uploader uploader;

private:
    cli::Context& m_ctx;
};

QString enquire(const QString& port, int attempts) {
    util::KXCommunicator communicator;
    return communicator.getParsedENQVersion(port, attempts);
}

int noAnswer(cli::Context& ctx, const QString& port) {
    return cli::inputError(ctx, port,
                           QStringLiteral("the instrument does not answer the version query.\n") +
                               ui::MESSAGE_VERSION_NONE.trimmed());
}

int runPorts(cli::Context& ctx) {
    const bool json = cli::takeFlag(ctx.args, QStringLiteral("--json"));
    if (!ctx.args.isEmpty()) {
        return cli::usageError(ctx, Cmd,
                               QStringLiteral("unexpected argument \"%1\"").arg(ctx.args.first()));
    }
    util::Uploader uploader;
    uploader.findComPorts();
    // As the port dialog lists them: USB adapters first, each port named.
    QJsonArray list;
    for (const util::SerialPortDescription& port : util::describePorts(uploader.getComList())) {
        QJsonObject o{{QStringLiteral("path"), port.path},
                      {QStringLiteral("description"), port.description}};
        if (!port.usb.isEmpty()) {
            o.insert(QStringLiteral("usb"), port.usb);
        }
        list.append(o);
        if (!json) {
            ctx.out << util::portText(port) << "\n";
        }
    }
    if (json) {
        ctx.out << QJsonDocument(QJsonObject{{QStringLiteral("ports"), list}})
                       .toJson(QJsonDocument::Compact)
                << "\n";
    }
    return cli::ExitOk;
}

int runEnq(cli::Context& ctx, const QString& port) {
    QString attemptsText = QStringLiteral("3");
    bool found = false;
    QString error;
    if (!cli::takeOption(ctx.args, QStringLiteral("--attempts"), attemptsText, found, error)) {
        return cli::usageError(ctx, Cmd, error);
    }
    bool ok = false;
    const int attempts = attemptsText.toInt(&ok);
    if (!ok || attempts < 0 || !ctx.args.isEmpty()) {
        return cli::usageError(ctx, Cmd,
                               QStringLiteral("device enq takes --port and --attempts N"));
    }
    const QString text = enquire(port, attempts);
    if (text.isNull()) {
        return noAnswer(ctx, port);
    }
    ctx.out << text << "\n";
    return cli::ExitOk;
}

// Reads the instrument into the scratch image and copies it to target with the metadata
// of the detected version.
int runRead(cli::Context& ctx, const QString& port) {
    QString output;
    bool found = false;
    QString error;
    if (!cli::takeOption(ctx.args, QStringLiteral("-o"), output, found, error) || !found ||
        !ctx.args.isEmpty()) {
        return cli::usageError(
            ctx, Cmd, error.isEmpty() ? QStringLiteral("device read needs -o FILE") : error);
    }
    const QString target = ctx.filePath(output);
    const QString enq = enquire(port, ENQ_ATTEMPTS);
    const QList<util::VersionContainer> versions = catalogue();
    const util::VersionContainer* version = byEnq(versions, enq);
    if (!version) {
        return enq.isNull()
                   ? noAnswer(ctx, port)
                   : cli::inputError(
                         ctx, port,
                         QStringLiteral("version \"%1\" is not in the catalogue").arg(enq));
    }
    Transfer transfer(ctx, port);
    if (!transfer.uploader.readSettings(ui::FILE_TEMP, true)) {
        return cli::inputError(ctx, port,
                               QStringLiteral("reading the settings failed; nothing written"));
    }
    sf::parser::HexParser image;
    if (!image.loadHex(ui::PATH_DATA + ui::FILE_TEMP, sf::parser::PhantomNone,
                       QIODevice::ReadOnly)) {
        return cli::inputError(ctx, ui::PATH_DATA + ui::FILE_TEMP, image.errorString());
    }
    image.setFwVersion(version->fwVersion);
    image.setKxsVersion(version->kxsVersion);
    image.setEnqString(version->enqString);
    QSaveFile file(target);
    if (!file.open(QIODevice::WriteOnly) || !image.writeToDevice(&file, false, 16) ||
        !file.commit()) {
        return cli::inputError(ctx, output, QStringLiteral("cannot write the file"));
    }
    return cli::ExitOk;
}

int runWrite(cli::Context& ctx, const QString& port) {
    if (ctx.args.size() != 1) {
        return cli::usageError(ctx, Cmd, QStringLiteral("device write needs one setup file"));
    }
    const QString path = ctx.filePath(ctx.args.first());
    sf::SetupFile setup;
    QString error;
    if (!setup.open(path, QString(), &error)) {
        return cli::inputError(ctx, ctx.args.first(), error);
    }
    cli::warnProblems(ctx, setup);
    const QString enq = enquire(port, ENQ_ATTEMPTS);
    if (enq.isNull()) {
        return noAnswer(ctx, port);
    }
    Transfer transfer(ctx, port);
    if (!transfer.uploader.readSettings(ui::FILE_TEMP, false)) {
        transfer.uploader.reset();
        return cli::inputError(
            ctx, port, QStringLiteral("reading the current settings failed; nothing written"));
    }
    const QList<util::VersionContainer> versions = catalogue();
    const util::VersionContainer* device = byEnq(versions, enq);
    const util::VersionContainer* file = byFw(versions, setup.version().fwVersion);
    if (!device) {
        transfer.uploader.reset();
        return cli::inputError(ctx, port,
                               ui::MESSAGE_WRITE_UNKNOWN_KX_FW.arg(enq, setup.version().fwVersion));
    }
    if (file && device->kxsVersion.compare(file->kxsVersion, Qt::CaseInsensitive) != 0) {
        QStringList sharing;
        for (const util::VersionContainer& v : versions) {
            if (v.kxsVersion == file->kxsVersion) {
                sharing << QLatin1Char('"') + v.fwVersion + QLatin1Char('"');
            }
        }
        transfer.uploader.reset();
        return cli::inputError(
            ctx, port,
            ui::ERROR_WRITE_KXS_VERSION_MISMATCH.arg(enq, sharing.join(QStringLiteral(", "))));
    }
    if (!setup.saveTo(ui::PATH_DATA + ui::FILE_TEMP, &error)) {
        transfer.uploader.reset();
        return cli::inputError(ctx, ui::PATH_DATA + ui::FILE_TEMP, error);
    }
    if (!transfer.uploader.writeSettings(ui::FILE_TEMP, true)) {
        transfer.uploader.reset();
        return cli::inputError(ctx, port, QStringLiteral("writing the settings failed"));
    }
    return cli::ExitOk;
}

// The firmware update without a window: keeps the instrument's settings (read, backed up
// and carried into the new version) unless told to reset them, flashes, and checks that
// the instrument answers with the new version.
int runFlash(cli::Context& ctx, const QString& port) {
    const bool reset = cli::takeFlag(ctx.args, QStringLiteral("--reset-settings"));
    if (ctx.args.size() != 1) {
        return cli::usageError(ctx, Cmd, QStringLiteral("device flash needs one firmware version"));
    }
    util::VersionContainer target;
    QString error;
    if (!sf::SetupFile::catalogueVersion(ctx.args.first(), &target, &error)) {
        return cli::inputError(ctx, ctx.args.first(), error);
    }
    firmware::FirmwareUpdate update;
    QObject::connect(&update, &firmware::FirmwareUpdate::log, [&ctx](const QString& text) {
        const QString line = text.trimmed();
        if (!line.isEmpty()) {
            ctx.err << line << "\n";
            ctx.err.flush();
        }
    });
    QObject::connect(&update, &firmware::FirmwareUpdate::progressLine,
                     [&ctx](const QString& text) { ctx.err << text << "\r"; });
    sf::SetupFile old;
    if (!reset) {
        const QString enq = update.detectVersion(port);
        if (enq.isEmpty()) {
            return cli::inputError(ctx, port,
                                   QStringLiteral("the instrument does not answer the version "
                                                  "query.\n") +
                                       ui::MESSAGE_UPDATE_VERSION_NONE.trimmed());
        }
        const QList<util::VersionContainer> versions = catalogue();
        const util::VersionContainer* current = byEnq(versions, enq);
        if (!current) {
            return cli::inputError(
                ctx, port,
                QStringLiteral("the instrument runs \"%1\", which is not in the catalogue; its "
                               "settings cannot be carried across (--reset-settings flashes "
                               "with the new defaults)")
                    .arg(enq));
        }
        Transfer transfer(ctx, port);
        if (!transfer.uploader.readSettings(ui::FILE_TEMP, true) ||
            old.open(QFileInfo(ui::PATH_DATA + ui::FILE_TEMP).absoluteFilePath(), *current) < 0) {
            return cli::inputError(ctx, port,
                                   QStringLiteral("reading the settings failed; nothing flashed"));
        }
        const QString backup = firmware::FirmwareUpdate::backupPath(current->fwVersion);
        QDir().mkpath(ui::PATH_BACKUPS);
        if (!old.saveTo(backup, &error)) {
            return cli::inputError(ctx, backup, error + QStringLiteral("; nothing flashed"));
        }
        ctx.err << "settings of " << current->fwVersion << " kept in "
                << QFileInfo(backup).absoluteFilePath() << "\n";
    }
    const QString image =
        QFileInfo(ui::PATH_DATA + QStringLiteral("update.kxhex")).absoluteFilePath();
    firmware::Migration migration;
    if (!firmware::FirmwareUpdate::prepareImage(target, reset ? nullptr : &old.manager(), image,
                                                &migration, &error)) {
        return cli::inputError(ctx, target.mapFilePath, error);
    }
    if (!reset) {
        ctx.err << migration.report.kept.size() << " settings kept, "
                << migration.report.converted.size() << " converted, "
                << migration.report.defaults.size() << " at the new defaults\n";
    }
    const bool flashed = update.flash(port, image);
    QFile::remove(image);
    ctx.err << "\n";
    if (!flashed) {
        return cli::inputError(ctx, port, QStringLiteral("flashing failed"));
    }
    if (!update.verify(port, target)) {
        return cli::inputError(ctx, port,
                               QStringLiteral("flashed, but the instrument does not answer as %1")
                                   .arg(target.fwVersion));
    }
    ctx.out << "flashed " << target.fwVersion << "\n";
    return cli::ExitOk;
}

int runDevice(cli::Context& ctx) {
    if (ctx.args.isEmpty()) {
        return cli::usageError(ctx, Cmd,
                               QStringLiteral("give ports, enq, read, write, flash or reset"));
    }
    const QString what = ctx.args.takeFirst();
    if (what == QLatin1String("ports")) {
        return runPorts(ctx);
    }
    QString port;
    bool found = false;
    QString error;
    if (!cli::takeOption(ctx.args, QStringLiteral("--port"), port, found, error) || !found) {
        return cli::usageError(
            ctx, Cmd,
            error.isEmpty() ? QStringLiteral("give the serial port with --port PATH") : error);
    }
    if (what == QLatin1String("enq")) {
        return runEnq(ctx, port);
    }
    if (what == QLatin1String("read")) {
        return runRead(ctx, port);
    }
    if (what == QLatin1String("write")) {
        return runWrite(ctx, port);
    }
    if (what == QLatin1String("flash")) {
        return runFlash(ctx, port);
    }
    if (what == QLatin1String("reset") && ctx.args.isEmpty()) {
        Transfer transfer(ctx, port);
        return transfer.uploader.reset()
                   ? cli::ExitOk
                   : cli::inputError(ctx, port, QStringLiteral("the reset failed"));
    }
    return cli::usageError(ctx, Cmd, QStringLiteral("unknown device command \"%1\"").arg(what));
}

cli::Registrar
    reg({Cmd,
         QStringLiteral("device ports [--json] | enq --port PATH [--attempts N] | read --port "
                        "PATH -o FILE | write --port PATH FILE | flash --port PATH FW "
                        "[--reset-settings] | reset --port PATH"),
         QStringLiteral("Read, write and reset the instrument on a serial port"), runDevice});

} // namespace
