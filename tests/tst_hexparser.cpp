// Loading setup images, metadata texts, phantom byte arithmetic and reading settings
// bytes by address.
#include "sf/parser/HexParser.h"
#include "support/HexFixtures.h"

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using sf::parser::HexParser;
namespace hex = testsupport::hex;

namespace {

QByteArray h(const char* hexDigits) {
    return QByteArray::fromHex(hexDigits);
}

// The reference walk: addresses from `address` on, counting real bytes until n are met.
quint64 walkWithPhantoms(int period, quint64 address, quint64 n) {
    if (period < 2 || n == 0) {
        return n;
    }
    quint64 span = 0;
    for (quint64 real = 0; real < n; ++span) {
        if ((address + span) % static_cast<quint64>(period) != 1) {
            ++real;
        }
    }
    return span;
}

bool writeFile(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

} // namespace

class TestHexParser : public QObject {
    Q_OBJECT
private slots:
    void load_data();
    void load();
    void failedLoadLeavesParserClosed();
    void loadReadsAcrossChunkBoundaries();
    void openModes_data();
    void openModes();
    void region_data();
    void region();
    void metadataOf255Bytes();
    void staticReaders_data();
    void staticReaders();
    void staticReadersOnMissingFile();
    void countBytesWithPhantoms_data();
    void countBytesWithPhantoms();
    void phantomCountsMatchTheWalk();
    void phantomInsertAndRemove_data();
    void phantomInsertAndRemove();
    void allBytesArePhantom_data();
    void allBytesArePhantom();
    void readData_data();
    void readData();
    void readDataNeedsOpenParser();
};

void TestHexParser::load_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<QString>("records");
    QTest::addColumn<QString>("fw");
    QTest::addColumn<QString>("kxs");
    QTest::addColumn<QString>("enq");

    const QByteArray data = hex::dataLine(0xE000, h("01020304"));
    const QByteArray meta = hex::metaLine(0xC0, "KX3.06") + hex::metaLine(0xC1, "KX3p06") +
                            hex::metaLine(0xC2, "Korvex");

    QTest::newRow("metadata taken out, data kept, end record dropped")
        << meta + hex::extLine(1) + data + hex::eofLine() << true << "X0001 DE000:01020304"
        << "KX3.06"
        << "KX3p06"
        << "Korvex";
    QTest::newRow("empty text loads with no records") << QByteArray() << true << ""
                                                      << ""
                                                      << ""
                                                      << "";
    QTest::newRow("text after end record still read")
        << data + hex::eofLine() + hex::dataLine(0xE010, h("AA")) << true
        << "DE000:01020304 DE010:AA"
        << ""
        << ""
        << "";
    QTest::newRow("other record types kept in order")
        << hex::line(0x03, 0, h("00001234")) + data + hex::line(0x05, 0, h("00000100")) << true
        << "T03@0000:00001234 DE000:01020304 T05@0000:00000100"
        << ""
        << ""
        << "";
    QTest::newRow("later metadata record wins")
        << hex::metaLine(0xC0, "old") + hex::metaLine(0xC0, "new") << true << ""
        << "new"
        << ""
        << "";
    QTest::newRow("metadata trailing zeros kept")
        << hex::metaLine(0xC1, QByteArray("KX\0\0", 4)) << true << ""
        << "" << QString::fromLatin1("KX\0\0", 4) << "";
    QTest::newRow("Latin-1 metadata") << hex::metaLine(0xC2, "caf\xE9") << true << ""
                                      << ""
                                      << "" << QString::fromLatin1("caf\xE9");
    QTest::newRow("lower-case digits") << data.toLower() << true << "DE000:01020304"
                                       << ""
                                       << ""
                                       << "";
    QTest::newRow("line feeds only")
        << QByteArray(data).replace("\r\n", "\n") << true << "DE000:01020304"
        << ""
        << ""
        << "";
    QTest::newRow("no final line end") << data.trimmed() << true << "DE000:01020304"
                                       << ""
                                       << ""
                                       << "";
    QTest::newRow("junk before the colon skipped")
        << "garbage line\r\n\r\n  " + data << true << "DE000:01020304"
        << ""
        << ""
        << "";
    QTest::newRow("text after checksum ignored")
        << QByteArray(data).replace("\r\n", " trailing words\r\n") << true << "DE000:01020304"
        << ""
        << ""
        << "";
    QTest::newRow("empty data record") << hex::dataLine(0x0010, QByteArray()) << true << "D0010:"
                                       << ""
                                       << ""
                                       << "";

