// The connection doctor: what it finds on a fake machine (one finding per row, the report
// to the letter in tests/data/doctor-reports.txt), how the machine's view reads a fake
// sysfs and /proc tree, and a real enquiry over a pseudo-terminal to the simulator.
#include "support/CliRunner.h"
#include "support/Simulator.h"
#include "support/TestSupport.h"

#include "util/ConnectionDoctor.h"
#include "util/KXCommunicator.h"
#include "util/SerialSystem.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using util::SerialSystem;

namespace {

class FakeSystem : public SerialSystem {
public:
    QList<Adapter> adapterList;
    QMap<QString, Access> devices;
    QStringList groups{QStringLiteral("rider")};
    QStringList session{QStringLiteral("rider")};
    QList<Holder> holderList;
    bool modemManager = false;
    QString answer;
    QStringList asked; // devices enquired, in order

    QList<Adapter> adapters() const override { return adapterList; }
    Access access(const QString& device) const override { return devices.value(device); }
    QString userName() const override { return QStringLiteral("rider"); }
    QStringList userGroups() const override { return groups; }
    QStringList sessionGroups() const override { return session; }
    QList<Holder> holders(const QString&) const override { return holderList; }
    bool modemManagerRunning() const override { return modemManager; }
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

// The expected reports: "== row name ==" then the report, then "exit: ok|problem".
QHash<QString, QString> expectedReports() {
    QFile file(testsupport::sourceDir() + QStringLiteral("/tests/data/doctor-reports.txt"));
    QHash<QString, QString> reports;
    if (!file.open(QIODevice::ReadOnly)) {
        return reports;
    }
    QString name;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
        if (line.startsWith(QLatin1String("== ")) && line.endsWith(QLatin1String(" =="))) {
            name = line.mid(3, line.size() - 6);
        } else if (!name.isEmpty()) {
            reports[name] += line + QLatin1Char('\n');
        }
    }
    for (QString& text : reports) {
        text = text.trimmed();
    }
    return reports;
}

bool link(const QString& target, const QString& path) {
    return QDir().mkpath(QFileInfo(path).absolutePath()) && QFile::link(target, path);
}

} // namespace

class TestDoctor : public QObject {
    Q_OBJECT
    QString recorded; // the reports, when KX_UPDATE_TRANSCRIPTS asks to record them

private slots:
    void cleanupTestCase() {
        if (!recorded.isEmpty()) {
            QFile file(testsupport::sourceDir() + QStringLiteral("/tests/data/doctor-reports.txt"));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("# What the connection doctor reports in each scene of tst_doctor's report\n"
                       "# table, and whether it counts as a problem.\n\n");
            file.write(recorded.toUtf8());
        }
    }

    void report_data() {
        QTest::addColumn<QString>("scene");
        for (const char* scene :
             {"no adapter", "adapter of an unknown kind", "several adapters", "port named",
              "port missing", "not in the group", "joined the group after logging in",
              "port held by another program", "ModemManager running", "no answer"}) {
            QTest::newRow(scene) << QString::fromLatin1(scene);
        }
    }

    void report() {
        QFETCH(QString, scene);
        FakeSystem system;
        system.answer = QStringLiteral("3.10");
        const SerialSystem::Adapter ch340{QStringLiteral("/dev/ttyUSB0"), QStringLiteral("1a86"),
                                          QStringLiteral("7523"), QStringLiteral("ch341-uart"),
                                          QStringLiteral("USB Serial")};
        system.adapterList = {ch340};
        system.devices.insert(QStringLiteral("/dev/ttyUSB0"), usable);
        QString port;
        if (scene == QLatin1String("no adapter")) {
            system.adapterList.clear();
        } else if (scene == QLatin1String("adapter of an unknown kind")) {
            system.adapterList = {{QStringLiteral("/dev/ttyACM0"), QStringLiteral("2341"),
                                   QStringLiteral("0043"), QStringLiteral("cdc_acm"), QString()}};
            system.devices.insert(QStringLiteral("/dev/ttyACM0"), usable);
        } else if (scene == QLatin1String("several adapters")) {
            system.adapterList << SerialSystem::Adapter{
                QStringLiteral("/dev/ttyUSB1"), QStringLiteral("0403"), QStringLiteral("6001"),
                QString(), QStringLiteral("FT232R USB UART")};
        } else if (scene == QLatin1String("port named")) {
            port = QStringLiteral("/tmp/kx");
            system.devices.insert(port, usable);
        } else if (scene == QLatin1String("port missing")) {
            port = QStringLiteral("/dev/ttyUSB7");
        } else if (scene == QLatin1String("not in the group")) {
            system.devices.insert(QStringLiteral("/dev/ttyUSB0"), forbidden);
        } else if (scene == QLatin1String("joined the group after logging in")) {
            system.devices.insert(QStringLiteral("/dev/ttyUSB0"), forbidden);
            system.groups << QStringLiteral("dialout");
        } else if (scene == QLatin1String("port held by another program")) {
            system.holderList = {{4242, QStringLiteral("minicom")}};
        } else if (scene == QLatin1String("ModemManager running")) {
            system.modemManager = true;
        } else if (scene == QLatin1String("no answer")) {
            system.answer.clear();
        }
        const util::DoctorReport report = util::examineConnection(system, port);
        const QString shown = report.text() + QStringLiteral("\nexit: ") +
                              (report.ok() ? QStringLiteral("ok") : QStringLiteral("problem"));
        if (qEnvironmentVariableIsSet("KX_UPDATE_TRANSCRIPTS")) {
            recorded += QStringLiteral("== %1 ==\n%2\n\n").arg(scene, shown);
        } else {
            QCOMPARE(shown, expectedReports().value(scene));
        }
        // The instrument is asked only when the port is there, open to the user and free.
        const bool reachable = report.findings.last().kind == util::DoctorFinding::Fine ||
                               scene == QLatin1String("no answer") ||
                               scene == QLatin1String("ModemManager running");
        QCOMPARE(system.asked, reachable ? QStringList{report.port} : QStringList());
    }

    // The machine's view over a fake tree: a CH340 behind a USB-serial interface, an
    // Arduino-like ACM device, a terminal program holding the first, ModemManager running.
    void machineTree() {
        QTemporaryDir root;
        QVERIFY(root.isValid());
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
        QVERIFY(QDir().mkpath(r + QStringLiteral("/sys/class/tty/ttyS0"))); // not USB
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
            QVERIFY(!sim.port().isEmpty());
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

QTEST_GUILESS_MAIN(TestDoctor)
#include "tst_doctor.moc"
