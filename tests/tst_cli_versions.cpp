// kxsetup-cli versions: the catalogue of a data folder as JSON and as a table, the
// problems of single firmware files on stderr, and the exit codes.
#include "app/Constants.h"
#include "support/CliRunner.h"
#include "support/TestSupport.h"
#include "support/VersionFixtures.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

using namespace versionfixtures;

namespace {

using testsupport::CliResult;
using testsupport::runCli;

QJsonArray versionsOf(const CliResult& run) {
    QJsonParseError error{};
    const QJsonDocument doc = QJsonDocument::fromJson(run.out.toUtf8(), &error);
    if (error.error != QJsonParseError::NoError || !doc.isObject()) {
        return QJsonArray();
    }
    return doc.object().value(QStringLiteral("versions")).toArray();
}

// A data folder with two usable versions, one of them in a sub-folder, and two firmware
// files that are refused.
bool makeDataFolder(const QString& root) {
    return addVersion(root, QStringLiteral("KX4.02.kxhex"), "KX4.02", "KX4-4.0", "KX 4.02", 1001) &&
           addVersion(root, QStringLiteral("old/v306.kxhex"), "v306", "KX3-3.0", "KX 3.06") &&
           writeFile(root + QStringLiteral("/data/firmware/broken.kxhex"), QByteArray()) &&
           addVersion(root, QStringLiteral("nolayout.kxhex"), "KX5.00", "KX5-5.0", "E", 0);
}

} // namespace

class TestCliVersions : public QObject {
    Q_OBJECT
private slots:
    void jsonListsCatalogue();
    void problemsGoToStderr();
    void tableShowsDisplayForm();
    void emptyCatalogue_data();
    void emptyCatalogue();
    void usageErrors_data();
    void usageErrors();
    void bundledSampleData();
};

void TestCliVersions::jsonListsCatalogue() {
    QTemporaryDir tmp;
    QVERIFY(tmp.isValid());
    QVERIFY(makeDataFolder(tmp.path()));
    const CliResult run = runCli(
        {QStringLiteral("-C"), tmp.path(), QStringLiteral("versions"), QStringLiteral("--json")});
    QCOMPARE(run.exitCode, 0);
    const QJsonArray versions = versionsOf(run);
    QCOMPARE(versions.size(), 2);

    const QJsonObject high = versions.at(0).toObject();
    QCOMPARE(high.value(QStringLiteral("fw")).toString(), QStringLiteral("KX4.02"));
    QCOMPARE(high.value(QStringLiteral("kxs")).toString(), QStringLiteral("KX4-4.0"));
    QCOMPARE(high.value(QStringLiteral("enq")).toString(), QStringLiteral("KX 4.02"));
    QCOMPARE(high.value(QStringLiteral("group")).toString(), QString());
    QCOMPARE(high.value(QStringLiteral("format")).toInt(), 1001);
    const QDir data(tmp.path() + QStringLiteral("/data"));
    QCOMPARE(QFileInfo(high.value(QStringLiteral("kxsFile")).toString()),
             QFileInfo(data.filePath(QStringLiteral("kxs/KX4-4.0.kxs"))));
    QCOMPARE(QFileInfo(high.value(QStringLiteral("mapFile")).toString()),
             QFileInfo(data.filePath(QStringLiteral("firmware/KX4.02.kxhex"))));

    const QJsonObject legacy = versions.at(1).toObject();
    QCOMPARE(legacy.value(QStringLiteral("fw")).toString(), QStringLiteral("v306"));
    QCOMPARE(legacy.value(QStringLiteral("group")).toString(), QStringLiteral("old"));
    QCOMPARE(legacy.value(QStringLiteral("format")).toInt(), 1000);
    for (const char* key : {"fw", "kxs", "enq", "kxsFile", "mapFile", "group", "format"}) {
        QVERIFY2(legacy.contains(QLatin1String(key)), key);
    }
}

void TestCliVersions::problemsGoToStderr() {
    QTemporaryDir tmp;
    QVERIFY(tmp.isValid());
    QVERIFY(makeDataFolder(tmp.path()));
    const CliResult run = runCli({QStringLiteral("-C"), tmp.path(), QStringLiteral("versions")});
    QCOMPARE(run.exitCode, 0);
    const QStringList lines = run.err.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 2);
    const QString missing = QDir(tmp.path() + QStringLiteral("/data/kxs"))
                                .absoluteFilePath(QStringLiteral("KX5-5.0.kxs"));
    QVERIFY2(lines.at(0).endsWith(ui::ERROR_INVALID_FW.arg(QStringLiteral("broken.kxhex"))),
             qPrintable(lines.at(0)));
    QVERIFY2(lines.at(1).endsWith(
                 ui::ERROR_MAP_MISSING_FILE.arg(QStringLiteral("nolayout.kxhex"), missing)),
             qPrintable(lines.at(1)));
    QVERIFY(lines.at(0).contains(QLatin1String("error")));
    QVERIFY(lines.at(1).contains(QLatin1String("warning")));
    QVERIFY(!run.out.contains(QLatin1String("broken")));
}

