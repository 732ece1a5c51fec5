// kx-sim: a simulated instrument on a pseudo-terminal. It prints the device path of its
// serial line on the first line of standard output, then answers as an instrument whose
// firmware and settings come from a firmware file: the enquiry in display mode, the
// service-mode protocol of docs/device-protocol.md after the entry procedure. Faults can
// be injected (kx-sim --help). It runs until it is killed, interrupted or its parent
// exits.
#include "Instrument.h"
#include "StateFile.h"

#include "sf/parser/HexParser.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <termios.h>
#include <unistd.h>

using namespace util::link;

namespace {

const char* const USAGE =
    "usage: kx-sim --firmware FILE.kxhex [--state FILE] [--link PATH] [--device device.txt]\n"
    "              [--no-answer] [--noise] [--slow MS] [--drop N] [--unplug-after N]\n"
    "              [--wrong-id ID] [--flip ADDRESS] [--cut-erase] [--cut-program] [--pace]\n"
    "Simulates an instrument on a pseudo-terminal and prints its device path first.\n"
    "  --state FILE      keep the memory in FILE (a setup image with the program flash and\n"
    "                    whether it runs), loaded at start when it exists and rewritten\n"
    "                    after every change; without runnable firmware (a flash that did not\n"
    "                    finish) it answers only its bootloader, not the enquiry\n"
    "  --link PATH       also make a symbolic link PATH to the device\n"
    "  --device FILE     the device file (default: the first device.txt above the firmware)\n"
    "  --no-answer       answer nothing\n"
    "  --noise           send three noise bytes (the same in every run) before every answer\n"
    "  --slow MS         send answers in pieces of two bytes, MS ms apart\n"
    "  --drop N          drop every Nth byte sent\n"
    "  --unplug-after N  close the line after sending N bytes: the device goes away (its\n"
    "                    number stays taken until the simulator is stopped)\n"
    "  --wrong-id ID     report ID as the device identifier\n"
    "  --flip ADDRESS    the byte at that image address reads back inverted\n"
    "  --cut-erase       cut the line (as --unplug-after) when half of program flash is erased\n"
    "  --cut-program     cut the line in the second row write, half of it written\n"
    "  --pace            take as long as the line would: 9600 baud for the enquiry, the\n"
    "                    device file's rate in service mode\n";

std::atomic<bool> g_stop{false};

void onSignal(int) {
    g_stop = true;
}

struct Options {
    QString firmware, state, link, device, wrongId;
    bool noAnswer = false, noise = false, pace = false;
    Instrument::Cut cut = Instrument::Cut::None;
    int slowMs = 0, drop = 0;
    qint64 unplugAfter = -1, flip = -1;
};

bool parse(const QStringList& args, Options* o) {
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args.at(i);
        const bool hasValue = i + 1 < args.size();
        bool ok = true;
        if (a == QLatin1String("--firmware") && hasValue) {
            o->firmware = args.at(++i);
        } else if (a == QLatin1String("--state") && hasValue) {
            o->state = args.at(++i);
        } else if (a == QLatin1String("--link") && hasValue) {
            o->link = args.at(++i);
        } else if (a == QLatin1String("--device") && hasValue) {
            o->device = args.at(++i);
        } else if (a == QLatin1String("--wrong-id") && hasValue) {
            o->wrongId = args.at(++i);
        } else if (a == QLatin1String("--slow") && hasValue) {
            o->slowMs = args.at(++i).toInt(&ok);
        } else if (a == QLatin1String("--drop") && hasValue) {
            o->drop = args.at(++i).toInt(&ok);
        } else if (a == QLatin1String("--unplug-after") && hasValue) {
            o->unplugAfter = args.at(++i).toLongLong(&ok);
        } else if (a == QLatin1String("--flip") && hasValue) {
            o->flip = args.at(++i).toLongLong(&ok, 0);
        } else if (a == QLatin1String("--no-answer")) {
            o->noAnswer = true;
        } else if (a == QLatin1String("--noise")) {
            o->noise = true;
        } else if (a == QLatin1String("--cut-erase")) {
            o->cut = Instrument::Cut::Erase;
        } else if (a == QLatin1String("--cut-program")) {
            o->cut = Instrument::Cut::Program;
        } else if (a == QLatin1String("--pace")) {
            o->pace = true;
        } else {
            return false;
        }
        if (!ok) {
            return false;
        }
    }
    return !o->firmware.isEmpty();
}

QString findDeviceFile(const QString& firmware) {
    QDir dir = QFileInfo(firmware).absoluteDir();
    for (int up = 0; up < 6; ++up) {
        if (dir.exists(QStringLiteral("device.txt"))) {
            return dir.filePath(QStringLiteral("device.txt"));
        }
        if (!dir.cdUp()) {
            break;
        }
    }
    return QString();
}

// The profile identifier of a layout version text: KX4, else KX3, else Dravolin.
QString identifierFor(const QString& kxsVersion) {
    return kxsVersion.contains(QLatin1String("KX4"))   ? QStringLiteral("KX4A")
           : kxsVersion.contains(QLatin1String("KX3")) ? QStringLiteral("KX3A")
                                                       : QStringLiteral("DRV3");
}

