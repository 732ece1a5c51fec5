// serialup.exe: our serial uploader helper. It reads and writes an instrument's settings
// memory and flashes its firmware over the service-mode protocol of
// docs/device-protocol.md, resets it, and reports in the texts the application's drivers
// look for. Exit status 0 on success, 1 for a usage error, 2 for any other failure.
#include "HelperLink.h"
#include "Transfers.h"

#include "util/LinkProtocol.h"

#include <QCoreApplication>
#include <QFile>
#include <QSerialPortInfo>
#include <QStringList>

#include <cstdio>

using namespace util::link;

namespace {

struct Options {
    QString port;
    QString version;
    QString logFile;
    QString readFile;
    QString writeFile;
    QString verifyFile;
    QString firmwareFile;
    quint32 first = 0;
    quint32 last = 0;
    bool search = false;
    bool reset = false;
    bool listPorts = false;
};

// A failure text goes out in one write with a progress line: the driver classifies a
// chunk only when it holds a message it waits for, so an error text alone would go
// unnoticed until its time-out.
int fail(const QString& text, int status = 2) {
    say(QStringLiteral("Progress 100%\n") + text + QLatin1Char('\n'));
    return status;
}

bool number(const QString& text, quint32* out) {
    bool ok = false;
    *out = text.toUInt(&ok, 0);
    return ok;
}

// Parses the command line; an error text for a usage error, empty on success.
QString parse(const QStringList& args, Options* o) {
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args.at(i);
        const auto take = [&](int n) { return i + n < args.size(); };
        if (a == QLatin1String("-s") && take(1)) {
            o->port = args.at(++i);
        } else if (a == QLatin1String("-B") && take(1)) {
            o->version = args.at(++i);
        } else if (a == QLatin1String("-x") && take(1)) {
            o->logFile = args.at(++i);
        } else if (a == QLatin1String("-v") && take(1)) {
            o->verifyFile = args.at(++i);
        } else if (a == QLatin1String("-wv") && take(1)) {
            o->firmwareFile = args.at(++i);
        } else if ((a == QLatin1String("-l") || a == QLatin1String("-W")) && take(3)) {
            if (!number(args.at(i + 1), &o->first) || !number(args.at(i + 2), &o->last)) {
                return QStringLiteral("Incorrect usage: bad word address after ") + a;
            }
            (a == QLatin1String("-l") ? o->readFile : o->writeFile) = args.at(i + 3);
            i += 3;
        } else if (a == QLatin1String("-M") && take(1)) {
            ++i; // the maximum rate is the device file's
        } else if (a == QLatin1String("-b")) {
            o->search = true;
        } else if (a == QLatin1String("-R")) {
            o->reset = true;
        } else if (a == QLatin1String("-t")) {
            o->listPorts = true;
        } else {
            return QStringLiteral("Incorrect usage: ") + a;
        }
    }
    return QString();
}

int run(const Options& o) {
    if (o.listPorts) {
        for (const QSerialPortInfo& port : QSerialPortInfo::availablePorts()) {
            say(QStringLiteral("/dev/") + port.portName() + QLatin1Char('\n'));
        }
        return 0;
    }
    if (o.port.isEmpty()) {
        return fail(QStringLiteral("Please specify a serial port, with -s PORT"), 1);
    }
    if (!o.search && o.version.isEmpty()) {
        return fail(QStringLiteral("Please specify -B version in hex"), 1);
    }
    DeviceProfile profile;
    const QList<DeviceProfile> profiles = readProfiles(QStringLiteral("device.txt"));
    if (!o.search && !findProfile(profiles, o.version, &profile)) {
        return fail(QStringLiteral("Could not find device profile matching specified version ") +
                    o.version);
    }
    // A firmware file is read and checked before the instrument is disturbed.
    util::link::FirmwareImage firmware;
    if (!o.firmwareFile.isEmpty()) {
        firmware = util::link::readFirmware(o.firmwareFile, profile);
        const QString problem = checkFirmware(profile, firmware);
        if (!problem.isEmpty()) {
            return fail(problem);
        }
    }
    HelperLink link;
    QString error;
    if (!link.open(o.port, o.logFile, o.search ? 9600 : profile.baud, &error)) {
        return fail(error);
    }
    QString id;
    if (!link.enter(&id, &error)) {
        return fail(error);
    }
    if (o.search) {
        say(QStringLiteral("Retrieved version number during KX entry procedure: ") + id +
            QStringLiteral("\n"));
        return 0;
    }
    if (id != o.version) {
        return fail(
            QStringLiteral("Device reported %1 but could not load profile for this version %2")
                .arg(id, o.version));
    }
    if (!o.firmwareFile.isEmpty()) {
        const QString failure = flashFirmware(link, profile, firmware);
        if (!failure.isEmpty()) {
            return fail(failure);
        }
    }
    if (!o.readFile.isEmpty()) {
        QByteArray image;
        if (!readWords(link, profile, o.first, o.last, &image)) {
            return fail(QStringLiteral("Failed to read memory"));
        }
        if (!writeRegionImage(o.readFile, profile.imageAddress(o.first), image)) {
            return fail(QStringLiteral("Could not open file to read data into"));
        }
    }
    // Only the bytes a file holds are written and verified; every other address keeps what
    // the instrument has.
    if (!o.writeFile.isEmpty()) {
        QByteArray image;
        QByteArray held;
        if (!regionFromImage(o.writeFile, profile, o.first, o.last, &image, &held)) {
            return fail(QStringLiteral("Failed to open file!"));
        }
        say(QStringLiteral("Now writing\n"));
        if (!writeHeld(link, profile, o.first, o.last, image, held)) {
            return fail(QStringLiteral("Failed to write memory"));
        }
    }
    if (!o.verifyFile.isEmpty()) {
        QByteArray expected;
        QByteArray held;
        bool same = true;
        if (!regionFromImage(o.verifyFile, profile, o.first, o.last, &expected, &held)) {
            return fail(QStringLiteral("Failed to open file!"));
        }
        if (!verifyHeld(link, profile, o.first, o.last, expected, held, &same)) {
            return fail(QStringLiteral("Failed to read memory"));
        }
        if (!same) {
            return fail(QStringLiteral("Verification failure!"));
        }
    }
    if (o.reset || !o.firmwareFile.isEmpty()) { // new firmware starts with a reset
        Frame reply;
        if (!link.request(CmdReset, QByteArray(), &reply)) {
            return fail(QStringLiteral("Write command send failed"));
        }
        say(QStringLiteral("Resetting device\n"));
    }
    say(QStringLiteral("All operations completed succesfully!\n"));
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    Options options;
    const QString usage = parse(app.arguments().mid(1), &options);
    if (!usage.isEmpty()) {
        return fail(usage, 1);
    }
    return run(options);
}
