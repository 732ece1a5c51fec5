// Turning raw settings into records and merging records into a loaded image.
#include "sf/RawSetting.h"
#include "sf/parser/HexParser.h"
#include "support/HexFixtures.h"

#include <QBuffer>
#include <QtTest>

#include <map>
#include <random>

using sf::parser::HexParser;
using sf::parser::RecordList;
namespace hex = testsupport::hex;

namespace {

// Full address -> byte, later records winning, as a writer would lay them out.
std::map<quint64, quint8> byteMap(const RecordList& list) {
    std::map<quint64, quint8> bytes;
    quint16 upper = 0;
    for (const auto& r : list) {
        if (r->isExtendedAddress()) {
            upper = r->upperAddress();
        } else if (r->isData()) {
            for (int i = 0; i < r->getLength(); ++i) {
                bytes[(quint64(upper) << 16) + r->getAddress() + quint64(i)] = r->getData()[i];
            }
        }
    }
    return bytes;
}

// Number of byte addresses that two or more data records claim.
int overlaps(const RecordList& list) {
    std::map<quint64, int> claims;
    quint16 upper = 0;
    for (const auto& r : list) {
        if (r->isExtendedAddress()) {
            upper = r->upperAddress();
        } else if (r->isData()) {
            for (int i = 0; i < r->getLength(); ++i) {
                ++claims[(quint64(upper) << 16) + r->getAddress() + quint64(i)];
            }
        }
    }
    int n = 0;
    for (const auto& c : claims) {
        n += c.second > 1 ? 1 : 0;
    }
    return n;
}

} // namespace

class TestHexParserMerge : public QObject {
    Q_OBJECT
private slots:
    void rawSettingsAsRecords_data();
    void rawSettingsAsRecords();
    void rawSettingsContinueAfterExistingUpper();
    void combine_data();
    void combine();
    void combineRandomImages();
    void addToFileNeedsWritableImage();
    void replaceAndCopy();
};

void TestHexParserMerge::rawSettingsAsRecords_data() {
    // Settings as "address:size:hexbytes:enabled" words.
    QTest::addColumn<int>("processor");
    QTest::addColumn<QString>("settings");
    QTest::addColumn<bool>("onlyEnabled");
    QTest::addColumn<uint>("from");
    QTest::addColumn<uint>("to");
    QTest::addColumn<QString>("records");

    QTest::newRow("extended record before the first setting")
        << 2 << "1E000:2:0102:1 1E010:1:FF:1" << false << 0u << 0xFFFFFFFFu
        << "X0001 DE000:0102 DE010:FF";
    QTest::newRow("new extended record when the upper part changes")
        << 2 << "1E000:1:01:1 310000:1:02:1 1E002:1:03:1" << false << 0u << 0xFFFFFFFFu
        << "X0001 DE000:01 X0031 D0000:02 X0001 DE002:03";
    QTest::newRow("no extended record below 64 KiB")
        << 2 << "E000:2:0102:1" << false << 0u << 0xFFFFFFFFu << "DE000:0102";
    QTest::newRow("disabled settings skipped when asked")
        << 2 << "1E000:1:01:0 1E001:1:02:1" << true << 0u << 0xFFFFFFFFu << "X0001 DE001:02";
    QTest::newRow("disabled settings kept otherwise")
        << 2 << "1E000:1:01:0 1E001:1:02:1" << false << 0u << 0xFFFFFFFFu
        << "X0001 DE000:01 DE001:02";
    QTest::newRow("range is half open")
        << 2 << "1DFFF:1:01:1 1E000:1:02:1 1E1E0:1:03:1 1E1DF:1:04:1" << false << 0x1E000u
        << 0x1E1E0u << "X0001 DE000:02 DE1DF:04";
    QTest::newRow("phantom bytes inserted, period 2")
        << 1 << "1E000:3:AABBCC:1" << false << 0u << 0xFFFFFFFFu << "X0001 DE000:AA00BB00CC";
    QTest::newRow("phantom bytes inserted, period 4, odd start")
        << 0 << "1E001:3:AABBCC:1" << false << 0u << 0xFFFFFFFFu << "X0001 DE001:00AABBCC";
    QTest::newRow("setting crossing 64 KiB continues after an extended record")
        << 2 << "1FFFE:4:01020304:1" << false << 0u << 0xFFFFFFFFu
        << "X0001 DFFFE:0102 X0002 D0000:0304";
    QTest::newRow("empty setting gives no record")
        << 2 << "1E000:0::1" << false << 0u << 0xFFFFFFFFu << "";
}

