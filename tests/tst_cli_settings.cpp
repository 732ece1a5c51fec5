// kxsetup-cli get, dump and diff on the sample data, the version of a file from the
// catalogue or from --layout, and the exit codes of the settings commands.
#include "support/CliRunner.h"
#include "support/ManagerFixtures.h"
#include "support/SampleData.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QtTest>

using namespace sampledata;
using testsupport::CliResult;
using testsupport::jsonOf;
using testsupport::runCli;

namespace {

QString firmware(const QString& fw) {
    for (const Generation& g : generations()) {
        if (g.fw == fw) {
            return firmwarePath(g);
        }
    }
    return QString();
}

CliResult cli(const QStringList& args) {
    return runCli(QStringList{QStringLiteral("-C"), runtimeDir()} + args);
}

// The entry of a list in the dump whose key has the value.
QJsonObject entryOf(const QJsonObject& dump, const QString& list, const QString& key,
                    const QString& value) {
    for (const QJsonValue& v : dump.value(list).toArray()) {
        if (v.toObject().value(key).toString() == value) {
            return v.toObject();
        }
    }
    return QJsonObject();
}

QJsonObject settingOf(const QJsonObject& dump, const QString& code) {
    return entryOf(dump, QStringLiteral("settings"), QStringLiteral("code"), code);
}

QJsonObject categoryOf(const QJsonObject& dump, const QString& label) {
    return entryOf(dump, QStringLiteral("categories"), QStringLiteral("label"), label);
}

// Fails the test unless actual has every key of the JSON text expected with that value
// (numbers compared as QCOMPARE compares doubles) and none of its keys whose value is null.
void compareKeys(const QJsonObject& actual, const char* expected) {
    const QJsonObject keys = QJsonDocument::fromJson(expected).object();
    QVERIFY2(!keys.isEmpty(), expected);
    for (auto it = keys.constBegin(); it != keys.constEnd(); ++it) {
        const QJsonValue a = actual.value(it.key());
        const bool same =
            it.value().isNull() ? !actual.contains(it.key())
            : it.value().isDouble()
                ? a.isDouble() && (qFuzzyCompare(a.toDouble(), it.value().toDouble()) ||
                                   a.toDouble() == it.value().toDouble())
                : a == it.value();
        QVERIFY2(same, qPrintable(it.key() + QStringLiteral(": ") +
                                  QJsonDocument(QJsonArray{a}).toJson(QJsonDocument::Compact)));
    }
}

QStringList codesOf(const QJsonArray& list, const QString& key) {
    QStringList codes;
    for (const QJsonValue& v : list) {
        codes << v.toObject().value(key).toString();
    }
    return codes;
}

// A copy of a firmware file whose firmware version reads fwText.
QString withFirmwareVersion(const QString& source, const QString& dir, const QByteArray& fwText) {
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly)) {
        return QString();
    }
    QByteArray text = testsupport::hexRecordLine(0xC0, 0, fwText);
    for (const QByteArray& line : in.readAll().split('\n')) {
        const QByteArray record = line.trimmed();
        if (!record.isEmpty() && record.mid(7, 2) != "C0") {
            text += record + "\r\n";
        }
    }
    const QString path = dir + QStringLiteral("/renamed.hex");
    QFile out(path);
    return out.open(QIODevice::WriteOnly) && out.write(text) == text.size() ? path : QString();
}

} // namespace

class TestCliSettings : public QObject {
    Q_OBJECT
private slots:
    void getPrintsEditValues_data();
    void getPrintsEditValues();
    void dumpJsonDescribesEveryKind();
    void presetCounterEnablesProfiles_data();
    void presetCounterEnablesProfiles();
    void dumpPlainGroupsByCategory();
    void diffOfTwoVersions_data();
    void diffOfTwoVersions();
    void diffShowsEditedBits();
    void versionFromLayout();
    void exitCodes_data();
    void exitCodes();
};

