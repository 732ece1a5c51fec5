// The layout compiler and writer: what the reader reads back from compiled source, the
// header the writer produces, and the errors (with line numbers) for bad source.
#include "kxs/KxsFormat.h"
#include "kxs/compiler/KxsWriter.h"
#include "kxs/compiler/LayoutCompiler.h"
#include "kxs/parser/KxsParser.h"
#include "support/LayoutFixtures.h"

#include <QtTest>

using kxs::compiler::KxsWriter;
using kxs::compiler::LayoutCompiler;
using kxs::parser::KxsParser;

namespace {

// Every entry as the reader sees it, one compact line each.
QStringList entriesOf(const QByteArray& bytes) {
    KxsParser p;
    if (!p.openKxsData(bytes)) {
        return {QStringLiteral("<not a layout file>")};
    }
    QStringList out;
    const kxs::NamesTableEntryV1* e = nullptr;
    const char* d = nullptr;
    while (p.getNextListed(&e, &d)) {
        const QString name = kxs::entryName(e);
        kxs::SettingData s;
        kxs::CategoryData c;
        quint64 v = 0;
        switch (kxs::entryType(e)) {
        case kxs::EntrySetting:
            kxs::readSettingData(e, d, &s);
            out << QStringLiteral("setting %1 @%2 %3: %4")
                       .arg(name)
                       .arg(s.address, 0, 16)
                       .arg(s.sizeBytes)
                       .arg(s.definition);
            break;
        case kxs::EntryInteger:
            kxs::readIntegerData(e, d, &v);
            out << QStringLiteral("u%1 %2 = %3").arg(8 * kxs::entrySize(e)).arg(name).arg(v);
            break;
        case kxs::EntryString:
            out << QStringLiteral("string %1: %2").arg(name, kxs::readStringData(e, d));
            break;
        case kxs::EntryCategory:
            kxs::readCategoryData(e, d, &c);
            out << QStringLiteral("category %1: %2 | %3").arg(name, c.title, c.preset);
            break;
        default:
            out << QStringLiteral("type %1 %2").arg(kxs::entryType(e)).arg(name);
        }
    }
    if (!p.atEndOfNames()) {
        out << QStringLiteral("<damaged names table>");
    }
    return out;
}

} // namespace

class TestLayoutCompiler : public QObject {
    Q_OBJECT
private slots:
    void entries_data();
    void entries();
    void header_data();
    void header();
    void errors_data();
    void errors();
    void writerLayout();
    void writerRefusals_data();
    void writerRefusals();
};

