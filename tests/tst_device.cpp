// End to end: kx-sim + serialup.exe + kxsetup-cli device, as a user would run them. Every
// sample generation reads, is edited, written and read back byte for byte; a partial
// file writes only what it holds; flashing and the update (faults on the line: tst_faults).
#include "sf/parser/HexParser.h"
#include "sf/parser/PhantomBytes.h"
#include "support/CliRunner.h"
#include "support/SampleData.h"
#include "support/Simulator.h"
#include "support/TableFile.h"
#include "support/TestSupport.h"
#include "util/FirmwareImage.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using namespace sampledata;
using testsupport::CliResult;
using testsupport::Simulator;

namespace {

// The folder the tools work in: a copy of the runtime data folder of this program's own,
// since flashing and reading write into it (the update image, the scratch image, the
// helper's logs) while other test programs copy the runtime folder.
QString g_root;

CliResult cli(const QStringList& args) {
    return testsupport::cliIn(g_root, args);
}

CliResult device(const QString& what, const QString& port, const QStringList& rest = {}) {
    return testsupport::deviceIn(g_root, what, port, rest);
}

// Our helper run as the firmware update runs it, in the data folder.
testsupport::ToolResult helper(const QStringList& args) {
    QProcess process;
    process.setWorkingDirectory(g_root + QStringLiteral("/data"));
    process.start(g_root + QStringLiteral("/data/serialup.exe"), args);
    process.waitForFinished(60000);
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            process.readAllStandardOutput(), process.readAllStandardError()};
}

// The firmware update's two helper runs: the search, then (when it found the bootloader) the
// flash with the identifier it reported; the last run's result.
testsupport::ToolResult searchAndFlash(const QString& port, const QString& firmware) {
    const testsupport::ToolResult search =
        helper({QStringLiteral("-s"), port, QStringLiteral("-b")});
    const QByteArray found = search.out.trimmed().split('\n').last();
    if (!found.startsWith("Retrieved version number during KX entry procedure: ")) {
        return search;
    }
    return helper({QStringLiteral("-s"), port, QStringLiteral("-B"),
                   QString::fromLatin1(found.right(4)), QStringLiteral("-wv"), firmware,
                   QStringLiteral("-x"), g_root + QStringLiteral("/data/debugout.log")});
}

} // namespace

class TestDevice : public QObject {
    Q_OBJECT
    QTemporaryDir m_root;

private slots:
    void initTestCase() {
        g_root = m_root.path();
        testsupport::copyDataFolder(g_root);
        QVERIFY(QFileInfo(g_root + QStringLiteral("/data/serialup.exe")).isExecutable());
    }

    void roundTrip_data() {
        QTest::addColumn<QString>("firmware");
        QTest::addColumn<QString>("enq");
        for (const Generation& g : generations()) {
            QTest::newRow(qPrintable(g.fw))
                << firmwarePath(g)
                << (g.fw == QLatin1String("v306") ? QStringLiteral("3.06") : g.fw);
        }
    }

