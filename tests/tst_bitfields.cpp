// Bit fields and check box groups: size from the bit count (in brackets after the
// checkbool keyword), the mapping of sub-indices to bytes and bits (including the deliberate
// test of the in-byte position against the size in bits), setting and clearing bits, labels
// with their options, folded and unfolded sizes, prompts, the whole value as bytes, and the
// data roles.
#include "sf/BoolSetting.h"
#include "sf/CheckBoolSetting.h"
#include "support/FakeSettingHost.h"
#include "support/TableFile.h"

#include <QSignalSpy>
#include <QtTest>

using namespace sf;
using settingstest::FakeSettingHost;
using settingstest::hexBytes;

namespace {

// Definition of a bit field of the given size with n labels "b0", "b1", ...
QString labelled(int bits, int n) {
    QStringList labels;
    for (int i = 0; i < n; ++i) {
        labels.append(QStringLiteral("\"b%1\"").arg(i));
    }
    return QStringLiteral("bool, %1, {%2}").arg(bits).arg(labels.join(QStringLiteral(", ")));
}

BoolSetting* asBool(Setting* s) {
    return dynamic_cast<BoolSetting*>(s);
}

CheckBoolSetting* asGroup(Setting* s) {
    return dynamic_cast<CheckBoolSetting*>(s);
}

const char* const GROUP =
    "checkbool[12], {\"Cruise\", \"Walk\" inverted, \"Boost\", \"Light\", \"Horn\"}, "
    "\"Features\", \"enabled features\"";

} // namespace

class TestBitFields : public QObject {
    Q_OBJECT
private slots:
    void sizes_data() { testsupport::loadTable(); }

    void sizes() {
        QFETCH(QString, bitCount);
        QFETCH(int, bytes);
        FakeSettingHost host;
        Setting* s =
            host.build(QStringLiteral("F1"), QStringLiteral("bool, %1, {\"a\"}").arg(bitCount));
        QCOMPARE(s != nullptr, bytes > 0);
        if (s) {
            QCOMPARE(s->getType(), TypeBool);
            QCOMPARE(s->getSizeBytes(), bytes);
            QCOMPARE(s->getSizeBits(), bitCount.toInt());
        }
    }

    void subIndexMapping_data() { testsupport::loadTable(); }

    void subIndexMapping() {
        QFETCH(int, bits);
        QFETCH(int, subIndex);
        QFETCH(int, byteIndex);
        QFETCH(int, bit);
        FakeSettingHost host;
        // More labels than bits, so that the mapping, not the label count, decides.
        BoolSetting* s = asBool(host.build(QStringLiteral("F1"), labelled(bits, 20)));
        QVERIFY(s);
        int byteOut = -1;
        int bitOut = -1;
        const bool mapped = s->subIndexToOffset(subIndex, &byteOut, &bitOut);
        QCOMPARE(mapped, byteIndex >= 0);
        if (mapped) {
            QCOMPARE(byteOut, byteIndex);
            QCOMPARE(bitOut, bit);
        }
        // Reading and writing the bit go through the same mapping (a negative sub-index
        // means the whole value there).
        if (subIndex >= 0) {
            QCOMPARE(s->getData(subIndex, RoleEdit).isValid(), mapped);
            QCOMPARE(s->setData(subIndex, true), mapped);
        }
    }

    void setBitWritesImageOrder_data() { testsupport::loadTable(); }
    void setBitWritesImageOrder() {
        QFETCH(int, subIndex);
        QFETCH(QByteArray, expected);
        FakeSettingHost host;
        BoolSetting* s =
            asBool(host.build(QStringLiteral("F1"), labelled(16, 16), hexBytes("00 00")));
        QVERIFY(s);
        QCOMPARE(s->subIndices(), 16);
        QVERIFY(s->setData(subIndex, true));
        QCOMPARE(s->getBytes(), expected);
        QCOMPARE(s->getData(subIndex, RoleEdit).toBool(), true);
        QVERIFY(s->setData(subIndex, false));
        QCOMPARE(s->getBytes(), hexBytes("00 00"));
    }

    void unchangedBitReportsFailure() {
        FakeSettingHost host;
        BoolSetting* s = asBool(host.build(QStringLiteral("F1"), labelled(8, 3), hexBytes("02")));
        QVERIFY(s);
        QVERIFY(!s->setData(1, true));  // already set
        QVERIFY(!s->setData(0, false)); // already clear
        QCOMPARE(s->getBytes(), hexBytes("02"));
        QVERIFY(!s->setData(3, true)); // no label for bit 3
        QCOMPARE(s->getBytes(), hexBytes("02"));
    }