    QTest::newRow("bad checksum") << data + ":0400100001020304E0\r\n"
                                  << false << ""
                                  << ""
                                  << ""
                                  << "";
    QTest::newRow("bad hex digit in data")
        << QByteArray(data).replace("0102", "01G2") << false << ""
        << ""
        << ""
        << "";
    QTest::newRow("bad hex digit in length") << QByteArray(":Z4E0000001020304\r\n") << false << ""
                                             << ""
                                             << ""
                                             << "";
    QTest::newRow("short line") << QByteArray(":0400E00001\r\n") << false << ""
                                << ""
                                << ""
                                << "";
    QTest::newRow("text ends inside record") << QByteArray(":04E000") << false << ""
                                             << ""
                                             << ""
                                             << "";
    QTest::newRow("missing colon") << QByteArray("0400E0000102030411\r\n") << false << ""
                                   << ""
                                   << ""
                                   << "";
    QTest::newRow("blank line after last record") << data + "\r\n"
                                                  << false << ""
                                                  << ""
                                                  << ""
                                                  << "";
    QTest::newRow("bad line after end record") << data + hex::eofLine() + ":00000001FE\r\n"
                                               << false << ""
                                               << ""
                                               << ""
                                               << "";
}

void TestHexParser::load() {
    QFETCH(QByteArray, text);
    QFETCH(bool, ok);
    QFETCH(QString, records);
    QFETCH(QString, fw);
    QFETCH(QString, kxs);
    QFETCH(QString, enq);

    HexParser parser;
    QCOMPARE(parser.loadHexData(text, sf::parser::PhantomNone), ok);
    QCOMPARE(parser.isOpen(), ok);
    QCOMPARE(parser.errorString().isEmpty(), ok);
    QCOMPARE(hex::dump(parser.records()), records);
    if (ok) {
        QCOMPARE(parser.getFwVersion(), fw);
        QCOMPARE(parser.getKxsVersion(), kxs);
        QCOMPARE(parser.getEnqString(), enq);
    }
    // The same through a device.
    QBuffer buffer(&text);
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    HexParser viaDevice;
    QCOMPARE(viaDevice.loadHex(&buffer, sf::parser::PhantomNone), ok);
    QCOMPARE(hex::dump(viaDevice.records()), records);
    QCOMPARE(viaDevice.isWritable(), false);
}

void TestHexParser::failedLoadLeavesParserClosed() {
    HexParser parser;
    QVERIFY(parser.loadHexData(hex::metaLine(0xC0, "KX3.06") + hex::dataLine(0, h("0102")),
                               sf::parser::PhantomEvery2));
    QVERIFY(parser.readData(0, 1));
    QVERIFY(!parser.loadHexData(hex::dataLine(0, h("0102")) + ":0000000100\r\n",
                                sf::parser::PhantomNone));
    QVERIFY(!parser.isOpen());
    QVERIFY(parser.records().empty());
    QVERIFY(!parser.readData(0, 1));
    QCOMPARE(parser.errorString(), QStringLiteral("line 2: checksum mismatch"));
    // Texts and processor of the earlier image stay until overwritten.
    QCOMPARE(parser.getFwVersion(), QStringLiteral("KX3.06"));
    QCOMPARE(parser.getPhantomBytePeriod(), 2);
}

void TestHexParser::loadReadsAcrossChunkBoundaries() {
    // Enough lines of varying length that records straddle the reader's chunk edges.
    QByteArray text;
    QString expected;
    quint16 address = 0;
    for (int i = 0; i < 30000; ++i) {
        const int length = 1 + (i * 37) % 40;
        QByteArray data(length, static_cast<char>(i & 0xFF));
        text += hex::dataLine(address, data);
        if (i < 3) {
            expected += QStringLiteral("D%1:%2 ")
                            .arg(address, 4, 16, QLatin1Char('0'))
                            .toUpper()
                            .arg(QString::fromLatin1(data.toHex().toUpper()));
        }
        address = static_cast<quint16>(address + length);
    }
    text += hex::eofLine();
    HexParser parser;
    QVERIFY(parser.loadHexData(text, sf::parser::PhantomNone));
    QCOMPARE(parser.records().size(), size_t(30000));
    sf::parser::RecordList firstThree;
    for (int i = 0; i < 3; ++i) {
        firstThree.push_back(std::make_unique<sf::parser::Inhex32Entry>(*parser.records()[i]));
    }
    QCOMPARE(hex::dump(firstThree) + QLatin1Char(' '), expected);
    QCOMPARE(parser.records().back()->getDataBytes(),
             QByteArray(1 + (29999 * 37) % 40, static_cast<char>(29999 & 0xFF)));
}

