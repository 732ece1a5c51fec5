// Reading one firmware (map) file into a version: every refusal with its exact message,
// and the identity of a usable version.
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

// A layout file whose header is cut off in the middle.
QByteArray truncatedLayout() {
    return layoutFile(QStringLiteral("KX4.02")).left(30);
}

QByteArray metadataWithPadding() {
    return hexRecord(0xC0, 0, QByteArray("KX4.02\0", 7)) +
           hexRecord(0xC1, 0, QByteArray("KX4.02\0\0\0", 9)) +
           hexRecord(0xC2, 0, QByteArray("ENQ 4.02\0", 9)) + hexEndOfFile();
}

} // namespace

class TestVersionParser : public QObject {
    Q_OBJECT
private slots:
    void refusals_data();
    void refusals();
    void unreadableFirmwareFile();
    void usableVersion_data();
    void usableVersion();
    void noStateBetweenCalls();
};

void TestVersionParser::refusals_data() {
    QTest::addColumn<bool>("mapIsFolder");
    QTest::addColumn<QByteArray>("map");    // null: no firmware file
    QTest::addColumn<QByteArray>("layout"); // null: no layout file
    QTest::addColumn<bool>("isError");      // else a warning
    QTest::addColumn<QString>("message");   // filled with the arguments below
    QTest::addColumn<QStringList>("args");  // "$MAP" firmware file name, "$KXS" layout path

    const QByteArray good = firmwareImage("KX4.02", "KX4.02", "KX 4.02 ENQ");
    const QByteArray layout = layoutFile(QStringLiteral("KX4.02"));
    const QStringList mapArg{QStringLiteral("$MAP")};
    const QStringList kxsArg{QStringLiteral("$KXS")};

    QTest::newRow("missing firmware file")
        << false << QByteArray() << layout << true << ui::ERROR_CANT_OPEN_FW << mapArg;
    QTest::newRow("firmware name is a folder")
        << true << QByteArray() << layout << true << ui::ERROR_CANT_OPEN_FW << mapArg;
    QTest::newRow("empty firmware file")
        << false << QByteArray("") << layout << true << ui::ERROR_INVALID_FW << mapArg;
    QTest::newRow("no layout record although firmware record present")
        << false << firmwareImage("KX4.02", "", "KX 4.02 ENQ") << layout << true
        << ui::ERROR_INVALID_FW << mapArg;
    QTest::newRow("not Intel HEX") << false << QByteArray("firmware KX4.02\nlayout KX4.02\n")
                                   << layout << true << ui::ERROR_INVALID_FW << mapArg;
    QTest::newRow("layout record with a bad checksum")
        << false << hexRecord(0xC0, 0, "KX4.02") + badChecksumRecord(0xC1, 0, "KX4.02") << layout
        << true << ui::ERROR_INVALID_FW << mapArg;
    QTest::newRow("missing layout file")
        << false << good << QByteArray() << false << ui::ERROR_MAP_MISSING_FILE
        << QStringList{QStringLiteral("$MAP"), QStringLiteral("$KXS")};
    QTest::newRow("corrupt layout file")
        << false << good << QByteArray("KXDATA\x01\x02 not a layout") << false
        << ui::ERROR_INVALID_KXS_SPECIFIC << kxsArg;
    QTest::newRow("empty layout file")
        << false << good << QByteArray("") << false << ui::ERROR_INVALID_KXS_SPECIFIC << kxsArg;
    QTest::newRow("truncated layout file")
        << false << good << truncatedLayout() << false << ui::ERROR_INVALID_KXS_SPECIFIC << kxsArg;
    QTest::newRow("unsupported layout format")
        << false << good << layoutFile(QStringLiteral("KX4.02"), 999) << false
        << ui::ERROR_INVALID_KXS_SPECIFIC << kxsArg;
    QTest::newRow("layout without version") << false << good << layoutFile(QString()) << false
                                            << ui::ERROR_INVALID_KXS_SPECIFIC << kxsArg;
    QTest::newRow("layout version differs only in case")
        << false << good << layoutFile(QStringLiteral("kx4.02")) << false
        << ui::ERROR_KXS_VER_MISMATCH
        << QStringList{QStringLiteral("$KXS"), QStringLiteral("kx4.02"), QStringLiteral("KX4.02")};
    QTest::newRow("layout of another version")
        << false << good << layoutFile(QStringLiteral("KX4.01")) << false
        << ui::ERROR_KXS_VER_MISMATCH
        << QStringList{QStringLiteral("$KXS"), QStringLiteral("KX4.01"), QStringLiteral("KX4.02")};
}

void TestVersionParser::refusals() {
    QFETCH(bool, mapIsFolder);
    QFETCH(QByteArray, map);
    QFETCH(QByteArray, layout);
    QFETCH(bool, isError);
    QFETCH(QString, message);
    QFETCH(QStringList, args);

    QTemporaryDir tmp;
    QVERIFY(tmp.isValid());
    const QDir mapDir(tmp.filePath(QStringLiteral("firmware")));
    const QDir kxsDir(tmp.filePath(QStringLiteral("kxs")));
    QVERIFY(QDir().mkpath(mapDir.path()));
    QVERIFY(QDir().mkpath(kxsDir.path()));
    const QString kxsPath = kxsDir.absoluteFilePath(QStringLiteral("KX4.02.kxs"));
    if (mapIsFolder) {
        QVERIFY(mapDir.mkdir(MapName));
    } else if (!map.isNull()) {
        QVERIFY(writeFile(mapDir.absoluteFilePath(MapName), map));
    }
    if (!layout.isNull()) {
        QVERIFY(writeFile(kxsPath, layout));
    }

    QString expected = message;
    if (args.size() == 1) {
        expected = message.arg(args.at(0));
    } else if (args.size() == 2) {
        expected = message.arg(args.at(0), args.at(1));
    } else if (args.size() == 3) {
        expected = message.arg(args.at(0), args.at(1), args.at(2));
    }
    expected.replace(QLatin1String("$MAP"), MapName);
    expected.replace(QLatin1String("$KXS"), kxsPath);

    util::VersionParser parser;
    QSignalSpy errors(&parser, &util::VersionParser::showError);
    QSignalSpy warnings(&parser, &util::VersionParser::showWarning);
    const util::VersionContainer version = parser.parseFirmwareFile(MapName, mapDir, kxsDir);

    QVERIFY(version.isEmpty());
    QSignalSpy& reported = isError ? errors : warnings;
    const QSignalSpy& silent = isError ? warnings : errors;
    QCOMPARE(reported.count(), 1);
    QCOMPARE(silent.count(), 0);
    QCOMPARE(reported.at(0).at(0).toString(), expected);
}

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
