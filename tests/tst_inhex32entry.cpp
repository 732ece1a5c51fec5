// One Intel HEX record: checksums and text form, trimming, splitting, copies.
#include "sf/parser/Inhex32Entry.h"
#include "support/HexFixtures.h"
#include "support/TableFile.h"

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
    void textForm_data() { testsupport::loadTable(); }

    void textForm() {
        QFETCH(int, type);
        QFETCH(int, address);
        QFETCH(QByteArray, data);
        QFETCH(QString, expected);
        Inhex32Entry e(static_cast<quint8>(type), static_cast<quint16>(address), data);
        QCOMPARE(e.toString(255), expected);
        QCOMPARE(e.getDataBytes(), data);
        QCOMPARE(e.getData() == nullptr, data.isEmpty());
        QCOMPARE(e.getChecksum(),
                 hex::checksum(static_cast<quint8>(type), static_cast<quint16>(address), data));
    }

    void toStringSplitsLongRecords() {
        const QByteArray data = pattern(20);
        Inhex32Entry e(0, 0x0010, data);
        QCOMPARE(e.toString(8), QString::fromLatin1(hex::dataLine(0x0010, data.left(8)) +
                                                    hex::dataLine(0x0018, data.mid(8, 8)) +
                                                    hex::dataLine(0x0020, data.mid(16))));
        QCOMPARE(e.toString(0), QString::fromLatin1(hex::dataLine(0x0010, data)));
        QCOMPARE(Inhex32Entry(0, 0, pattern(300)).getLength(), quint8(255)); // cut to one record
    }

    void trim_data() { testsupport::loadTable(); }

    void trim() {
        QFETCH(bool, left);
        QFETCH(int, length);
        QFETCH(int, address);
        QFETCH(int, n);
        QFETCH(int, newLength);
        QFETCH(int, newAddress);
        const QByteArray data = pattern(length, 3);
        Inhex32Entry e(0, static_cast<quint16>(address), data);
        QCOMPARE(left ? e.removeFromLeft(n) : e.removeFromRight(n), newLength);
        QCOMPARE(static_cast<int>(e.getAddress()), newAddress);
        QCOMPARE(e.getDataBytes(), left ? data.right(newLength) : data.left(newLength));
        QCOMPARE(e.getChecksum(), hex::checksum(0, e.getAddress(), e.getDataBytes()));
    }

    void split_data() { testsupport::loadTable(); }

    void split() {
        QFETCH(int, length);
        QFETCH(int, a);
        QFETCH(int, b);
        QFETCH(bool, splits);
        const QByteArray data = pattern(length, 11);
        Inhex32Entry e(0x00, 0x1000, data);
        std::unique_ptr<Inhex32Entry> tail = e.split(a, b);
        QCOMPARE(tail != nullptr, splits);
        if (!splits) {
            QCOMPARE(e.getDataBytes(), data);
            return;
        }
        // Bytes 0..a stay, b..end move to a record at address + b.
        QCOMPARE(e.getDataBytes(), data.left(a + 1));
        QCOMPARE(e.getAddress(), quint16(0x1000));
        QCOMPARE(tail->getDataBytes(), data.mid(b));
        QCOMPARE(tail->getAddress(), quint16(0x1000 + b));
        QCOMPARE(e.getChecksum(), hex::checksum(0, 0x1000, e.getDataBytes()));
        QCOMPARE(tail->getChecksum(), hex::checksum(0, tail->getAddress(), tail->getDataBytes()));
    }
};

QTEST_GUILESS_MAIN(TestInhex32Entry)
#include "tst_inhex32entry.moc"