    void roundTrip() {
        QFETCH(QString, firmware);
        QFETCH(QString, enq);
        QTemporaryDir tmp;
        const QString state = tmp.filePath(QStringLiteral("state.hex"));
        Simulator sim(firmware, state);
        const CliResult answer = device(QStringLiteral("enq"), sim.port());
        QCOMPARE(answer.exitCode, 0);
        const QString read = tmp.filePath(QStringLiteral("read.hex"));
        const QString edited = tmp.filePath(QStringLiteral("edited.hex"));
        const QString again = tmp.filePath(QStringLiteral("again.hex"));
        CliResult r = device(QStringLiteral("read"), sim.port(), {QStringLiteral("-o"), read});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QVERIFY(r.err.contains(QStringLiteral("Read successful!")));
        // What was read is the firmware's settings, under the firmware's version.
        r = cli({QStringLiteral("diff"), firmware, read});
        QVERIFY2(r.out.endsWith(QStringLiteral("0 differ, 0 only in A, 0 only in B\n")),
                 qPrintable(r.out));
        QCOMPARE(cli({QStringLiteral("set"), read, QStringLiteral("Backlight=40"),
                      QStringLiteral("-o"), edited})
                     .exitCode,
                 0);
        r = device(QStringLiteral("write"), sim.port(), {edited});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QVERIFY(r.err.contains(QStringLiteral("Write successful!")));
        QCOMPARE(device(QStringLiteral("read"), sim.port(), {QStringLiteral("-o"), again}).exitCode,
                 0);
        r = cli({QStringLiteral("diff"), edited, again});
        QVERIFY2(r.out.endsWith(QStringLiteral("0 differ, 0 only in A, 0 only in B\n")),
                 qPrintable(r.out));
        // The instrument's memory itself, through its state file.
        QCOMPARE(cli({QStringLiteral("get"), state, QStringLiteral("Backlight")}).out,
                 QStringLiteral("40\n"));
        QCOMPARE(answer.out, enq + QLatin1Char('\n'));
    }

    // Our helper writes only what a file holds (`held`: ranges FROM-TO of 16-bit addresses,
    // each byte the instrument's inverted) over words FIRST..LAST: afterwards the instrument's
    // whole memory (its state file) is what it was with exactly the held real bytes inside the
    // range replaced, and the same file verifies.
    void partialWrite_data() { testsupport::loadTable(); }

    void partialWrite() {
        QFETCH(QString, running);
        QFETCH(QString, id);
        QFETCH(uint, first);
        QFETCH(uint, last);
        QFETCH(QStringList, held);
        QFETCH(QStringList, faults);
        QFETCH(int, exitCode);
        QFETCH(QString, printed);
        using namespace util::link;
        DeviceProfile p;
        QVERIFY(findProfile(readProfiles(g_root + QStringLiteral("/data/device.txt")), id, &p));
        const QString firmware = runtimeDir() + QStringLiteral("/data/firmware/") + running;
        const FirmwareImage before = readFirmware(firmware, p);
        QByteArray expected = before.settings;
        const quint64 region = p.imageAddress(p.settingsStart);
        const sf::parser::PhantomBytes phantoms(p.phantomPeriod());
        QList<ImageBlock> blocks;
        for (const QString& range : held) {
            const quint64 from =
                (region & ~0xFFFFull) + range.section('-', 0, 0).toUInt(nullptr, 16);
            const quint64 to = (region & ~0xFFFFull) + range.section('-', 1).toUInt(nullptr, 16);
            blocks << ImageBlock{from, QByteArray()};
            for (quint64 a = from; a < to; ++a) {
                const int at = int(a - region);
                const bool inRegion = a >= region && at < expected.size();
                blocks.last().bytes += inRegion ? char(~before.settings.at(at)) : char(0x5A);
                if (a >= p.imageAddress(first) && a < p.imageAddress(last) &&
                    !phantoms.isPhantom(a)) {
                    expected[at] = char(~before.settings.at(at));
                }
            }
        }
        QTemporaryDir tmp;
        const QString file = tmp.filePath(QStringLiteral("file.hex"));
        const QString state = tmp.filePath(QStringLiteral("state.hex"));
        QVERIFY(writeImage(file, blocks));
        Simulator sim(firmware, state, faults);
        const testsupport::ToolResult r = helper(
            {QStringLiteral("-B"), id, QStringLiteral("-s"), sim.port(), QStringLiteral("-W"),
             QString::number(first), QString::number(last), file, QStringLiteral("-v"), file});
        QCOMPARE(r.exitCode, exitCode);
        QVERIFY2(r.out.contains(printed.toLatin1()), r.out.constData());
        const FirmwareImage after = QFile::exists(state) ? readFirmware(state, p) : before;
        QVERIFY(after.program == before.program);
        QCOMPARE(after.settings.toHex(' '), expected.toHex(' '));
    }

