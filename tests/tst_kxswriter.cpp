// The layout writer: the bytes of the header, names table and data it produces, and the
// values it refuses. The compiler's source rules and messages: kxs-compile.t.
#include "kxs/KxsFormat.h"
#include "kxs/compiler/KxsWriter.h"
#include "support/TableFile.h"

#include <QtTest>

using kxs::compiler::KxsWriter;

class TestKxsWriter : public QObject {
    Q_OBJECT
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
};

QTEST_GUILESS_MAIN(TestKxsWriter)
#include "tst_kxswriter.moc"
