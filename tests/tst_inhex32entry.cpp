// One Intel HEX record: checksums, text form, trimming, splitting, copies.
#include "sf/parser/Inhex32Entry.h"
#include "support/HexFixtures.h"

#include <QtTest>

using sf::parser::Inhex32Entry;
namespace hex = testsupport::hex;

namespace {

QByteArray pattern(int length, int seed = 0) {
    QByteArray b;
    for (int i = 0; i < length; ++i) {
        b.append(static_cast<char>((i * 7 + seed) & 0xFF));
    }
    return b;
}

} // namespace

class TestInhex32Entry : public QObject {
    Q_OBJECT
private slots:
    void textForm_data();
    void textForm();
    void toStringSplitsLongRecords();
    void byteToHexAppendsUpperCase();
    void removeFromLeft_data();
    void removeFromLeft();
    void removeFromRight_data();
    void removeFromRight();
    void split_data();
    void split();
    void copiesAreIndependent_data();
    void copiesAreIndependent();
    void movesLeaveSourceEmpty();
    void longDataIsCut();
    void upperAddress_data();
    void upperAddress();
};

void TestInhex32Entry::textForm_data() {
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("address");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("expected");

    QTest::newRow("classic data line")
        << 0 << 0x0100 << QByteArray::fromHex("214601360121470136007EFE09D21901")
        << ":10010000214601360121470136007EFE09D2190140\r\n";
    QTest::newRow("end of file") << 1 << 0 << QByteArray() << ":00000001FF\r\n";
    QTest::newRow("extended address")
        << 4 << 0 << QByteArray::fromHex("0001") << ":020000040001F9\r\n";
    QTest::newRow("metadata text")
        << 0xC0 << 0 << QByteArray("KX3.06") << QString::fromLatin1(hex::metaLine(0xC0, "KX3.06"));
    QTest::newRow("checksum wraps to zero")
        << 0 << 0x0000 << QByteArray::fromHex("00") << ":0100000000FF\r\n";
    QTest::newRow("high address and bytes")
        << 0 << 0xFFFF << QByteArray::fromHex("FFFF")
        << QString::fromLatin1(hex::dataLine(0xFFFF, QByteArray::fromHex("FFFF")));
    QTest::newRow("255 bytes, heap stored")
        << 0 << 0x1234 << pattern(255) << QString::fromLatin1(hex::dataLine(0x1234, pattern(255)));
}

void TestInhex32Entry::textForm() {
    QFETCH(int, type);
    QFETCH(int, address);
    QFETCH(QByteArray, data);
    QFETCH(QString, expected);
    Inhex32Entry e(static_cast<quint8>(type), static_cast<quint16>(address), data);
    QCOMPARE(e.toString(255), expected);
    QCOMPARE(e.getLength(), static_cast<quint8>(data.size()));
    QCOMPARE(e.getDataBytes(), data);
    QCOMPARE(e.getChecksum(),
             hex::checksum(static_cast<quint8>(type), static_cast<quint16>(address), data));
    QCOMPARE(e.computeChecksum(), e.getChecksum());
    QCOMPARE(e.getData() == nullptr, data.isEmpty());
}

void TestInhex32Entry::toStringSplitsLongRecords() {
    Inhex32Entry e(0, 0x0010, pattern(20));
    const QString expected = QString::fromLatin1(hex::dataLine(0x0010, pattern(20).left(8)) +
                                                 hex::dataLine(0x0018, pattern(20).mid(8, 8)) +
                                                 hex::dataLine(0x0020, pattern(20).mid(16)));
    QCOMPARE(e.toString(8), expected);
    QCOMPARE(e.toString(0), QString::fromLatin1(hex::dataLine(0x0010, pattern(20))));
}

void TestInhex32Entry::byteToHexAppendsUpperCase() {
    QString text = QStringLiteral("x");
    Inhex32Entry::byteToHex(0x0A, text);
    Inhex32Entry::byteToHex(0xF0, text);
    QCOMPARE(text, QStringLiteral("x0AF0"));
}

