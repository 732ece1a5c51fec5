// kxsetup-cli device ...: the instrument on a serial port, through the same workflows the
// windows run (device::ReadSettings, WriteSettings, CompareSettings, UpdateFirmware); the
// questions they ask are answered by the command's flags and defaults.
#include "Command.h"
#include "Problems.h"

#include "app/Constants.h"
#include "device/CompareSettings.h"
#include "device/Decisions.h"
#include "device/ReadSettings.h"
#include "device/UpdateFirmware.h"
#include "device/WriteSettings.h"
#include "firmware/Migration.h"
#include "sf/SetupFile.h"
#include "util/KXCommunicator.h"
#include "util/SerialPorts.h"
#include "util/Uploader.h"
#include "util/VersionCatalogue.h"
#include "util/VersionParser.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const QString Cmd = QStringLiteral("device");

util::VersionCatalogue catalogue() {
    util::VersionParser parser;
    util::VersionCatalogue versions;
    versions.enumerate(ui::PATH_FW, ui::PATH_KXS, parser);
    return versions;
}

QString noAnswerText() {
    return QStringLiteral("the instrument does not answer the version query.\n") +
           ui::MESSAGE_VERSION_NONE.trimmed();
}

// The questions of the device workflows answered from the command line: what a person
// running the command asked for by running it, the flags for the rest. A question
// answered no leaves the reason in declined().
class CliDecisions : public device::Decisions {
public:
    bool force = false;            // write to an instrument whose version is unknown
    QString settings;              // --settings: a backup to finish an update with
    bool resetSettings = false;    // --reset-settings
    util::VersionContainer chosen; // --version: settings of an unknown instrument

    const QString& declined() const { return m_declined; }

    bool confirmWrite() override { return true; }
    NoVersion noVersionBeforeWrite() override {
        m_declined = noAnswerText();
        return NoVersion::Cancel;
    }
    bool writeToUnknownFirmware(const QString& instrument, const QString& file) override {
        m_declined = ui::MESSAGE_WRITE_UNKNOWN_KX_FW.arg(instrument, file) +
                     QStringLiteral("\n(--force writes anyway)");
        return force;
    }
    util::VersionContainer chooseReadVersion(const QString& enq) override {
        m_declined = enq.isEmpty() ? noAnswerText()
                                   : QStringLiteral("version \"%1\" is not in the catalogue "
                                                    "(--version FW opens it as FW)")
                                         .arg(enq);
        return chosen;
    }
    QString backupPath(const QString& proposed) override { return proposed; }
    bool acceptMigration(const firmware::Migration&, const QString&, const QString&) override {
        return true;
    }
    bool recoverWith(const QStringList& backups, QString* chosenSettings) override {
        if (!settings.isEmpty() || resetSettings) {
            *chosenSettings = settings;
            return true;
        }
        m_declined = ui::MESSAGE_UPDATE_NO_FIRMWARE +
                     QStringLiteral("\nRun the update again with --settings BACKUP.hex") +
                     (backups.isEmpty()
                          ? QString()
                          : QStringLiteral(" (the newest backup is %1)").arg(backups.first())) +
                     QStringLiteral(" or with --reset-settings.");
        return false;
    }

private:
    QString m_declined;
};

// The helper driver on the given port (listed after the enumerated ones when it is not
// among them), its progress and errors as lines on the error stream; a workflow's own
// progress too.
class Line {
public:
    Line(cli::Context& ctx, const QString& port) : m_ctx(ctx) {
        util::addExtraPort(port);
        uploader.findComPorts();
        uploader.setSerialPort(port);
        QObject::connect(&uploader, &util::Uploader::suplProgress,
                         [this](const QString& text) { say(text); });
        QObject::connect(&uploader, &util::Uploader::suplError, [this](const QString& text) {
            m_ctx.err << "kxsetup-cli: " << text << "\n";
            m_ctx.err.flush();
        });
    }
    void follow(device::Operation& operation) {
        QObject::connect(&operation, &device::Operation::status,
                         [this](const QString& text) { say(text); });
    }
    // The failure of a workflow: its message, or the reason a question was answered no.
    int failed(const device::Operation& operation, const QString& port) {
        const QString why =
            operation.errorString().isEmpty() ? decisions.declined() : operation.errorString();
        return cli::inputError(m_ctx, port, why.isEmpty() ? QStringLiteral("cancelled") : why);
    }

    util::Uploader uploader;
    util::VersionCatalogue versions = catalogue();
    CliDecisions decisions;

private:
    void say(const QString& text) {
        m_ctx.err << text.section(QLatin1Char('\n'), 0, 0) << "\n";
        m_ctx.err.flush();
    }
    cli::Context& m_ctx;
};

bool takeVersion(cli::Context& ctx, CliDecisions* decisions, QString* error) {
    QString fw;
    bool found = false;
    if (!cli::takeOption(ctx.args, QStringLiteral("--version"), fw, found, *error)) {
        return false;
    }
    if (found && !sf::SetupFile::catalogueVersion(fw, &decisions->chosen, error)) {
        return false;
    }
    return true;
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
    util::KXCommunicator communicator;
    const QString text = communicator.getParsedENQVersion(port, attempts);
    if (text.isNull()) {
        return cli::inputError(ctx, port, noAnswerText());
    }
    ctx.out << text << "\n";
    return cli::ExitOk;
}

