// The helper driver against a scripted stand-in helper (tests/helpers/fake_supl.cpp): the
// command lines of search, read, write and reset, every row of the error check, the
// search-needed cycle, time-outs, abort, completion without exit, the device file, and
// that no helper process is left running or unreaped.
#include "support/TableFile.h"
#include "support/TestSupport.h"
#include "util/Uploader.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <cstdlib>

using namespace util;

namespace {

const QString Port = QStringLiteral("/dev/kx-test-port");
const QString Found =
    QStringLiteral("[search]\nprint Trying 0x55\\n\nsleep 20\n"
                   "print Retrieved version number during KX entry procedure: 0x1234\\r\\n\n");
const QString Done = QStringLiteral("print All operations completed succesfully!\\n\n");
const QString SearchArgs = QStringLiteral("-s|%1|-b").arg(Port);

QStringList lines(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly)
               ? QString::fromUtf8(f.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts)
               : QStringList();
}

// True when the process is gone and reaped (no zombie left).
bool reaped(const QString& pid) {
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    return !stat.open(QIODevice::ReadOnly);
}

} // namespace

class TestUploader : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    QString m_startDir;

    // A fresh driver on the test port with the script; calls and pids cleared.
    void script(const QString& text) {
        QVERIFY(testsupport::writeFile(QStringLiteral("data/script.txt"), text.toUtf8()));
        QFile::remove(QStringLiteral("data/calls.txt"));
        QFile::remove(QStringLiteral("data/pids.txt"));
    }
    static void onPort(Uploader& u) {
        u.findComPorts();
        u.setSerialPort(Port);
    }
    static void checkNoHelperLeft() {
        for (const QString& pid : lines(QStringLiteral("data/pids.txt"))) {
            QVERIFY2(reaped(pid), qPrintable(pid));
        }
    }

