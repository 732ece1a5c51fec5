// The serial connection. The helper's line protocol: frames decoded from a stream whatever
// its noise and splitting (a randomized round trip), and which device file lines make a
// profile. The version query: the framing rule, and both query variants against a
// pseudo-terminal whose other end answers each enquiry as scripted (split frames, frames
// across attempts, noise, NUL bytes, empty frames, no answer). The connection doctor: what
// it finds on a fake machine (one scene per row, the report to the letter in
// tests/data/doctor/), how the machine's view reads a fake sysfs and /proc tree, and a real
// enquiry over a pseudo-terminal to the simulator.
#include "support/CliRunner.h"
#include "support/PtyPeer.h"
#include "support/Simulator.h"
#include "support/TableFile.h"
#include "support/TestSupport.h"
#include "util/ConnectionDoctor.h"
#include "util/DeviceRule.h"
#include "util/KXCommunicator.h"
#include "util/LinkProtocol.h"
#include "util/SerialPorts.h"
#include "util/SerialSystem.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

using namespace util::link;
using testsupport::PtyPeer;
using util::KXCommunicator;
using util::SerialSystem;

namespace {

const QString Null = QStringLiteral("<null>");
const QString Skip = QStringLiteral("<skip>");

// Replies separated by '|', the pieces of one reply by '+' (sent 40 ms apart).
QList<PtyPeer::Reply> script(const QByteArray& text) {
    QList<PtyPeer::Reply> replies;
    for (const QByteArray& reply : text.split('|')) {
        if (!text.isEmpty()) {
            replies.append({reply.split('+'), 40});
        }
    }
    return replies;
}

class FakeSystem : public SerialSystem {
public:
    QList<Adapter> adapterList;
    QMap<QString, Access> devices;
    QStringList groups{QStringLiteral("rider")};
    QStringList session{QStringLiteral("rider")};
    QList<Holder> holderList;
    bool modemManager = false;
    QStringList rule; // the adapters the installed device rule covers
    QString answer;
    QStringList asked; // devices enquired, in order

    QList<Adapter> adapters() const override { return adapterList; }
    Port port(const QString&) const override { return {}; }
    Access access(const QString& device) const override { return devices.value(device); }
    QString userName() const override { return QStringLiteral("rider"); }
    QStringList userGroups() const override { return groups; }
    QStringList sessionGroups() const override { return session; }
    QList<Holder> holders(const QString&) const override { return holderList; }
    bool modemManagerRunning() const override { return modemManager; }
    QStringList ruleAdapters() const override { return rule; }
    QString enquire(const QString& device) override {
        asked << device;
        return answer;
    }
};

const SerialSystem::Access usable{true,
                                  true,
                                  true,
                                  QStringLiteral("root"),
                                  QStringLiteral("dialout"),
                                  QStringLiteral("crw-rw----")};
const SerialSystem::Access forbidden{true,
                                     false,
                                     false,
                                     QStringLiteral("root"),
                                     QStringLiteral("dialout"),
                                     QStringLiteral("crw-rw----")};

// The adapters a scene can plug in, by the name its table uses.
const QHash<QString, SerialSystem::Adapter> ADAPTERS{
    {QStringLiteral("ch340"), {"/dev/ttyUSB0", "1a86", "7523", "ch341-uart", "USB Serial"}},
    {QStringLiteral("ftdi"), {"/dev/ttyUSB1", "0403", "6001", QString(), "FT232R USB UART"}},
    {QStringLiteral("arduino"), {"/dev/ttyACM0", "2341", "0043", "cdc_acm", QString()}}};

bool link(const QString& target, const QString& path) {
    return QDir().mkpath(QFileInfo(path).absolutePath()) && QFile::link(target, path);
}

} // namespace