void TestLayoutCompiler::entries_data() {
    QTest::addColumn<QString>("source");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("setting, hex address") << QStringLiteral("setting BattCap 0x20 2 = num, a")
                                          << QStringList{"setting BattCap @20 2: num, a"};
    QTest::newRow("setting, decimal address and padding")
        << QStringLiteral("  setting   Cap   4294967295  -1   =   num  ")
        << QStringList{"setting Cap @ffffffff -1: num"};
    QTest::newRow("definition is verbatim")
        << QStringLiteral(
               R"(setting M 1 1 = list, "a,b", \"q\", {1:"x"}, c ? 1 : 2, 0`9, # kept = too)")
        << QStringList{
               R"(setting M @1 1: list, "a,b", \"q\", {1:"x"}, c ? 1 : 2, 0`9, # kept = too)"};
    QTest::newRow("continuation lines, comment and blank between")
        << QStringLiteral("setting L 2 1 = list, \"Mode\",\n"
                          "    ... {0:\"Off\",\n"
                          "# a comment\n"
                          "\n"
                          "    ...   1:\"On\"}, DIS\n"
                          "u8 After 1")
        << QStringList{"setting L @2 1: list, \"Mode\",{0:\"Off\",1:\"On\"}, DIS", "u8 After = 1"};
    QTest::newRow("integers at their limits")
        << QStringLiteral("u8 A 255\nu16 B 0xFFFF\nu32 C 4294967295\ninteger D 0\n"
                          "u64 E 0xFFFFFFFFFFFFFFFF")
        << QStringList{"u8 A = 255", "u16 B = 65535", "u32 C = 4294967295", "u32 D = 0",
                       "u64 E = 18446744073709551615"};
    QTest::newRow("string escapes")
        << QStringLiteral(R"(string S "q\"b\\n\nt\tx\x41\xe9")")
        << QStringList{QStringLiteral("string S: q\"b\\n\nt\txA\u00e9")};
    QTest::newRow("string with a zero byte")
        << QStringLiteral(R"(string Z "a\x00b")")
        << QStringList{QStringLiteral("string Z: a") + QChar(0) + "b"};
    QTest::newRow("category with and without preset")
        << QStringLiteral("category Batt \"Battery\" \"BattPre\"\ncategory Disp \"Display\"")
        << QStringList{"category Batt: Battery | BattPre", "category Disp: Display | "};
    QTest::newRow("quoted names") << QStringLiteral(
                                         "category \"Two words\" \"T\" \"\"\nstring \"a=b\" \"x\"")
                                  << QStringList{"category Two words: T | ", "string a=b: x"};
    QTest::newRow("same name, different types")
        << QStringLiteral("setting X 0 1 = num\nu8 X 1\nstring X \"s\"\ncategory X \"c\"")
        << QStringList{"setting X @0 1: num", "u8 X = 1", "string X: s", "category X: c | "};
    QTest::newRow("string list on one line")
        << QStringLiteral("strings Modes \"Off\" \"On\" \"Auto\"")
        << QStringList{"string Modes: Off", "string Modes#2: On", "string Modes#3: Auto",
                       "u32 Modes_COUNT = 3"};
    QTest::newRow("string list block with count name")
        << QStringLiteral("strings Units count N_UNITS {\n  \"V\" \"A\"\n  # comment\n  \"W\" "
                          "}\nu8 Next 9")
        << QStringList{"string Units: V", "string Units#2: A", "string Units#3: W",
                       "u32 N_UNITS = 3", "u8 Next = 9"};
    QTest::newRow("comments and CRLF line ends")
        << QStringLiteral("# head\r\nu8 A 1 # trailing\r\n\r\nstring B \"#not\" # c\r\n")
        << QStringList{"u8 A = 1", "string B: #not"};
    QTest::newRow("nothing") << QStringLiteral("# only a comment\n") << QStringList{};
}

void TestLayoutCompiler::entries() {
    QFETCH(QString, source);
    QFETCH(QStringList, expected);
    const QByteArray bytes = testsupport::compileLayout(source);
    if (!QTest::currentTestFailed())
        QCOMPARE(entriesOf(bytes), expected);
}

void TestLayoutCompiler::header_data() {
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("version");
    QTest::addColumn<quint32>("format");

    QTest::newRow("defaults") << QString() << QString() << 1000u;
    QTest::newRow("quoted version, format 1001")
        << QStringLiteral("version \"KX3-1.63\"\nformat 1001") << QStringLiteral("KX3-1.63")
        << 1001u;
    QTest::newRow("bare-word version")
        << QStringLiteral("version KX4.02") << QStringLiteral("KX4.02") << 1000u;
    QTest::newRow("16-byte version") << QStringLiteral("version \"ABCDEFGHIJKLMNOP\"")
                                     << QStringLiteral("ABCDEFGHIJKLMNOP") << 1000u;
}

void TestLayoutCompiler::header() {
    QFETCH(QString, source);
    QFETCH(QString, version);
    QFETCH(quint32, format);
    const QByteArray bytes = testsupport::compileLayout(source);
    if (QTest::currentTestFailed()) {
        return;
    }
    KxsParser p;
    QVERIFY(p.openKxsData(bytes));
    QCOMPARE(p.getKxsVersion(), version);
    QCOMPARE(p.getKxsFormat(), format);
}

