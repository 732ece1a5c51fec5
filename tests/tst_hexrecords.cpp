// Intel HEX records: checksums and text form, trimming, splitting, copies; raw settings
// turned into records and records merged into a loaded image.
#include "sf/RawSetting.h"
#include "sf/parser/HexParser.h"
#include "sf/parser/Inhex32Entry.h"
#include "support/HexFixtures.h"
#include "support/TableFile.h"

#include <QBuffer>
#include <QtTest>

#include <random>

using sf::parser::HexParser;
using sf::parser::Inhex32Entry;
using sf::parser::RecordList;
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

class TestHexRecords : public QObject {
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

    void rawSettingsAsRecords_data() { testsupport::loadTable(); }

    void rawSettingsAsRecords() {
        QFETCH(int, processor);
        QFETCH(QString, settings);
        QFETCH(bool, onlyEnabled);
        QFETCH(uint, from);
        QFETCH(uint, to);
        QFETCH(QString, before);
        QFETCH(QString, records);

        std::vector<std::unique_ptr<sf::RawSetting>> owned;
        QList<sf::RawSetting*> list;
        for (const QString& word : settings.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
            const QStringList f = word.split(QLatin1Char(':'));
            owned.push_back(std::make_unique<sf::RawSetting>(QStringLiteral("s"), f.at(1).toInt(),
                                                             f.at(0).toInt(nullptr, 16),
                                                             f.at(3) == QLatin1String("1"), false));
            owned.back()->setData(QByteArray::fromHex(f.at(2).toLatin1()).constData());
            list.append(owned.back().get());
        }
        list.append(nullptr); // missing settings are skipped

        HexParser parser;
        QVERIFY(parser.loadHexData(QByteArray(), processor));
        RecordList out = hex::records(before);
        QVERIFY(parser.getRawSettingsAsHexData(list, out, onlyEnabled, from, to));
        QCOMPARE(hex::dump(out), records);
    }

    void combine_data() { testsupport::loadTable(); }

    void combine() {
        QFETCH(int, processor);
        QFETCH(QString, existing);
        QFETCH(QString, added);
        QFETCH(QString, result);

        HexParser parser;
        QVERIFY(parser.loadHexData(QByteArray(), processor));
        QVERIFY(parser.replaceFileContents(hex::records(existing)));
        QVERIFY(parser.addToFile(hex::records(added)));
        QCOMPARE(hex::dump(parser.records()), result);
        QCOMPARE(hex::overlappingBytes(parser.records()), 0);
    }

    void combineRandomImages() {
        // Random images near a 64 KiB boundary, without phantoms: afterwards the byte layout
        // is the old one overlaid with the new records, and no two records claim a byte.
        std::mt19937 rng(20240601);
        HexParser parser;
        QVERIFY(parser.loadHexData(QByteArray(), sf::parser::PhantomNone));
        auto randomList = [&](int count, int maxLength) {
            RecordList clean; // built record by record, so it does not overlap itself
            for (int i = 0; i < count; ++i) {
                RecordList one;
                if (rng() % 8 == 0) {
                    one.push_back(sf::parser::Inhex32Entry::extendedAddress(rng() % 3));
                }
                QByteArray data(1 + int(rng() % quint32(maxLength)), '\0');
                for (char& c : data) {
                    c = static_cast<char>(rng());
                }
                one.push_back(std::make_unique<sf::parser::Inhex32Entry>(
                    0, static_cast<quint16>(0xFF00 + rng() % 0x200), data));
                parser.combineEntries(one, clean);
            }
            return clean;
        };
        for (int round = 0; round < 200; ++round) {
            RecordList existing = randomList(20, 40);
            const RecordList added = randomList(5, 30);
            std::map<quint64, quint8> expected = hex::byteMap(existing);
            for (const auto& b : hex::byteMap(added)) {
                expected[b.first] = b.second;
            }
            parser.combineEntries(added, existing);
            QCOMPARE(hex::overlappingBytes(existing), 0);
            QVERIFY2(hex::byteMap(existing) == expected, qPrintable(QString::number(round)));
        }
    }

    void addToFileNeedsWritableImage() {
        QBuffer buffer;
        buffer.setData(hex::dataLine(0x1000, QByteArray::fromHex("0102")));
        QVERIFY(buffer.open(QIODevice::ReadOnly));
        HexParser parser;
        QVERIFY(parser.loadHex(&buffer, sf::parser::PhantomNone));
        QVERIFY(!parser.addToFile(hex::records(QStringLiteral("D1000:AA"))));
        QVERIFY(parser.addToFile(RecordList())); // nothing to add succeeds at once
        QCOMPARE(hex::dump(parser.records()), QStringLiteral("D1000:0102"));

        HexParser closed;
        QVERIFY(!closed.addToFile(hex::records(QStringLiteral("D1000:AA"))));
        QVERIFY(!closed.replaceFileContents(hex::records(QStringLiteral("D1000:AA"))));
    }

    void replaceAndCopy() {
        HexParser parser;
        QVERIFY(parser.loadHexData(hex::text(QStringLiteral("X0001 DE000:0102 F")),
                                   sf::parser::PhantomNone));
        RecordList copy = hex::records(QStringLiteral("D0000:99"));
        parser.copyFileData(copy);
        QCOMPARE(hex::dump(copy), QStringLiteral("D0000:99 X0001 DE000:0102"));

        RecordList replacement = hex::records(QStringLiteral("X0031 D0000:AABB"));
        QVERIFY(parser.replaceFileContents(replacement));
        replacement.front()->setType(0x00); // the parser holds its own copies
        QCOMPARE(hex::dump(parser.records()), QStringLiteral("X0031 D0000:AABB"));
    }
};

QTEST_GUILESS_MAIN(TestHexRecords)
#include "tst_hexrecords.moc"
