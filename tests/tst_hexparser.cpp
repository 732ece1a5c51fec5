// Loading setup images, metadata texts, phantom byte arithmetic and reading settings
// bytes by address.
#include "sf/parser/HexParser.h"
#include "support/HexFixtures.h"
#include "support/TableFile.h"
#include "support/TestSupport.h"

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using sf::parser::HexParser;
namespace hex = testsupport::hex;
using testsupport::writeFile;

namespace {

QByteArray h(const char* hexDigits) {
    return QByteArray::fromHex(hexDigits);
}

QString latin1(const char* text, int size) {
    return QString::fromLatin1(text, size);
}

QString joined(const QString& fw, const QString& kxs, const QString& enq) {
    return fw + QLatin1Char('|') + kxs + QLatin1Char('|') + enq;
}

HexParser* loaded(HexParser& parser, int processor, const QByteArray& text = QByteArray()) {
    return parser.loadHexData(text, processor) ? &parser : nullptr;
}

} // namespace

class TestHexParser : public QObject {
    Q_OBJECT
private slots:
    void load_data() { testsupport::loadTable(); }

    void load() {
        QFETCH(QString, text);
        QByteArray bytes = text.toLatin1();
        QFETCH(bool, ok);
        QFETCH(QString, records);

        HexParser parser;
        QCOMPARE(parser.loadHexData(bytes, sf::parser::PhantomNone), ok);
        QCOMPARE(parser.isOpen(), ok);
        QCOMPARE(parser.errorString().isEmpty(), ok);
        QCOMPARE(hex::dump(parser.records()), records);
        // The same through a device, which is read-only here.
        QBuffer buffer(&bytes);
        QVERIFY(buffer.open(QIODevice::ReadOnly));
        HexParser viaDevice;
        QCOMPARE(viaDevice.loadHex(&buffer, sf::parser::PhantomNone), ok);
        QCOMPARE(hex::dump(viaDevice.records()), records);
        QVERIFY(!viaDevice.isWritable());
    }

    void metadata_data() {
        // What loading keeps (trailing zeros too), and what the static readers return.
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("loaded");
        QTest::addColumn<QString>("read");

        const QByteArray bad = hex::metaLine(0xC0, "bad").replace("\r\n", "").chopped(2) + "00\r\n";
        // clang-format off
        QTest::newRow("all three") << hex::metaLine(0xC0, "KX3.06") + hex::metaLine(0xC1, "KX3p06") + hex::metaLine(0xC2, "Korvex")
            << joined("KX3.06", "KX3p06", "Korvex") << joined("KX3.06", "KX3p06", "Korvex");
        QTest::newRow("trailing zeros") << hex::metaLine(0xC1, QByteArray("KX\0\0", 4)) + hex::metaLine(0xC2, QByteArray("A\0B\0", 4))
            << joined("", latin1("KX\0\0", 4), latin1("A\0B\0", 4)) << joined("", "KX", latin1("A\0B", 3));
        QTest::newRow("only zeros") << hex::metaLine(0xC0, QByteArray(3, '\0'))
            << joined(latin1("\0\0\0", 3), "", "") << joined("", "", "");
        QTest::newRow("two of a type") << hex::metaLine(0xC0, "first") + hex::metaLine(0xC0, "second")
            << joined("second", "", "") << joined("first", "", "");
        QTest::newRow("Latin-1") << hex::metaLine(0xC2, "caf\xE9") << joined("", "", latin1("caf\xE9", 4))
            << joined("", "", latin1("caf\xE9", 4));
        QTest::newRow("255 bytes") << hex::metaLine(0xC1, QByteArray(255, 'v'))
            << joined("", QString(255, QLatin1Char('v')), "") << joined("", QString(255, QLatin1Char('v')), "");
        QTest::newRow("after the data") << hex::dataLine(0, h("0102")) + hex::eofLine() + hex::metaLine(0xC2, "late")
            << joined("", "", "late") << joined("", "", "late");
        // A file the loader refuses still gives the readers its good records.
        QTest::newRow("bad lines passed over by the readers")
            << ":02000000C04B\r\n" + bad + hex::metaLine(0xC0, "good") << QString() << joined("good", "", "");
        QTest::newRow("not a HEX file") << QByteArray("hello world\n") << QString() << joined("", "", "");
        // clang-format on
    }