void TestInhex32Entry::removeFromLeft_data() {
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("n");
    QTest::addColumn<int>("newLength");
    QTest::addColumn<int>("newAddress");

    QTest::newRow("drop two") << 8 << 0x1000 << 2 << 6 << 0x1002;
    QTest::newRow("drop none") << 8 << 0x1000 << 0 << 8 << 0x1000;
    QTest::newRow("negative drops none") << 8 << 0x1000 << -3 << 8 << 0x1000;
    QTest::newRow("drop all") << 8 << 0x1000 << 8 << 0 << 0x1008;
    QTest::newRow("more than length") << 8 << 0x1000 << 50 << 0 << 0x1008;
    QTest::newRow("heap record stays on heap") << 100 << 0x2000 << 30 << 70 << 0x201E;
    QTest::newRow("heap record moves inline") << 40 << 0x2000 << 30 << 10 << 0x201E;
    QTest::newRow("address wraps at 64 KiB") << 32 << 0xFFF0 << 20 << 12 << 0x0004;
}

void TestInhex32Entry::removeFromLeft() {
    QFETCH(int, length);
    QFETCH(int, address);
    QFETCH(int, n);
    QFETCH(int, newLength);
    QFETCH(int, newAddress);
    const QByteArray data = pattern(length, 3);
    Inhex32Entry e(0, static_cast<quint16>(address), data);
    QCOMPARE(e.removeFromLeft(n), newLength);
    QCOMPARE(static_cast<int>(e.getLength()), newLength);
    QCOMPARE(static_cast<int>(e.getAddress()), newAddress);
    QCOMPARE(e.getDataBytes(), data.right(newLength));
    QCOMPARE(e.getChecksum(), hex::checksum(0, e.getAddress(), e.getDataBytes()));
}

void TestInhex32Entry::removeFromRight_data() {
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("n");
    QTest::addColumn<int>("newLength");

    QTest::newRow("drop three") << 8 << 3 << 5;
    QTest::newRow("drop none") << 8 << 0 << 8;
    QTest::newRow("drop all") << 8 << 8 << 0;
    QTest::newRow("more than length") << 8 << 9 << 0;
    QTest::newRow("heap to inline") << 200 << 190 << 10;
    QTest::newRow("empty record") << 0 << 4 << 0;
}

void TestInhex32Entry::removeFromRight() {
    QFETCH(int, length);
    QFETCH(int, n);
    QFETCH(int, newLength);
    const QByteArray data = pattern(length, 5);
    Inhex32Entry e(0, 0x4000, data);
    QCOMPARE(e.removeFromRight(n), newLength);
    QCOMPARE(e.getAddress(), quint16(0x4000));
    QCOMPARE(e.getDataBytes(), data.left(newLength));
    QCOMPARE(e.getChecksum(), hex::checksum(0, 0x4000, e.getDataBytes()));
}

void TestInhex32Entry::split_data() {
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("a");
    QTest::addColumn<int>("b");
    QTest::addColumn<bool>("splits");

    QTest::newRow("a equals b: nothing") << 16 << 5 << 5 << false;
    QTest::newRow("a above b: nothing") << 16 << 6 << 5 << false;
    QTest::newRow("drop the middle") << 16 << 3 << 9 << true;
    QTest::newRow("neighbours, nothing dropped") << 16 << 3 << 4 << true;
    QTest::newRow("first and last byte kept") << 16 << 0 << 15 << true;
    QTest::newRow("b at the end: nothing") << 16 << 3 << 16 << false;
    QTest::newRow("negative a: nothing") << 16 << -1 << 4 << false;
    QTest::newRow("heap record, inline pieces") << 60 << 9 << 50 << true;
    QTest::newRow("heap record, heap pieces") << 200 << 99 << 101 << true;
}

