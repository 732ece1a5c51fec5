// The firmware version catalogue: sorted insert without duplicates, and the scan of a
// firmware folder tree: which of two files of one version wins, which files and folders
// it passes over, what it returns. Groups, order and the messages of refused files, as
// the command-line tool shows them: cli-versions.t.
#include "support/TableFile.h"
#include "support/VersionFixtures.h"
#include "util/VersionCatalogue.h"
#include "util/VersionParser.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

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

} // namespace

class TestVersionCatalogue : public QObject {
    Q_OBJECT

    // A fresh tree per test: root/data/firmware/ and root/data/kxs/.
    std::unique_ptr<QTemporaryDir> m_tmp;
    QString root, fw, kxs;

private slots:
    void init() {
        m_tmp = std::make_unique<QTemporaryDir>();
        QVERIFY(m_tmp->isValid());
        root = m_tmp->path();
        fw = root + QStringLiteral("/data/firmware/");
        kxs = root + QStringLiteral("/data/kxs/");
    }

    void sortedInsert_data() { testsupport::loadTable(); }

    void sortedInsert() {
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

    void scanKeepsFirstInWalkOrder() {
        // Files of a folder come before its sub-folders, names in order: "b.kxhex" in the
        // root is met before "a/a.kxhex", and "b" before "c" in the same folder.
        QVERIFY(addVersion(root, QStringLiteral("a/a.kxhex"), "KX4.02", "KX4-4.0", "from a/a"));
        QVERIFY(addVersion(root, QStringLiteral("c.kxhex"), "kx4.02", "KX4-4.0", "from c"));
        QVERIFY(addVersion(root, QStringLiteral("b.kxhex"), "KX4.02", "KX4-4.0", "from b"));

        util::VersionParser parser;
        VersionCatalogue catalogue;
        QVERIFY(catalogue.enumerate(fw.chopped(1), kxs.chopped(1), parser));
        QCOMPARE(catalogue.size(), 1);
        QCOMPARE(catalogue.versions().first().enqString, QStringLiteral("from b"));
        QVERIFY(catalogue.versions().first().mapGroup.isEmpty());
    }

    void scanOnlyRegularFirmwareFiles() {
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
        const QList<VersionContainer> found = VersionCatalogue::scanFirmwareFolder(fw, kxs, parser);
        QCOMPARE(firmwareNames(found), QStringList{"KX4.02"});
        QCOMPARE(found.first().mapGroup, QStringLiteral("upper"));
        QCOMPARE(errors.count(), 0);
    }

    void enumerateResult_data() { testsupport::loadTable(); }

    void enumerateResult() {
        QFETCH(QStringList, files);
        QFETCH(bool, withLayout);
        QFETCH(bool, result);
        QFETCH(int, count);
        for (const QString& name : files) {
            QVERIFY(addVersion(root, name, "KX4.02", "KX4-4.0", "E", withLayout ? 1000 : 0));
        }
        util::VersionParser parser;
        VersionCatalogue catalogue;
        QCOMPARE(catalogue.enumerate(fw, kxs, parser), result);
        QCOMPARE(catalogue.size(), count);
    }
};

QTEST_GUILESS_MAIN(TestVersionCatalogue)
#include "tst_versioncatalogue.moc"