void TestLayoutCompiler::errors_data() {
    QTest::addColumn<QString>("source");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("message"); // a part of the message

    QTest::newRow("unknown statement") << QStringLiteral("u8 A 1\n\nsettings X 1 1 = a") << 3
                                       << QStringLiteral("unknown statement \"settings\"");
    QTest::newRow("setting without =")
        << QStringLiteral("setting X 1 2") << 1 << QStringLiteral("SIZE = DEFINITION");
    QTest::newRow("address too large") << QStringLiteral("setting X 0x100000000 1 = a") << 1
                                       << QStringLiteral("address \"0x100000000\"");
    QTest::newRow("size too large") << QStringLiteral("setting X 1 2147483648 = a") << 1
                                    << QStringLiteral("size \"2147483648\"");
    QTest::newRow("continuation without setting")
        << QStringLiteral("u8 A 1\n... more") << 2 << QStringLiteral("must follow a setting");
    QTest::newRow("continuation after another statement")
        << QStringLiteral("setting S 1 1 = a\nu8 A 1\n... more") << 3
        << QStringLiteral("must follow a setting");
    QTest::newRow("u8 overflow") << QStringLiteral("u8 A 256") << 1
                                 << QStringLiteral("fits in 1 byte");
    QTest::newRow("format 1002") << QStringLiteral("format 1002") << 1
                                 << QStringLiteral("format must be 1000 or 1001");
    QTest::newRow("format twice") << QStringLiteral("format 1000\nformat 1001") << 2
                                  << QStringLiteral("twice");
    QTest::newRow("version of 17 bytes") << QStringLiteral("version \"ABCDEFGHIJKLMNOPQ\"") << 1
                                         << QStringLiteral("longer than 16 bytes");
    QTest::newRow("duplicate setting") << QStringLiteral("setting A 1 1 = a\n#\nsetting A 2 1 = b")
                                       << 3 << QStringLiteral("first defined on line 1");
    QTest::newRow("duplicate setting reported at its own line")
        << QStringLiteral("setting A 1 1 = a\nsetting A 2 1 = b\n... c\nu8 Z 1") << 2
        << QStringLiteral("duplicate setting name \"A\"");
    QTest::newRow("list item clashes with a string")
        << QStringLiteral("string \"L#2\" \"x\"\nstrings L \"a\" \"b\"") << 2
        << QStringLiteral("duplicate string name \"L#2\"");
    QTest::newRow("unterminated quote")
        << QStringLiteral("string A \"abc") << 1 << QStringLiteral("not closed");
    QTest::newRow("unknown escape")
        << QStringLiteral("string A \"a\\qb\"") << 1 << QStringLiteral("unknown escape \\q");
    QTest::newRow("string list not closed") << QStringLiteral("u8 A 1\nstrings L {\n\"a\"\n\"b\"\n")
                                            << 2 << QStringLiteral("is not closed");
    QTest::newRow("empty string list")
        << QStringLiteral("strings L {\n}") << 1 << QStringLiteral("has no texts");
    QTest::newRow("bare word in a list") << QStringLiteral("strings L {\n\"a\" b\n}") << 2
                                         << QStringLiteral("quoted texts, not \"b\"");
    QTest::newRow("non-Latin-1 definition")
        << QStringLiteral("setting S 1 1 = num, \u20ac") << 1 << QStringLiteral("outside Latin-1");
    QTest::newRow("name of 245 bytes")
        << QStringLiteral("u8 %1 1").arg(QString(245, QLatin1Char('n'))) << 1
        << QStringLiteral("longer than 244 bytes");
    QTest::newRow("title of 256 bytes")
        << QStringLiteral("category C \"%1\"").arg(QString(256, QLatin1Char('t'))) << 1
        << QStringLiteral("at most 255 bytes");
    QTest::newRow("= outside a setting")
        << QStringLiteral("u8 A = 1") << 1 << QStringLiteral("unexpected =");
}

