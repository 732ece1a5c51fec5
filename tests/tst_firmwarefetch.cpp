// Firmware from the download server (our kx-fwserver on the loopback address): a new
// version installs and joins the catalogue, a second fetch installs nothing, and every
// unsafe or damaged archive, and a server that fails, is refused with its reason while
// the data folder stays byte for byte as it was.
#include "support/CliRunner.h"
#include "support/FirmwareServer.h"
#include "support/TableFile.h"

#include "firmware/FirmwareDownload.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace testsupport;

class TestFirmwareFetch : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { firmware::FirmwareDownload::setTimeoutMs(1500); }

    void newVersionInstallsOnce() {
        QTemporaryDir root, served;
        const QString data = copyDataFolder(root.path());
        const QByteArray help = "<html><div id=\"BattCapA\">Capacity.</div></html>";
        QVERIFY(writeZip(served.filePath("kx4-4.02.zip"),
                         {{"firmware/kx4/2026/4.02.kxhex", newFirmware("4.02", "KX4-4.01")},
                          {"help/4.02_help.html", help}}));
        QFile zip(served.filePath("kx4-4.02.zip"));
        QVERIFY(zip.open(QIODevice::ReadOnly));
        serve(served.path(), "kx4-4.02.zip", zip.readAll());
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
        QFile file(served.filePath("a.zip"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QByteArray zip = file.readAll();
        if (damage == "truncate") {
            zip.truncate(zip.size() / 2);
        }
        serve(served.path(), "a.zip", zip,
              damage == "checksum" ? QByteArray(64, 'a') : QByteArray());
        if (damage == "notjson") {
            QFile index(served.filePath("index.json"));
            index.open(QIODevice::WriteOnly);
            index.write("<html>maintenance</html>");
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

QTEST_GUILESS_MAIN(TestFirmwareFetch)
#include "tst_firmwarefetch.moc"
