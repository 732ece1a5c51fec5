// The flashing driver's reading of the helper's output (each text it looks for, in plain
// words and with its colour), and the confirmation before settings are reset. Firmware from
// the download server (our kx-fwserver on the loopback address): a new version installs and
// joins the catalogue, a second fetch installs nothing, and every unsafe or damaged archive,
// and a server that fails, is refused with its reason while the data folder stays byte for
// byte as it was.
#include "firmware/Bootloader.h"
#include "firmware/FirmwareDownload.h"
#include "firmware/Migration.h"
#include "sf/SetupFile.h"
#include "support/CliRunner.h"
#include "support/FirmwareServer.h"
#include "support/TableFile.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using firmware::bootloader;
using namespace testsupport;

class TestFirmware : public QObject {
    Q_OBJECT
private slots:
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

    void initTestCase() { firmware::FirmwareDownload::setTimeoutMs(1500); }

    void newVersionInstallsOnce() {
        QTemporaryDir root, served;
        const QString data = copyDataFolder(root.path());
        const QByteArray help = "<html><div id=\"BattCapA\">Capacity.</div></html>";
        QVERIFY(writeZip(served.filePath("kx4-4.02.zip"),
                         {{"firmware/kx4/2026/4.02.kxhex", newFirmware("4.02", "KX4-4.01")},
                          {"help/4.02_help.html", help}}));
        serve(served.path(), "kx4-4.02.zip", readFile(served.filePath("kx4-4.02.zip")));
        FirmwareServer server(served.path());
        QVERIFY(!server.url().isEmpty());
        const QStringList fetch{"-C", root.path(), "firmware", "fetch", "--url", server.url()};
        const testsupport::CliResult first = testsupport::runCli(fetch);
        QCOMPARE(first.exitCode, 0);
        QCOMPARE(first.out, QStringLiteral("installed kx4-4.02.zip\n"));
        QVERIFY(QFileInfo::exists(data + "/firmware/kx4/2026/4.02.kxhex"));
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
        QVERIFY(!http.url().isEmpty());
        firmware::FirmwareDownload download;
        const auto r = download.fetch(http.url(), data, data + "/local_firmwares.txt");
        QVERIFY(r.installed.isEmpty());
        const QString why =
            r.error.isEmpty() && !r.refused.isEmpty() ? r.refused.first().second : r.error;
        QVERIFY2(why.contains(reason), qPrintable(why));
        QCOMPARE(listing(data), before);
    }
};

QTEST_GUILESS_MAIN(TestFirmware)
#include "tst_firmware.moc"