private slots:
    void initTestCase() {
        m_startDir = QDir::currentPath();
        QVERIFY(QDir::setCurrent(m_dir.path()));
        QVERIFY(QDir().mkdir(QStringLiteral("data")));
        QVERIFY(QFile::link(testsupport::toolPath(QStringLiteral("kx-fake-supl")),
                            QStringLiteral("data/serialup.exe")));
        // Fields are tab-separated; two tabs count as one. Field 14..16: EEPROM range and
        // word size (only its low 8 bits kept).
        QString fields;
        for (int i = 3; i < 14; ++i) {
            fields += QStringLiteral("\tf%1").arg(i);
        }
        const QString device = QStringLiteral("KX 0x1234\t\t115200\tKorvex KX3") + fields +
                               QStringLiteral("\t0\t0x1ff\t0x108\nKX 0xBAD1\t9600\tBroken") +
                               fields + QStringLiteral("\t0\tzz\t8\n");
        QVERIFY(testsupport::writeFile(QStringLiteral("data/device.txt"), device.toUtf8()));
        qputenv(Uploader::EXTRA_PORTS_VARIABLE, Port.toUtf8());
        Uploader::setWaits(700, 900, 400);
    }

    void cleanupTestCase() { QDir::setCurrent(m_startDir); }

    // Each operation against the helper: result, command lines and what the user saw.
    void operations_data() { testsupport::loadTable(); }

    void operations() {
        QFETCH(QString, operation);
        QFETCH(QStringList, script);
        QFETCH(bool, ok);
        QFETCH(QStringList, calls);
        QFETCH(QStringList, errors);
        QFETCH(bool, searchAgain);
        const QString read =
            QStringLiteral("-B|1234|-s|{port}|-l|0x00|0x01ff|temp.hex|-x|serialout.log");
        calls.replaceInStrings(QStringLiteral("{read}"), read);
        calls.replaceInStrings(QStringLiteral("{search}"), SearchArgs);
        calls.replaceInStrings(QStringLiteral("{port}"), Port);
        this->script(script.join(QLatin1Char('\n'))
                         .replace(QStringLiteral("{found}"), Found.chopped(1))
                         .replace(QStringLiteral("{done}"), Done.chopped(1)) +
                     QLatin1Char('\n'));
        Uploader u;
        onPort(u);
        QSignalSpy errorSpy(&u, &Uploader::suplError);
        QSignalSpy progressSpy(&u, &Uploader::setProgress);
        const QString file = QStringLiteral("temp.hex");
        const bool result = operation == QLatin1String("read")    ? u.readSettings(file, false)
                            : operation == QLatin1String("reset") ? u.reset()
                                                                  : u.writeSettings(file, true);
        QCOMPARE(result, ok);
        QCOMPARE(lines(QStringLiteral("data/calls.txt")), calls);
        QStringList shown;
        for (const QList<QVariant>& e : errorSpy) {
            shown << e.at(0).toString();
        }
        QCOMPARE(shown, errors);
        if (ok) {
            QCOMPARE(u.getDeviceVersion(), QStringLiteral("1234"));
            QCOMPARE(u.getMaxBaud(), 115200);
            QCOMPARE(u.getDeviceName(), QStringLiteral("Korvex KX3"));
            QCOMPARE(progressSpy.last().at(0).toInt(), 100);
        }
        QCOMPARE(u.isSearchNeeded(), searchAgain);
        checkNoHelperLeft();
    }

    // Every row of the error check, each text next to a progress report in one chunk.
    void errorTexts_data() { testsupport::loadTable(); }

    void errorTexts() {
        QFETCH(QString, text);
        QFETCH(QStringList, errors);
        script(Found + QStringLiteral("[operation]\nprint Progress 10% ") + text +
               QStringLiteral("\\n\nhang\n"));
        Uploader u;
        onPort(u);
        QSignalSpy errorSpy(&u, &Uploader::suplError);
        QVERIFY(!u.readSettings(QStringLiteral("temp.hex"), false));
        QStringList shown;
        for (const QList<QVariant>& e : errorSpy) {
            shown << e.at(0).toString();
        }
        QCOMPARE(shown, errors.isEmpty() ? QStringList{MSG_ERROR_TIMEOUT} : errors);
        QVERIFY(u.isSearchNeeded());
        checkNoHelperLeft();
    }

    void searchOnlyWhenNeeded() {
        script(Found + QStringLiteral("[operation]\n") + Done);
        Uploader u;
        onPort(u);
        QVERIFY(u.readSettings(QStringLiteral("a.hex"), false));
        QVERIFY(u.readSettings(QStringLiteral("b.hex"), false));
        const QStringList calls = lines(QStringLiteral("data/calls.txt"));
        QCOMPARE(calls.size(), 3); // one search, two reads
        QCOMPARE(calls.first(), SearchArgs);
    }

    void abortEndsTheWait() {
        script(Found + QStringLiteral("[operation]\nhang\n"));
        Uploader u;
        onPort(u);
        QSignalSpy errorSpy(&u, &Uploader::suplError);
        QTimer::singleShot(300, &u, &Uploader::requestQuit);
        QVERIFY(!u.readSettings(QStringLiteral("temp.hex"), false));
        QCOMPARE(errorSpy.size(), 1);
        QCOMPARE(errorSpy.at(0).at(0).toString(), MSG_ERROR_QUIT);
        checkNoHelperLeft();
    }

    void nothingToRunWith() {
        script(Found + QStringLiteral("[operation]\n") + Done);
        Uploader empty; // no ports listed: fails at once, starts nothing
        QVERIFY(!empty.readSettings(QStringLiteral("temp.hex"), false));
        QVERIFY(!QFile::exists(QStringLiteral("data/calls.txt")));

        QVERIFY(QFile::rename(QStringLiteral("data/serialup.exe"), QStringLiteral("data/gone")));
        Uploader u;
        onPort(u);
        QSignalSpy errorSpy(&u, &Uploader::suplError);
        QVERIFY(!u.reset());
        QVERIFY(QFile::rename(QStringLiteral("data/gone"), QStringLiteral("data/serialup.exe")));
        QCOMPARE(errorSpy.size(), 1);
        QCOMPARE(errorSpy.at(0).at(0).toString(), MSG_ERROR_NO_SUPL);
        QVERIFY(u.isSearchNeeded());
    }
};

QTEST_GUILESS_MAIN(TestUploader)
#include "tst_uploader.moc"