    void wholeValue() {
        FakeSettingHost host;
        BoolSetting* s =
            asBool(host.build(QStringLiteral("F1"), labelled(12, 2), hexBytes("00 00")));
        QVERIFY(s);
        QVERIFY(s->setData(-1, 0x0102));
        QCOMPARE(s->getBytes(), hexBytes("01 02"));
        QVERIFY(!s->setData(-1, 0x0102)); // unchanged
        QVERIFY(s->setData(0xFFFF));      // masked to 12 bits
        QCOMPARE(s->getBytes(), hexBytes("0F FF"));
        QVERIFY(s->setData(QVariant(hexBytes("00 03"))));
        QCOMPARE(s->getBytes(), hexBytes("00 03"));
        QVERIFY(!s->setData(QVariant(hexBytes("01"))));
        QVERIFY(!s->setData(QStringLiteral("many")));
    }

    void labels_data() { testsupport::loadTable(); }

    void labels() {
        QFETCH(QString, field);
        QFETCH(QStringList, texts);
        QFETCH(QString, options);
        FakeSettingHost host;
        BoolSetting* s =
            asBool(host.build(QStringLiteral("F1"), QStringLiteral("bool, 8, ") + field));
        QVERIFY(s);
        QCOMPARE(s->subIndices(), texts.size());
        QStringList actualTexts;
        QStringList actualOptions;
        for (const BitLabel& l : s->getLabels()) {
            actualTexts.append(l.text);
            QStringList o;
            if (l.inverted) {
                o.append(QStringLiteral("i"));
            }
            if (!l.wsi.isEmpty()) {
                o.append(QStringLiteral("w:") + l.wsi);
            }
            if (!l.onText.isEmpty()) {
                o.append(QStringLiteral("on:") + l.onText);
            }
            if (!l.offText.isEmpty()) {
                o.append(QStringLiteral("off:") + l.offText);
            }
            actualOptions.append(o.join(QLatin1Char(' ')));
        }
        QCOMPARE(actualTexts, texts);
        QCOMPARE(actualOptions.join(QLatin1Char('|')), options);
        QVERIFY(host.problems().isEmpty());
    }

    void malformedLabels_data() { testsupport::loadTable(); }

    void malformedLabels() {
        QFETCH(QString, field);
        FakeSettingHost host;
        int error = 0;
        QVERIFY(!host.build(QStringLiteral("F1"), QStringLiteral("bool, 8, ") + field, QByteArray(),
                            &error));
        QCOMPARE(error, 3);
        QCOMPARE(host.problems().size(), 1);
    }

    void bitRoles_data() { testsupport::loadTable(); }

    void bitRoles() {
        QFETCH(int, subIndex);
        QFETCH(int, role);
        QFETCH(QVariant, expected);
        FakeSettingHost host;
        host.addTooltip(QStringLiteral("HORN"), QStringLiteral("Horn help"));
        BoolSetting* s = asBool(host.build(
            QStringLiteral("F1"),
            QStringLiteral("bool, 8, {\"Brake\" inverted, \"Horn\" on=\"Loud\" off=\"Silent\" "
                           "wsi=HORN}"),
            hexBytes("01")));
        QVERIFY(s);
        const QVariant actual = s->getData(subIndex, static_cast<DataRole>(role));
        QCOMPARE(actual.isValid(), expected.isValid());
        if (expected.isValid()) {
            QCOMPARE(actual.toString(), expected.toString());
        }
    }

    void wholeRoles() {
        FakeSettingHost host;
        BoolSetting* s =
            asBool(host.build(QStringLiteral("Flags2"), labelled(16, 2), hexBytes("01 02")));
        QVERIFY(s);
        QCOMPARE(s->getData(RoleEdit).toULongLong(), 0x0102ull);
        QCOMPARE(s->getData(RoleRaw).toULongLong(), 0x0102ull);
        QCOMPARE(s->getData(-1, RoleDisplay).toString(), QStringLiteral("258"));
        QCOMPARE(s->getData(RoleName).toString(), QStringLiteral("Flags"));
        QCOMPARE(s->getData(RoleMaximum).toDouble(), 65535.0);
        QVERIFY(!s->getData(RoleToolTip).isValid());
    }

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

QTEST_GUILESS_MAIN(TestBitFields)
#include "tst_bitfields.moc"