void TestHexParser::openModes_data() {
    QTest::addColumn<bool>("exists");
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<bool>("writable");

    QTest::newRow("read only") << true << int(QIODevice::ReadOnly) << true << false;
    QTest::newRow("read write") << true << int(QIODevice::ReadWrite) << true << true;
    QTest::newRow("read write, text mode")
        << true << int(QIODevice::ReadWrite | QIODevice::Text) << true << true;
    QTest::newRow("write only refused") << true << int(QIODevice::WriteOnly) << false << false;
    QTest::newRow("truncate refused")
        << true << int(QIODevice::ReadWrite | QIODevice::Truncate) << false << false;
    QTest::newRow("append refused")
        << true << int(QIODevice::ReadWrite | QIODevice::Append) << false << false;
    QTest::newRow("missing file, read only") << false << int(QIODevice::ReadOnly) << false << false;
    QTest::newRow("missing file, read write is not created")
        << false << int(QIODevice::ReadWrite) << false << false;
}

void TestHexParser::openModes() {
    QFETCH(bool, exists);
    QFETCH(int, mode);
    QFETCH(bool, ok);
    QFETCH(bool, writable);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("setup.hex"));
    const QByteArray text = hex::dataLine(0x1000, h("0A0B")) + hex::eofLine();
    if (exists) {
        QVERIFY(writeFile(path, text));
    }
    HexParser parser;
    QCOMPARE(parser.loadHex(path, sf::parser::PhantomNone, QIODevice::OpenMode(mode)), ok);
    QCOMPARE(parser.isWritable(), writable);
    QCOMPARE(parser.filePath(), ok ? path : QString());
    QCOMPARE(QFile::exists(path), exists);
    if (exists) {
        QFile f(path);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QCOMPARE(f.readAll(), text); // never changed by loading
    }
    QVERIFY(!HexParser().loadHex(QString(), sf::parser::PhantomNone, QIODevice::ReadOnly));
}

void TestHexParser::region_data() {
    QTest::addColumn<int>("processor");
    QTest::addColumn<int>("period");
    QTest::addColumn<uint>("start");
    QTest::addColumn<uint>("settingsEnd");
    QTest::addColumn<uint>("end");

    QTest::newRow("every 4") << 0 << 4 << 0x1E000u << 0x1E1E0u << 0x1E200u;
    QTest::newRow("every 2") << 1 << 2 << 0x1E000u << 0x1E1E0u << 0x1E200u;
    QTest::newRow("none") << 2 << 1 << 0x310000u << 0x310400u << 0x310400u;
    QTest::newRow("unknown 3") << 3 << 2 << 0x1E000u << 0x1E1E0u << 0x1E200u;
    QTest::newRow("unknown -1") << -1 << 2 << 0x1E000u << 0x1E1E0u << 0x1E200u;
}

void TestHexParser::region() {
    QFETCH(int, processor);
    QFETCH(int, period);
    QFETCH(uint, start);
    QFETCH(uint, settingsEnd);
    QFETCH(uint, end);

    HexParser fresh;
    QCOMPARE(fresh.getStartAddress(), 0x1E000u);
    QCOMPARE(fresh.getSettingsEndAddress(), 0x1E1E0u);
    QCOMPARE(fresh.getEndAddress(), 0x1E200u);
    QCOMPARE(fresh.getPhantomBytePeriod(), 1);

    HexParser parser;
    QVERIFY(parser.loadHexData(hex::eofLine(), processor));
    QCOMPARE(parser.getProcessor(), processor);
    QCOMPARE(parser.getPhantomBytePeriod(), period);
    QCOMPARE(parser.getStartAddress(), start);
    QCOMPARE(parser.getSettingsEndAddress(), settingsEnd);
    QCOMPARE(parser.getEndAddress(), end);
}

