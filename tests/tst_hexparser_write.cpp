// Writing setup images: plain and reformatted text, round trips, the atomic file save
// and copying an address range.
#include "sf/parser/HexParser.h"
#include "support/HexFixtures.h"
#include "support/TableFile.h"
#include "support/TestSupport.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using sf::parser::HexParser;
namespace hex = testsupport::hex;

namespace {

// The text writeToDevice gives; null when it fails.
QByteArray written(const HexParser& parser, bool reformat, int lineLength) {
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    const bool ok = parser.writeToDevice(&out, reformat, lineLength);
    if (!ok) {
        return out.data().isEmpty() ? QByteArray() : QByteArray("<partly written>");
    }
    return out.data().isNull() ? QByteArray("") : out.data();
}

QByteArray bytesOf(int n, int seed) {
    QByteArray b(n, '\0');
    for (int i = 0; i < n; ++i) {
        b[i] = static_cast<char>(seed + i * 13);
    }
    return b;
}

} // namespace

class TestHexParserWrite : public QObject {
    Q_OBJECT
private slots:
    void plain_data() { testsupport::loadTable(); }

    void plain() {
        QFETCH(QString, fw);
        QFETCH(QString, kxs);
        QFETCH(QString, enq);
        QFETCH(QString, records);

        HexParser parser;
        QVERIFY(parser.loadHexData(hex::text(records), sf::parser::PhantomNone));
        parser.setFwVersion(fw);
        parser.setKxsVersion(kxs);
        parser.setEnqString(enq);
        QByteArray expected;
        const quint8 types[] = {0xC0, 0xC1, 0xC2};
        const QString texts[] = {fw, kxs, enq};
        for (int i = 0; i < 3; ++i) {
            if (!texts[i].isEmpty()) {
                expected += hex::metaLine(types[i], texts[i].toLatin1().left(255));
            }
        }
        expected += hex::text(records) + hex::eofLine();
        QCOMPARE(written(parser, false, 16), expected);
    }

    void reformat_data() { testsupport::loadTable(); }

    void reformat() {
        QFETCH(QString, records);
        QFETCH(int, lineLength);
        QFETCH(QString, expected);

        HexParser parser;
        QVERIFY(parser.loadHexData(hex::text(records), sf::parser::PhantomNone));
        parser.setKxsVersion(QStringLiteral("L"));
        const QByteArray text = written(parser, true, lineLength);
        if (expected == QLatin1String("-")) {
            QCOMPARE(text, QByteArray()); // refused before writing anything
        } else {
            QCOMPARE(text, hex::metaLine(0xC1, "L") + hex::text(expected) + hex::eofLine());
        }
    }

    void roundTrip_data() {
        QTest::addColumn<QByteArray>("text");

        QTest::newRow("settings image")
            << hex::metaLine(0xC0, "KX3.06") + hex::metaLine(0xC1, "KX3p06") +
                   hex::metaLine(0xC2, QByteArray("Korvex\0", 7)) + hex::extLine(1) +
                   hex::dataLine(0xE000, bytesOf(16, 1)) + hex::dataLine(0xE010, bytesOf(16, 2));
        QTest::newRow("several segments and long records")
            << hex::dataLine(0x0000, bytesOf(255, 3)) + hex::extLine(3) +
                   hex::dataLine(0x0000, bytesOf(200, 4)) + hex::extLine(0) +
                   hex::dataLine(0x8000, bytesOf(7, 5)) + hex::eofLine();
        QTest::newRow("other types and empty data records")
            << hex::line(0x03, 0, bytesOf(4, 6)) + hex::dataLine(0x10, QByteArray()) +
                   hex::line(0x7F, 0x1234, bytesOf(3, 8)) + hex::dataLine(0x20, bytesOf(1, 9));
    }

    void roundTrip() {
        QFETCH(QByteArray, text);
        HexParser first;
        QVERIFY(first.loadHexData(text, sf::parser::PhantomEvery4));
        const QByteArray plain = written(first, false, 16);
        QVERIFY(hex::allChecksumsValid(plain));

        HexParser second;
        QVERIFY(second.loadHexData(plain, sf::parser::PhantomEvery4));
        QCOMPARE(hex::dump(second.records()), hex::dump(first.records()));
        QCOMPARE(second.getEnqString(), first.getEnqString());
        QCOMPARE(written(second, false, 16), plain);

        // Reformatting keeps every data byte at its address.
        const QByteArray reformatted = written(first, true, 16);
        QVERIFY(hex::allChecksumsValid(reformatted));
        HexParser third;
        QVERIFY(third.loadHexData(reformatted, sf::parser::PhantomEvery4));
        std::map<quint64, quint8> bytes = hex::byteMap(third.records());
        for (const auto& b : hex::byteMap(first.records())) {
            QCOMPARE(bytes[b.first], b.second);
            bytes.erase(b.first);
        }
        for (const auto& b : bytes) {
            QCOMPARE(b.second, quint8(0)); // only gap filling is new
        }
    }

