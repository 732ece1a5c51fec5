// Firmware from the download server (our kx-fwserver on the loopback address): a new
// version installs and joins the catalogue, a second fetch installs nothing, and every
// unsafe or damaged archive, and a server that fails, is refused with its reason while
// the data folder stays byte for byte as it was.
#include "support/CliRunner.h"
#include "support/SampleData.h"
#include "support/TestSupport.h"

#include "firmware/FirmwareDownload.h"
#include "sf/parser/HexParser.h"

#include <JlCompress.h>
#include <quazip.h>
#include <quazipfile.h>
#include <quazipnewinfo.h>

#include <QCryptographicHash>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

struct Entry {
    QString name;
    QByteArray bytes;
    bool link = false;
};

} // namespace

Q_DECLARE_METATYPE(Entry)

namespace {

bool writeZip(const QString& path, const QList<Entry>& entries) {
    QuaZip zip(path);
    if (!zip.open(QuaZip::mdCreate)) {
        return false;
    }
    for (const Entry& e : entries) {
        QuaZipFile file(&zip);
        QuaZipNewInfo info(e.name);
        info.externalAttr = quint32(e.link ? 0120777 : 0100644) << 16;
        if (!file.open(QIODevice::WriteOnly, info) || file.write(e.bytes) != e.bytes.size()) {
            return false;
        }
        file.close();
    }
    zip.close();
    return zip.getZipError() == 0;
}

// A firmware file of a version the sample data does not have, on the 4.01 layout.
QByteArray newFirmware(const QString& fw, const QString& kxs) {
    sf::parser::HexParser image;
    if (!image.loadHex(sampledata::runtimeDir() + "/data/firmware/kx4/2025/4.01.kxhex",
                       sf::parser::PhantomNone, QIODevice::ReadOnly)) {
        return QByteArray();
    }
    image.setFwVersion(fw);
    image.setEnqString(fw);
    image.setKxsVersion(kxs);
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    image.writeToDevice(&out, false, 16);
    return out.data();
}

// Every file below a folder with its checksum.
QMap<QString, QByteArray> listing(const QString& dir) {
    QMap<QString, QByteArray> all;
    QDirIterator it(dir, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        QFile f(path);
        f.open(QIODevice::ReadOnly);
        all.insert(QDir(dir).relativeFilePath(path),
                   QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256));
    }
    return all;
}

class Server {
public:
    explicit Server(const QString& dir, const QStringList& options = {}) {
        m_process.start(testsupport::toolPath("kx-fwserver"), QStringList{dir} + options);
        if (m_process.waitForReadyRead(5000)) {
            m_url = QString::fromLatin1(m_process.readLine()).trimmed();
        }
    }
    ~Server() {
        m_process.kill();
        m_process.waitForFinished();
    }
    const QString& url() const { return m_url; }

private:
    QProcess m_process;
    QString m_url;
};

// A served folder: the archive under its name and an index naming it.
void serve(const QString& dir, const QString& archive, const QByteArray& zip,
           const QByteArray& indexSha = QByteArray(), qint64 indexSize = -1) {
    QFile out(dir + "/" + archive);
    out.open(QIODevice::WriteOnly);
    out.write(zip);
    out.close();
    const QJsonObject entry{
        {"version", "4.02"},
        {"archive", archive},
        {"sha256",
         QString::fromLatin1(indexSha.isEmpty()
                                 ? QCryptographicHash::hash(zip, QCryptographicHash::Sha256).toHex()
                                 : indexSha)},
        {"size", double(indexSize < 0 ? zip.size() : indexSize)}};
    QFile index(dir + "/index.json");
    index.open(QIODevice::WriteOnly);
    index.write(QJsonDocument(QJsonObject{{"firmware", QJsonArray{entry}}}).toJson());
}

QString copyDataFolder(const QString& to) {
    const QDir from(sampledata::runtimeDir() + "/data");
    QDirIterator it(from.path(), QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString source = it.next();
        const QString relative = from.relativeFilePath(source);
        if (relative.startsWith("CMakeFiles") || relative.endsWith(".cmake")) {
            continue;
        }
        QDir().mkpath(QFileInfo(to + "/data/" + relative).absolutePath());
        QFile::copy(source, to + "/data/" + relative);
    }
    return to + "/data";
}

} // namespace

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
        Server server(served.path());
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
        Server http(served.path(), server);
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