void TestHexParser::metadataOf255Bytes() {
    const QByteArray text(255, 'v');
    HexParser parser;
    QVERIFY(parser.loadHexData(hex::metaLine(0xC2, text), sf::parser::PhantomNone));
    QCOMPARE(parser.getEnqString(), QString::fromLatin1(text));

    // Longer texts are cut to the 255 bytes one record can hold when written.
    parser.setEnqString(QString(300, QLatin1Char('w')));
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    QVERIFY(parser.writeToDevice(&out, false, 16));
    QVERIFY(out.data().startsWith(hex::metaLine(0xC2, QByteArray(255, 'w'))));
    HexParser again;
    QVERIFY(again.loadHexData(out.data(), sf::parser::PhantomNone));
    QCOMPARE(again.getEnqString(), QString(255, QLatin1Char('w')));
}

void TestHexParser::staticReaders_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("fw");
    QTest::addColumn<QString>("kxs");
    QTest::addColumn<QString>("enq");

    QTest::newRow("trailing zeros trimmed") << hex::metaLine(0xC0, QByteArray("KX3.06\0\0", 8)) +
                                                   hex::metaLine(0xC1, QByteArray("KX3p06\0", 7)) +
                                                   hex::metaLine(0xC2, QByteArray("A\0B\0", 4))
                                            << "KX3.06"
                                            << "KX3p06" << QString::fromLatin1("A\0B", 3);
    QTest::newRow("first record of a type wins")
        << hex::metaLine(0xC0, "first") + hex::metaLine(0xC0, "second") << "first"
        << ""
        << "";
    QTest::newRow("bad lines passed over")
        << ":02000000C04B\r\n" +
               hex::metaLine(0xC0, "bad checksum").replace("\r\n", "").chopped(2) + "00\r\n" +
               hex::metaLine(0xC0, "good") + hex::metaLine(0xC1, "layout")
        << "good"
        << "layout"
        << "";
    QTest::newRow("records anywhere in the file")
        << hex::dataLine(0, h("0102")) + hex::eofLine() + hex::metaLine(0xC2, "late") << ""
        << ""
        << "late";
    QTest::newRow("all zeros gives empty text") << hex::metaLine(0xC0, QByteArray(4, '\0')) << ""
                                                << ""
                                                << "";
    QTest::newRow("not a HEX file") << QByteArray("hello world\n") << ""
                                    << ""
                                    << "";
}

void TestHexParser::staticReaders() {
    QFETCH(QByteArray, text);
    QFETCH(QString, fw);
    QFETCH(QString, kxs);
    QFETCH(QString, enq);

    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("map.kxhex"));
    QVERIFY(writeFile(path, text));
    QCOMPARE(HexParser::getFwVersion(path), fw);
    QCOMPARE(HexParser::getKxsVersion(path), kxs);
    QCOMPARE(HexParser::getEnqString(path), enq);

    QBuffer buffer(&text);
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    QCOMPARE(HexParser::getKxsVersion(&buffer), kxs);
}

void TestHexParser::staticReadersOnMissingFile() {
    QCOMPARE(HexParser::getFwVersion(QStringLiteral("/nonexistent/x.kxhex")), QString());
    QCOMPARE(HexParser::getKxsVersion(QString()), QString());
    QCOMPARE(HexParser::getEnqString(static_cast<QIODevice*>(nullptr)), QString());
}

void TestHexParser::countBytesWithPhantoms_data() {
    QTest::addColumn<int>("processor");
    QTest::addColumn<quint64>("address");
    QTest::addColumn<quint64>("real");
    QTest::addColumn<quint64>("span");

    QTest::newRow("period 2, even start") << 1 << quint64(0x1E000) << quint64(4) << quint64(7);
    QTest::newRow("period 2, odd start") << 1 << quint64(0x1E001) << quint64(4) << quint64(8);
    QTest::newRow("period 2, one byte on a phantom")
        << 1 << quint64(0x1E001) << quint64(1) << quint64(2);
    QTest::newRow("period 4, aligned") << 0 << quint64(0x1E000) << quint64(3) << quint64(4);
    QTest::newRow("period 4, aligned, six") << 0 << quint64(0x1E000) << quint64(6) << quint64(8);
    QTest::newRow("period 4, start on phantom")
        << 0 << quint64(0x1E001) << quint64(3) << quint64(4);
    QTest::newRow("period 4, start after phantom")
        << 0 << quint64(0x1E002) << quint64(3) << quint64(3);
    QTest::newRow("period 4, start after phantom, four")
        << 0 << quint64(0x1E002) << quint64(4) << quint64(5);
    QTest::newRow("period 4, start before phantom")
        << 0 << quint64(0x1E003) << quint64(2) << quint64(2);
    QTest::newRow("no phantoms") << 2 << quint64(0x1E001) << quint64(9) << quint64(9);
    QTest::newRow("zero count") << 1 << quint64(0x1E001) << quint64(0) << quint64(0);
    QTest::newRow("unknown processor is period 2")
        << 9 << quint64(0x1E000) << quint64(4) << quint64(7);
    QTest::newRow("near the top of 32 bits")
        << 1 << quint64(0xFFFFFFF0) << quint64(0x100) << quint64(0x1FF);
}

