// Numbers: size and sign from the format field, reading and writing the image's bytes,
// translation through scale chains, ranges that follow other settings, and the answers
// for every data role.
#include "sf/NumSetting.h"

#include "support/FakeSettingHost.h"
#include "support/TableFile.h"

#include <QtTest>

#include <cmath>

using namespace sf;
using settingstest::FakeSettingHost;
using settingstest::hexBytes;

namespace {

QString numDefinition(const QString& format, const QString& rest = QString()) {
    return QStringLiteral("num, W, %1").arg(format) + rest;
}

NumSetting* asNum(Setting* s) {
    return dynamic_cast<NumSetting*>(s);
}

} // namespace

class TestNumSetting : public QObject {
    Q_OBJECT
private slots:
    void sizeAndSign_data() { testsupport::loadTable(); }

    void sizeAndSign() {
        QFETCH(QString, format);
        QFETCH(bool, builds);
        QFETCH(int, bits);
        QFETCH(int, bytes);
        QFETCH(bool, isSigned);
        QFETCH(double, minimum);
        QFETCH(double, maximum);
        FakeSettingHost host;
        int error = -1;
        Setting* s = host.build(QStringLiteral("N1"), numDefinition(format), QByteArray(), &error);
        QCOMPARE(s != nullptr, builds);
        QCOMPARE(error, builds ? 0 : 3);
        if (!s) {
            return;
        }
        QCOMPARE(s->getType(), TypeNum);
        QCOMPARE(s->getSizeBits(), bits);
        QCOMPARE(s->getSizeBytes(), bytes);
        QCOMPARE(s->getBytes().size(), bytes);
        QCOMPARE(asNum(s)->isSigned(), isSigned);
        QVERIFY(s->finishSetup());
        QCOMPARE(s->getData(RoleMinimum).toDouble(), minimum);
        QCOMPARE(s->getData(RoleMaximum).toDouble(), maximum);
    }

    void bytesAndValues_data() { testsupport::loadTable(); }

    void bytesAndValues() {
        QFETCH(QString, format);
        QFETCH(QByteArray, bytes);
        QFETCH(double, value);
        QFETCH(QString, way);
        FakeSettingHost host;
        NumSetting* n = asNum(host.build(QStringLiteral("N1"), numDefinition(format), bytes));
        QVERIFY(n);
        if (way != QLatin1String("write")) {
            double read = 0.0;
            QVERIFY(n->readDouble(bytes.constData(), &read));
            QCOMPARE(read, value);
            QCOMPARE(n->getData(RoleEdit).toDouble(), value); // no scale field: shown = raw
        }
        if (way != QLatin1String("read")) {
            QByteArray out(n->getSizeBytes(), '\x55');
            QVERIFY(n->writeDouble(value, out.data()));
            QCOMPARE(out.toHex(' '), bytes.toHex(' '));
            // Reading it back gives the stored integer.
            double back = 0.0;
            QVERIFY(n->readDouble(out.constData(), &back));
            QCOMPARE(std::trunc(back), back);
            QVERIFY(!n->writeDouble(std::nan(""), out.data()));
        }
    }

    void scaleChain_data() { testsupport::loadTable(); }

    void scaleChain() {
        QFETCH(uint, format);
        QFETCH(QString, scale);
        QFETCH(double, raw);
        QFETCH(double, shown);
        QFETCH(bool, exact);
        FakeSettingHost host;
        host.setFormat(format);
        NumSetting* n = asNum(
            host.build(QStringLiteral("N1"), numDefinition(QStringLiteral("u16"),
                                                           QStringLiteral(", 0`65535, ") + scale)));
        QVERIFY(n);
        if (exact) {
            double scaled = 0.0;
            QVERIFY(n->translate(raw, &scaled));
            QCOMPARE(scaled, shown);
            double back = 0.0;
            QVERIFY(n->untranslate(shown, &back));
            QCOMPARE(back, raw);
        }
        // Through the setting's own bytes.
        QVERIFY(n->setData(shown));
        double stored = 0.0;
        QVERIFY(n->readDouble(n->getRawData(), &stored));
        QCOMPARE(stored, raw);
        if (exact) {
            QCOMPARE(n->getData(RoleEdit).toDouble(), shown);
        }
        QVERIFY(!n->setData(QStringLiteral("not a number")));
    }

