// Lists: options from the layout's string list named by two fields, the stored index and
// its range check, and the data roles.
#include "sf/ListSetting.h"

#include "support/FakeSettingHost.h"
#include "support/TableFile.h"

#include <QtTest>

using namespace sf;
using settingstest::FakeSettingHost;
using settingstest::hexBytes;

namespace {

const QStringList CHEMISTRIES{"LiFe", "Li-ion", "NiMH", "SLA"};

// CHEM: the four chemistries; WIDE: 300 options, more than a byte can index.
void addLists(FakeSettingHost& host) {
    host.addStringList(QStringLiteral("CHEM_0"), QStringLiteral("CHEM_COUNT"), CHEMISTRIES);
    QStringList wide;
    for (int i = 0; i < 300; ++i) {
        wide << QString::number(i);
    }
    host.addStringList(QStringLiteral("WIDE_0"), QStringLiteral("WIDE_COUNT"), wide);
    host.addTooltip(QStringLiteral("CHEM"), QStringLiteral("Battery chemistry"));
}

const char* const LIST =
    "list, CHEM, CHEM_COUNT, CHEM_0, \"Chemistry\", \"sets the cell voltages\"";

} // namespace

class TestListSetting : public QObject {
    Q_OBJECT
private slots:
    void construction_data() { testsupport::loadTable(); }

    void construction() {
        QFETCH(QString, definition);
        QFETCH(bool, builds);
        FakeSettingHost host;
        addLists(host);
        int error = -1;
        Setting* s = host.build(QStringLiteral("Chem1"), definition, QByteArray(), &error);
        QCOMPARE(s != nullptr, builds);
        QCOMPARE(error, builds ? 0 : 3);
        if (s) {
            QCOMPARE(s->getType(), TypeList);
            QCOMPARE(s->getSizeBytes(), 1);
            QCOMPARE(s->getSizeBits(), 8);
            QCOMPARE(dynamic_cast<ListSetting*>(s)->getOptions(), CHEMISTRIES);
            QCOMPARE(dynamic_cast<ListSetting*>(s)->getWsi(), QStringLiteral("CHEM"));
        }
    }

    void setData_data() { testsupport::loadTable(); }
    void setData() {
        QFETCH(QString, list);
        QFETCH(QVariant, value);
        QFETCH(bool, accepted);
        QFETCH(int, stored);
        FakeSettingHost host;
        addLists(host);
        const QString definition = QString::fromLatin1(LIST).replace(QStringLiteral("CHEM"), list);
        Setting* s = host.build(QStringLiteral("Chem1"), definition, hexBytes("01"));
        QVERIFY(s);
        QCOMPARE(s->setData(value), accepted);
        QCOMPARE(static_cast<quint8>(s->getBytes().at(0)), stored);
    }

    void dataRoles_data() { testsupport::loadTable(); }
    void dataRoles() {
        QFETCH(int, role);
        QFETCH(QVariant, expected);
        FakeSettingHost host;
        addLists(host);
        Setting* s = host.build(QStringLiteral("Chem1"), QString::fromLatin1(LIST), hexBytes("02"));
        QVERIFY(s);
        QVERIFY(s->finishSetup());
        const QVariant actual = s->getData(static_cast<DataRole>(role));
        QCOMPARE(actual.isValid(), expected.isValid());
        if (expected.isValid()) {
            QCOMPARE(actual, expected);
        }
    }

    // A name that depends on another setting makes the list one of that setting's dependents.
    void nameFollowsOtherSetting() {
        FakeSettingHost host;
        addLists(host);
        Setting* mode =
            host.build(QStringLiteral("Mode1"), QStringLiteral("num, MODE, u8"), hexBytes("01"));
        Setting* list =
            host.build(QStringLiteral("Chem1"),
                       QStringLiteral("list, CHEM, CHEM_COUNT, CHEM_0, Mode1 ? \"A\" : \"B\""),
                       hexBytes("01"));
        QVERIFY(mode && list);
        QVERIFY(host.finishAll());
        QVERIFY(mode->getDependents().contains(list));
        QCOMPARE(list->getData(RoleName).toString(), QStringLiteral("A"));
    }
};

QTEST_GUILESS_MAIN(TestListSetting)
#include "tst_listsetting.moc"