int openPty(QString* path) {
    const int fd = posix_openpt(O_RDWR | O_NOCTTY);
    const char* name = fd >= 0 && grantpt(fd) == 0 && unlockpt(fd) == 0 ? ptsname(fd) : nullptr;
    if (!name) {
        return -1;
    }
    termios tio{};
    if (tcgetattr(fd, &tio) == 0) {
        cfmakeraw(&tio);
        tcsetattr(fd, TCSANOW, &tio);
    }
    *path = QString::fromLocal8Bit(name);
    return fd;
}

// The line goes dead as a cable pulled out: the device disappears, and its link with it.
// Its number stays taken until the simulator is stopped, so that no pseudo-terminal opened
// meanwhile (another simulator's, in a test running beside this one) answers at this path.
int unplug(int master, const QString& path, const QString& link) {
    const int hold = open(QFile::encodeName(path).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    close(master);
    if (!link.isEmpty()) {
        QFile::remove(link);
    }
    while (!g_stop) {
        usleep(50000);
    }
    if (hold >= 0) {
        close(hold);
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    Options o;
    if (app.arguments().contains(QStringLiteral("--help"))) {
        std::fputs(USAGE, stdout);
        return 0;
    }
    if (!parse(app.arguments().mid(1), &o)) {
        std::fputs(USAGE, stderr);
        return 1;
    }
    const auto die = [](const QString& text) {
        std::fprintf(stderr, "kx-sim: %s\n", qPrintable(text));
        return 2;
    };
    const QString deviceFile = o.device.isEmpty() ? findDeviceFile(o.firmware) : o.device;
    const QList<DeviceProfile> profiles = readProfiles(deviceFile);
    // The firmware file names the model by its layout version; the state, when there is
    // one, holds what the instrument was left with.
    DeviceProfile profile;
    const QString kxs = sf::parser::HexParser::readAllMetadata(o.firmware).kxsVersion;
    if (!findProfile(profiles, identifierFor(kxs), &profile)) {
        return die(QStringLiteral("no profile for %1 in %2").arg(kxs, deviceFile));
    }
    const QString firmwareFolder =
        QFileInfo(deviceFile).absolutePath() + QStringLiteral("/firmware");
    const StartState start = loadStart(o.firmware, o.state, profile);
    if (!start.error.isEmpty()) {
        return die(start.error);
    }
    Instrument instrument(profile, start.settings, start.program, start.identity, start.runnable,
                          [&](const QByteArray& program, Identity* identity) {
                              return recognise(o.firmware, firmwareFolder, profile, program,
                                               identity);
                          });
    if (!o.wrongId.isEmpty()) {
        instrument.setIdentifier(o.wrongId);
    }
    instrument.setFlippedAddress(o.flip);
    instrument.setCut(o.cut);

    QString path;
    const int master = openPty(&path);
    if (master < 0) {
        return die(QStringLiteral("cannot open a pseudo-terminal"));
    }
    if (!o.link.isEmpty()) {
        QFile::remove(o.link);
        if (!QFile::link(path, o.link)) {
            return die(QStringLiteral("cannot make the link %1").arg(o.link));
        }
    }
    std::printf("%s\n", qPrintable(path));
    std::fflush(stdout);
    prctl(PR_SET_PDEATHSIG, SIGTERM); // never outlive the program that started it
    std::signal(SIGTERM, onSignal);
    std::signal(SIGINT, onSignal);

    qint64 sent = 0;
    qint64 counter = 0;
    QRandomGenerator noiseBytes(26); // the same noise in every run
    while (!g_stop) {
        pollfd p{master, POLLIN, 0};
        const int ready = poll(&p, 1, 50);
        if (ready <= 0 || !(p.revents & POLLIN)) {
            if (ready > 0) {
                usleep(10000); // nobody has the line open
            }
            continue;
        }
        char buffer[512];
        const ssize_t n = read(master, buffer, sizeof buffer);
        if (n <= 0) {
            usleep(10000);
            continue;
        }
        const QByteArray in(buffer, int(n));
        const bool service = instrument.inServiceMode();
        QByteArray out = instrument.receive(in);
        if (instrument.memoryChanged() && !o.state.isEmpty()) {
            writeState(o.state, profile, instrument);
        }
        if (instrument.lineCut()) {
            return unplug(master, path, o.link); // the flash was cut with what was done
        }
        if (o.noAnswer || out.isEmpty()) {
            continue;
        }
        if (o.pace) {
            const int baud = service ? profile.baud : 9600;
            usleep(useconds_t(qint64(in.size() + out.size()) * 10 * 1000000 / baud));
        }
        if (o.noise) {
            out.prepend(QByteArray::number(noiseBytes.generate(), 16).left(3));
        }
        for (int i = 0; i < out.size(); i += (o.slowMs > 0 ? 2 : int(out.size()))) {
            QByteArray piece = out.mid(i, o.slowMs > 0 ? 2 : int(out.size()));
            if (o.drop > 0) {
                QByteArray kept;
                for (char c : piece) {
                    if (++counter % o.drop != 0) {
                        kept += c;
                    }
                }
                piece = kept;
            }
            if (o.unplugAfter >= 0 && sent + piece.size() >= o.unplugAfter) {
                piece.truncate(int(o.unplugAfter - sent));
                if (write(master, piece.constData(), size_t(piece.size())) < 0) {
                    break;
                }
                return unplug(master, path, o.link);
            }
            if (write(master, piece.constData(), size_t(piece.size())) < 0) {
                break;
            }
            sent += piece.size();
            if (o.slowMs > 0) {
                usleep(useconds_t(o.slowMs) * 1000);
            }
        }
    }
    close(master);
    return 0;
}