    // Flashing firmware: search, then write and verify, as the firmware update does it. A
    // failure never ends in the completion text, and what the instrument answers afterwards
    // is the firmware its flash holds; "recovers": switched off and on it answers only its
    // bootloader (no enquiry answer, the search finds it), and one flash brings it back.
    void flash_data() { testsupport::loadTable(); }

    void flash() {
        QFETCH(QString, running);
        QFETCH(QString, firmware);
        QFETCH(QStringList, faults);
        QFETCH(int, exitCode);
        QFETCH(QString, printed);
        QFETCH(QString, after);
        QTemporaryDir tmp;
        const QString state = tmp.filePath(QStringLiteral("state.hex"));
        const QString start = runtimeDir() + QStringLiteral("/data/firmware/") + running;
        Simulator sim(start, state, faults);
        testsupport::ToolResult r = searchAndFlash(sim.port(), firmware);
        QCOMPARE(r.exitCode, exitCode);
        QVERIFY2(r.out.contains(printed.toLatin1()), r.out.constData());
        QCOMPARE(r.out.contains("All operations completed succesfully!"), exitCode == 0);
        if (after == QLatin1String("untouched")) {
            QVERIFY(!QFile::exists(state)); // the simulator writes it on the first change
        } else if (after == QLatin1String("recovers")) {
            Simulator again(start, state);
            QCOMPARE(device(QStringLiteral("enq"), again.port()).exitCode, 2);
            r = searchAndFlash(again.port(), firmware);
            QVERIFY2(r.exitCode == 0, r.out.constData());
            QCOMPARE(device(QStringLiteral("enq"), again.port()).out,
                     sf::parser::HexParser::readAllMetadata(runtimeDir() + "/data/" + firmware)
                             .enqString +
                         QLatin1Char('\n'));
        } else if (!after.isEmpty()) {
            QCOMPARE(device(QStringLiteral("enq"), sim.port()).out, after + QLatin1Char('\n'));
        }
        if (exitCode == 0) {
            // The new firmware's default settings came with it.
            const CliResult diff = cli({QStringLiteral("diff"), state,
                                        runtimeDir() + QStringLiteral("/data/") + firmware});
            QVERIFY2(diff.out.endsWith(QStringLiteral("0 differ, 0 only in A, 0 only in B\n")),
                     qPrintable(diff.out));
        }
    }

    // An instrument without runnable firmware, with each fault: the search and a full flash
    // of 3.20 end as the row says, and a flash that succeeded brings it back to 3.20.
    void bootloader_data() { testsupport::loadTable(); }

    void bootloader() {
        QFETCH(QStringList, faults);
        QFETCH(int, exitCode);
        QFETCH(QString, printed);
        QTemporaryDir tmp;
        const QString state = tmp.filePath(QStringLiteral("state.hex"));
        const QString firmware = firmwarePath(generations().at(1)); // 3.10
        QVERIFY(Simulator::writeStateWithoutFirmware(firmware, state));
        Simulator sim(firmware, state, faults);
        QCOMPARE(device(QStringLiteral("enq"), sim.port()).exitCode, 2);
        const testsupport::ToolResult r =
            searchAndFlash(sim.port(), QStringLiteral("firmware/kx3/3.20.kxhex"));
        QCOMPARE(r.exitCode, exitCode);
        QVERIFY2(r.out.contains(printed.toLatin1()), r.out.constData());
        if (exitCode == 0) {
            QCOMPARE(device(QStringLiteral("enq"), sim.port()).out, QStringLiteral("3.20\n"));
        }
    }

    // The firmware update without a window: the instrument's settings read, carried into
    // the new version and flashed with it, or the new defaults; refusals flash nothing.
    void update_data() { testsupport::loadTable(); }