void TestCliSettings::getPrintsEditValues_data() {
    QTest::addColumn<QString>("fw");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QStringList>("values");
    QTest::newRow("numbers by code name")
        << "3.10" << QStringList{"CellCntA", "BattCapA", "Profiles"}
        << QStringList{"13", "17.5", "3"};
    QTest::newRow("bits by index and by help identifier")
        << "3.12" << QStringList{"FeatFlags[0]", "FeatFlags[3]", "Walk@30008", "FeatFlags[11]"}
        << QStringList{"1", "0", "1", "1"};
    QTest::newRow("whole bit field and check box group")
        << "3.10" << QStringList{"FeatFlags", "Screens", "Screens[6]"}
        << QStringList{"4919", "4031", "0"};
    QTest::newRow("signed, hidden and disabled")
        << "4.01" << QStringList{"TempOffset", "RShunt", "SerialNo"}
        << QStringList{"0", "1", "20250117"};
    QTest::newRow("shown texts") << "3.12" << QStringList{"--display",  "LVCA",    "CellChemA",
                                                          "Screens[6]", "MaxSpd1", "BtnFlags[2]"}
                                 << QStringList{"39.00 V", "Li-ion", "Off", "32.0 km/h", "Beep"};
}

void TestCliSettings::getPrintsEditValues() {
    QFETCH(QString, fw);
    QFETCH(QStringList, names);
    QFETCH(QStringList, values);
    const CliResult run = cli(QStringList{QStringLiteral("get"), firmware(fw)} + names);
    QCOMPARE(run.exitCode, 0);
    QVERIFY2(run.err.isEmpty(), qPrintable(run.err));
    QCOMPARE(run.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts), values);
}

void TestCliSettings::dumpJsonDescribesEveryKind() {
    const CliResult run =
        cli({QStringLiteral("dump"), firmware(QStringLiteral("3.10")), QStringLiteral("--json")});
    QCOMPARE(run.exitCode, 0);
    const QJsonObject dump = jsonOf(run);
    QCOMPARE(dump.value(QStringLiteral("enq")).toString(), QStringLiteral("3.10"));

    compareKeys(settingOf(dump, QStringLiteral("CellCntB")), R"({
        "type": "num", "base": "CellCnt", "category": "Batt", "preset": 1,
        "wsi": "CellCnt@30001.B", "name": "Cell count", "raw": 16, "value": 16,
        "display": "16 cells", "min": 1, "max": 36, "units": "cells",
        "enabled": true, "hidden": false})");
    // The cutoff's range follows the cell count (16 cells: 2.50 to 4.20 V each).
    compareKeys(settingOf(dump, QStringLiteral("LVCB")),
                R"({"min": 40, "max": 67.2, "raw": 4480})");
    const QJsonObject list = settingOf(dump, QStringLiteral("CellChemB"));
    compareKeys(list, R"({"value": 5, "display": "LiFe", "max": 7, "units": null})");
    QCOMPARE(list.value(QStringLiteral("options")).toArray().size(), 8);

    const QJsonObject bits = settingOf(dump, QStringLiteral("FeatFlags"));
    compareKeys(bits, R"({"type": "bool", "value": 4919, "wsi": null})"); // 0x1337
    const QJsonArray labels = bits.value(QStringLiteral("bits")).toArray();
    QCOMPARE(labels.size(), 14);
    compareKeys(labels.at(11).toObject(), R"({"label": "Limp mode", "value": true})"); // inverted
    compareKeys(labels.at(3).toObject(), R"({"value": false})");

    const QJsonObject boxes = settingOf(dump, QStringLiteral("Screens"));
    compareKeys(boxes, R"({"type": "checkbool", "raw": 4031, "display": "Expand", "value": null})");
    QCOMPARE(boxes.value(QStringLiteral("bits")).toArray().size(), 13);
    compareKeys(settingOf(dump, QStringLiteral("RShunt")), R"({"hidden": true})");
    compareKeys(settingOf(dump, QStringLiteral("SerialNo")), R"({"enabled": false})");
    QVERIFY(!QTest::currentTestFailed());

    QCOMPARE(dump.value(QStringLiteral("categories")).toArray().size(), 12);
    compareKeys(categoryOf(dump, QStringLiteral("Batt")), R"({"presets": 2, "counter": null})");
    compareKeys(categoryOf(dump, QStringLiteral("Power")),
                R"({"presets": 3, "presetName": "Profiles"})");
    compareKeys(categoryOf(dump, QStringLiteral("Thr")), R"({"title": "Throttle"})");
}

