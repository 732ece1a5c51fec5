// Reading one firmware (map) file into a version: an unreadable file, and no state kept
// between files. Every refusal with its exact message, and what a usable version reads
// as: version-files.t and cli-versions.t.
#include "app/Constants.h"
#include "support/VersionFixtures.h"
#include "util/VersionParser.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using namespace versionfixtures;

namespace {

const QString MapName = QStringLiteral("fw 4.kxhex");

} // namespace

class TestVersionParser : public QObject {
    Q_OBJECT
private slots:
    void unreadableFirmwareFile() {
        QTemporaryDir tmp;
        QVERIFY(tmp.isValid());
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
        QVERIFY(tmp.isValid());
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
};

QTEST_GUILESS_MAIN(TestVersionParser)
#include "tst_versionparser.moc"