void TestHexParserMerge::rawSettingsAsRecords() {
    QFETCH(int, processor);
    QFETCH(QString, settings);
    QFETCH(bool, onlyEnabled);
    QFETCH(uint, from);
    QFETCH(uint, to);
    QFETCH(QString, records);

    std::vector<std::unique_ptr<sf::RawSetting>> owned;
    QList<sf::RawSetting*> list;
    int n = 0;
    for (const QString& word : settings.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const QStringList f = word.split(QLatin1Char(':'));
        const QByteArray bytes = QByteArray::fromHex(f.at(2).toLatin1());
        owned.push_back(std::make_unique<sf::RawSetting>(
            QStringLiteral("s%1").arg(n++), f.at(1).toInt(), f.at(0).toInt(nullptr, 16),
            f.at(3) == QLatin1String("1"), false));
        owned.back()->setData(bytes.constData());
        list.append(owned.back().get());
    }
    list.append(nullptr); // missing settings are skipped

    HexParser parser;
    QVERIFY(parser.loadHexData(QByteArray(), processor));
    RecordList out;
    QVERIFY(parser.getRawSettingsAsHexData(list, out, onlyEnabled, from, to));
    QCOMPARE(hex::dump(out), records);
}

void TestHexParserMerge::rawSettingsContinueAfterExistingUpper() {
    sf::RawSetting s(QStringLiteral("a"), 1, 0x1E000, true, false);
    s.setData("\x42");
    sf::RawSetting big(QStringLiteral("b"), 300, 0x1E100, true, false);
    QByteArray bytes(300, '\x11');
    big.setData(bytes.constData());
    HexParser parser;
    QVERIFY(parser.loadHexData(QByteArray(), sf::parser::PhantomNone));
    RecordList out = hex::records(QStringLiteral("X0001 D0000:00"));
    QVERIFY(parser.getRawSettingsAsHexData({&s, &big}, out, true, 0, 0xFFFFFFFF));
    // The upper part 1 is already current; the 300 bytes take two records.
    QCOMPARE(out.size(), size_t(5));
    QCOMPARE(hex::dump(*out[2]), QStringLiteral("DE000:42"));
    QCOMPARE(out[3]->getAddress(), quint16(0xE100));
    QCOMPARE(out[3]->getLength(), quint8(255));
    QCOMPARE(out[4]->getAddress(), quint16(0xE1FF));
    QCOMPARE(out[4]->getLength(), quint8(45));
}

