// The setting factory: choosing the kind from the first token, its error codes, copying the
// raw bytes, and the documented examples of every kind. Lists: options from the layout's
// string list named by two fields, the stored index and its range check, and the data roles.
#include "sf/ListSetting.h"
#include "sf/MultiSetting.h"
#include "sf/RawSetting.h"
#include "sf/Setting.h"
#include "sf/SettingFactory.h"
#include "support/FakeSettingHost.h"
#include "support/TableFile.h"
#include "support/TestSupport.h"

#include <QFile>
#include <QRegularExpression>
#include <QtTest>

using namespace sf;
using settingstest::FakeSettingHost;
using settingstest::hexBytes;

namespace {

QString examplesPath() {
    return testsupport::sourceDir() + QStringLiteral("/tests/data/setting-kinds-examples.txt");
}

struct Example {
    QString codeName;
    QByteArray bytes;
    QString definition;
    QStringList expectations;
};

// Reads the examples into the host (string lists, tool tips, formats) and builds them.
QList<Example> buildExamples(FakeSettingHost& host, QStringList* failures) {
    const QString sep = QStringLiteral(" ## ");
    QList<Example> examples;
    for (const QString& line :
         QString::fromUtf8(testsupport::readFile(examplesPath())).split(QLatin1Char('\n'))) {
        if (line.trimmed().isEmpty() || line.startsWith(QLatin1Char('#'))) {
            continue;
        }
        if (line.startsWith(QLatin1String("@list "))) {
            QStringList parts = line.mid(6).split(sep);
            const QString name = parts.takeFirst();
            const QString count = parts.takeFirst();
            host.addStringList(name, count, parts);
        } else if (line.startsWith(QLatin1String("@tooltip "))) {
            const QStringList parts = line.mid(9).split(sep);
            host.addTooltip(parts.value(0), parts.value(1));
        } else if (line.startsWith(QLatin1String("@format "))) {
            host.setFormat(line.mid(8).toUInt());
        } else {
            const QStringList parts = line.split(sep);
            Example e{parts.value(0), hexBytes(parts.value(1).toLatin1().constData()),
                      parts.value(2),
                      parts.value(3).split(QStringLiteral(" ;; "), Qt::SkipEmptyParts)};
            int error = -1;
            if (!host.build(e.codeName, e.definition, e.bytes, &error)) {
                failures->append(
                    QStringLiteral("%1 does not build (error %2)").arg(e.codeName).arg(error));
            }
            examples.append(e);
        }
    }
    return examples;
}

QString text(const QVariant& v) {
    return v.userType() == QMetaType::QStringList ? v.toStringList().join(QLatin1Char(','))
                                                  : v.toString();
}

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

class TestSettingKinds : public QObject {
    Q_OBJECT
private slots:
    void kindFromFirstToken_data() { testsupport::loadTable(); }

    void kindFromFirstToken() {
        QFETCH(QString, definition);
        QFETCH(int, error);
        QFETCH(int, type);
        FakeSettingHost host;
        host.addStringList(QStringLiteral("L"), QStringLiteral("N"), {QStringLiteral("x")});
        int actual = -1;
        Setting* s = host.build(QStringLiteral("S1"), definition, QByteArray(), &actual);
        QCOMPARE(actual, error);
        QCOMPARE(s != nullptr, error == 0);
        if (s) {
            QCOMPARE(int(s->getType()), type);
        }
    }

    void missingInputs() {
        FakeSettingHost host;
        SettingFactory factory;
        RawSetting raw(QStringLiteral("S1"), 1, 0, true, false);
        auto tokens = [] {
            return std::make_unique<parser::TokenList>(
                FakeSettingHost::tokenize(QStringLiteral("num, W, u8")));
        };
        QVERIFY(!factory.buildSetting(nullptr, tokens(), &host));
        QCOMPARE(factory.lastError(), 2);
        QVERIFY(!factory.buildSetting(&raw, nullptr, &host));
        QCOMPARE(factory.lastError(), 1);
        QVERIFY(!factory.buildSetting(&raw, std::make_unique<parser::TokenList>(), &host));
        QCOMPARE(factory.lastError(), 1);
        QVERIFY(!factory.buildSetting(&raw, tokens(), nullptr)); // the setting cannot initialise
        QCOMPARE(factory.lastError(), 3);
        // An empty keyword names type 0, which no kind is built for.
        auto empty = std::make_unique<parser::TokenList>(parser::TokenList{
            parser::Token(QString(), parser::String), parser::Token(QString(), parser::End)});
        QVERIFY(!factory.buildSetting(&raw, std::move(empty), &host));
        QCOMPARE(factory.lastError(), 3);
        std::unique_ptr<Setting> built(factory.buildSetting(&raw, tokens(), &host));
        QVERIFY(built);
        QCOMPARE(factory.lastError(), 0);
        QCOMPARE(SettingFactory::typeFromKeyword(QStringLiteral("CHECKBOOL")), int(TypeCheckBool));
        QCOMPARE(SettingFactory::typeFromKeyword(QStringLiteral("num ")), -1);
    }

    void rawBytesAreCopied_data() { testsupport::loadTable(); }
    void rawBytesAreCopied() {
        QFETCH(QByteArray, raw);
        QFETCH(QByteArray, expected);
        FakeSettingHost host;
        Setting* s = host.build(QStringLiteral("S1"), QStringLiteral("num, W, u16"), raw);
        QVERIFY(s);
        QCOMPARE(s->getBytes(), expected);
    }

    void documentedExamplesBuild() {
        FakeSettingHost host;
        QStringList failures;
        const QList<Example> examples = buildExamples(host, &failures);
        QVERIFY(examples.size() >= 8);
        QVERIFY2(host.finishAll(), "finishSetup failed");
        static const QRegularExpression expectation(QStringLiteral("^(?:(\\d+):)?(\\d+)=(.*)$"));
        for (const Example& e : examples) {
            Setting* s = host.lookupSetting(e.codeName);
            if (!s) {
                continue;
            }
            for (const QString& x : e.expectations) {
                const QRegularExpressionMatch m = expectation.match(x);
                if (!m.hasMatch()) {
                    failures.append(QStringLiteral("%1: bad expectation %2").arg(e.codeName, x));
                    continue;
                }
                const auto role = static_cast<DataRole>(m.captured(2).toInt());
                QVariant actual;
                if (m.captured(1).isEmpty()) {
                    actual = s->getData(role);
                } else if (auto* multi = dynamic_cast<MultiSetting*>(s)) {
                    actual = multi->getData(m.captured(1).toInt(), role);
                }
                if (text(actual) != m.captured(3)) {
                    failures.append(
                        QStringLiteral("%1 %2: got \"%3\"").arg(e.codeName, x, text(actual)));
                }
            }
        }
        QVERIFY2(failures.isEmpty(), qPrintable(failures.join(QLatin1Char('\n'))));
        QVERIFY2(host.problems().isEmpty(), qPrintable(host.problems().join(QLatin1Char('\n'))));
    }

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

QTEST_GUILESS_MAIN(TestSettingKinds)
#include "tst_settingkinds.moc"