void TestHexParser::countBytesWithPhantoms() {
    QFETCH(int, processor);
    QFETCH(quint64, address);
    QFETCH(quint64, real);
    QFETCH(quint64, span);
    HexParser parser;
    QVERIFY(parser.loadHexData(QByteArray(), processor));
    QCOMPARE(parser.countBytesWithPhantoms(address, real), span);
    QCOMPARE(parser.countBytesWithoutPhantoms(address, span), real);
}

void TestHexParser::phantomCountsMatchTheWalk() {
    for (int processor : {0, 1, 2}) {
        HexParser parser;
        QVERIFY(parser.loadHexData(QByteArray(), processor));
        const int period = parser.getPhantomBytePeriod();
        for (quint64 address = 0x1E000; address < 0x1E009; ++address) {
            for (quint64 n = 0; n < 40; ++n) {
                const quint64 span = walkWithPhantoms(period, address, n);
                QCOMPARE(parser.countBytesWithPhantoms(address, n), span);
                QCOMPARE(parser.countBytesWithoutPhantoms(address, span), n);
            }
            // A span ending on a phantom still counts only its real bytes.
            quint64 phantoms = 0;
            for (quint64 i = 0; i < 13; ++i) {
                phantoms += (period >= 2 && (address + i) % quint64(period) == 1) ? 1 : 0;
            }
            QCOMPARE(parser.countBytesWithoutPhantoms(address, 13), 13 - phantoms);
        }
    }
}

void TestHexParser::phantomInsertAndRemove_data() {
    QTest::addColumn<int>("processor");
    QTest::addColumn<quint64>("address");
    QTest::addColumn<QByteArray>("real");
    QTest::addColumn<QByteArray>("span");

    QTest::newRow("period 2, even")
        << 1 << quint64(0x1E000) << h("AABBCCDD") << h("AA00BB00CC00DD");
    QTest::newRow("period 2, odd") << 1 << quint64(0x1E001) << h("AABB") << h("00AA00BB");
    QTest::newRow("period 4") << 0 << quint64(0x1E000) << h("010203040506")
                              << h("0100020304000506");
    QTest::newRow("period 4, from 3") << 0 << quint64(0x1E003) << h("0102") << h("0102");
    QTest::newRow("no phantoms") << 2 << quint64(0x1E001) << h("0102") << h("0102");
}

void TestHexParser::phantomInsertAndRemove() {
    QFETCH(int, processor);
    QFETCH(quint64, address);
    QFETCH(QByteArray, real);
    QFETCH(QByteArray, span);
    HexParser parser;
    QVERIFY(parser.loadHexData(QByteArray(), processor));
    QCOMPARE(parser.insertPhantomBytes(real, address, quint64(real.size())), span);
    QCOMPARE(parser.removePhantomBytes(span, address, quint64(span.size())), real);
}

void TestHexParser::allBytesArePhantom_data() {
    QTest::addColumn<int>("processor");
    QTest::addColumn<QString>("record");
    QTest::addColumn<int>("upper");
    QTest::addColumn<bool>("phantom");

    QTest::newRow("one byte on a phantom, period 2") << 1 << "DE001:AA" << 1 << true;
    QTest::newRow("one byte on a real address") << 1 << "DE002:AA" << 1 << false;
    QTest::newRow("two bytes never all phantom") << 1 << "DE001:AABB" << 1 << false;
    QTest::newRow("period 4, phantom at 1 mod 4") << 0 << "DE005:AA" << 1 << true;
    QTest::newRow("period 4, 3 mod 4 is real") << 0 << "DE003:AA" << 1 << false;
    QTest::newRow("upper address counts") << 0 << "D0001:AA" << 0x0310 << true;
    QTest::newRow("empty record") << 1 << "DE001:" << 1 << false;
    QTest::newRow("no phantom processor") << 2 << "DE001:AA" << 1 << false;
}

