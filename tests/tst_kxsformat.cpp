// The layout file format. The writer: the bytes of the header, names table and data it
// produces, and the values it refuses (the compiler's source rules and messages:
// kxs-compile.t). The reader: header validation, lookup by name and type, sequential
// iteration and its cursor, and the refusal of damaged entries without reading outside the
// file.
#include "kxs/KxsFormat.h"
#include "kxs/compiler/KxsWriter.h"
#include "kxs/parser/KxsParser.h"
#include "support/LayoutFixtures.h"
#include "support/TableFile.h"
#include "support/TestSupport.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using kxs::NamesTableEntryV1;
using kxs::compiler::KxsWriter;
using kxs::parser::KxsParser;
using testsupport::rawEntry;
using testsupport::RawLayout;

namespace {

QByteArray z(const char* text) {
    return QByteArray(text) + '\0';
}

QByteArray blockOf(const NamesTableEntryV1* entry, const char* data) {
    return QByteArray(data, static_cast<int>(kxs::entrySize(entry)));
}

QByteArray le32(quint32 v) {
    QByteArray b(4, '\0');
    qToLittleEndian<quint32>(v, reinterpret_cast<uchar*>(b.data()));
    return b;
}

// A names table with one entry per listed type, named N0, N1, ...; each points at a
// 1-byte data block holding its index.
RawLayout typedLayout(const QList<int>& types) {
    RawLayout l;
    for (int i = 0; i < types.size(); ++i) {
        l.names += rawEntry(static_cast<quint8>(types.at(i)), static_cast<quint32>(i), 1,
                            z(qPrintable(QStringLiteral("N%1").arg(i))));
        l.data += static_cast<char>(i);
    }
    return l;
}

} // namespace

class TestKxsFormat : public QObject {
    Q_OBJECT

    // Outputs of the reader calls, shared by every test.
    const NamesTableEntryV1* e = nullptr;
    const char* d = nullptr;

private slots:
    void writerLayout() {
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
        QCOMPARE(bytes.mid(53, 12),
                 QByteArray::fromHex("0c020300000002000000") + QByteArray("C\0", 2));
        QCOMPARE(bytes.mid(65), QByteArray::fromHex("78797a0201"));
    }

    void writerRefusals_data() { testsupport::loadTable(); }

    void writerRefusals() {
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

    void open_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("accepted");

        RawLayout good;
        good.names = rawEntry(1, 0, 8, z("S"));
        good.data = le32(1) + le32(1);
        const int size = good.toBytes().size();
        const int dataStart = 40 + good.names.size();
        auto with = [&](auto change) {
            RawLayout l = good;
            change(l);
            return l.toBytes();
        };

        QTest::newRow("format 1000") << good.toBytes() << true;
        QTest::newRow("format 1001") << with([](RawLayout& l) { l.format = 1001; }) << true;
        QTest::newRow("format 999") << with([](RawLayout& l) { l.format = 999; }) << false;
        QTest::newRow("format 1002") << with([](RawLayout& l) { l.format = 1002; }) << false;
        QTest::newRow("bad magic") << with([](RawLayout& l) { l.magic = "KXDATB"; }) << false;
        QTest::newRow("empty") << QByteArray() << false;
        QTest::newRow("header cut at 39 bytes") << good.toBytes().left(39) << false;
        QTest::newRow("bare 40-byte header, empty tables") << with([](RawLayout& l) {
            l.names.clear();
            l.data.clear();
        }) << true;
        QTest::newRow("data end exactly at file end")
            << with([&](RawLayout& l) { l.dataSize = size - dataStart; }) << true;
        QTest::newRow("data end one past file end")
            << with([&](RawLayout& l) { l.dataSize = size - dataStart + 1; }) << false;
        QTest::newRow("names end one past file end")
            << with([&](RawLayout& l) { l.namesSize = size - 40 + 1; }) << false;
        QTest::newRow("names offset past file end") << with([&](RawLayout& l) {
            l.namesOffset = size + 1;
            l.namesSize = 0;
        }) << false;
        QTest::newRow("data sum wraps to a small number") << with([](RawLayout& l) {
            l.dataOffset = 0xFFFFFFF0;
            l.dataSize = 0x20;
        }) << true;
        QTest::newRow("data sum wraps past file size") << with([&](RawLayout& l) {
            l.dataOffset = 0xFFFFFFFF;
            l.dataSize = static_cast<quint32>(size) + 2;
        }) << false;
    }