class TestConnection : public QObject {
    Q_OBJECT
private slots:
    // Random frames with random noise between them, fed in random pieces: every frame
    // comes out as it went in, in order, and the noise is counted as skipped.
    void framesSurviveNoiseAndSplitting() {
        for (quint32 seed = 1; seed <= 300; ++seed) {
            QRandomGenerator random(seed);
            QList<Frame> sent;
            QByteArray stream;
            int noise = 0;
            for (int n = random.bounded(1, 6); n > 0; --n) {
                const int junk = random.bounded(4);
                for (int k = 0; k < junk; ++k) {
                    stream += char('a' + random.bounded(20)); // never a lead byte
                }
                noise += junk;
                QByteArray payload;
                for (int k = random.bounded(0, 40); k > 0; --k) {
                    payload += char(random.bounded(256));
                }
                sent << Frame{ACK, char('A' + random.bounded(26)), payload};
                stream += encode(ACK, sent.last().command, payload);
            }
            FrameDecoder decoder(QByteArray(1, ACK));
            QList<Frame> received;
            for (int at = 0; at < stream.size();) {
                const int piece = random.bounded(1, 9);
                decoder.feed(stream.mid(at, piece));
                at += piece;
                Frame frame;
                while (decoder.next(&frame) == FrameDecoder::Complete) {
                    received << frame;
                }
            }
            QCOMPARE(received.size(), sent.size());
            for (int i = 0; i < sent.size(); ++i) {
                QCOMPARE(received.at(i).command, sent.at(i).command);
                QCOMPARE(received.at(i).payload, sent.at(i).payload);
            }
            QCOMPARE(decoder.skipped(), noise);
        }
    }

    void deviceFileLines_data() { testsupport::loadTable(); }