    // A scale chosen by a case block must still be a bracketed chain: a bare number is none.
    void scaleChosenByCase() {
        FakeSettingHost host;
        const auto build = [&host](const QString& scale) {
            return asNum(host.build(QStringLiteral("N1"),
                                    numDefinition(QStringLiteral("u16"), ", 0`65535, " + scale)));
        };
        double shown = 0.0;
        QVERIFY(build(QStringLiteral("{0, [*2], [*3]}"))->translate(5.0, &shown));
        QCOMPARE(shown, 10.0);
        NumSetting* bare = build(QStringLiteral("{0, 5, [*3]}"));
        QVERIFY(!bare || !bare->translate(5.0, &shown));
    }

    // A range that follows another setting: bounds re-evaluated on update, the value clamped
    // into a narrower range and left alone in a range that still holds it.
    void rangeFollowsOtherSetting() {
        FakeSettingHost host;
        Setting* cells = host.build(QStringLiteral("Cells1"),
                                    QStringLiteral("num, CELLS, u8, 1`24, [], 0, \"Cells\", \"\""),
                                    hexBytes("0A"));
        NumSetting* limit = asNum(host.build(
            QStringLiteral("Limit1"),
            QStringLiteral("num, LIM, u16, Cells1*25`Cells1*42, [/10], 1, \"Limit\", \"V\""),
            hexBytes("01 A4"))); // 42.0
        QVERIFY(cells && limit);
        QVERIFY(host.finishAll());
        QCOMPARE(limit->getBytes(), hexBytes("01 A4")); // finishing never changes a value
        QCOMPARE(limit->getData(RoleMinimum).toDouble(), 25.0);
        QCOMPARE(limit->getData(RoleMaximum).toDouble(), 42.0);
        QVERIFY(cells->getDependents().contains(limit));

        QVERIFY(cells->setData(12));
        host.notifyDependents(cells);
        QCOMPARE(limit->getData(RoleMinimum).toDouble(), 30.0);
        QCOMPARE(limit->getData(RoleMaximum).toDouble(), 50.4);
        QCOMPARE(limit->getData(RoleStatus).toString(),
                 QStringLiteral("Limit | Maximum Value: 50.4 V | Minimum Value: 30.0 V"));
        QCOMPARE(limit->getBytes(), hexBytes("01 A4"));
        QVERIFY(cells->setData(5));
        host.notifyDependents(cells);
        QCOMPARE(limit->getBytes(), hexBytes("00 D2")); // clamped to 5 * 42 = 21.0
        QVERIFY(cells->setData(8));
        host.notifyDependents(cells);
        QCOMPARE(limit->getBytes(), hexBytes("00 D2")); // inside the wider range: unchanged
        QVERIFY(host.problems().isEmpty());
    }

    void dataRoles_data() { testsupport::loadTable(); }

    void dataRoles() {
        QFETCH(int, role);
        QFETCH(QVariant, expected);
        FakeSettingHost host;
        host.addTooltip(QStringLiteral("IMAX"), QStringLiteral("Phase current"));
        // The precision field is empty, so the default of 2 decimals applies.
        Setting* n = host.build(
            QStringLiteral("Imax1"),
            QStringLiteral("num, IMAX, u16, 0`2000, [*10/256], , \"Current \\\"max\\\"\", A, "
                           "\"per phase\""),
            hexBytes("03 E8"));
        QVERIFY(n);
        QVERIFY(n->finishSetup());
        const QVariant actual = n->getData(static_cast<DataRole>(role));
        QCOMPARE(actual.isValid(), expected.isValid());
        if (expected.isValid()) {
            QCOMPARE(actual.toString(), expected.toString());
        }
    }

