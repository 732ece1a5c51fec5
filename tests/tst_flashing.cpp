// Flashing and its helper. The helper driver against a scripted stand-in helper
// (tests/helpers/fake_supl.cpp): the command lines of search, read, write and reset, every
// row of the error check, the search-needed cycle, time-outs, abort, completion without
// exit, the device file, and that no helper process is left running or unreaped. The flashing
// driver's reading of the helper's output (each text it looks for, in plain words and with its
// colour), and the confirmation before settings are reset. Firmware from the download server (our
// kx-fwserver on the loopback address): a new version installs and joins the catalogue, a second
// fetch installs nothing, and every unsafe or damaged archive, and a server that fails, is refused
// with its reason while the data folder stays byte for byte as it was.
#include "firmware/Bootloader.h"
#include "firmware/FirmwareDownload.h"
#include "firmware/Migration.h"
#include "sf/SetupFile.h"
#include "support/CliRunner.h"
#include "support/FirmwareServer.h"
#include "support/TableFile.h"
#include "support/TestSupport.h"
#include "support/VersionFixtures.h"
#include "util/Uploader.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <cstdlib>

using namespace util;
using firmware::bootloader;
using namespace testsupport;

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

class TestFlashing : public QObject {
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
        firmware::FirmwareDownload::setTimeoutMs(1500);
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

    // What each text of the helper's output means, in the order the driver acts on it.
    void classify_data() { testsupport::loadTable(); }