    void metadata() {
        QFETCH(QByteArray, text);
        QFETCH(QString, loaded);
        QFETCH(QString, read);

        HexParser parser;
        parser.setFwVersion(QStringLiteral("earlier image"));
        QCOMPARE(parser.loadHexData(text, sf::parser::PhantomNone), !loaded.isNull());
        if (!loaded.isNull()) {
            QCOMPARE(joined(parser.getFwVersion(), parser.getKxsVersion(), parser.getEnqString()),
                     loaded);
        }
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("map.kxhex"));
        QVERIFY(writeFile(path, text));
        QCOMPARE(joined(HexParser::getFwVersion(path), HexParser::getKxsVersion(path),
                        HexParser::getEnqString(path)),
                 read);
        QBuffer buffer(&text);
        QVERIFY(buffer.open(QIODevice::ReadOnly));
        QCOMPARE(HexParser::getEnqString(&buffer), read.section(QLatin1Char('|'), 2));
        QCOMPARE(HexParser::getFwVersion(dir.filePath(QStringLiteral("missing"))), QString());
    }

    void failedLoadLeavesParserClosed() {
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

    void loadReadsAcrossChunkBoundaries() {
        // Lines of varying length, so that records straddle the reader's chunk edges.
        QByteArray text;
        quint16 address = 0;
        for (int i = 0; i < 30000; ++i) {
            text += hex::dataLine(address, QByteArray(1 + (i * 37) % 40, static_cast<char>(i)));
            address = static_cast<quint16>(address + 1 + (i * 37) % 40);
        }
        HexParser parser;
        QVERIFY(parser.loadHexData(text, sf::parser::PhantomNone));
        QCOMPARE(parser.records().size(), size_t(30000));
        for (int i : {0, 1, 6999, 7000, 29999}) {
            QCOMPARE(parser.records()[size_t(i)]->getDataBytes(),
                     QByteArray(1 + (i * 37) % 40, static_cast<char>(i)));
        }
    }

    void openModes_data() { testsupport::loadTable(); }

    void openModes() {
        QFETCH(bool, exists);
        QFETCH(QString, mode);
        const QHash<QString, QIODevice::OpenModeFlag> names{{"ReadOnly", QIODevice::ReadOnly},
                                                            {"WriteOnly", QIODevice::WriteOnly},
                                                            {"ReadWrite", QIODevice::ReadWrite},
                                                            {"Truncate", QIODevice::Truncate},
                                                            {"Append", QIODevice::Append}};
        QIODevice::OpenMode flags;
        for (const QString& name : mode.split(QLatin1Char(' ')))
            flags |= names.value(name);
        QFETCH(bool, ok);
        QFETCH(bool, writable);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("setup.hex"));
        const QByteArray text = hex::dataLine(0x1000, h("0A0B")) + hex::eofLine();
        if (exists) {
            QVERIFY(writeFile(path, text));
        }
        HexParser parser;
        QCOMPARE(parser.loadHex(path, sf::parser::PhantomNone, flags), ok);
        QCOMPARE(parser.isWritable(), writable);
        QCOMPARE(parser.filePath(), ok ? path : QString());
        QCOMPARE(QFile::exists(path), exists);
        if (exists) {
            QCOMPARE(testsupport::readFile(path), text); // never changed by loading
        }
        QVERIFY(!HexParser().loadHex(QString(), sf::parser::PhantomNone, QIODevice::ReadOnly));
    }

    void region_data() { testsupport::loadTable(); }

    void region() {
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
        QVERIFY(loaded(parser, processor));
        QCOMPARE(parser.getProcessor(), processor);
        QCOMPARE(parser.getPhantomBytePeriod(), period);
        QCOMPARE(parser.getStartAddress(), start);
        QCOMPARE(parser.getSettingsEndAddress(), settingsEnd);
        QCOMPARE(parser.getEndAddress(), end);
    }

    void countBytesWithPhantoms_data() { testsupport::loadTable(); }

    void countBytesWithPhantoms() {
        QFETCH(int, processor);
        QFETCH(quint64, address);
        QFETCH(quint64, real);
        QFETCH(quint64, span);
        HexParser parser;
        QVERIFY(loaded(parser, processor));
        QCOMPARE(parser.countBytesWithPhantoms(address, real), span);
        QCOMPARE(parser.countBytesWithoutPhantoms(address, span), real);
    }

    void phantomCountsMatchTheWalk() {
        // The closed forms against walking address by address.
        for (int processor : {0, 1, 2}) {
            HexParser parser;
            QVERIFY(loaded(parser, processor));
            const quint64 period = quint64(parser.getPhantomBytePeriod());
            auto phantom = [period](quint64 a) { return period >= 2 && a % period == 1; };
            for (quint64 address = 0x1E000; address < 0x1E009; ++address) {
                quint64 span = 0;
                quint64 real = 0;
                for (; real < 40; ++span) {
                    QCOMPARE(parser.countBytesWithoutPhantoms(address, span), real);
                    if (!phantom(address + span)) {
                        ++real;
                        QCOMPARE(parser.countBytesWithPhantoms(address, real), span + 1);
                    }
                }
            }
        }
    }

    void phantomInsertAndRemove_data() { testsupport::loadTable(); }

    void phantomInsertAndRemove() {
        QFETCH(int, processor);
        QFETCH(quint64, address);
        QFETCH(QByteArray, real);
        QFETCH(QByteArray, span);
        HexParser parser;
        QVERIFY(loaded(parser, processor));
        QCOMPARE(parser.insertPhantomBytes(real, address, quint64(real.size())), span);
        QCOMPARE(parser.removePhantomBytes(span, address, quint64(span.size())), real);
    }

    void allBytesArePhantom_data() { testsupport::loadTable(); }

    void allBytesArePhantom() {
        QFETCH(int, processor);
        QFETCH(QString, record);
        QFETCH(int, upper);
        QFETCH(bool, phantom);
        HexParser parser;
        QVERIFY(loaded(parser, processor));
        const sf::parser::RecordList list = hex::records(record);
        QCOMPARE(parser.allBytesArePhantom(list.front().get(), static_cast<quint16>(upper)),
                 phantom);
        QVERIFY(!parser.allBytesArePhantom(nullptr, 0));
    }

    void readData_data() { testsupport::loadTable(); }

    void readData() {
        QFETCH(int, processor);
        QFETCH(QString, image);
        QFETCH(uint, address);
        QFETCH(uint, count);
        QFETCH(QString, bytes);

        HexParser parser;
        QVERIFY(!parser.readData(address, count)); // closed
        QVERIFY(loaded(parser, processor));
        QVERIFY(parser.replaceFileContents(hex::records(image)));
        const std::optional<QByteArray> data = parser.readData(address, count);
        QCOMPARE(data.has_value(), bytes != QLatin1String("-"));
        if (data) {
            QCOMPARE(data->toHex().toUpper(), bytes.toLatin1());
        }
        parser.close();
        QVERIFY(!parser.readData(address, count));
    }
};

QTEST_GUILESS_MAIN(TestHexParser)
#include "tst_hexparser.moc"
