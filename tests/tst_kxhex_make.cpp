// kxhex-make: images built from text descriptions, and its refusals.
#include "sf/parser/HexParser.h"
#include "support/CliRunner.h"
#include "support/HexFixtures.h"
#include "support/TestSupport.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using sf::parser::HexParser;
namespace hex = testsupport::hex;

namespace {

using Run = testsupport::ToolResult;

Run runMake(const QStringList& args, const QByteArray& input = QByteArray()) {
    return testsupport::runTool(QStringLiteral("kxhex-make"), args, QString(), input);
}

} // namespace

class TestKxhexMake : public QObject {
    Q_OBJECT
private slots:
    void images_data();
    void images();
    void randomDataRepeatsPerSeed();
    void writesFile();
    void refusals_data();
    void refusals();
};

void TestKxhexMake::images_data() {
    QTest::addColumn<QByteArray>("description");
    QTest::addColumn<QString>("texts"); // fw|kxs|enq
    QTest::addColumn<QString>("records");

    // clang-format off
    QTest::newRow("metadata and a fill")
        << QByteArray("# a comment\nfw KX3.06\nkxs \"KX3p06\\x00\"\nenq   Korvex KX3  \nfill 0x1000 0x1004 0xFF\n")
        << QString::fromLatin1("KX3.06|KX3p06\0|Korvex KX3", 25) << "D1000:FFFFFFFF";
    QTest::newRow("later bytes overwrite") << QByteArray("fill 16 20 0\nbytes 0x11 AB CD\n") << "||" << "D0010:00ABCD00";
    QTest::newRow("line length") << QByteArray("line-length 2\nbytes 0x10 0102030405\n") << "||" << "D0010:0102 D0012:0304 D0014:05";
    QTest::newRow("gaps filled with zeros") << QByteArray("bytes 0x10 01\nbytes 0x13 02\n") << "||" << "D0010:01000002";
    QTest::newRow("gaps kept") << QByteArray("gaps keep\nbytes 0x10 01\nbytes 0x13 02\n") << "||" << "D0010:01 D0013:02";
    QTest::newRow("extended addresses") << QByteArray("gaps keep\nbytes 0x1E000 01\nbytes 0x310000 02\n") << "||"
        << "X0001 DE000:01 X0031 D0000:02";
    QTest::newRow("text bytes") << QByteArray("text 0x20 \"h\\\"i\\\\\"\ntext 0x30 ok\n") << "||"
        << "D0020:6822695C000000000000000000000000 D0030:6F6B";
    QTest::newRow("only metadata") << QByteArray("enq E\r\n") << "||E" << "";
    // clang-format on
}

void TestKxhexMake::images() {
    QFETCH(QByteArray, description);
    QFETCH(QString, texts);
    QFETCH(QString, records);

    const Run r =
        runMake({QStringLiteral("-"), QStringLiteral("-o"), QStringLiteral("-")}, description);
    QCOMPARE(r.err, QByteArray());
    QCOMPARE(r.exitCode, 0);
    QVERIFY(hex::allChecksumsValid(r.out));
    QVERIFY(r.out.endsWith(hex::eofLine()));
    HexParser parser;
    QVERIFY(parser.loadHexData(r.out, sf::parser::PhantomNone));
    QCOMPARE(QStringList({parser.getFwVersion(), parser.getKxsVersion(), parser.getEnqString()})
                 .join(QLatin1Char('|')),
             texts);
    QCOMPARE(hex::dump(parser.records()), records);
}

void TestKxhexMake::randomDataRepeatsPerSeed() {
    const QStringList args{QStringLiteral("-"), QStringLiteral("-o"), QStringLiteral("-")};
    const Run a = runMake(args, "random 0x1E000 0x1E100 7\n");
    const Run b = runMake(args, "random 0x1E000 0x1E100 7\n");
    const Run c = runMake(args, "random 0x1E000 0x1E100 8\n");
    QCOMPARE(a.exitCode, 0);
    QCOMPARE(a.out, b.out);
    QVERIFY(a.out != c.out);
    HexParser parser;
    QVERIFY(parser.loadHexData(a.out, sf::parser::PhantomNone));
    QCOMPARE(parser.records().size(), size_t(1 + 16)); // extended record + 16 lines
    QVERIFY(parser.records()[1]->getDataBytes() != QByteArray(16, '\0'));
}

void TestKxhexMake::writesFile() {
    QTemporaryDir dir;
    const QString description = dir.filePath(QStringLiteral("image.txt"));
    const QString output = dir.filePath(QStringLiteral("image.kxhex"));
    QFile f(description);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write("fw KX3.06\nkxs KX3p06\nbytes 0x1E000 0102\n");
    f.close();
    const Run r = runMake({description, QStringLiteral("-o"), output});
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(HexParser::getKxsVersion(output), QStringLiteral("KX3p06"));
    HexParser parser;
    QVERIFY(parser.loadHex(output, sf::parser::PhantomNone, QIODevice::ReadOnly));
    QCOMPARE(hex::dump(parser.records()), QStringLiteral("X0001 DE000:0102"));
}

void TestKxhexMake::refusals_data() {
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<QByteArray>("description");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("message");

    const QStringList io{QStringLiteral("-"), QStringLiteral("-o"), QStringLiteral("-")};
    // clang-format off
    QTest::newRow("unknown directive")  << io << QByteArray("fw a\nsplat 1 2\n") << 2 << "line 2: unknown directive";
    QTest::newRow("empty range")        << io << QByteArray("fill 5 5 0\n") << 2 << "line 1: range";
    QTest::newRow("fill value > byte")  << io << QByteArray("fill 0 4 256\n") << 2 << "line 1: fill value";
    QTest::newRow("odd hex digits")     << io << QByteArray("bytes 0 123\n") << 2 << "line 1: bytes must be pairs";
    QTest::newRow("extended off")       << io << QByteArray("extended off\nbytes 0xFFFF 0102\n") << 2 << "line 2: address";
    QTest::newRow("metadata too long")  << io << "kxs " + QByteArray(256, 'x') + "\n" << 2 << "line 1: metadata text longer";
    QTest::newRow("unterminated quote") << io << QByteArray("fw \"abc\n") << 2 << "line 1: unterminated";
    QTest::newRow("beyond 4 GiB")       << io << QByteArray("bytes 0xFFFFFFFF 0102\n") << 2 << "line 1: bytes reach";
    QTest::newRow("too wide for zero gaps") << io << QByteArray("bytes 0 01\nbytes 0x10000000 01\n") << 2 << "image spans";
    QTest::newRow("missing description") << QStringList{"/nonexistent/d.txt", "-o", "-"} << QByteArray() << 2
        << "/nonexistent/d.txt: cannot read";
    QTest::newRow("no arguments")   << QStringList() << QByteArray() << 1 << "usage:";
    QTest::newRow("no output")      << QStringList{"-"} << QByteArray() << 1 << "usage:";
    QTest::newRow("unknown option") << QStringList{"-x"} << QByteArray() << 1 << "unknown option -x";
    // clang-format on
}

void TestKxhexMake::refusals() {
    QFETCH(QStringList, args);
    QFETCH(QByteArray, description);
    QFETCH(int, exitCode);
    QFETCH(QString, message);
    const Run r = runMake(args, description);
    QCOMPARE(r.exitCode, exitCode);
    QCOMPARE(r.out, QByteArray());
    QVERIFY2(QString::fromUtf8(r.err).contains(message), r.err.constData());
}

QTEST_GUILESS_MAIN(TestKxhexMake)
#include "tst_kxhex_make.moc"
