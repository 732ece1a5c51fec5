// Check box groups: the bit count in brackets after the keyword, folded and unfolded
// sizes, the prompts, writing the whole value as bytes, and the boxes themselves.
#include "sf/CheckBoolSetting.h"

#include "support/FakeSettingHost.h"
#include "support/TableFile.h"

#include <QtTest>

using namespace sf;
using settingstest::FakeSettingHost;
using settingstest::hexBytes;

namespace {

CheckBoolSetting* asGroup(Setting* s) {
    return dynamic_cast<CheckBoolSetting*>(s);
}

const char* const GROUP =
    "checkbool[12], {\"Cruise\", \"Walk\" inverted, \"Boost\", \"Light\", \"Horn\"}, "
    "\"Features\", \"enabled features\"";

} // namespace

class TestCheckBoolSetting : public QObject {
    Q_OBJECT
private slots:
    void bitCountSyntax_data() { testsupport::loadTable(); }

    void bitCountSyntax() {
        QFETCH(QString, definition);
        QFETCH(int, bits);
        FakeSettingHost host;
        int error = -1;
        Setting* s = host.build(QStringLiteral("G1"), definition, QByteArray(), &error);
        QCOMPARE(s != nullptr, bits > 0);
        QCOMPARE(error, bits > 0 ? 0 : 3);
        if (s) {
            QCOMPARE(s->getType(), TypeCheckBool);
            QCOMPARE(s->getSizeBits(), bits);
            QCOMPARE(s->getSizeBytes(), (bits - 1) / 8 + 1);
        }
    }

    void sizesAndPrompts_data() { testsupport::loadTable(); }

    void sizesAndPrompts() {
        QFETCH(int, role);
        QFETCH(QVariant, expected);
        FakeSettingHost host;
        CheckBoolSetting* g = asGroup(
            host.build(QStringLiteral("G1"), QString::fromLatin1(GROUP), hexBytes("00 A5")));
        QVERIFY(g);
        QCOMPARE(g->subIndices(), 5);
        QCOMPARE(g->expandedSize(), 6);
        QCOMPARE(g->unexpandedSize(), 1);
        QVERIFY(g->isExpandable() && g->isMulti());
        const QVariant actual = g->getData(static_cast<DataRole>(role));
        QCOMPARE(actual.isValid(), expected.isValid());
        if (expected.isValid()) {
            QCOMPARE(actual.toString(), expected.toString());
        }
    }

    void wholeValueAsBytes() {
        FakeSettingHost host;
        CheckBoolSetting* g = asGroup(
            host.build(QStringLiteral("G1"), QString::fromLatin1(GROUP), hexBytes("00 00")));
        QVERIFY(g);
        QVERIFY(g->setData(QVariant(hexBytes("01 80"))));
        QCOMPARE(g->getBytes(), hexBytes("01 80"));
        QVERIFY(!g->setData(QVariant(hexBytes("01 80")))); // unchanged
        QVERIFY(!g->setData(QVariant(hexBytes("01"))));    // wrong size
        QVERIFY(!g->setData(QVariant(hexBytes("01 02 03"))));
        QVERIFY(g->setData(-1, QVariant(hexBytes("00 01"))));
        QCOMPARE(g->getBytes(), hexBytes("00 01"));
    }

    void boxes() {
        FakeSettingHost host;
        CheckBoolSetting* g = asGroup(
            host.build(QStringLiteral("G1"), QString::fromLatin1(GROUP), hexBytes("00 01")));
        QVERIFY(g);
        QCOMPARE(g->getData(0, RoleName).toString(), QStringLiteral("Cruise"));
        QCOMPARE(g->getData(0, RoleEdit).toBool(), true);
        QCOMPARE(g->getData(1, RoleEdit).toBool(), true); // inverted, stored clear
        QVERIFY(g->setData(4, true));
        QCOMPARE(g->getBytes(), hexBytes("00 11"));
        QVERIFY(!g->setData(4, true));
        QVERIFY(g->setData(1, false)); // inverted: sets the stored bit
        QCOMPARE(g->getBytes(), hexBytes("00 13"));
        QVERIFY(!g->setData(5, true)); // no such box
        QVERIFY(!g->getData(5, RoleName).isValid());
    }

    void noSizeTestOnBitPosition() {
        // Unlike a bit field, a group does not test the bit position against its size: in a
        // 3-bit group, box 3 maps to bit 3 of the only byte.
        FakeSettingHost host;
        CheckBoolSetting* g = asGroup(host.build(
            QStringLiteral("G1"), QStringLiteral("checkbool[3], {a, b, c, d}"), hexBytes("00")));
        QVERIFY(g);
        int byte = -1;
        int bit = -1;
        QVERIFY(g->subIndexToOffset(3, &byte, &bit));
        QCOMPARE(byte, 0);
        QCOMPARE(bit, 3);
        QVERIFY(g->setData(3, true));
        QCOMPARE(g->getBytes(), hexBytes("08"));
        QVERIFY(!g->subIndexToOffset(8, &byte, &bit)); // beyond the only byte
    }
};

QTEST_GUILESS_MAIN(TestCheckBoolSetting)
#include "tst_checkboolsetting.moc"
