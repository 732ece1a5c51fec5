// Firmware from the download server (our kx-fwserver on the loopback address): a new
// version installs and joins the catalogue, a second fetch installs nothing, and every
// unsafe or damaged archive, and a server that fails, is refused with its reason while
// the data folder stays byte for byte as it was.
#include "support/CliRunner.h"
#include "support/FirmwareServer.h"

#include "firmware/FirmwareDownload.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace testsupport;
using Entry = testsupport::ZipEntry;

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

    void refusals_data() {
        QTest::addColumn<QList<Entry>>("entries");
        QTest::addColumn<QString>("damage"); // "", "checksum", "truncate", "notjson"
        QTest::addColumn<QStringList>("server");
        QTest::addColumn<QString>("reason");
        const QByteArray fw = newFirmware("4.02", "KX4-4.01");
        QTest::newRow("zip-slip") << QList<Entry>{{"firmware/../../evil.kxhex", fw}} << ""
                                  << QStringList() << "points outside the data folder";
        QTest::newRow("absolute path") << QList<Entry>{{"/tmp/evil.kxhex", fw}} << ""
                                       << QStringList() << "has an absolute path";
        QTest::newRow("link") << QList<Entry>{{"firmware/kx4/link.kxhex", "/etc/passwd", true}}
                              << "" << QStringList() << "is a link";
        QTest::newRow("other top folder")
            << QList<Entry>{{"scripts/run.sh", "echo"}} << "" << QStringList()
            << "is not below firmware/, kxs/ or help/";
        QTest::newRow("layout missing")
            << QList<Entry>{{"firmware/kx9/9.00.kxhex", newFirmware("9.00", "KX9-9.00")}} << ""
            << QStringList() << "does not read as a version";
        QTest::newRow("checksum mismatch")
            << QList<Entry>{{"firmware/kx4/2026/4.02.kxhex", fw}} << "checksum" << QStringList()
            << "checksum does not match";
        QTest::newRow("truncated archive") << QList<Entry>{{"firmware/kx4/2026/4.02.kxhex", fw}}
                                           << "truncate" << QStringList() << "damaged";
        QTest::newRow("index not JSON")
            << QList<Entry>{{"firmware/kx4/2026/4.02.kxhex", fw}} << "notjson" << QStringList()
            << "firmware list from the server is damaged";
        QTest::newRow("server stops answering")
            << QList<Entry>{{"firmware/kx4/2026/4.02.kxhex", fw}} << "" << QStringList{"--stall"}
            << "stopped answering";
        QTest::newRow("redirect to another host over HTTP")
            << QList<Entry>{{"firmware/kx4/2026/4.02.kxhex", fw}} << ""
            << QStringList{"--redirect", "http://127.0.0.2:9/"}
            << "neither HTTPS nor the same server";
    }
    void refusals() {
        QFETCH(QList<Entry>, entries);
        QFETCH(QString, damage);
        QFETCH(QStringList, server);
        QFETCH(QString, reason);
        QTemporaryDir root, served;
        const QString data = copyDataFolder(root.path());
        QVERIFY(writeZip(served.filePath("a.zip"), entries));
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
