// The firmware version catalogue: sorted insert without duplicates, and the scan of a
// firmware folder tree with its groups, walk order and skipped files.
#include "support/VersionFixtures.h"
#include "util/VersionCatalogue.h"
#include "util/VersionParser.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using util::VersionCatalogue;
using util::VersionContainer;
using namespace versionfixtures;

namespace {

VersionContainer version(const QString& fw, const QString& enq = QString()) {
    VersionContainer v;
    v.fwVersion = fw;
    v.kxsVersion = QStringLiteral("L");
    v.enqString = enq;
    return v;
}

QStringList firmwareNames(const QList<VersionContainer>& versions) {
    QStringList names;
    for (const VersionContainer& v : versions) {
        names << v.fwVersion;
    }
    return names;
}

QString groupOf(const QList<VersionContainer>& versions, const QString& fw) {
    for (const VersionContainer& v : versions) {
        if (v.fwVersion == fw) {
            return v.mapGroup;
        }
    }
    return QStringLiteral("<missing>");
}

} // namespace

class TestVersionCatalogue : public QObject {
    Q_OBJECT
private slots:
    void sortedInsert_data();
    void sortedInsert();
    void scanGroupsBySubFolder();
    void scanKeepsFirstInWalkOrder();
    void scanOrdersHighestFirst();
    void scanSkipsUnusableFilesAndGoesOn();
    void scanOnlyRegularFirmwareFiles();
    void enumerateResult_data();
    void enumerateResult();
};

void TestVersionCatalogue::sortedInsert_data() {
    QTest::addColumn<QStringList>("added");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("ascending input reversed")
        << QStringList{"KX3.06", "KX4.01", "KX4.02"} << QStringList{"KX4.02", "KX4.01", "KX3.06"};
    QTest::newRow("descending input kept")
        << QStringList{"KX4.02", "KX4.01", "KX3.06"} << QStringList{"KX4.02", "KX4.01", "KX3.06"};
    QTest::newRow("legacy names last") << QStringList{"v306", "KX3.06", "v250", "Dravolin 2.5"}
                                       << QStringList{"KX3.06", "Dravolin 2.5", "v306", "v250"};
    QTest::newRow("KX3.9 above KX3.10 by text")
        << QStringList{"KX3.10", "KX3.9"} << QStringList{"KX3.9", "KX3.10"};
    QTest::newRow("case-only duplicate dropped")
        << QStringList{"KX4.02", "kx4.02", "KX4.01"} << QStringList{"KX4.02", "KX4.01"};
    QTest::newRow("legacy case-only duplicate dropped")
        << QStringList{"v306", "V306"} << QStringList{"v306"};
    QTest::newRow("inserted in the middle")
        << QStringList{"KX4.02", "KX3.06", "KX4.00"} << QStringList{"KX4.02", "KX4.00", "KX3.06"};
}

void TestVersionCatalogue::sortedInsert() {
    QFETCH(QStringList, added);
    QFETCH(QStringList, expected);
    QList<VersionContainer> list;
    for (const QString& fw : added) {
        list << version(fw);
    }
    VersionCatalogue catalogue;
    catalogue.add(list);
    QCOMPARE(firmwareNames(catalogue.versions()), expected);
}

void TestVersionCatalogue::scanGroupsBySubFolder() {
    QTemporaryDir tmp;
    QVERIFY(tmp.isValid());
    const QString root = tmp.path();
    QVERIFY(addVersion(root, QStringLiteral("KX4.02.kxhex"), "KX4.02", "KX4-4.0", "E4"));
    QVERIFY(addVersion(root, QStringLiteral("a/KX3.06.kxhex"), "KX3.06", "KX3-3.0", "E3"));
    QVERIFY(addVersion(root, QStringLiteral("a/b/v250.kxhex"), "v250", "Dravolin-2.5", "E2"));

    util::VersionParser parser;
    const QList<VersionContainer> found = VersionCatalogue::scanFirmwareFolder(
        root + QStringLiteral("/data/firmware/"), root + QStringLiteral("/data/kxs/"), parser);
    QCOMPARE(found.size(), 3);
    QCOMPARE(groupOf(found, QStringLiteral("KX4.02")), QString());
    QCOMPARE(groupOf(found, QStringLiteral("KX3.06")), QStringLiteral("a"));
    QCOMPARE(groupOf(found, QStringLiteral("v250")), QStringLiteral("a/b"));
}

void TestVersionCatalogue::scanKeepsFirstInWalkOrder() {
    // Files of a folder come before its sub-folders, names in order: "b.kxhex" in the
    // root is met before "a/a.kxhex", and "b" before "c" in the same folder.
    QTemporaryDir tmp;
    QVERIFY(tmp.isValid());
    const QString root = tmp.path();
    QVERIFY(addVersion(root, QStringLiteral("a/a.kxhex"), "KX4.02", "KX4-4.0", "from a/a"));
    QVERIFY(addVersion(root, QStringLiteral("c.kxhex"), "kx4.02", "KX4-4.0", "from c"));
    QVERIFY(addVersion(root, QStringLiteral("b.kxhex"), "KX4.02", "KX4-4.0", "from b"));

    util::VersionParser parser;
    VersionCatalogue catalogue;
    QVERIFY(catalogue.enumerate(root + QStringLiteral("/data/firmware"),
                                root + QStringLiteral("/data/kxs"), parser));
    QCOMPARE(catalogue.size(), 1);
    QCOMPARE(catalogue.versions().first().enqString, QStringLiteral("from b"));
    QVERIFY(catalogue.versions().first().mapGroup.isEmpty());
}