void TestCliSettings::presetCounterEnablesProfiles_data() {
    QTest::addColumn<QString>("profiles");
    QTest::addColumn<int>("enabled");
    QTest::newRow("one") << "1" << 1;
    QTest::newRow("three") << "3" << 3;
}

// The Power category's preset name is the code name of its counter, which stores the
// profiles in use minus one.
void TestCliSettings::presetCounterEnablesProfiles() {
    QFETCH(QString, profiles);
    QFETCH(int, enabled);
    QTemporaryDir tmp;
    QVERIFY(tmp.isValid());
    const QString file = tmp.filePath(QStringLiteral("profiles.hex"));
    QCOMPARE(cli({QStringLiteral("set"), firmware(QStringLiteral("4.01")), QStringLiteral("-o"),
                  file, QStringLiteral("Profiles=") + profiles})
                 .exitCode,
             0);
    const QJsonObject dump = jsonOf(cli({QStringLiteral("dump"), file, QStringLiteral("--json")}));
    const QJsonObject power = categoryOf(dump, QStringLiteral("Power"));
    QCOMPARE(power.value(QStringLiteral("counter")).toString(), QStringLiteral("Profiles"));
    QCOMPARE(power.value(QStringLiteral("enabledPresets")).toInt(), enabled);
    QCOMPARE(settingOf(dump, QStringLiteral("Profiles")).value(QStringLiteral("raw")).toInt(),
             enabled - 1);
}

void TestCliSettings::dumpPlainGroupsByCategory() {
    const CliResult run = cli({QStringLiteral("dump"), firmware(QStringLiteral("v306"))});
    QCOMPARE(run.exitCode, 0);
    const QStringList lines = run.out.split(QLatin1Char('\n'));
    const int battery = lines.indexOf(QStringLiteral("Battery [Batt], 2 presets (Battery Preset)"));
    const int speedo = lines.indexOf(QStringLiteral("Speedometer [Speedo]"));
    QVERIFY2(battery > 0 && speedo > battery, qPrintable(run.out));
    const int chemistry =
        lines.indexOf(QRegularExpression(QStringLiteral("^  CellChemB +Cell chemistry +LiFe$")));
    QVERIFY(chemistry > battery && chemistry < speedo);
    QVERIFY(
        run.out.contains(QRegularExpression(QStringLiteral("\n  SerialNo .*\\(disabled\\)\n"))));
    QVERIFY(
        run.out.contains(QRegularExpression(QStringLiteral("\n      \\[11\\] Limp mode +On\n"))));
    QVERIFY(run.out.contains(QStringLiteral("151 settings, 0 problems")));
}

void TestCliSettings::diffOfTwoVersions_data() {
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<QStringList>("differ");
    QTest::addColumn<QStringList>("onlyA");
    QTest::addColumn<QStringList>("onlyB");
    QTest::newRow("same layout, other defaults")
        << "3.10"
        << "3.12" << QStringList{"MaxSpd1", "Backlight"} << QStringList() << QStringList();
    // WheelCirc and WheelSize share their help identifier and match.
    QTest::newRow("charge against energy generation")
        << "3.10"
        << "4.01" << QStringList() << QStringList{"LifeAhA", "LifeAhB", "Contrast"}
        << QStringList{"LifeWhA", "LifeWhB", "ScreenAnim"};
    QTest::newRow("legacy against the next") << "v306"
                                             << "3.10" << QStringList() << QStringList()
                                             << QStringList{"SocModeA", "SocModeB", "Language"};
}