void TestCliVersions::tableShowsDisplayForm() {
    QTemporaryDir tmp;
    QVERIFY(tmp.isValid());
    QVERIFY(makeDataFolder(tmp.path()));
    const CliResult run = runCli({QStringLiteral("-C"), tmp.path(), QStringLiteral("versions")});
    QCOMPARE(run.exitCode, 0);
    const QStringList lines = run.out.split(QLatin1Char('\n'));
    QVERIFY(lines.size() >= 3);
    QVERIFY2(lines.at(1).startsWith(QLatin1String("KX4.02")), qPrintable(run.out));
    QVERIFY2(lines.at(2).startsWith(QLatin1String("KX3.06 (v306)")), qPrintable(run.out));
    QVERIFY(lines.at(2).contains(QLatin1String("old")));
}

void TestCliVersions::emptyCatalogue_data() {
    QTest::addColumn<bool>("json");
    QTest::addColumn<bool>("withUnusableFile");
    QTest::newRow("table, no data folder") << false << false;
    QTest::newRow("json, no data folder") << true << false;
    QTest::newRow("table, only an unusable file") << false << true;
}

void TestCliVersions::emptyCatalogue() {
    QFETCH(bool, json);
    QFETCH(bool, withUnusableFile);
    QTemporaryDir tmp;
    QVERIFY(tmp.isValid());
    if (withUnusableFile) {
        QVERIFY(writeFile(tmp.path() + QStringLiteral("/data/firmware/x.kxhex"), "junk"));
    }
    QStringList args{QStringLiteral("-C"), tmp.path(), QStringLiteral("versions")};
    if (json) {
        args << QStringLiteral("--json");
    }
    const CliResult run = runCli(args);
    QCOMPARE(run.exitCode, 0);
    if (json) {
        const QJsonDocument doc = QJsonDocument::fromJson(run.out.toUtf8());
        QVERIFY(doc.isObject());
        QVERIFY(doc.object().value(QStringLiteral("versions")).isArray());
        QCOMPARE(versionsOf(run).size(), 0);
    } else {
        QVERIFY2(run.out.startsWith(QLatin1String("No usable firmware versions")),
                 qPrintable(run.out));
    }
    QCOMPARE(run.err.isEmpty(), !withUnusableFile);
}

void TestCliVersions::usageErrors_data() {
    QTest::addColumn<QStringList>("args");
    QTest::newRow("extra argument") << QStringList{"versions", "KX4.02"};
    QTest::newRow("unknown option") << QStringList{"versions", "--all"};
    QTest::newRow("json twice and extra") << QStringList{"versions", "--json", "x"};
}

void TestCliVersions::usageErrors() {
    QFETCH(QStringList, args);
    QTemporaryDir tmp;
    QVERIFY(tmp.isValid());
    const CliResult run = runCli(QStringList{QStringLiteral("-C"), tmp.path()} + args);
    QCOMPARE(run.exitCode, 1);
    QVERIFY(run.out.isEmpty());
    QVERIFY(run.err.contains(QLatin1String("usage:")));
}

void TestCliVersions::bundledSampleData() {
    const QString runtime = testsupport::runtimeDir();
    QVERIFY2(QDir(runtime + QStringLiteral("/data/firmware")).exists(),
             "the sample data target has not been built");
    const CliResult run = runCli(
        {QStringLiteral("-C"), runtime, QStringLiteral("versions"), QStringLiteral("--json")});
    QCOMPARE(run.exitCode, 0);
    QVERIFY2(run.err.isEmpty(), qPrintable(run.err));
    const QJsonArray versions = versionsOf(run);
    QVERIFY(versions.size() >= 3);

    QStringList layouts;
    bool legacy = false;
    bool grouped = false;
    for (const QJsonValue& value : versions) {
        const QJsonObject v = value.toObject();
        layouts << v.value(QStringLiteral("kxs")).toString();
        legacy = legacy || v.value(QStringLiteral("fw")).toString().startsWith(QLatin1Char('v'));
        grouped = grouped || !v.value(QStringLiteral("group")).toString().isEmpty();
        QVERIFY(QFileInfo::exists(v.value(QStringLiteral("kxsFile")).toString()));
    }
    const QString all = layouts.join(QLatin1Char(' '));
    for (const char* generation : {"Dravolin", "KX3", "KX4"}) {
        QVERIFY2(all.contains(QLatin1String(generation)), qPrintable(all));
    }
    QVERIFY(legacy);
    QVERIFY(grouped);
    QVERIFY(QFileInfo(runtime + QStringLiteral("/data/help")).isDir());
    QVERIFY(QFileInfo(runtime + QStringLiteral("/data/device.txt")).isFile());
}

QTEST_GUILESS_MAIN(TestCliVersions)
#include "tst_cli_versions.moc"