void TestVersionCatalogue::scanOrdersHighestFirst() {
    QTemporaryDir tmp;
    QVERIFY(tmp.isValid());
    const QString root = tmp.path();
    const QStringList names{"v250", "KX3.10", "KX4.02", "v306", "KX3.9", "KX3.06"};
    for (const QString& fw : names) {
        QVERIFY(addVersion(root, QStringLiteral("g/") + fw + QStringLiteral(".kxhex"), fw,
                           QStringLiteral("L-") + fw, QString()));
    }
    util::VersionParser parser;
    VersionCatalogue catalogue;
    QVERIFY(catalogue.enumerate(root + QStringLiteral("/data/firmware/"),
                                root + QStringLiteral("/data/kxs/"), parser));
    QCOMPARE(firmwareNames(catalogue.versions()),
             (QStringList{"KX4.02", "KX3.9", "KX3.10", "KX3.06", "v306", "v250"}));
}

void TestVersionCatalogue::scanSkipsUnusableFilesAndGoesOn() {
    QTemporaryDir tmp;
    QVERIFY(tmp.isValid());
    const QString root = tmp.path();
    const QString fw = root + QStringLiteral("/data/firmware/");
    QVERIFY(addVersion(root, QStringLiteral("a.kxhex"), "KX3.06", "KX3-3.0", "E"));
    QVERIFY(writeFile(fw + QStringLiteral("b.kxhex"), QByteArray()));
    QVERIFY(addVersion(root, QStringLiteral("c.kxhex"), "KX3.07", "KX3-3.7", "E", 0));
    QVERIFY(addVersion(root, QStringLiteral("d/e.kxhex"), "KX4.02", "KX4-4.0", "E"));

    util::VersionParser parser;
    QSignalSpy errors(&parser, &util::VersionParser::showError);
    QSignalSpy warnings(&parser, &util::VersionParser::showWarning);
    VersionCatalogue catalogue;
    QVERIFY(catalogue.enumerate(fw, root + QStringLiteral("/data/kxs/"), parser));
    QCOMPARE(firmwareNames(catalogue.versions()), (QStringList{"KX4.02", "KX3.06"}));
    QCOMPARE(errors.count(), 1);
    QVERIFY(errors.at(0).at(0).toString().contains(QLatin1String("\"b.kxhex\"")));
    QCOMPARE(warnings.count(), 1);
    QVERIFY(warnings.at(0).at(0).toString().contains(QLatin1String("\"c.kxhex\"")));
}

void TestVersionCatalogue::scanOnlyRegularFirmwareFiles() {
    QTemporaryDir tmp;
    QVERIFY(tmp.isValid());
    const QString root = tmp.path();
    const QString fw = root + QStringLiteral("/data/firmware/");
    QVERIFY(addVersion(root, QStringLiteral("upper/KX4.02.KXHEX"), "KX4.02", "KX4-4.0", "E"));
    // Same contents under names the scan must pass over, and a folder named like a file.
    const QByteArray other = firmwareImage("KX9.99", "KX4-4.0", "E");
    QVERIFY(writeFile(fw + QStringLiteral("KX9.99.hex"), other));
    QVERIFY(writeFile(fw + QStringLiteral("KX9.99.kxhex.bak"), other));
    QVERIFY(writeFile(fw + QStringLiteral(".hidden/KX9.99.kxhex"), other));
    QVERIFY(QDir().mkpath(fw + QStringLiteral("folder.kxhex")));
    // A link back up the tree must not make the walk run forever or list files twice.
    QVERIFY(QFile::link(fw, fw + QStringLiteral("upper/loop")));

    util::VersionParser parser;
    QSignalSpy errors(&parser, &util::VersionParser::showError);
    const QList<VersionContainer> found =
        VersionCatalogue::scanFirmwareFolder(fw, root + QStringLiteral("/data/kxs/"), parser);
    QCOMPARE(firmwareNames(found), QStringList{"KX4.02"});
    QCOMPARE(found.first().mapGroup, QStringLiteral("upper"));
    QCOMPARE(errors.count(), 0);
}

void TestVersionCatalogue::enumerateResult_data() {
    QTest::addColumn<QStringList>("files"); // firmware file names, all of version KX4.02
    QTest::addColumn<bool>("withLayout");
    QTest::addColumn<bool>("result");
    QTest::addColumn<int>("count");
    QTest::newRow("no firmware folder") << QStringList() << true << false << 0;
    QTest::newRow("only unusable files") << QStringList{"a.kxhex"} << false << false << 0;
    QTest::newRow("one usable file") << QStringList{"a.kxhex"} << true << true << 1;
    QTest::newRow("duplicates still count as found")
        << QStringList{"a.kxhex", "b.kxhex"} << true << true << 1;
}

void TestVersionCatalogue::enumerateResult() {
    QFETCH(QStringList, files);
    QFETCH(bool, withLayout);
    QFETCH(bool, result);
    QFETCH(int, count);
    QTemporaryDir tmp;
    QVERIFY(tmp.isValid());
    for (const QString& name : files) {
        QVERIFY(addVersion(tmp.path(), name, "KX4.02", "KX4-4.0", "E", withLayout ? 1000 : 0));
    }
    util::VersionParser parser;
    VersionCatalogue catalogue;
    QCOMPARE(catalogue.enumerate(tmp.path() + QStringLiteral("/data/firmware/"),
                                 tmp.path() + QStringLiteral("/data/kxs/"), parser),
             result);
    QCOMPARE(catalogue.size(), count);
}

QTEST_GUILESS_MAIN(TestVersionCatalogue)
#include "tst_versioncatalogue.moc"
