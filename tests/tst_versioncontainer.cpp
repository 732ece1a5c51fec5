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
    void compare_data() { testsupport::loadTable(); }

    void compare() {
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

    void compareLooksOnlyAtFirmwareVersion() {
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

    void printVersion_data() { testsupport::loadTable(); }

    void printVersion() {
        QFETCH(QString, name);
        QFETCH(QString, shown);
        QCOMPARE(util::printVersion(name), shown);
    }

    // Any text makes a container non-empty; the format number alone does not.
    void isEmpty() {
        VersionContainer formatOnly;
        formatOnly.kxsFormat = 3;
        QVERIFY(VersionContainer().isEmpty() && formatOnly.isEmpty());
        for (QString VersionContainer::*text :
             {&VersionContainer::kxsVersion, &VersionContainer::fwVersion,
              &VersionContainer::enqString, &VersionContainer::kxsFilePath,
              &VersionContainer::mapFilePath, &VersionContainer::mapGroup}) {
            VersionContainer v;
            v.*text = QStringLiteral("x");
            QVERIFY(!v.isEmpty());
        }
    }
};

QTEST_GUILESS_MAIN(TestVersionContainer)
#include "tst_versioncontainer.moc"