void TestLayoutCompiler::errors() {
    QFETCH(QString, source);
    QFETCH(int, line);
    QFETCH(QString, message);

    QByteArray out("untouched");
    LayoutCompiler::Error error;
    QVERIFY(!LayoutCompiler::compileDetailed(source, &out, &error));
    QCOMPARE(error.line, line);
    QVERIFY2(error.message.contains(message), qPrintable(error.message));
    QCOMPARE(out, QByteArray("untouched"));

    QString text;
    QVERIFY(!LayoutCompiler::compile(source, &out, &text));
    QVERIFY2(text.startsWith(QStringLiteral("line %1: ").arg(line)), qPrintable(text));
}

void TestLayoutCompiler::writerLayout() {
    KxsWriter w;
    QVERIFY(w.setVersion(QStringLiteral("V1")));
    w.setFormat(1001);
    QVERIFY(w.addString(QStringLiteral("AB"), QStringLiteral("xyz")));
    QVERIFY(w.addInteger(QStringLiteral("C"), 0x0102, 2));
    const QByteArray bytes = w.toBytes();

    // Header, names table (13 + 12 bytes) straight after it, then the data (3 + 2 bytes).
    QCOMPARE(bytes.left(6), QByteArray("KXDATA"));
    QCOMPARE(bytes.mid(6, 16), QByteArray("V1") + QByteArray(14, '\0'));
    QCOMPARE(kxs::readLE16(bytes.constData() + 22), quint16(1001));
    QCOMPARE(kxs::readLE32(bytes.constData() + 24), 40u);
    QCOMPARE(kxs::readLE32(bytes.constData() + 28), 25u);
    QCOMPARE(kxs::readLE32(bytes.constData() + 32), 65u);
    QCOMPARE(kxs::readLE32(bytes.constData() + 36), 5u);
    QCOMPARE(bytes.size(), 70);
    QCOMPARE(bytes.mid(40, 13), QByteArray::fromHex("0d0300000000030000004142") + '\0');
    QCOMPARE(bytes.mid(53, 12), QByteArray::fromHex("0c020300000002000000") + QByteArray("C\0", 2));
    QCOMPARE(bytes.mid(65), QByteArray::fromHex("78797a0201"));
}

void TestLayoutCompiler::writerRefusals_data() {
    QTest::addColumn<int>("kind"); // 0 integer, 1 string name, 2 category, 3 version
    QTest::addColumn<QString>("text");
    QTest::addColumn<quint64>("value");
    QTest::addColumn<int>("size");

    QTest::newRow("integer of 3 bytes") << 0 << QString() << quint64(1) << 3;
    QTest::newRow("4-byte overflow") << 0 << QString() << quint64(0x100000000ull) << 4;
    QTest::newRow("name outside Latin-1") << 1 << QStringLiteral("\u0100") << quint64(0) << 0;
    QTest::newRow("preset of 256 bytes") << 2 << QString(256, QLatin1Char('p')) << quint64(0) << 0;
    QTest::newRow("version of 17 bytes") << 3 << QString(17, QLatin1Char('v')) << quint64(0) << 0;
}

void TestLayoutCompiler::writerRefusals() {
    QFETCH(int, kind);
    QFETCH(QString, text);
    QFETCH(quint64, value);
    QFETCH(int, size);
    KxsWriter w;
    QVERIFY(w.addInteger(QStringLiteral("First"), 1, 1));
    const QByteArray before = w.toBytes();
    bool ok = true;
    switch (kind) {
    case 0:
        ok = w.addInteger(QStringLiteral("I"), value, size);
        break;
    case 1:
        ok = w.addString(text, QStringLiteral("x"));
        break;
    case 2:
        ok = w.addCategory(QStringLiteral("C"), QStringLiteral("t"), text);
        break;
    default:
        ok = w.setVersion(text);
    }
    QVERIFY(!ok);
    QVERIFY(!w.errorString().isEmpty());
    QCOMPARE(w.entryCount(), 1);
    QCOMPARE(w.toBytes(), before);
}

QTEST_GUILESS_MAIN(TestLayoutCompiler)
#include "tst_layoutcompiler.moc"