void TestCliSettings::diffOfTwoVersions() {
    QFETCH(QString, a);
    QFETCH(QString, b);
    QFETCH(QStringList, differ);
    QFETCH(QStringList, onlyA);
    QFETCH(QStringList, onlyB);
    const CliResult run =
        cli({QStringLiteral("diff"), firmware(a), firmware(b), QStringLiteral("--json")});
    QCOMPARE(run.exitCode, 0);
    QVERIFY2(run.err.isEmpty(), qPrintable(run.err));
    const QJsonObject result = jsonOf(run);
    QCOMPARE(codesOf(result.value(QStringLiteral("differ")).toArray(), QStringLiteral("a")),
             differ);
    QCOMPARE(codesOf(result.value(QStringLiteral("onlyA")).toArray(), QStringLiteral("code")),
             onlyA);
    QCOMPARE(codesOf(result.value(QStringLiteral("onlyB")).toArray(), QStringLiteral("code")),
             onlyB);
}

void TestCliSettings::diffShowsEditedBits() {
    QTemporaryDir tmp;
    QVERIFY(tmp.isValid());
    const QString edited = tmp.filePath(QStringLiteral("edited.hex"));
    QCOMPARE(cli({QStringLiteral("set"), firmware(QStringLiteral("3.20")), QStringLiteral("-o"),
                  edited, QStringLiteral("Screens[6]=1"), QStringLiteral("MaxSpd2=30"),
                  QStringLiteral("CellChemA=SLA")})
                 .exitCode,
             0);
    const CliResult run = cli({QStringLiteral("diff"), firmware(QStringLiteral("3.20")), edited});
    QCOMPARE(run.exitCode, 0);
    const QStringList lines = run.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(lines.mid(2),
             (QStringList{QStringLiteral("~ CellChemA (CellChem@30001): Li-ion -> SLA"),
                          QStringLiteral("~ MaxSpd2 (MaxSpd@30003.2): 32.0 km/h -> 30.0 km/h"),
                          QStringLiteral("~ Screens[6] (Temperature): Off -> On"),
                          QStringLiteral("3 differ, 0 only in A, 0 only in B")}));
}

// A file whose firmware version the catalogue does not know opens with an explicit
// layout; its own metadata names the versions and stays in the saved file.
void TestCliSettings::versionFromLayout() {
    QTemporaryDir tmp;
    QVERIFY(tmp.isValid());
    const QString file = withFirmwareVersion(firmware(QStringLiteral("3.10")), tmp.path(), "9.99");
    QVERIFY(!file.isEmpty());
    CliResult run = cli({QStringLiteral("dump"), file, QStringLiteral("--json")});
    QCOMPARE(run.exitCode, 2);
    QVERIFY2(run.err.contains(QLatin1String("\"9.99\" is not in the catalogue")),
             qPrintable(run.err));
    QVERIFY(run.err.contains(QLatin1String("--layout")));

    const QString layout = layoutPath(QStringLiteral("KX3-3.10"));
    run = cli({QStringLiteral("dump"), file, QStringLiteral("--json"), QStringLiteral("--layout"),
               layout});
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(jsonOf(run).value(QStringLiteral("fw")).toString(), QStringLiteral("9.99"));
    QCOMPARE(jsonOf(run).value(QStringLiteral("problems")).toInt(), 0);

    const QString saved = tmp.filePath(QStringLiteral("saved.hex"));
    QCOMPARE(cli({QStringLiteral("set"), file, QStringLiteral("--layout"), layout,
                  QStringLiteral("CellCntA=12"), QStringLiteral("-o"), saved})
                 .exitCode,
             0);
    run = cli({QStringLiteral("get"), saved, QStringLiteral("CellCntA"), QStringLiteral("--layout"),
               layout});
    QCOMPARE(run.out, QStringLiteral("12\n"));
    run = cli({QStringLiteral("dump"), saved, QStringLiteral("--json"), QStringLiteral("--layout"),
               layout});
    QCOMPARE(jsonOf(run).value(QStringLiteral("fw")).toString(), QStringLiteral("9.99"));
    QCOMPARE(jsonOf(run).value(QStringLiteral("kxs")).toString(), QStringLiteral("KX3-3.10"));
}