// Reads the instrument and saves its settings to the target with the metadata of their
// version.
int runRead(cli::Context& ctx, const QString& port) {
    QString output;
    bool found = false;
    QString error;
    Line line(ctx, port);
    if (!cli::takeOption(ctx.args, QStringLiteral("-o"), output, found, error) || !found ||
        !takeVersion(ctx, &line.decisions, &error) || !ctx.args.isEmpty()) {
        return cli::usageError(
            ctx, Cmd, error.isEmpty() ? QStringLiteral("device read needs -o FILE") : error);
    }
    device::ReadSettings read(line.uploader, line.versions, line.decisions);
    line.follow(read);
    if (!read.run(true)) {
        return line.failed(read, port);
    }
    if (!read.saveTo(ctx.filePath(output), &error)) {
        return cli::inputError(ctx, output, error);
    }
    return cli::ExitOk;
}

int runWrite(cli::Context& ctx, const QString& port) {
    Line line(ctx, port);
    line.decisions.force = cli::takeFlag(ctx.args, QStringLiteral("--force"));
    if (ctx.args.size() != 1) {
        return cli::usageError(ctx, Cmd, QStringLiteral("device write needs one setup file"));
    }
    sf::SetupFile setup;
    if (!cli::openSetup(ctx, setup, ctx.filePath(ctx.args.first()))) {
        return cli::ExitInput;
    }
    device::WriteSettings write(line.uploader, line.versions, line.decisions);
    line.follow(write);
    return write.run(setup) ? cli::ExitOk : line.failed(write, port);
}

int runCompare(cli::Context& ctx, const QString& port) {
    Line line(ctx, port);
    const bool json = cli::takeFlag(ctx.args, QStringLiteral("--json"));
    QString error;
    if (!takeVersion(ctx, &line.decisions, &error) || ctx.args.size() != 1) {
        return cli::usageError(
            ctx, Cmd,
            error.isEmpty() ? QStringLiteral("device compare needs one setup file") : error);
    }
    sf::SetupFile setup;
    if (!cli::openSetup(ctx, setup, ctx.filePath(ctx.args.first()))) {
        return cli::ExitInput;
    }
    device::CompareSettings compare(line.uploader, line.versions, line.decisions);
    line.follow(compare);
    if (!compare.run(setup)) {
        return line.failed(compare, port);
    }
    cli::printDifferences(ctx, setup, *compare.instrument(), compare.differences(), json);
    return cli::ExitOk;
}

// The firmware update without a window: keeps the instrument's settings (read, backed up
// and carried into the new version) unless told to reset them or given the settings to
// use, flashes, and checks that the instrument answers with the new version. An
// instrument left without firmware is recovered with --settings or --reset-settings.
int runFlash(cli::Context& ctx, const QString& port) {
    Line line(ctx, port);
    line.decisions.resetSettings = cli::takeFlag(ctx.args, QStringLiteral("--reset-settings"));
    bool found = false;
    QString error;
    if (!cli::takeOption(ctx.args, QStringLiteral("--settings"), line.decisions.settings, found,
                         error)) {
        return cli::usageError(ctx, Cmd, error);
    }
    if (ctx.args.size() != 1) {
        return cli::usageError(ctx, Cmd, QStringLiteral("device flash needs one firmware version"));
    }
    if (found && line.decisions.resetSettings) {
        return cli::usageError(ctx, Cmd,
                               QStringLiteral("give --settings or --reset-settings, not both"));
    }
    if (found) {
        line.decisions.settings =
            QFileInfo(ctx.filePath(line.decisions.settings)).absoluteFilePath();
    }
    util::VersionContainer target;
    if (!sf::SetupFile::catalogueVersion(ctx.args.first(), &target, &error)) {
        return cli::inputError(ctx, ctx.args.first(), error);
    }
    device::UpdateFirmware update(line.uploader, line.versions, line.decisions);
    line.follow(update);
    update.setSettingsFile(line.decisions.settings);
    QObject::connect(&update, &device::UpdateFirmware::log, [&ctx](const QString& text) {
        const QString shown = text.trimmed();
        if (!shown.isEmpty()) {
            ctx.err << shown << "\n";
            ctx.err.flush();
        }
    });
    QObject::connect(&update, &device::UpdateFirmware::progressLine,
                     [&ctx](const QString& text) { ctx.err << text << "\r"; });
    const bool done = update.run(target, !line.decisions.resetSettings);
    ctx.err << "\n";
    if (update.before()) {
        const firmware::Migration& m = update.migration();
        ctx.err << m.report.kept.size() << " settings kept, " << m.report.converted.size()
                << " converted, " << m.report.defaults.size() << " at the new defaults\n";
    }
    if (!done) {
        return line.failed(update, port);
    }
    ctx.out << "flashed " << target.fwVersion << "\n";
    return cli::ExitOk;
}

int runDevice(cli::Context& ctx) {
    if (ctx.args.isEmpty()) {
        return cli::usageError(
            ctx, Cmd, QStringLiteral("give ports, enq, read, write, compare, flash or reset"));
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
    if (what == QLatin1String("compare")) {
        return runCompare(ctx, port);
    }
    if (what == QLatin1String("write")) {
        return runWrite(ctx, port);
    }
    if (what == QLatin1String("flash")) {
        return runFlash(ctx, port);
    }
    if (what == QLatin1String("reset") && ctx.args.isEmpty()) {
        Line line(ctx, port);
        return line.uploader.reset()
                   ? cli::ExitOk
                   : cli::inputError(ctx, port, QStringLiteral("the reset failed"));
    }
    return cli::usageError(ctx, Cmd, QStringLiteral("unknown device command \"%1\"").arg(what));
}

cli::Registrar
    reg({Cmd,
         QStringLiteral("device ports [--json] | enq --port PATH [--attempts N] | read --port "
                        "PATH -o FILE [--version FW] | write --port PATH FILE [--force] | compare "
                        "--port PATH FILE [--json] | flash --port PATH FW [--reset-settings | "
                        "--settings BACKUP.hex] | reset --port PATH"),
         QStringLiteral("Read, write and reset the instrument on a serial port"), runDevice});

} // namespace