    void deviceFileLines() {
        QFETCH(QString, line);
        QFETCH(bool, accepted);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("device.txt"));
        QVERIFY(testsupport::writeFile(path, line.toLatin1() + '\n'));
        const QList<DeviceProfile> profiles = readProfiles(path);
        QCOMPARE(profiles.size(), accepted ? 1 : 0);
        DeviceProfile p;
        QCOMPARE(findProfile(profiles, QStringLiteral("KX3A"), &p), accepted);
    }

    void initTestCase() { KXCommunicator::setAnswerWaitMs(300); }

    void findResponse_data() { testsupport::loadTable(); }

    void findResponse() {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, ok);
        QFETCH(int, start);
        QFETCH(int, count);
        int s = -1;
        int c = -1;
        QCOMPARE(KXCommunicator::findResponse(bytes.constData(), bytes.size(), &s, &c), ok);
        QCOMPARE(s, start);
        QCOMPARE(c, count);
    }

    void query_data() { testsupport::loadTable(); }

    void query() {
        QFETCH(QByteArray, replies);
        QFETCH(int, attempts);
        QFETCH(QString, expected);
        QFETCH(int, enquiries);
        QFETCH(QString, blocking);
        for (const bool eventLoop : {true, false}) {
            const QString want = eventLoop ? expected : blocking;
            if (want == Skip) {
                continue;
            }
            PtyPeer peer;
            QVERIFY(peer.isOpen());
            peer.answerEnquiries(script(replies));
            KXCommunicator communicator;
            const QString got =
                eventLoop ? communicator.getParsedENQVersion(peer.devicePath(), attempts)
                          : communicator.getParsedENQVersionBlocking(peer.devicePath(), attempts);
            QCOMPARE(got.isNull(), want == Null);
            if (want != Null) {
                QCOMPARE(got, want);
            }
            if (eventLoop) {
                QCOMPARE(peer.enquiries(), enquiries);
            }
        }
    }

    void missingPortFailsAtOnce() {
        KXCommunicator communicator;
        QElapsedTimer timer;
        timer.start();
        QVERIFY(
            communicator.getParsedENQVersion(QStringLiteral("/dev/no-such-kx-port"), 3).isNull());
        QVERIFY(communicator.getParsedENQVersionBlocking(QStringLiteral("/dev/no-such-kx-port"), 3)
                    .isNull());
        QVERIFY(timer.elapsed() < 250);
    }

    // One scene per row: the adapters plugged in, the port named, the examined port's
    // access, the user's groups, a program holding the port, ModemManager, the answer.
    // The report, to the letter, is in tests/data/doctor/ under the row's name.
    void report_data() { testsupport::loadTable(); }
    void report() {
        QFETCH(QStringList, adapters);
        QFETCH(QString, port);
        QFETCH(QString, access);
        QFETCH(QStringList, groups);
        QFETCH(QString, holder);
        QFETCH(bool, modemManager);
        QFETCH(bool, rule);
        QFETCH(QString, answer);
        QFETCH(bool, asked);
        FakeSystem system;
        for (const util::KnownAdapter& known : util::knownAdapters()) {
            system.rule << QStringLiteral("%1:%2").arg(known.vendorId, known.productId);
        }
        system.rule = rule ? system.rule : QStringList();
        for (const QString& name : adapters) {
            system.adapterList << ADAPTERS.value(name);
            system.devices.insert(ADAPTERS.value(name).device, usable);
        }
        const QString examined = port.isEmpty() ? system.adapterList.value(0).device : port;
        if (access != QLatin1String("missing")) {
            system.devices.insert(examined, access == QLatin1String("usable") ? usable : forbidden);
        }
        system.groups = groups;
        if (!holder.isEmpty()) {
            system.holderList = {{4242, holder}};
        }
        system.modemManager = modemManager;
        system.answer = answer;
        const util::DoctorReport report = util::examineConnection(system, port);
        const QString shown = report.text() + QStringLiteral("\nexit: ") +
                              (report.ok() ? QStringLiteral("ok") : QStringLiteral("problem"));
        const QString name = QStringLiteral("doctor/%1.txt")
                                 .arg(QString::fromLatin1(QTest::currentDataTag()))
                                 .replace(QLatin1Char(' '), QLatin1Char('-'));
        QCOMPARE(shown, testsupport::expectedText(name, shown));
        // The instrument is asked only when the port is there, open to the user and free.
        QCOMPARE(system.asked, asked ? QStringList{report.port} : QStringList());
    }

    // The rules udev reads and those it refuses, with the line and the reason; which
    // adapters a rule both opens to the person at the computer and keeps from ModemManager.
    void deviceRule_data() { testsupport::loadTable(); }
    void deviceRule() {
        QFETCH(QByteArray, text);
        QFETCH(QStringList, adapters);
        QFETCH(QString, error);
        QStringList found{QStringLiteral("untouched")};
        QString why;
        QCOMPARE(util::readDeviceRule(text, &found, &why), error.isEmpty());
        QCOMPARE(why, error);
        QCOMPARE(found, error.isEmpty() ? adapters : QStringList{QStringLiteral("untouched")});
    }

    // The machine's view over a fake tree: a CH340 behind a USB-serial interface, an
    // Arduino-like ACM device, a terminal program holding the first, ModemManager running,
    // on-board ports, a simulator's pseudo-terminal; the port list and the device rule.
    void machineTree() {
        QTemporaryDir root;
        const QString r = root.path();
        const QString usb = r + QStringLiteral("/sys/devices/pci0/usb1/1-1");
        QVERIFY(testsupport::writeFile(usb + QStringLiteral("/idVendor"), "1a86\n"));
        QVERIFY(testsupport::writeFile(usb + QStringLiteral("/idProduct"), "7523\n"));
        QVERIFY(testsupport::writeFile(usb + QStringLiteral("/product"), "USB Serial\n"));
        QVERIFY(QDir().mkpath(usb + QStringLiteral("/1-1:1.0/ttyUSB0")));
        QVERIFY(QDir().mkpath(r + QStringLiteral("/sys/bus/usb-serial/drivers/ch341-uart")));
        QVERIFY(link(r + QStringLiteral("/sys/bus/usb-serial/drivers/ch341-uart"),
                     usb + QStringLiteral("/1-1:1.0/ttyUSB0/driver")));
        QVERIFY(link(usb + QStringLiteral("/1-1:1.0/ttyUSB0"),
                     r + QStringLiteral("/sys/class/tty/ttyUSB0/device")));
        const QString acm = r + QStringLiteral("/sys/devices/pci0/usb2/2-1");
        QVERIFY(testsupport::writeFile(acm + QStringLiteral("/idVendor"), "2341\n"));
        QVERIFY(testsupport::writeFile(acm + QStringLiteral("/idProduct"), "0043\n"));
        QVERIFY(QDir().mkpath(acm + QStringLiteral("/2-1:1.0")));
        QVERIFY(link(acm + QStringLiteral("/2-1:1.0"),
                     r + QStringLiteral("/sys/class/tty/ttyACM0/device")));
        // On-board ports: one with a UART, one the kernel lists with none behind it.
        for (const char* s : {"ttyS0;pnp0/00:04;4", "ttyS1;platform/serial8250;0"}) {
            const QStringList f = QString::fromLatin1(s).split(QLatin1Char(';'));
            const QString device = r + QStringLiteral("/sys/devices/") + f.at(1);
            QVERIFY(QDir().mkpath(device));
            QVERIFY(link(device, r + QStringLiteral("/sys/class/tty/%1/device").arg(f.at(0))));
            QVERIFY(
                testsupport::writeFile(r + QStringLiteral("/sys/class/tty/%1/type").arg(f.at(0)),
                                       f.at(2).toLatin1() + '\n'));
        }
        // A simulator answering on the pseudo-terminal 5, reached also through a link.
        QVERIFY(testsupport::writeFile(r + QStringLiteral("/proc/400/comm"), "kx-sim\n"));
        QVERIFY(link(QStringLiteral("/dev/ptmx"), r + QStringLiteral("/proc/400/fd/3")));
        QVERIFY(testsupport::writeFile(r + QStringLiteral("/proc/400/fdinfo/3"),
                                       "pos:\t0\nflags:\t02\ntty-index:\t5\n"));
        QVERIFY(testsupport::writeFile(r + QStringLiteral("/dev/pts/5"), ""));
        QVERIFY(link(r + QStringLiteral("/dev/pts/5"), r + QStringLiteral("/tmp/kx-sim")));
        QVERIFY(testsupport::writeFile(r + QStringLiteral("/dev/ttyUSB0"), ""));
        QVERIFY(testsupport::writeFile(r + QStringLiteral("/proc/300/comm"), "minicom\n"));
        QVERIFY(link(r + QStringLiteral("/dev/ttyUSB0"), r + QStringLiteral("/proc/300/fd/3")));
        QVERIFY(link(r + QStringLiteral("/dev/null"), r + QStringLiteral("/proc/300/fd/4")));
        QVERIFY(testsupport::writeFile(r + QStringLiteral("/proc/77/comm"), "ModemManager\n"));
        QVERIFY(testsupport::writeFile(r + QStringLiteral("/proc/self/comm"), "kxsetup\n"));

        util::LinuxSerialSystem machine(r);
        const QList<SerialSystem::Adapter> adapters = machine.adapters();
        QCOMPARE(adapters.size(), 2);
        QCOMPARE(adapters.at(0).device, QStringLiteral("/dev/ttyACM0"));
        QCOMPARE(adapters.at(0).vendorId + adapters.at(0).productId, QStringLiteral("23410043"));
        QCOMPARE(adapters.at(1).device, QStringLiteral("/dev/ttyUSB0"));
        QCOMPARE(QStringList({adapters.at(1).vendorId, adapters.at(1).productId,
                              adapters.at(1).driver, adapters.at(1).product}),
                 QStringList({"1a86", "7523", "ch341-uart", "USB Serial"}));
        const QList<SerialSystem::Holder> holders = machine.holders(QStringLiteral("/dev/ttyUSB0"));
        QCOMPARE(holders.size(), 1);
        QCOMPARE(holders.first().pid, 300);
        QCOMPARE(holders.first().program, QStringLiteral("minicom"));
        QVERIFY(machine.holders(QStringLiteral("/dev/ttyACM0")).isEmpty()); // no such file
        QVERIFY(machine.modemManagerRunning());
        QVERIFY(machine.access(QStringLiteral("/dev/ttyUSB0")).exists);
        QVERIFY(!machine.access(QStringLiteral("/dev/ttyUSB1")).exists);

        QVERIFY(QFile::remove(r + QStringLiteral("/proc/77/comm")));
        QVERIFY(!machine.modemManagerRunning());

        // The port list: named, USB first, the port without a UART left out.
        const QStringList enumerated{"/dev/ttyS0", "/dev/ttyS1",  "/dev/ttyUSB0", "/dev/ttyACM0",
                                     "/dev/pts/6", "/tmp/kx-sim", "/dev/pts/5",   "/dev/kx-typed"};
        QStringList shown;
        for (const util::SerialPortDescription& p : util::describePorts(enumerated, machine)) {
            shown << util::portText(p) + QStringLiteral(" [%1]").arg(p.usb);
        }
        const QString list = shown.join(QLatin1Char('\n'));
        QCOMPARE(list, testsupport::expectedText(QStringLiteral("ports/fake-machine.txt"), list));
        // The choice made for the user: the port used last; with no USB adapter plugged
        // in, a simulated instrument ahead of the on-board port; the only adapter.
        const auto chosen = [&machine](const QStringList& paths, const QString& last) {
            const QList<util::SerialPortDescription> ports = util::describePorts(paths, machine);
            const int row = util::preselectedPort(ports, last);
            return row < 0 ? QString() : ports.at(row).path;
        };
        QCOMPARE(chosen(enumerated, QStringLiteral("/dev/pts/6")), QStringLiteral("/dev/pts/6"));
        QCOMPARE(chosen(enumerated, QStringLiteral("/dev/gone")), QStringLiteral("/dev/ttyUSB0"));
        QCOMPARE(chosen({"/dev/ttyS0", "/dev/ttyACM0", "/tmp/kx-sim"}, QString()),
                 QStringLiteral("/dev/ttyACM0"));
        QCOMPARE(chosen({"/dev/ttyS0", "/dev/pts/6", "/dev/pts/5"}, QString()),
                 QStringLiteral("/dev/pts/5"));
        QCOMPARE(chosen({"/dev/ttyS1"}, QString()), QString());

        // The device rule: none; the package's, read through the parser; hidden by an empty
        // file of the same name in /etc, as udev does.
        QVERIFY(machine.ruleAdapters().isEmpty());
        const QString packaged = QStringLiteral("/usr/lib/udev/rules.d/") + util::DEVICE_RULE_FILE;
        QVERIFY(testsupport::writeFile(r + packaged,
                                       testsupport::readFile(testsupport::sourceDir() +
                                                             QStringLiteral("/packaging/udev/") +
                                                             util::DEVICE_RULE_FILE)));
        QStringList known;
        for (const util::KnownAdapter& a : util::knownAdapters()) {
            known << QStringLiteral("%1:%2").arg(a.vendorId, a.productId);
        }
        QCOMPARE(machine.ruleAdapters(), known);
        QVERIFY(testsupport::writeFile(
            r + QStringLiteral("/etc/udev/rules.d/") + util::DEVICE_RULE_FILE, ""));
        QVERIFY(machine.ruleAdapters().isEmpty());
        QVERIFY(util::LinuxSerialSystem(r + QStringLiteral("/empty")).adapters().isEmpty());
    }

    // The whole way on this machine: a pseudo-terminal the user may open, nobody else holds
    // it, and the simulator answers (or not); the command-line tool prints the report.
    void simulatedInstrument() {
        util::KXCommunicator::setAnswerWaitMs(1000); // an answer is due, whatever the load
        const QString firmware =
            testsupport::runtimeDir() + QStringLiteral("/data/firmware/kx3/3.10.kxhex");
        QTemporaryDir tmp;
        {
            testsupport::Simulator sim(firmware, tmp.filePath(QStringLiteral("a.hex")));
            QCOMPARE(util::describePorts({sim.port()}).value(0).description,
                     QStringLiteral("Simulated instrument"));
            util::LinuxSerialSystem machine;
            const util::DoctorReport report = util::examineConnection(machine, sim.port());
            QVERIFY2(report.ok(), qPrintable(report.text()));
            QVERIFY(
                report.text().endsWith(QStringLiteral("answered \"3.10\": the connection works.")));
            const testsupport::CliResult cli = testsupport::runCli(
                {QStringLiteral("doctor"), QStringLiteral("--port"), sim.port()});
            QCOMPARE(cli.exitCode, 0);
        }
        util::KXCommunicator::setAnswerWaitMs(300); // no answer comes: do not wait long
        testsupport::Simulator silent(firmware, tmp.filePath(QStringLiteral("b.hex")),
                                      {QStringLiteral("--no-answer")});
        util::LinuxSerialSystem machine;
        const util::DoctorReport report = util::examineConnection(machine, silent.port());
        QVERIFY(!report.ok());
        QVERIFY(report.text().contains(QStringLiteral("did not detect a Korvex version")));
    }
};

QTEST_GUILESS_MAIN(TestConnection)
#include "tst_connection.moc"
