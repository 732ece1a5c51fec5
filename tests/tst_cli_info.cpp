// kxsetup-cli info: metadata, counts and covered address ranges of HEX images, and its
// exit codes.
#include "support/CliRunner.h"
#include "support/HexFixtures.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

namespace hex = testsupport::hex;

namespace {

using Run = testsupport::ToolResult;

Run runCli(const QStringList& args, const QString& workingDir = QString()) {
    return testsupport::runTool(QStringLiteral("kxsetup-cli"), args, workingDir);
}

} // namespace

class TestCliInfo : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void json_data();
    void json();
    void textOutput();
    void fileResolvedAgainstStartFolder();
    void errors_data();
    void errors();

private:
    QTemporaryDir m_dir;
    QString write(const QString& name, const QByteArray& text);
};

QString TestCliInfo::write(const QString& name, const QByteArray& text) {
    const QString path = m_dir.filePath(name);
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly) || f.write(text) != text.size()) {
        return QString();
    }
    return path;
}

void TestCliInfo::initTestCase() {
    QVERIFY(m_dir.isValid());
    QVERIFY2(QFile::exists(testsupport::toolPath(QStringLiteral("kxsetup-cli"))),
             "kxsetup-cli not built");
}

void TestCliInfo::json_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("texts"); // fw|kxs|enq
    QTest::addColumn<int>("records");
    QTest::addColumn<int>("dataBytes");
    QTest::addColumn<QString>("ranges");

    const QByteArray meta = hex::metaLine(0xC0, "KX3.06") + hex::metaLine(0xC1, "KX3p06") +
                            hex::metaLine(0xC2, "Korvex");
    // clang-format off
    QTest::newRow("setup image") << meta + hex::text(QStringLiteral("X0001 DE000:01020304 DE004:0506 F"))
        << "KX3.06|KX3p06|Korvex" << 3 << 6 << "[[122880,122886]]";
    QTest::newRow("gap makes two ranges") << hex::text(QStringLiteral("D0000:0102 D0010:03")) << "||" << 2 << 3 << "[[0,2],[16,17]]";
    QTest::newRow("unordered and overlapping records merged")
        << hex::text(QStringLiteral("D0010:0102 D0000:00000000 D0002:AAAAAAAA D0020:01")) << "||" << 4 << 11
        << "[[0,6],[16,18],[32,33]]";
    QTest::newRow("segments give full addresses") << hex::text(QStringLiteral("X0031 D0000:01 X0000 D0000:02 X0031 D0001:03"))
        << "||" << 6 << 3 << "[[0,1],[3211264,3211266]]";
    QTest::newRow("record past 64 KiB continues the range") << hex::text(QStringLiteral("DFFFF:0102 X0001 D0001:03"))
        << "||" << 3 << 3 << "[[65535,65538]]";
    QTest::newRow("empty file") << QByteArray() << "||" << 0 << 0 << "[]";
    QTest::newRow("trailing zeros kept") << hex::metaLine(0xC1, QByteArray("L\0", 2)) << QString::fromLatin1("|L\0|", 4)
        << 0 << 0 << "[]";
    // clang-format on
}

void TestCliInfo::json() {
    QFETCH(QByteArray, text);
    QFETCH(QString, texts);
    QFETCH(int, records);
    QFETCH(int, dataBytes);
    QFETCH(QString, ranges);

    const QString path = write(QStringLiteral("image.hex"), text);
    const Run r = runCli({QStringLiteral("info"), path, QStringLiteral("--json")});
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(r.err, QByteArray());
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(r.out, &error);
    QCOMPARE(error.error, QJsonParseError::NoError);
    const QJsonObject o = doc.object();
    QCOMPARE(QStringList({o.value(QStringLiteral("fw")).toString(),
                          o.value(QStringLiteral("kxs")).toString(),
                          o.value(QStringLiteral("enq")).toString()})
                 .join(QLatin1Char('|')),
             texts);
    QCOMPARE(o.value(QStringLiteral("records")).toInt(-1), records);
    QCOMPARE(o.value(QStringLiteral("dataBytes")).toInt(-1), dataBytes);
    QCOMPARE(QString::fromUtf8(QJsonDocument(o.value(QStringLiteral("ranges")).toArray())
                                   .toJson(QJsonDocument::Compact)),
             ranges);
}

void TestCliInfo::textOutput() {
    const QString path = write(QStringLiteral("text.hex"),
                               hex::metaLine(0xC0, "KX4.01") +
                                   hex::text(QStringLiteral("X0031 D0000:0102 D0100:03")));
    const Run r = runCli({QStringLiteral("info"), path});
    QCOMPARE(r.exitCode, 0);
    const QString out = QString::fromUtf8(r.out);
    QVERIFY2(out.contains(QStringLiteral("fw:         KX4.01\n")), qPrintable(out));
    QVERIFY2(out.contains(QStringLiteral("records:    3\n")), qPrintable(out));
    QVERIFY2(out.contains(QStringLiteral("0x00310000 - 0x00310001  (2 bytes)")), qPrintable(out));
    QVERIFY2(out.contains(QStringLiteral("0x00310100 - 0x00310100  (1 bytes)")), qPrintable(out));
}

void TestCliInfo::fileResolvedAgainstStartFolder() {
    write(QStringLiteral("relative.hex"), hex::metaLine(0xC0, "rel"));
    const Run r = runCli({QStringLiteral("-C"), QDir::rootPath(), QStringLiteral("info"),
                          QStringLiteral("relative.hex"), QStringLiteral("--json")},
                         m_dir.path());
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(QJsonDocument::fromJson(r.out).object().value(QStringLiteral("fw")).toString(),
             QStringLiteral("rel"));
}

void TestCliInfo::errors_data() {
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("message");

    const QString info = QStringLiteral("info");
    // clang-format off
    QTest::newRow("missing file") << QStringList{info, "nope.hex"} << 2 << "kxsetup-cli: nope.hex: cannot open";
    QTest::newRow("bad checksum") << QStringList{info, "bad.hex", "--json"} << 2
        << "kxsetup-cli: bad.hex: not a valid Intel HEX file (line 2: checksum mismatch)";
    QTest::newRow("folder")       << QStringList{info, "."} << 2 << "kxsetup-cli: .: cannot open";
    QTest::newRow("no file")      << QStringList{info} << 1 << "kxsetup-cli: info needs exactly one file";
    QTest::newRow("two files")    << QStringList{info, "a.hex", "b.hex"} << 1 << "kxsetup-cli: info needs exactly one file";
    QTest::newRow("unknown option") << QStringList{info, "bad.hex", "--xml"} << 1 << "kxsetup-cli: unknown option --xml";
    // clang-format on
}

void TestCliInfo::errors() {
    QFETCH(QStringList, args);
    QFETCH(int, exitCode);
    QFETCH(QString, message);
    write(QStringLiteral("bad.hex"), hex::dataLine(0, "ok") + ":0100000000FE\r\n");
    const Run r = runCli(args, m_dir.path());
    QCOMPARE(r.exitCode, exitCode);
    QCOMPARE(r.out, QByteArray());
    const QStringList lines = QString::fromUtf8(r.err).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QVERIFY(!lines.isEmpty());
    QVERIFY2(lines.first().startsWith(message), qPrintable(lines.first()));
    if (exitCode == 2) {
        QCOMPARE(lines.size(), 1); // one line naming the file and the fault
    }
}

QTEST_GUILESS_MAIN(TestCliInfo)
#include "tst_cli_info.moc"
