// Every device workflow of kxsetup-cli (read, write, compare, update) against every fault
// the simulated instrument plays. Each row states how the operation ends; afterwards the
// instrument is switched off and on (the simulator restarted on its memory), recovered
// with one update when it answers only in its update mode, and must then answer with the
// expected version and hold the old or the new settings whole, never a mix. A failure is
// never reported as success.
#include "support/CliRunner.h"
#include "support/Simulator.h"
#include "support/TableFile.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using testsupport::CliResult;
using testsupport::Simulator;

namespace {

QString g_root;

CliResult cli(const QStringList& args) {
    return testsupport::cliIn(g_root, args);
}

CliResult device(const QString& what, const QString& port, const QStringList& rest = {}) {
    return testsupport::deviceIn(g_root, what, port, rest);
}

QString root(const QString& relative) {
    return g_root + QLatin1Char('/') + relative;
}

QString firmware() {
    return root(QStringLiteral("data/firmware/kx3/3.10.kxhex"));
}

bool same(const QString& a, const QString& b) {
    return cli({QStringLiteral("diff"), a, b})
        .out.endsWith(QStringLiteral("0 differ, 0 only in A, 0 only in B\n"));
}

} // namespace

class TestFaults : public QObject {
    Q_OBJECT
    QTemporaryDir m_root;

private slots:
    // The instrument runs 3.10 with settings of its own (start.hex, its memory kept in
    // base.hex); the file to write changes two more; the update to 3.20 carries them
    // across (expected.hex).
    void initTestCase() {
        g_root = m_root.path();
        testsupport::copyDataFolder(g_root);
        const QStringList runs{
            QStringLiteral("set R/data/firmware/kx3/3.10.kxhex -o R/start.hex -q LifeAhA=100 "
                           "CellCntA=13 CellChemA=LiPo BattCapA=21.5"),
            QStringLiteral("set R/start.hex -o R/new.hex -q Backlight=40 BattCapA=30"),
            QStringLiteral("migrate R/start.hex --to 3.20 -o R/expected.hex")};
        for (const QString& run : runs) {
            const CliResult r = cli(
                QString(run).replace(QStringLiteral("R/"), g_root + QLatin1Char('/')).split(' '));
            QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        }
        Simulator sim(firmware(), root(QStringLiteral("base.hex")));
        const CliResult r = device(QStringLiteral("write"), sim.port(), {root("start.hex")});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
    }

    void workflows_data() { testsupport::loadTable(); }

    void workflows() {
        QFETCH(QString, operation);
        QFETCH(QStringList, faults);
        QFETCH(int, exitCode);
        QFETCH(QString, message);
        QFETCH(QString, answers);
        QFETCH(QString, holds);
        QTemporaryDir tmp;
        const QString state = tmp.filePath(QStringLiteral("state.hex"));
        QVERIFY(QFile::copy(root(QStringLiteral("base.hex")), state));
        QDir(root(QStringLiteral("setups/backups"))).removeRecursively();
        {
            Simulator sim(firmware(), state, faults);
            CliResult r;
            if (operation == QLatin1String("read")) {
                r = device(operation, sim.port(), {QStringLiteral("-o"), tmp.filePath("r.hex")});
            } else if (operation == QLatin1String("update")) {
                r = device(QStringLiteral("flash"), sim.port(), {QStringLiteral("3.20")});
            } else {
                r = device(operation, sim.port(), {root(QStringLiteral("new.hex"))});
            }
            QVERIFY2(r.exitCode == exitCode && (r.out + r.err).contains(message),
                     qPrintable(QStringLiteral("exit %1: ").arg(r.exitCode) +
                                (r.out + r.err).right(600)));
            if (exitCode != 0) {
                QVERIFY(!r.err.contains(QStringLiteral("Write successful!")));
                QVERIFY(!r.out.contains(QStringLiteral("flashed")));
            }
            if (message.contains(QStringLiteral("did not detect"))) {
                // The search for an update mode that finds nothing is a step: one message.
                QCOMPARE(r.err.count(QStringLiteral("kxsetup-cli: ")), 1);
            }
        }
        // Off and on again; an instrument without firmware is recovered by one update with
        // the settings kept before the flash.
        Simulator again(firmware(), state);
        if (device(QStringLiteral("enq"), again.port()).exitCode != 0) {
            const QStringList backups =
                QDir(root(QStringLiteral("setups/backups"))).entryList({"*.hex"}, QDir::Files);
            QVERIFY2(!backups.isEmpty(), "no backup to recover with");
            const CliResult r = device(QStringLiteral("flash"), again.port(),
                                       {QStringLiteral("3.20"), QStringLiteral("--settings"),
                                        root(QStringLiteral("setups/backups/")) + backups.first()});
            QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        }
        QCOMPARE(device(QStringLiteral("enq"), again.port()).out.trimmed(), answers);
        const QString read = tmp.filePath(QStringLiteral("after.hex"));
        QCOMPARE(
            device(QStringLiteral("read"), again.port(), {QStringLiteral("-o"), read}).exitCode, 0);
        const QString expected = holds == QLatin1String("old") ? root(QStringLiteral("start.hex"))
                                 : holds == QLatin1String("new")
                                     ? root(QStringLiteral("new.hex"))
                                     : root(QStringLiteral("expected.hex"));
        QVERIFY2(same(expected, read),
                 qPrintable(cli({QStringLiteral("diff"), expected, read}).out));
    }
};

QTEST_GUILESS_MAIN(TestFaults)
#include "tst_faults.moc"