    void update() {
        QFETCH(QString, running);
        QFETCH(QStringList, set);
        QFETCH(QString, to);
        QFETCH(QStringList, options);
        QFETCH(QStringList, faults);
        QFETCH(int, exitCode);
        QFETCH(QString, printed);
        QFETCH(QStringList, after);
        QTemporaryDir tmp;
        const QString state = tmp.filePath(QStringLiteral("state.hex"));
        const QString firmware = runtimeDir() + QStringLiteral("/data/firmware/") + running;
        Simulator sim(firmware, state, faults);
        if (!set.isEmpty()) {
            const QString start = tmp.filePath(QStringLiteral("start.hex"));
            QCOMPARE(cli(QStringList{QStringLiteral("set"), firmware, QStringLiteral("-o"), start,
                                     QStringLiteral("-q")} +
                         set)
                         .exitCode,
                     0);
            QCOMPARE(device(QStringLiteral("write"), sim.port(), {start}).exitCode, 0);
        }
        const CliResult r = device(QStringLiteral("flash"), sim.port(), QStringList{to} + options);
        QCOMPARE(r.exitCode, exitCode);
        QVERIFY2((r.out + r.err).contains(printed), qPrintable(r.out + r.err));
        for (const QString& check : after) {
            const CliResult value = cli({QStringLiteral("get"), state, check.section('=', 0, 0)});
            QCOMPARE(value.out.trimmed(), check.section('=', 1));
        }
    }

    // The line goes dead in the middle of flashing: reported as a communication failure,
    // and a second update brings the instrument to the new version.
    void unplugWhileFlashingThenRecover() {
        QTemporaryDir tmp;
        const QString state = tmp.filePath(QStringLiteral("state.hex"));
        const QString firmware = runtimeDir() + QStringLiteral("/data/firmware/kx3/3.10.kxhex");
        {
            Simulator sim(firmware, state,
                          {QStringLiteral("--unplug-after"), QStringLiteral("900")});
            const CliResult r =
                device(QStringLiteral("flash"), sim.port(),
                       {QStringLiteral("3.20"), QStringLiteral("--reset-settings")});
            QCOMPARE(r.exitCode, 2);
            QVERIFY2(r.err.contains(QStringLiteral("Communication error!")), qPrintable(r.err));
        }
        Simulator again(firmware, state); // the cable plugged in again
        const CliResult r = device(QStringLiteral("flash"), again.port(),
                                   {QStringLiteral("3.20"), QStringLiteral("--reset-settings")});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QCOMPARE(device(QStringLiteral("enq"), again.port()).out, QStringLiteral("3.20\n"));
    }

    // An unplugged instrument's path answers nothing, even when another simulator (another
    // test's, running beside this one) starts after it: it never gets the same path.
    void unpluggedPathStaysDead() {
        QTemporaryDir tmp;
        const QString firmware = runtimeDir() + QStringLiteral("/data/firmware/kx3/3.10.kxhex");
        const QString link = tmp.filePath(QStringLiteral("cable"));
        Simulator pulled(firmware, tmp.filePath(QStringLiteral("a.hex")),
                         {QStringLiteral("--unplug-after"), QStringLiteral("2"),
                          QStringLiteral("--link"), link});
        QCOMPARE(device(QStringLiteral("enq"), pulled.port()).exitCode, 2); // pulled out
        QVERIFY(!QFileInfo::exists(pulled.port()));
        QVERIFY(!QFileInfo(link).isSymLink());
        Simulator other(firmware, tmp.filePath(QStringLiteral("b.hex")));
        QVERIFY(other.port() != pulled.port());
        QCOMPARE(device(QStringLiteral("enq"), pulled.port()).exitCode, 2);
        QCOMPARE(device(QStringLiteral("enq"), other.port()).out, QStringLiteral("3.10\n"));
    }
};

QTEST_GUILESS_MAIN(TestDevice)
#include "tst_device.moc"
