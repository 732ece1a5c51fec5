// Firmware versions: the ordering of version names, their display form and what counts
// as no version; reading one firmware (map) file (an unreadable file, no state kept between
// files); the catalogue's sorted insert without duplicates and its scan of a firmware
// folder tree (which of two files of one version wins, which files and folders it passes
// over, what it returns). Every refusal with its exact message, groups and order as the
// command-line tool shows them: version-files.t and cli-versions.t.
#include "app/Constants.h"
#include "support/TableFile.h"
#include "support/VersionFixtures.h"
#include "util/VersionCatalogue.h"
#include "util/VersionContainer.h"
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

const QString MapName = QStringLiteral("fw 4.kxhex");

int sign(int value) {
    return (value > 0) - (value < 0);
}

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

class TestVersions : public QObject {
    Q_OBJECT

    // A fresh tree per test: root/data/firmware/ and root/data/kxs/.
    std::unique_ptr<QTemporaryDir> m_tmp;
    QString root, fw, kxs;

private slots:
    void compare_data() { testsupport::loadTable(); }

    void compare() {
        QFETCH(QString, mine);
        QFETCH(QString, theirs);
        QFETCH(int, expected);
        QFETCH(bool, exact);

        const int forward = version(mine).compare(version(theirs));
        const int backward = version(theirs).compare(version(mine));
        QCOMPARE(sign(forward), expected);
        QCOMPARE(sign(backward), -expected);
        if (exact) {
            QCOMPARE(forward, expected);
            QCOMPARE(backward, -expected);
        }
    }

    void compareLooksOnlyAtFirmwareVersion() {
        VersionContainer a = version(QStringLiteral("KX4.0"));
        a.kxsVersion = QStringLiteral("zzz");
        a.enqString = QStringLiteral("zzz");
        a.kxsFormat = 9;
        VersionContainer b = version(QStringLiteral("kx4.0"));
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

    void unreadableFirmwareFile() {
        QTemporaryDir tmp;
        const QDir dir(tmp.path());
        const QString path = dir.absoluteFilePath(MapName);
        QVERIFY(writeFile(path, firmwareImage("KX4.02", "KX4.02", "E")));
        QVERIFY(QFile::setPermissions(path, QFileDevice::WriteOwner));
        QFile probe(path);
        if (probe.open(QIODevice::ReadOnly)) {
            QSKIP("file permissions do not keep this user from reading");
        }
        util::VersionParser parser;
        QSignalSpy errors(&parser, &util::VersionParser::showError);
        QVERIFY(parser.parseFirmwareFile(MapName, dir, dir).isEmpty());
        QCOMPARE(errors.count(), 1);
        QCOMPARE(errors.at(0).at(0).toString(), ui::ERROR_CANT_OPEN_FW.arg(MapName));
    }

    void noStateBetweenCalls() {
        QTemporaryDir tmp;
        const QDir dir(tmp.path());
        QVERIFY(writeFile(dir.absoluteFilePath(QStringLiteral("good.kxhex")),
                          firmwareImage("KX3.06", "KX3.06", "E")));
        QVERIFY(writeFile(dir.absoluteFilePath(QStringLiteral("KX3.06.kxs")),
                          layoutFile(QStringLiteral("KX3.06"))));
        QVERIFY(writeFile(dir.absoluteFilePath(QStringLiteral("bad.kxhex")),
                          firmwareImage("KX3.07", "KX3.07", "E")));

        util::VersionParser parser;
        QSignalSpy warnings(&parser, &util::VersionParser::showWarning);
        QVERIFY(parser.parseFirmwareFile(QStringLiteral("bad.kxhex"), dir, dir).isEmpty());
        const util::VersionContainer good =
            parser.parseFirmwareFile(QStringLiteral("good.kxhex"), dir, dir);
        QCOMPARE(good.fwVersion, QStringLiteral("KX3.06"));
        QVERIFY(parser.parseFirmwareFile(QStringLiteral("bad.kxhex"), dir, dir).isEmpty());
        QCOMPARE(warnings.count(), 2);
    }

    void init() {
        m_tmp = std::make_unique<QTemporaryDir>();
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

QTEST_GUILESS_MAIN(TestVersions)
#include "tst_versions.moc"