void TestInhex32Entry::split() {
    QFETCH(int, length);
    QFETCH(int, a);
    QFETCH(int, b);
    QFETCH(bool, splits);
    const QByteArray data = pattern(length, 11);
    Inhex32Entry e(0x00, 0x1000, data);
    std::unique_ptr<Inhex32Entry> tail = e.split(a, b);
    if (!splits) {
        QVERIFY(!tail);
        QCOMPARE(e.getDataBytes(), data);
        QCOMPARE(e.getAddress(), quint16(0x1000));
        return;
    }
    QVERIFY(tail);
    // Bytes 0..a stay, b..end move to a record at address + b.
    QCOMPARE(e.getDataBytes(), data.left(a + 1));
    QCOMPARE(e.getAddress(), quint16(0x1000));
    QCOMPARE(tail->getDataBytes(), data.mid(b));
    QCOMPARE(tail->getAddress(), quint16(0x1000 + b));
    QCOMPARE(tail->getType(), quint8(0x00));
    QCOMPARE(e.getChecksum(), hex::checksum(0, 0x1000, e.getDataBytes()));
    QCOMPARE(tail->getChecksum(), hex::checksum(0, tail->getAddress(), tail->getDataBytes()));
}

void TestInhex32Entry::copiesAreIndependent_data() {
    QTest::addColumn<int>("length");
    QTest::newRow("empty") << 0;
    QTest::newRow("inline") << 16;
    QTest::newRow("largest inline") << 18;
    QTest::newRow("smallest on heap") << 19;
    QTest::newRow("largest") << 255;
}

void TestInhex32Entry::copiesAreIndependent() {
    QFETCH(int, length);
    const QByteArray data = pattern(length, 1);
    Inhex32Entry original(0x00, 0x2000, data);
    Inhex32Entry copy(original);
    Inhex32Entry assigned(0x04, 0x0000, QByteArray::fromHex("0001"));
    assigned = original;
    QVERIFY(copy == original);
    QVERIFY(assigned == original);
    original.removeFromLeft(length / 2 + 1);
    QCOMPARE(copy.getDataBytes(), data);
    QCOMPARE(assigned.getDataBytes(), data);
    QCOMPARE(copy.getChecksum(), hex::checksum(0, 0x2000, data));
    if (length > 0) {
        QVERIFY(copy != original);
    }
}

void TestInhex32Entry::movesLeaveSourceEmpty() {
    const QByteArray data = pattern(100);
    Inhex32Entry a(0x00, 0x10, data);
    Inhex32Entry b(std::move(a));
    QCOMPARE(b.getDataBytes(), data);
    QCOMPARE(a.getLength(), quint8(0)); // NOLINT(bugprone-use-after-move): checks the state
    Inhex32Entry c;
    c = std::move(b);
    QCOMPARE(c.getDataBytes(), data);
    QCOMPARE(c.toString(), QString::fromLatin1(hex::dataLine(0x10, data)));
}

void TestInhex32Entry::longDataIsCut() {
    Inhex32Entry e(0x00, 0, pattern(300));
    QCOMPARE(e.getLength(), quint8(255));
    QCOMPARE(e.getDataBytes(), pattern(255));
}

void TestInhex32Entry::upperAddress_data() {
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<int>("upper");
    QTest::newRow("two bytes high first") << QByteArray::fromHex("1234") << 0x1234;
    QTest::newRow("one byte") << QByteArray::fromHex("12") << 0;
    QTest::newRow("none") << QByteArray() << 0;
    QTest::newRow("extra bytes ignored") << QByteArray::fromHex("00310A") << 0x0031;
}

void TestInhex32Entry::upperAddress() {
    QFETCH(QByteArray, data);
    QFETCH(int, upper);
    QCOMPARE(static_cast<int>(Inhex32Entry(0x04, 0, data).upperAddress()), upper);
    QCOMPARE(static_cast<int>(Inhex32Entry::extendedAddress(0xBEEF)->upperAddress()), 0xBEEF);
}

QTEST_GUILESS_MAIN(TestInhex32Entry)
#include "tst_inhex32entry.moc"