    void open() {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, accepted);
        KxsParser p;
        QCOMPARE(p.openKxsData(bytes), accepted);
        QCOMPARE(p.isOpen(), accepted);
        QCOMPARE(KxsParser::headerProblem(bytes).isEmpty(), accepted);
        if (!accepted) {
            QCOMPARE(p.getKxsFormat(), 0xFFFFFFFFu);
            return;
        }
        QCOMPARE(p.getOffset(), kxs::readLE32(bytes.constData() + kxs::KXS_HEADER_NAMES_OFFSET));
        // Whatever the header says, walking the file never leaves it.
        for (quint8 type = 0; type < 6; ++type) {
            p.reset();
            while (p.getNext(&e, &d, type)) {
                QVERIFY(d >= bytes.constData());
                QVERIFY(d + kxs::entrySize(e) <= bytes.constData() + bytes.size());
                QVERIFY(kxs::entryBytes(e) + kxs::entryLength(e) <=
                        bytes.constData() + bytes.size());
            }
            p.getEntry(&e, &d, QStringLiteral("S"), type);
        }
    }

    void openFile() {
        QTemporaryDir dir;
        KxsWriter w;
        QVERIFY(w.setVersion(QStringLiteral("KX3-1.00")));
        QVERIFY(w.addInteger(QStringLiteral("N"), 7, 1));
        const QString path = dir.filePath(QStringLiteral("a.kxs"));
        QVERIFY(testsupport::writeFile(path, w.toBytes()));

        KxsParser p;
        QVERIFY(!p.openKxsFile(QString()));
        QVERIFY(!p.openKxsFile(dir.filePath(QStringLiteral("missing.kxs"))));
        QVERIFY(!p.openKxsFile(dir.path())); // a folder
        QVERIFY(p.openKxsFile(path));
        QCOMPARE(p.getKxsVersion(), QStringLiteral("KX3-1.00"));
        QVERIFY(p.getEntry(&e, &d, QStringLiteral("N"), 2));
        // A failed reopen leaves the reader closed.
        QVERIFY(!p.openKxsFile(dir.filePath(QStringLiteral("missing.kxs"))));
        QVERIFY(!p.isOpen());
        QCOMPARE(p.getKxsVersion(), QString());
    }

    void version_data() { testsupport::loadTable(); }

    void version() {
        QFETCH(QByteArray, field);
        QFETCH(QString, expected);
        RawLayout l;
        l.version = field;
        KxsParser p;
        QVERIFY(p.openKxsData(l.toBytes()));
        QCOMPARE(p.getKxsVersion(), expected);
    }

    void roundTrip_data() { testsupport::loadTable(); }

    void roundTrip() {
        QFETCH(int, type);
        QFETCH(QString, name);
        QFETCH(QByteArray, block);

        // The entry sits between others of every type, so lookups must skip them.
        KxsWriter w;
        QVERIFY(w.setVersion(QStringLiteral("RT")));
        QVERIFY(w.addCategory(QStringLiteral("Before"), QStringLiteral("t"), QStringLiteral("p")));
        QVERIFY(w.addSetting(QStringLiteral("Before"), 1, 1, QStringLiteral("num")));
        QVERIFY(w.addInteger(QStringLiteral("Before"), 1, 4));
        QVERIFY(w.addString(QStringLiteral("Before"), QStringLiteral("b")));
        QVERIFY2(w.addRaw(static_cast<quint8>(type), name, block), qPrintable(w.errorString()));
        QVERIFY(w.addString(QStringLiteral("After"), QStringLiteral("a")));
        const QByteArray bytes = w.toBytes();

        KxsParser p;
        QVERIFY(p.openKxsData(bytes));
        QVERIFY(p.getEntry(&e, &d, name, static_cast<quint8>(type)));
        QCOMPARE(int(kxs::entryType(e)), type);
        QCOMPARE(kxs::entryName(e), name);
        QCOMPARE(blockOf(e, d), block);
        // The cursor now points at "After", the next string.
        QVERIFY(p.getNext(&e, &d, 3));
        QCOMPARE(kxs::entryName(e), QStringLiteral("After"));
    }

    void nameMatching_data() { testsupport::loadTable(); }

    void nameMatching() {
        QFETCH(QByteArray, field);
        QFETCH(QString, lookup);
        QFETCH(bool, matches);
        RawLayout l;
        l.names = rawEntry(3, 0, 1, field);
        l.data = "x";
        KxsParser p;
        QVERIFY(p.openKxsData(l.toBytes()));
        QCOMPARE(p.getEntry(&e, &d, lookup, 3), matches);
        QCOMPARE(p.getEntry(&e, &d, lookup, 0), matches);
    }

    void typeSelection_data() { testsupport::loadTable(); }

    void typeSelection() {
        QFETCH(QByteArray, types);
        QFETCH(int, lookupType);
        QFETCH(int, found);
        RawLayout l;
        for (int i = 0; i < types.size(); ++i) {
            l.names +=
                rawEntry(static_cast<quint8>(types.at(i)), static_cast<quint32>(i), 1, z("N"));
            l.data += static_cast<char>(i);
        }
        KxsParser p;
        QVERIFY(p.openKxsData(l.toBytes()));
        const quint32 before = p.getOffset();
        QCOMPARE(p.getEntry(&e, &d, QStringLiteral("N"), static_cast<quint8>(lookupType)),
                 found >= 0);
        if (found >= 0) {
            QCOMPARE(int(d[0]), found);
            QCOMPARE(p.getOffset(), quint32(40 + 12 * (found + 1)));
        } else {
            QCOMPARE(p.getOffset(), before);
        }
    }

    void hasNextCountsOnlyExactType() {
        // getNext treats type 0 as any type; hasNext(type) does not.
        const RawLayout l = typedLayout({2, 0, 2});
        KxsParser p;
        QVERIFY(p.openKxsData(l.toBytes()));
        QVERIFY(p.hasNext(3) == false);
        QVERIFY(p.getNext(&e, &d, 3));
        QCOMPARE(kxs::entryName(e), QStringLiteral("N1"));
        QCOMPARE(int(kxs::entryType(e)), 0);
        QVERIFY(!p.hasNext(3));
        QVERIFY(p.hasNext(2));
        QVERIFY(p.hasNext());
        QVERIFY(p.getNext(&e, &d, 2));
        QCOMPARE(kxs::entryName(e), QStringLiteral("N2"));
        QVERIFY(!p.hasNext());
        QVERIFY(!p.hasNext(2));
    }

    void iterationRunsPastNamesTable() {
        // The data section happens to hold bytes that form an entry: getNext goes on into it,
        // while hasNext stops at the data section.
        RawLayout l;
        l.names = rawEntry(2, 0, 1, z("A"));
        l.data = QByteArray("\x05") + rawEntry(2, 0, 1, z("Ghost"));
        KxsParser p;
        QVERIFY(p.openKxsData(l.toBytes()));
        QVERIFY(p.getNext(&e, &d, 2));
        QVERIFY(!p.hasNext());
        QVERIFY(!p.hasNext(2));
        // The cursor is at the data section's first byte (length 5: too short, refused).
        QVERIFY(!p.getNext(&e, &d, 2));
        p.setOffset(p.getOffset() + 1);
        QVERIFY(p.getNext(&e, &d, 2));
        QCOMPARE(kxs::entryName(e), QStringLiteral("Ghost"));
        QCOMPARE(int(d[0]), 5);
        // getEntry searches the names table only.
        QVERIFY(!p.getEntry(&e, &d, QStringLiteral("Ghost"), 0));
    }

    void damagedEntries_data() { testsupport::loadTable(); }
    void damagedEntries() {
        QFETCH(int, length);
        QFETCH(int, type);
        QFETCH(uint, offset);
        QFETCH(uint, size);
        QFETCH(QByteArray, name);
        QFETCH(QString, nextSetting);
        QFETCH(bool, hasNextSetting);
        QFETCH(bool, goodFound);
        QFETCH(bool, badFound);

        RawLayout l;
        const QByteArray first = length < 0
                                     ? rawEntry(quint8(type), offset, size, name)
                                     : rawEntry(quint8(length), quint8(type), offset, size, name);
        l.names = first + rawEntry(1, 0, 8, z("GOOD"));
        l.data = le32(0x20) + le32(2);
        const QByteArray bytes = l.toBytes();
        KxsParser p;
        QVERIFY(p.openKxsData(bytes));
        QCOMPARE(p.hasNext(1), hasNextSetting);
        const quint32 start = p.getOffset();
        const bool fails = nextSetting == QLatin1String("-");
        e = nullptr;
        d = nullptr;
        QCOMPARE(p.getNext(&e, &d, 1), !fails);
        if (fails) { // cursor and outputs untouched
            QCOMPARE(p.getOffset(), start);
            QVERIFY(!e && !d);
        } else {
            QCOMPARE(kxs::entryName(e), nextSetting);
            QVERIFY(d >= bytes.constData());
            QVERIFY(d + kxs::entrySize(e) <= bytes.constData() + bytes.size());
        }
        p.reset();
        const bool good = p.getEntry(&e, &d, QStringLiteral("GOOD"), 1);
        QCOMPARE(good, goodFound);
        if (!good) { // the lookup stops at the damaged entry without moving
            QCOMPARE(p.getOffset(), start);
        }
        if (good && kxs::entryNameFieldSize(e) > 0) {
            QCOMPARE(blockOf(e, d), le32(0x20) + le32(2));
        }
        QCOMPARE(p.getEntry(&e, &d, QStringLiteral("BAD"), 0), badFound);
    }

    void cursorRules() {
        const RawLayout l = typedLayout({1, 2, 3, 4});
        const QByteArray bytes = l.toBytes();
        KxsParser p;
        QCOMPARE(p.getKxsFormat(), 0xFFFFFFFFu); // nothing open yet
        QVERIFY(!p.hasNext());
        p.setOffset(1234);
        QVERIFY(!p.openKxsData(QByteArray("junk")));
        QCOMPARE(p.getOffset(), 1234u); // a failed open keeps the cursor
        p.reset();
        QCOMPARE(p.getOffset(), 0u); // nothing open
        QVERIFY(p.openKxsData(bytes));
        QCOMPARE(p.getOffset(), 40u);

        QVERIFY(p.getEntry(&e, &d, QStringLiteral("N2"), 3));
        QCOMPARE(p.getOffset(), 40u + 3 * 13);
        QVERIFY(!p.hasNext(1)); // the setting lies behind the cursor
        QVERIFY(p.hasNext(4));
        QCOMPARE(p.getOffset(), 40u + 3 * 13); // hasNext does not move

        p.setOffset(0xFFFFFFFFu);
        QVERIFY(!p.hasNext());
        QVERIFY(!p.getNext(&e, &d, 4));
        QCOMPARE(p.getOffset(), 0xFFFFFFFFu);
        p.setOffset(static_cast<quint32>(bytes.size()) - 3); // inside the data section
        QVERIFY(!p.getNext(&e, &d, 0));
        p.reset();
        QCOMPARE(p.getOffset(), 40u);

        p.setOffset(77);
        p.close();
        QVERIFY(!p.isOpen());
        QCOMPARE(p.getOffset(), 77u); // close keeps the cursor
        QVERIFY(!p.getNext(&e, &d, 1));
    }
};

QTEST_GUILESS_MAIN(TestKxsFormat)
#include "tst_kxsformat.moc"