void TestCliSettings::exitCodes_data() {
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("stream"); // "out" or "err": where the message goes
    QTest::addColumn<QString>("text");
    const QString fw = firmware(QStringLiteral("3.10"));
    const QString missing = runtimeDir() + QStringLiteral("/no-such.hex");
    const QString notHex = runtimeDir() + QStringLiteral("/data/device.txt");
    QTest::newRow("dump without file") << QStringList{"dump"} << 1 << "err"
                                       << "usage:";
    QTest::newRow("dump two files") << QStringList{"dump", fw, fw} << 1 << "err"
                                    << "one file";
    QTest::newRow("get without name") << QStringList{"get", fw} << 1 << "err"
                                      << "at least one name";
    QTest::newRow("set without assignment") << QStringList{"set", fw} << 1 << "err"
                                            << "NAME=VALUE";
    QTest::newRow("set with a bare name") << QStringList{"set", fw, "CellCntA"} << 1 << "err"
                                          << "expected NAME=VALUE, got \"CellCntA\"";
    QTest::newRow("set -o without file") << QStringList{"set", fw, "CellCntA=3", "-o"} << 1 << "err"
                                         << "-o needs a value";
    QTest::newRow("set --from missing") << QStringList{"set", fw, "--from", missing} << 2 << "err"
                                        << "cannot read";
    QTest::newRow("diff one file") << QStringList{"diff", fw} << 1 << "err"
                                   << "two files";
    QTest::newRow("get from no image") << QStringList{"get", notHex, "X"} << 2 << "err"
                                       << "names no firmware version";
    QTest::newRow("dump no image with a layout")
        << QStringList{"dump", notHex, "--layout", layoutPath(QStringLiteral("KX3-3.10"))} << 2
        << "err"
        << "not a setup file";
    QTest::newRow("dump with a missing layout")
        << QStringList{"dump", fw, "--layout", missing} << 2 << "err"
        << "no layout file";
    QTest::newRow("diff with missing file") << QStringList{"diff", fw, missing} << 2 << "err"
                                            << "no such file";
    QTest::newRow("get unknown name") << QStringList{"get", fw, "CellCntA", "Nope"} << 2 << "err"
                                      << "no setting \"Nope\"";
    for (const char* command : {"dump", "get", "set", "diff"}) {
        QTest::newRow(qPrintable(QStringLiteral("%1 --help").arg(QLatin1String(command))))
            << QStringList{QString::fromLatin1(command), "--help"} << 0 << "out"
            << QStringLiteral("usage: kxsetup-cli [-C DIR] %1").arg(QLatin1String(command));
    }
}

void TestCliSettings::exitCodes() {
    QFETCH(QStringList, args);
    QFETCH(int, exitCode);
    QFETCH(QString, stream);
    QFETCH(QString, text);
    const CliResult run = cli(args);
    QCOMPARE(run.exitCode, exitCode);
    const QString& shown = stream == QLatin1String("out") ? run.out : run.err;
    QVERIFY2(shown.contains(text), qPrintable(run.out + run.err));
    if (exitCode != 0) {
        QVERIFY(run.out.isEmpty());
    }
}

QTEST_GUILESS_MAIN(TestCliSettings)
#include "tst_cli_settings.moc"