    void classify() {
        QFETCH(QByteArray, output);
        QFETCH(QStringList, messages);
        Uploader u;
        u.classifyOutput(output);
        QStringList got;
        for (SuplMessage m = u.nextMessage(); m != NONE; m = u.nextMessage()) {
            got << QString::number(m);
        }
        QCOMPARE(got, messages);
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

    void interpret_data() { testsupport::loadTable(); }
    void interpret() {
        QFETCH(QString, output);
        QFETCH(QStringList, lines);
        QFETCH(QString, progress);
        QFETCH(QString, colour);
        QFETCH(QString, id);
        bootloader driver;
        QSignalSpy logged(&driver, &bootloader::textreadysig);
        QSignalSpy updated(&driver, &bootloader::textupdatesig);
        QSignalSpy colours(&driver, &bootloader::changecolour);
        QSignalSpy reported(&driver, &bootloader::version_received);
        QSignalSpy done(&driver, &bootloader::fw_update_done);
        driver.interpret(output);
        QStringList got;
        for (const auto& args : logged) {
            got << args.at(0).toString();
        }
        QCOMPARE(got, lines);
        QCOMPARE(updated.isEmpty() ? QString() : updated.last().at(0).toString(), progress);
        const QColor last = colours.isEmpty() ? QColor() : colours.last().at(0).value<QColor>();
        QCOMPARE(last == bootloader::RED     ? "red"
                 : last == bootloader::GREEN ? "green"
                                             : "",
                 colour);
        QCOMPARE(reported.isEmpty() ? QString() : reported.first().at(0).toString(), id);
        QCOMPARE(done.size(), colour == QLatin1String("green") ? 1 : 0);
    }

    // Closing the update window or cancelling during a flash ends the helper at once.
    void stopEndsTheHelper() {
        script(QStringLiteral("[search]\nhang\n"));
        bootloader driver;
        driver.changeserial(Port);
        driver.search();
        QVERIFY(driver.isRunning());
        driver.stop();
        QVERIFY(!driver.isRunning());
        checkNoHelperLeft();
    }

    // A helper that cannot be started is reported in red, in the log.
    void helperMissing() {
        QTemporaryDir empty;
        const QString here = QDir::currentPath();
        QDir::setCurrent(empty.path());
        {
            bootloader driver;
            QSignalSpy logged(&driver, &bootloader::textreadysig);
            QSignalSpy colours(&driver, &bootloader::changecolour);
            driver.changeserial(QStringLiteral("/dev/kx-none"));
            driver.search();
            QTRY_VERIFY(!logged.isEmpty() && logged.last().at(0).toString().startsWith(
                                                 "Error occurred: Failed to start!"));
            QCOMPARE(colours.last().at(0).value<QColor>(), bootloader::RED);
        }
        QDir::setCurrent(here);
    }

    // The preview of carrying 3.10's settings into 3.20: bits by label with their old
    // values, the lifetime energy converted, a list without counterpart reset.
    void migrationPreview() {
        const QString here = QDir::currentPath();
        QDir::setCurrent(testsupport::runtimeDir());
        sf::SetupFile old, target;
        QString error;
        QVERIFY(old.open(testsupport::runtimeDir() + "/data/firmware/kx3/3.10.kxhex", QString(),
                         &error));
        util::VersionContainer v;
        QVERIFY(sf::SetupFile::catalogueVersion("3.20", &v, &error));
        QVERIFY(target.open(v.mapFilePath, v) >= 0);
        QDir::setCurrent(here);
        const firmware::Migration m = firmware::migrateSettings(old.manager(), target.manager());
        QHash<QString, firmware::MigrationRow> byKey;
        for (const firmware::MigrationRow& row : m.rows) {
            byKey.insert(row.key, row);
        }
        const firmware::MigrationRow bit = byKey.value("FeatFlags[0]");
        QCOMPARE(bit.how, firmware::MigrationRow::Kept);
        QVERIFY(!bit.oldValue.isEmpty());
        QCOMPARE(bit.oldValue, bit.newValue);
        QCOMPARE(byKey.value("LifeWhA").how, firmware::MigrationRow::Converted);
        QCOMPARE(byKey.value("ScreenAnim").how, firmware::MigrationRow::Default);
        QVERIFY(byKey.value("ScreenAnim").oldValue.isEmpty());
    }

    void mergeConfirmationListsEverySetting() {
        const firmware::MergeMessage m =
            firmware::mergeMessage({{"Screen change", 1}, {"`Bluetooth`", 2}}, "3.10", "4.01");
        QVERIFY(m.text.startsWith("You're about to update from a 3.10 to 4.01 firmware."));
        QCOMPARE(m.details,
                 QStringLiteral("The following 3.10 settings do not exist in 4.01 and will be "
                                "set to defaults:\n\u2022 `Bluetooth` (1)\n\u2022 `Bluetooth` "
                                "(2)\n\u2022 Screen change\n"));
    }

    void newVersionInstallsOnce() {
        QTemporaryDir root, served;
        const QString data = copyDataFolder(root.path());
        const QByteArray help = "<html><div id=\"BattCapA\">Capacity.</div></html>";
        QVERIFY(writeZip(served.filePath("kx4-4.02.zip"),
                         {{"firmware/kx4/2026/4.02.kxhex", newFirmware("4.02", "KX4-4.01")},
                          {"firmware/kx9/9.00.kxhex", newFirmware("9.00", "KX9-9.00")},
                          {"kxs/KX9-9.00.kxs", versionfixtures::layoutFile("KX9-9.00")},
                          {"help/4.02_help.html", help}}));
        serve(served.path(), "kx4-4.02.zip", readFile(served.filePath("kx4-4.02.zip")));
        FirmwareServer server(served.path());
        const QStringList fetch{"-C", root.path(), "firmware", "fetch", "--url", server.url()};
        const testsupport::CliResult first = testsupport::runCli(fetch);
        QCOMPARE(first.exitCode, 0);
        QCOMPARE(first.out, QStringLiteral("installed kx4-4.02.zip\n"));
        QVERIFY(QFileInfo::exists(data + "/firmware/kx4/2026/4.02.kxhex"));
        QVERIFY(QFileInfo::exists(data + "/kxs/KX9-9.00.kxs")); // a new layout with its firmware
        const testsupport::CliResult versions =
            testsupport::runCli({"-C", root.path(), "versions"});
        QVERIFY2(versions.out.contains("4.02"), qPrintable(versions.out));
        const testsupport::CliResult again = testsupport::runCli(fetch);
        QCOMPARE(again.out, QStringLiteral("no new firmware\n"));
        QVERIFY(testsupport::runCli({"-C", root.path(), "firmware", "clear", "--yes"}).exitCode ==
                0);
        QVERIFY(!QFileInfo::exists(data + "/firmware/kx4/2026/4.02.kxhex"));
        QVERIFY(!QFileInfo::exists(data + "/local_firmwares.txt"));
    }

    void refusals_data() { loadTable(); }

    void refusals() {
        QFETCH(QString, entry);
        QFETCH(QString, bytes);
        QFETCH(bool, link);
        QFETCH(QString, damage);
        QFETCH(QStringList, server);
        QFETCH(QString, reason);
        QTemporaryDir root, served;
        const QString data = copyDataFolder(root.path());
        const QByteArray content = bytes == "{fw}"    ? newFirmware("4.02", "KX4-4.01")
                                   : bytes == "{fw9}" ? newFirmware("9.00", "KX9-9.00")
                                                      : bytes.toLatin1();
        QVERIFY(writeZip(served.filePath("a.zip"), {{entry, content, link}}));
        QByteArray zip = readFile(served.filePath("a.zip"));
        if (damage == "truncate") {
            zip.truncate(zip.size() / 2);
        }
        serve(served.path(), "a.zip", zip,
              damage == "checksum" ? QByteArray(64, 'a') : QByteArray());
        if (damage == "notjson") {
            QVERIFY(writeFile(served.filePath("index.json"), "<html>maintenance</html>"));
        }
        const QMap<QString, QByteArray> before = listing(data);
        FirmwareServer http(served.path(), server);
        firmware::FirmwareDownload download;
        const auto r = download.fetch(http.url(), data, data + "/local_firmwares.txt");
        QVERIFY(r.installed.isEmpty());
        const QString why =
            r.error.isEmpty() && !r.refused.isEmpty() ? r.refused.first().second : r.error;
        QVERIFY2(why.contains(reason), qPrintable(why));
        QCOMPARE(listing(data), before);
    }
};

QTEST_GUILESS_MAIN(TestFlashing)
#include "tst_flashing.moc"