    void writeFileReplacesTheFile() {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("setup.hex"));
        QVERIFY(testsupport::writeFile(path, hex::text(QStringLiteral("X0001 DE000:0102"))));
        const QFile::Permissions permissions =
            QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther;
        QVERIFY(QFile::setPermissions(path, permissions));

        HexParser parser;
        QVERIFY(parser.loadHex(path, sf::parser::PhantomNone, QIODevice::ReadWrite));
        QVERIFY(parser.addToFile(hex::records(QStringLiteral("X0001 DE001:FF"))));
        parser.setFwVersion(QStringLiteral("KX3.06"));
        QVERIFY(parser.writeFile(true, 16));
        QCOMPARE(testsupport::readFile(path), hex::metaLine(0xC0, "KX3.06") +
                                                  hex::text(QStringLiteral("X0001 DE000:01FF")) +
                                                  hex::eofLine());
        QCOMPARE(QFile::permissions(path) &
                     ~QFile::Permissions(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser),
                 permissions);

        // The parser stays usable on the new file.
        QVERIFY(parser.isOpen());
        QVERIFY(parser.addToFile(hex::records(QStringLiteral("X0001 DE000:EE"))));
        QVERIFY(parser.writeFile(false, 16));
        HexParser reread;
        QVERIFY(reread.loadHex(path, sf::parser::PhantomNone, QIODevice::ReadOnly));
        QCOMPARE(hex::dump(reread.records()),
                 QStringLiteral("X0001 X0001 DE001:FF X0001 DE000:EE"));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList{QStringLiteral("setup.hex")});

        HexParser inMemory;
        QVERIFY(inMemory.loadHexData(hex::dataLine(0, "x"), sf::parser::PhantomNone));
        QVERIFY(!inMemory.writeFile(false, 16)); // no file to save to
    }

    void failedWriteLeavesTheOldFile_data() { testsupport::loadTable(); }

    void failedWriteLeavesTheOldFile() {
        QFETCH(QString, how);
        QTemporaryDir dir;
        const QString folder = dir.filePath(QStringLiteral("setups"));
        QVERIFY(QDir().mkpath(folder));
        const QString path = folder + QStringLiteral("/setup.hex");
        const QByteArray old =
            hex::metaLine(0xC0, "old") + hex::dataLine(0x10, "ab") + hex::eofLine();
        QVERIFY(testsupport::writeFile(path, old));

        HexParser parser;
        const bool readOnly = how == QLatin1String("read only");
        QVERIFY(parser.loadHex(path, sf::parser::PhantomNone,
                               readOnly ? QIODevice::ReadOnly : QIODevice::ReadWrite));
        parser.setFwVersion(QStringLiteral("new"));
        bool ok = true;
        if (how == QLatin1String("line length")) {
            ok = parser.writeFile(true, 0);
        } else if (readOnly) {
            ok = parser.writeFile(false, 16);
        } else {
            const QString moved = dir.filePath(QStringLiteral("moved"));
            QVERIFY(QDir().rename(folder, moved));
            ok = parser.writeFile(false, 16);
            QVERIFY(QDir().rename(moved, folder));
        }
        QVERIFY(!ok);
        QCOMPARE(testsupport::readFile(path), old);
        QCOMPARE(QDir(folder).entryList(QDir::Files), QStringList{QStringLiteral("setup.hex")});
    }

    void copyToFile_data() { testsupport::loadTable(); }

    void copyToFile() {
        QFETCH(QString, records);
        QFETCH(uint, from);
        QFETCH(uint, to);
        QFETCH(QString, expected);

        HexParser parser;
        QVERIFY(parser.loadHexData(QByteArray(), sf::parser::PhantomNone));
        QVERIFY(parser.replaceFileContents(hex::records(records)));
        parser.setKxsVersion(QStringLiteral("KX3p06"));
        for (int flags = 0; flags < 4; ++flags) {
            const bool withMetadata = flags & 1;
            const bool withEof = flags & 2;
            QBuffer out;
            out.open(QIODevice::WriteOnly);
            QCOMPARE(parser.copyToFile(&out, from, to, withMetadata, withEof), !expected.isNull());
            const QByteArray want =
                expected.isNull()
                    ? QByteArray()
                    : (withMetadata ? hex::metaLine(0xC1, "KX3p06") : QByteArray()) +
                          hex::text(expected) + (withEof ? hex::eofLine() : QByteArray());
            QCOMPARE(out.data(), want);
        }
        QBuffer readOnly;
        readOnly.open(QIODevice::ReadOnly);
        QVERIFY(!parser.copyToFile(&readOnly, 0, 0xFFFFFFFF, true, true));
        QVERIFY(!parser.copyToFile(nullptr, 0, 0xFFFFFFFF, true, true));
    }
};

QTEST_GUILESS_MAIN(TestHexParserWrite)
#include "tst_hexparser_write.moc"
