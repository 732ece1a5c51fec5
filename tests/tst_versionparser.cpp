// Reading one firmware (map) file into a version: an unreadable file and the identity of
// a usable version. Every refusal with its exact message: version-files.t.
#include "app/Constants.h"
#include "support/VersionFixtures.h"
#include "util/VersionParser.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using namespace versionfixtures;

namespace {

const QString MapName = QStringLiteral("fw 4.kxhex");

QByteArray metadataWithPadding() {
    return hexRecord(0xC0, 0, QByteArray("KX4.02\0", 7)) +
           hexRecord(0xC1, 0, QByteArray("KX4.02\0\0\0", 9)) +
           hexRecord(0xC2, 0, QByteArray("ENQ 4.02\0", 9)) + hexEndOfFile();
}

} // namespace

class TestVersionParser : public QObject {
    Q_OBJECT
private slots:
    void unreadableFirmwareFile();
    void usableVersion_data();
    void usableVersion();
    void noStateBetweenCalls();
};

void TestVersionParser::unreadableFirmwareFile() {
    QTemporaryDir tmp;
    QVERIFY(tmp.isValid());
    const QDir dir(tmp.path());
    const QString path = dir.absoluteFilePath(MapName);
    QVERIFY(writeFile(path, firmwareImage("KX4.02", "KX4.02", "E")));
    QVERIFY(QFile::setPermissions(path, QFileDevice::WriteOwner));
    QFile probe(path);
    if (probe.open(QIODevice::ReadOnly)) {
        QSKIP("file permissions do not keep this user from reading");
    }
    util::VersionParser parser;
    QSignalSpy errors(&parser, &util::VersionParser::showError);
    QVERIFY(parser.parseFirmwareFile(MapName, dir, dir).isEmpty());
    QCOMPARE(errors.count(), 1);
    QCOMPARE(errors.at(0).at(0).toString(), ui::ERROR_CANT_OPEN_FW.arg(MapName));
}

void TestVersionParser::usableVersion_data() {
    QTest::addColumn<QByteArray>("map");
    QTest::addColumn<quint16>("format");
    QTest::addColumn<QString>("fw");
    QTest::addColumn<QString>("enq");

    QTest::newRow("format 1000") << firmwareImage("KX4.02", "KX4.02", "KX 4.02 ENQ")
                                 << quint16(1000) << "KX4.02"
                                 << "KX 4.02 ENQ";
    QTest::newRow("format 1001") << firmwareImage("KX4.02b", "KX4.02", "KX 4.02b") << quint16(1001)
                                 << "KX4.02b"
                                 << "KX 4.02b";
    QTest::newRow("trailing zero bytes of the texts dropped")
        << metadataWithPadding() << quint16(1000) << "KX4.02"
        << "ENQ 4.02";
    QTest::newRow("first good layout record wins")
        << badChecksumRecord(0xC1, 0, "KX9.99") + firmwareImage("KX4.02", "KX4.02", "E")
        << quint16(1000) << "KX4.02"
        << "E";
    QTest::newRow("records in any order")
        << hexRecord(0xC2, 0, "E2") + hexRecord(0xC1, 0, "KX4.02") + hexRecord(0xC0, 0, "v402") +
               hexEndOfFile()
        << quint16(1000) << "v402"
        << "E2";
    QTest::newRow("firmware and ENQ texts may be missing")
        << firmwareImage("", "KX4.02", "") << quint16(1000) << ""
        << "";
    QTest::newRow("Latin-1 texts")
        << firmwareImage("KX4.02", "KX4.02", QStringLiteral("Korvex \u00e9")) << quint16(1000)
        << "KX4.02" << QStringLiteral("Korvex \u00e9");
}

void TestVersionParser::usableVersion() {
    QFETCH(QByteArray, map);
    QFETCH(quint16, format);
    QFETCH(QString, fw);
    QFETCH(QString, enq);

    QTemporaryDir tmp;
    QVERIFY(tmp.isValid());
    const QDir mapDir(tmp.filePath(QStringLiteral("firmware/a")));
    const QDir kxsDir(tmp.filePath(QStringLiteral("kxs")));
    QVERIFY(writeFile(mapDir.absoluteFilePath(MapName), map));
    QVERIFY(writeFile(kxsDir.absoluteFilePath(QStringLiteral("KX4.02.kxs")),
                      layoutFile(QStringLiteral("KX4.02"), format)));

    util::VersionParser parser;
    QSignalSpy errors(&parser, &util::VersionParser::showError);
    QSignalSpy warnings(&parser, &util::VersionParser::showWarning);
    const util::VersionContainer version = parser.parseFirmwareFile(MapName, mapDir, kxsDir);

    QCOMPARE(errors.count(), 0);
    QCOMPARE(warnings.count(), 0);
    QCOMPARE(version.kxsVersion, QStringLiteral("KX4.02"));
    QCOMPARE(version.fwVersion, fw);
    QCOMPARE(version.enqString, enq);
    QCOMPARE(version.kxsFilePath, kxsDir.absoluteFilePath(QStringLiteral("KX4.02.kxs")));
    QCOMPARE(version.mapFilePath, mapDir.absoluteFilePath(MapName));
    QVERIFY(QFileInfo(version.mapFilePath).isAbsolute());
    QVERIFY(version.mapGroup.isEmpty());
    QCOMPARE(version.kxsFormat, quint32(format));
}

void TestVersionParser::noStateBetweenCalls() {
    QTemporaryDir tmp;
    QVERIFY(tmp.isValid());
    const QDir dir(tmp.path());
    QVERIFY(writeFile(dir.absoluteFilePath(QStringLiteral("good.kxhex")),
                      firmwareImage("KX3.06", "KX3.06", "E")));
    QVERIFY(writeFile(dir.absoluteFilePath(QStringLiteral("KX3.06.kxs")),
                      layoutFile(QStringLiteral("KX3.06"))));
    QVERIFY(writeFile(dir.absoluteFilePath(QStringLiteral("bad.kxhex")),
                      firmwareImage("KX3.07", "KX3.07", "E")));

    util::VersionParser parser;
    QSignalSpy warnings(&parser, &util::VersionParser::showWarning);
    QVERIFY(parser.parseFirmwareFile(QStringLiteral("bad.kxhex"), dir, dir).isEmpty());
    const util::VersionContainer good =
        parser.parseFirmwareFile(QStringLiteral("good.kxhex"), dir, dir);
    QCOMPARE(good.fwVersion, QStringLiteral("KX3.06"));
    QVERIFY(parser.parseFirmwareFile(QStringLiteral("bad.kxhex"), dir, dir).isEmpty());
    QCOMPARE(warnings.count(), 2);
}

QTEST_GUILESS_MAIN(TestVersionParser)
#include "tst_versionparser.moc"