    // A range that stops being a range (the other branch of a condition) fails the update.
    void rangeThatCannotBeComputedFailsTheUpdate() {
        FakeSettingHost host;
        Setting* mode =
            host.build(QStringLiteral("Mode1"), QStringLiteral("num, M, u8"), hexBytes("01"));
        Setting* limit =
            host.build(QStringLiteral("Limit1"), QStringLiteral("num, LIM, u8, Mode1 ? 0`100 : 7"),
                       hexBytes("05"));
        QVERIFY(mode && limit);
        QVERIFY(host.finishAll());
        QVERIFY(limit->update(mode->getType()));
        QVERIFY(mode->setData(0));
        QVERIFY(!limit->update(mode->getType()));
    }

    // Precision and scale from case blocks, units from a ternary, all following Mode1.
    void fieldsFollowOtherSetting() {
        FakeSettingHost host;
        Setting* mode =
            host.build(QStringLiteral("Mode1"),
                       QStringLiteral("num, MODE, u8, 0`2, [], 0, \"Mode\", \"\""), hexBytes("00"));
        Setting* n =
            host.build(QStringLiteral("Speed1"),
                       QStringLiteral("num, SPD, u16, 0`999, [/10], {Mode1, 1, 2, 0}, \"Speed\", "
                                      "Mode1 == 0 ? \"km/h\" : \"mph\""),
                       hexBytes("00 7B"));
        Setting* dist =
            host.build(QStringLiteral("Dist1"),
                       QStringLiteral("num, DIST, u16, 0`1000, {Mode1, [*1], [*Mode1*10]}, "
                                      "0, \"Distance\", \"\""),
                       hexBytes("00 05"));
        QVERIFY(mode && n && dist);
        QCOMPARE(dist->getData(RoleEdit).toDouble(), 5.0);
        QVERIFY(host.finishAll());
        QCOMPARE(n->getData(RoleDisplay).toString(), QStringLiteral("12.3 km/h"));
        QVERIFY(mode->getDependents().contains(n));
        QVERIFY(mode->getDependents().contains(dist));
        QVERIFY(mode->setData(1));
        QCOMPARE(n->getData(RoleDisplay).toString(), QStringLiteral("12.30 mph"));
        QCOMPARE(dist->getData(RoleEdit).toDouble(), 50.0);
        QVERIFY(mode->setData(2));
        QCOMPARE(n->getData(RoleDisplay).toString(), QStringLiteral("12 mph"));
        QCOMPARE(dist->getData(RoleEdit).toDouble(), 100.0); // the last entry: * 2 * 10
        // Full precision: fixed notation with 99 decimals, whatever the shown precision.
        const QString full = n->getData(RoleFullText).toString();
        QCOMPARE(full.section(QLatin1Char('.'), 1).size(), 99);
        QVERIFY2(full.startsWith(QStringLiteral("12.30000000000000")), qPrintable(full));
        QVERIFY(host.problems().isEmpty());
    }

    void failedSettingRefusesEverything() {
        FakeSettingHost host;
        auto tokens = std::make_unique<parser::TokenList>(
            FakeSettingHost::tokenize(QStringLiteral("num, W, q16, 0`1, []")));
        NumSetting n(QStringLiteral("Bad1"), std::move(tokens), &host);
        QCOMPARE(n.getType(), TypeNone);
        for (int role = 0; role <= 15; ++role) {
            QVERIFY2(!n.getData(static_cast<DataRole>(role)).isValid(),
                     qPrintable(QString::number(role)));
        }
        QVERIFY(!n.setData(1.0));
        QVERIFY(!n.update(TypeNum));
        QVERIFY(!n.finishSetup());
        QVERIFY(!n.recomputeRange());
        double v = 0.0;
        QVERIFY(!n.translate(1.0, &v));
        QVERIFY(!n.getRawData());
        QCOMPARE(n.getSettingInputOffset(InputRange), -1);
    }
};

QTEST_GUILESS_MAIN(TestNumSetting)
#include "tst_numsetting.moc"