void TestHexParserMerge::combine_data() {
    QTest::addColumn<int>("processor");
    QTest::addColumn<QString>("existing");
    QTest::addColumn<QString>("added");
    QTest::addColumn<QString>("result");

    QTest::newRow("no overlap: appended") << 2 << "D1000:0102"
                                          << "D2000:AA"
                                          << "D1000:0102 D2000:AA";
    QTest::newRow("wholly covered: removed") << 2 << "D1000:0102 D1010:03"
                                             << "D0FFF:AAAAAAAA"
                                             << "D1010:03 D0FFF:AAAAAAAA";
    QTest::newRow("exact cover: removed") << 2 << "D1000:0102"
                                          << "D1000:AABB"
                                          << "D1000:AABB";
    QTest::newRow("covered on the left: trimmed") << 2 << "D1000:01020304"
                                                  << "D0FFF:AAAA"
                                                  << "D1001:020304 D0FFF:AAAA";
    QTest::newRow("covered on the right: trimmed") << 2 << "D1000:01020304"
                                                   << "D1003:AAAA"
                                                   << "D1000:010203 D1003:AAAA";
    QTest::newRow("inside: split around it") << 2 << "D1000:0102030405060708"
                                             << "D1002:AAAA"
                                             << "D1000:0102 D1004:05060708 D1002:AAAA";
    QTest::newRow("touching records are not cut") << 2 << "D1000:0102"
                                                  << "D1002:AA D0FFF:BB"
                                                  << "D1000:0102 D1002:AA D0FFF:BB";
    QTest::newRow("several new records cut one existing record")
        << 2 << "D1000:00010203040506070809"
        << "D1001:AA D1004:BBBB D1009:CC"
        << "D1000:00 D1002:0203 D1006:060708 D1001:AA D1004:BBBB D1009:CC";
    QTest::newRow("phantom-only leftover deleted, period 2") << 1 << "DE000:0100"
                                                             << "DE000:AA"
                                                             << "DE000:AA";
    QTest::newRow("phantom-only leftover on the left deleted, period 4") << 0 << "DE005:01020304"
                                                                         << "DE006:AAAAAA"
                                                                         << "DE006:AAAAAA";
    QTest::newRow("real leftover kept, period 2") << 1 << "DE000:01020304"
                                                  << "DE001:AA"
                                                  << "DE000:01 DE002:0304 DE001:AA";
    QTest::newRow("no phantom rule without phantoms") << 2 << "DE000:0100"
                                                      << "DE000:AA"
                                                      << "DE001:00 DE000:AA";
    QTest::newRow("different upper parts do not overlap")
        << 2 << "X0001 DE000:0102"
        << "X0000 DE000:AABB X0001"
        << "X0001 DE000:0102 X0000 DE000:AABB X0001";
    QTest::newRow("same upper part overlaps") << 2 << "X0002 D0000:00 X0001 DE000:0102"
                                              << "X0001 DE001:AA"
                                              << "X0002 D0000:00 X0001 DE000:01 X0001 DE001:AA";
    QTest::newRow("piece past a 64 KiB boundary gets its upper part")
        << 2 << "DFFFE:01020304"
        << "DFFFE:AAAA"
        << "X0001 D0000:0304 X0000 DFFFE:AAAA";
    QTest::newRow("new list without extended record keeps its 0 upper part")
        << 2 << "X0001 DE000:0102"
        << "D0010:AA"
        << "X0001 DE000:0102 X0000 D0010:AA";
    QTest::newRow("end and other records untouched") << 2 << "T03@1000:00000000 D1000:0102 F"
                                                     << "D1000:AABB F"
                                                     << "T03@1000:00000000 F D1000:AABB F";
    QTest::newRow("empty new list changes nothing") << 2 << "D1000:0102"
                                                    << ""
                                                    << "D1000:0102";
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
    QCOMPARE(overlaps(parser.records()), 0);
}

void TestHexParserMerge::combineRandomImages() {
    // Random images merged without phantoms: the byte layout afterwards equals the old
    // one overlaid with the new records, and no two records claim a byte.
    std::mt19937 rng(20240601);
    for (int round = 0; round < 200; ++round) {
        auto randomList = [&rng](int count, int maxLength) {
            RecordList list;
            for (int i = 0; i < count; ++i) {
                if (rng() % 8 == 0) {
                    list.push_back(sf::parser::Inhex32Entry::extendedAddress(rng() % 3));
                }
                QByteArray data(1 + int(rng() % quint32(maxLength)), '\0');
                for (char& c : data) {
                    c = static_cast<char>(rng());
                }
                list.push_back(std::make_unique<sf::parser::Inhex32Entry>(
                    0, static_cast<quint16>(0xFF00 + rng() % 0x200), data));
            }
            return list;
        };
        // Neither list overlaps itself: merging records one by one builds them.
        HexParser parser;
        QVERIFY(parser.loadHexData(QByteArray(), sf::parser::PhantomNone));
        auto withoutOverlaps = [&parser](RecordList list) {
            RecordList clean;
            for (auto& r : list) {
                RecordList one;
                one.push_back(std::move(r));
                parser.combineEntries(one, clean);
            }
            return clean;
        };
        RecordList clean = withoutOverlaps(randomList(20, 40));
        const RecordList added = withoutOverlaps(randomList(5, 30));
        QCOMPARE(overlaps(added), 0);
        std::map<quint64, quint8> expected = byteMap(clean);
        for (const auto& b : byteMap(added)) {
            expected[b.first] = b.second;
        }
        parser.combineEntries(added, clean);
        QCOMPARE(overlaps(clean), 0);
        QVERIFY2(byteMap(clean) == expected, qPrintable(QStringLiteral("round %1").arg(round)));
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
    QVERIFY(parser.replaceFileContents(RecordList()));
    QVERIFY(parser.records().empty());
}

QTEST_GUILESS_MAIN(TestHexParserMerge)
#include "tst_hexparser_merge.moc"
