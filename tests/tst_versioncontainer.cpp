// Version identity: ordering of firmware version names, the display form of legacy
// names and what counts as "no version".
#include "util/VersionContainer.h"

#include "support/TableFile.h"

#include <QtTest>

using util::VersionContainer;

namespace {

VersionContainer withFirmware(const QString& fw) {
    VersionContainer v;
    v.fwVersion = fw;
    return v;
}

int sign(int value) {
    return (value > 0) - (value < 0);
}

} // namespace

class TestVersionContainer : public QObject {
    Q_OBJECT
private slots:
    void compare_data();
    void compare();
    void compareLooksOnlyAtFirmwareVersion();
    void printVersion_data();
    void printVersion();
    void isEmpty_data();
    void isEmpty();
};

void TestVersionContainer::compare_data() {
    testsupport::loadTable(QStringLiteral("versioncontainer-compare.txt"));
}

void TestVersionContainer::compare() {
    QFETCH(QString, mine);
    QFETCH(QString, theirs);
    QFETCH(int, expected);
    QFETCH(bool, exact);

    const int forward = withFirmware(mine).compare(withFirmware(theirs));
    const int backward = withFirmware(theirs).compare(withFirmware(mine));
    QCOMPARE(sign(forward), expected);
    QCOMPARE(sign(backward), -expected);
    if (exact) {
        QCOMPARE(forward, expected);
        QCOMPARE(backward, -expected);
    }
}

void TestVersionContainer::compareLooksOnlyAtFirmwareVersion() {
    VersionContainer a = withFirmware(QStringLiteral("KX4.0"));
    a.kxsVersion = QStringLiteral("zzz");
    a.enqString = QStringLiteral("zzz");
    a.kxsFormat = 9;
    VersionContainer b = withFirmware(QStringLiteral("kx4.0"));
    b.kxsVersion = QStringLiteral("aaa");
    b.mapGroup = QStringLiteral("old");
    QCOMPARE(a.compare(b), 0);
    QCOMPARE(b.compare(a), 0);
    QVERIFY(a != b);
}

void TestVersionContainer::printVersion_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    QTest::newRow("v306") << "v306"
                          << "KX3.06";
    QTest::newRow("V3p1") << "V3p1"
                          << "KX3.1";
    QTest::newRow("V3P6") << "V3P6"
                          << "KX3.6";
    QTest::newRow("letters inside removed") << "v3.0prelim6"
                                            << "KX3..06";
    QTest::newRow("non-ASCII letters removed") << QStringLiteral("v\u00e93\u00df06") << "KX3.06";
    QTest::newRow("letter outside the basic plane removed")
        << QString(QStringLiteral("v3") + QString::fromUcs4(U"\U0001D400") + QStringLiteral("1"))
        << "KX3.1";
    QTest::newRow("non-letter symbols kept") << QStringLiteral("v3-1") << "KX3.-1";
    QTest::newRow("only letters") << "v"
                                  << "KX";
    QTest::newRow("3.06 unchanged") << "3.06"
                                    << "3.06";
    QTest::newRow("KX name unchanged") << "KX3.06"
                                       << "KX3.06";
    QTest::newRow("Dravolin name unchanged") << "Dravolin 2.1"
                                             << "Dravolin 2.1";
    QTest::newRow("empty unchanged") << ""
                                     << "";
}

void TestVersionContainer::printVersion() {
    QFETCH(QString, name);
    QFETCH(QString, shown);
    QCOMPARE(util::printVersion(name), shown);
}

void TestVersionContainer::isEmpty_data() {
    QTest::addColumn<int>("field");
    QTest::addColumn<bool>("empty");
    QTest::newRow("nothing set") << -1 << true;
    QTest::newRow("format number alone") << 6 << true;
    QTest::newRow("layout version") << 0 << false;
    QTest::newRow("firmware version") << 1 << false;
    QTest::newRow("ENQ text") << 2 << false;
    QTest::newRow("layout path") << 3 << false;
    QTest::newRow("map path") << 4 << false;
    QTest::newRow("map group") << 5 << false;
}

void TestVersionContainer::isEmpty() {
    QFETCH(int, field);
    QFETCH(bool, empty);
    VersionContainer v;
    const QString x = QStringLiteral("x");
    switch (field) {
    case 0:
        v.kxsVersion = x;
        break;
    case 1:
        v.fwVersion = x;
        break;
    case 2:
        v.enqString = x;
        break;
    case 3:
        v.kxsFilePath = x;
        break;
    case 4:
        v.mapFilePath = x;
        break;
    case 5:
        v.mapGroup = x;
        break;
    case 6:
        v.kxsFormat = 3;
        break;
    default:
        break;
    }
    QCOMPARE(v.isEmpty(), empty);
}

QTEST_GUILESS_MAIN(TestVersionContainer)
#include "tst_versioncontainer.moc"