void TestHexParser::allBytesArePhantom() {
    QFETCH(int, processor);
    QFETCH(QString, record);
    QFETCH(int, upper);
    QFETCH(bool, phantom);
    HexParser parser;
    QVERIFY(parser.loadHexData(QByteArray(), processor));
    const sf::parser::RecordList list = hex::records(record);
    QCOMPARE(parser.allBytesArePhantom(list.front().get(), static_cast<quint16>(upper)), phantom);
    QVERIFY(!parser.allBytesArePhantom(nullptr, 0));
}

void TestHexParser::readData_data() {
    QTest::addColumn<int>("processor");
    QTest::addColumn<QString>("image");
    QTest::addColumn<uint>("address");
    QTest::addColumn<uint>("count");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<QByteArray>("bytes");

    const QString two = QStringLiteral("D1000:00010203 D1004:04050607");
    QTest::newRow("inside one record") << 2 << two << 0x1001u << 2u << true << h("0102");
    QTest::newRow("across two records") << 2 << two << 0x1002u << 4u << true << h("02030405");
    QTest::newRow("whole image") << 2 << two << 0x1000u << 8u << true << h("0001020304050607");
    QTest::newRow("past the end fails") << 2 << two << 0x1006u << 3u << false << QByteArray();
    QTest::newRow("before the start fails") << 2 << two << 0x0FFFu << 2u << false << QByteArray();
    QTest::newRow("gap between records fails")
        << 2 << "D1000:0001 D1004:0405" << 0x1000u << 6u << false << QByteArray();
    QTest::newRow("records out of order, found cyclically")
        << 2 << "D1004:04050607 D2000:FF D1000:00010203" << 0x1002u << 4u << true << h("02030405");
    QTest::newRow("extended records passed over, upper taken as 0")
        << 2 << "X0001 DE000:0A0B0C X0002 DE003:0D" << 0xE001u << 3u << true << h("0B0C0D");
    QTest::newRow("full address with upper part is not found")
        << 2 << "X0001 DE000:0A0B0C" << 0x1E000u << 1u << false << QByteArray();
    QTest::newRow("first record holding the address wins")
        << 2 << "X0001 DE000:AA X0002 DE000:BB" << 0xE000u << 1u << true << h("AA");
    QTest::newRow("other record types are not data")
        << 2 << "T05@1000:01020304" << 0x1000u << 1u << false << QByteArray();
    QTest::newRow("phantoms removed, period 2")
        << 1 << "DE000:AA00BB00CC" << 0xE000u << 3u << true << h("AABBCC");
    QTest::newRow("phantoms removed, period 4")
        << 0 << "DE000:0100020304000506" << 0xE000u << 6u << true << h("010203040506");
    QTest::newRow("phantom span must be covered")
        << 1 << "DE000:AA00BB00" << 0xE000u << 3u << false << QByteArray();
    QTest::newRow("zero bytes") << 2 << two << 0x9999u << 0u << true << QByteArray();
    QTest::newRow("huge count fails quickly")
        << 2 << two << 0x1000u << 0xFFFFFFFFu << false << QByteArray();
    QTest::newRow("record reaching past 0xFFFF")
        << 2 << "DFFFE:01020304" << 0x10000u << 2u << true << h("0304");
}

void TestHexParser::readData() {
    QFETCH(int, processor);
    QFETCH(QString, image);
    QFETCH(uint, address);
    QFETCH(uint, count);
    QFETCH(bool, ok);
    QFETCH(QByteArray, bytes);

    HexParser parser;
    QVERIFY(parser.loadHexData(hex::text(image), processor));
    const std::optional<QByteArray> data = parser.readData(address, count);
    QCOMPARE(data.has_value(), ok);
    if (ok) {
        QCOMPARE(*data, bytes);
    }
}

void TestHexParser::readDataNeedsOpenParser() {
    HexParser parser;
    QVERIFY(!parser.readData(0, 0));
    QVERIFY(parser.loadHexData(hex::dataLine(0, h("01")), sf::parser::PhantomNone));
    QCOMPARE(*parser.readData(0, 1), h("01"));
    parser.close();
    QVERIFY(!parser.readData(0, 1));
}

QTEST_GUILESS_MAIN(TestHexParser)
#include "tst_hexparser.moc"
