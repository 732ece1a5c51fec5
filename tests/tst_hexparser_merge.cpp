// Turning raw settings into records and merging records into a loaded image.
#include "sf/RawSetting.h"
#include "sf/parser/HexParser.h"
#include "support/HexFixtures.h"
#include "support/TableFile.h"

#include <QBuffer>
#include <QtTest>

#include <random>

using sf::parser::HexParser;
using sf::parser::RecordList;
namespace hex = testsupport::hex;

class TestHexParserMerge : public QObject {
    Q_OBJECT
private slots:
    void rawSettingsAsRecords_data();
    void rawSettingsAsRecords();
    void combine_data();
    void combine();
    void combineRandomImages();
    void addToFileNeedsWritableImage();
    void replaceAndCopy();
};

void TestHexParserMerge::rawSettingsAsRecords_data() {
    QTest::addColumn<int>("processor");
    QTest::addColumn<QString>("settings"); // "address:size:hexbytes:enabled" words
    QTest::addColumn<bool>("onlyEnabled");
    QTest::addColumn<uint>("from");
    QTest::addColumn<uint>("to");
    QTest::addColumn<QString>("before"); // records already in the output list
    QTest::addColumn<QString>("records");

    const uint all = 0xFFFFFFFFu;
    const QString big = QStringLiteral("1E100:300:") + QString(600, QLatin1Char('1')) + ":1";
    // clang-format off
    QTest::newRow("extended record first") << 2 << "1E000:2:0102:1 1E010:1:FF:1" << false << 0u << all << ""
        << "X0001 DE000:0102 DE010:FF";
    QTest::newRow("new extended record when the upper part changes")
        << 2 << "1E000:1:01:1 310000:1:02:1 1E002:1:03:1" << false << 0u << all << ""
        << "X0001 DE000:01 X0031 D0000:02 X0001 DE002:03";
    QTest::newRow("upper part of the output list continued") << 2 << "1E000:1:42:1" << false << 0u << all
        << "X0001 D0000:00" << "X0001 D0000:00 DE000:42";
    QTest::newRow("no extended record below 64 KiB") << 2 << "E000:2:0102:1" << false << 0u << all << "" << "DE000:0102";
    QTest::newRow("disabled skipped when asked") << 2 << "1E000:1:01:0 1E001:1:02:1" << true << 0u << all << ""
        << "X0001 DE001:02";
    QTest::newRow("disabled kept otherwise") << 2 << "1E000:1:01:0 1E001:1:02:1" << false << 0u << all << ""
        << "X0001 DE000:01 DE001:02";
    QTest::newRow("range is half open") << 2 << "1DFFF:1:01:1 1E000:1:02:1 1E1E0:1:03:1 1E1DF:1:04:1" << false
        << 0x1E000u << 0x1E1E0u << "" << "X0001 DE000:02 DE1DF:04";
    QTest::newRow("phantoms inserted, period 2") << 1 << "1E000:3:AABBCC:1" << false << 0u << all << ""
        << "X0001 DE000:AA00BB00CC";
    QTest::newRow("phantoms inserted, period 4, odd start") << 0 << "1E001:3:AABBCC:1" << false << 0u << all << ""
        << "X0001 DE001:00AABBCC";
    QTest::newRow("setting crossing 64 KiB") << 2 << "1FFFE:4:01020304:1" << false << 0u << all << ""
        << "X0001 DFFFE:0102 X0002 D0000:0304";
    QTest::newRow("more than 255 bytes") << 2 << big << false << 0u << all << "X0001"
        << "X0001 DE100:" + QString(510, QLatin1Char('1')) + " DE1FF:" + QString(90, QLatin1Char('1'));
    QTest::newRow("empty setting gives no record") << 2 << "1E000:0::1" << false << 0u << all << "" << "";
    // clang-format on
}

void TestHexParserMerge::rawSettingsAsRecords() {
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

void TestHexParserMerge::combine_data() {
    testsupport::loadTable(QStringLiteral("hexparser-merge-combine.txt"));
}

void TestHexParserMerge::combine() {
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

void TestHexParserMerge::combineRandomImages() {
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

void TestHexParserMerge::addToFileNeedsWritableImage() {
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

void TestHexParserMerge::replaceAndCopy() {
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

QTEST_GUILESS_MAIN(TestHexParserMerge)
#include "tst_hexparser_merge.moc"
