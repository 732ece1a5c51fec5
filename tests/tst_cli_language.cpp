// kxsetup-cli tokens and calc: output formats, exit codes and messages.
#include "support/CliRunner.h"
#include "support/TestSupport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using testsupport::CliResult;

namespace {

CliResult cli(const QStringList& args) {
    return testsupport::runCli(args);
}

} // namespace

class TestCliLanguage : public QObject {
    Q_OBJECT
private slots:
    void tokensText();
    void tokensJson();
    void calc_data();
    void calc();
    void failures_data();
    void failures();
};

void TestCliLanguage::tokensText() {
    const CliResult run = cli({QStringLiteral("tokens"), QStringLiteral("num, a < = b, \"x, y\"")});
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.out, QStringLiteral("String\tnum\n"
                                     "Separator\t,\n"
                                     "Dependent\ta\n"
                                     "LogicalOperator\t<=\n"
                                     "Dependent\tb\n"
                                     "Separator\t,\n"
                                     "String\t\"x, y\"\n"
                                     "End\t\n"));
}

void TestCliLanguage::tokensJson() {
    const CliResult run =
        cli({QStringLiteral("tokens"), QStringLiteral("--json"), QStringLiteral("x, Cell[3]`10h")});
    QCOMPARE(run.exitCode, 0);
    QJsonParseError error{};
    const QJsonDocument doc = QJsonDocument::fromJson(run.out.toUtf8(), &error);
    QCOMPARE(error.error, QJsonParseError::NoError);
    const QJsonArray tokens = doc.object().value(QStringLiteral("tokens")).toArray();
    QStringList seen;
    for (const QJsonValue& v : tokens) {
        const QJsonObject o = v.toObject();
        seen << QStringLiteral("%1 %2 %3")
                    .arg(o.value(QStringLiteral("type")).toInt())
                    .arg(o.value(QStringLiteral("name")).toString(),
                         o.value(QStringLiteral("payload")).toString());
    }
    QCOMPARE(seen, (QStringList{"1 String x", "14 Separator ,", "4 Dependent Cell[3]", "15 Range `",
                                "3 Hexadecimal 10h", "19 End "}));
}

void TestCliLanguage::calc_data() {
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<QString>("out");
    QTest::newRow("left-associative power") << QStringList{"calc", "2 ^ 3 ^ 2"} << "64\n";
    QTest::newRow("exact fraction") << QStringList{"calc", "1000 * 10 / 256"} << "39.0625\n";
    QTest::newRow("shortest round-trip")
        << QStringList{"calc", "0.1 + 0.2"} << "0.30000000000000004\n";
    QTest::newRow("one third") << QStringList{"calc", "1 / 3"} << "0.3333333333333333\n";
    QTest::newRow("comparison") << QStringList{"calc", "0.1 + 0.2 == 0.3"} << "1\n";
    QTest::newRow("large whole number") << QStringList{"calc", "1000000 * 1000"} << "1000000000\n";
    QTest::newRow("negative") << QStringList{"calc", "-(2 + 3) / 2"} << "-2.5\n";
    QTest::newRow("infinity") << QStringList{"calc", "1 / 0"} << "inf\n";
    QTest::newRow("forward chain")
        << QStringList{"calc", "--forward", "1000", "*10/256"} << "39.0625\n";
    QTest::newRow("backward chain")
        << QStringList{"calc", "--backward", "39.0625", "*10/256"} << "1000\n";
    QTest::newRow("chain in brackets")
        << QStringList{"calc", "--backward", "39.0625", "[*10/256]"} << "1000\n";
    QTest::newRow("option with equals") << QStringList{"calc", "--forward=5", "-40"} << "-35\n";
    QTest::newRow("negative value") << QStringList{"calc", "--forward", "-2", "*-3"} << "6\n";
}

void TestCliLanguage::calc() {
    QFETCH(QStringList, args);
    QFETCH(QString, out);
    const CliResult run = cli(args);
    QCOMPARE(run.err, QString());
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.out, out);
}

void TestCliLanguage::failures_data() {
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("message");
    QTest::newRow("dangling operator")
        << QStringList{"calc", "1 +"} << 2 << "cannot evaluate the expression \"1 +\"";
    QTest::newRow("reference") << QStringList{"calc", "Speed * 2"} << 2 << "it names Speed";
    QTest::newRow("chain with lone operator") << QStringList{"calc", "--forward", "1000", "*10/"}
                                              << 2 << "cannot evaluate the scale chain";
    QTest::newRow("no expression") << QStringList{"calc"} << 1 << "needs an expression";
    QTest::newRow("two expressions") << QStringList{"calc", "1", "2"} << 1 << "one expression";
    QTest::newRow("empty expression") << QStringList{"calc", ""} << 1 << "empty";
    QTest::newRow("value not a number")
        << QStringList{"calc", "--forward", "ten", "*2"} << 1 << "\"ten\" is not a number";
    QTest::newRow("value missing")
        << QStringList{"calc", "*2", "--backward"} << 1 << "needs a value";
    QTest::newRow("both directions")
        << QStringList{"calc", "--forward", "1", "--backward", "1", "*2"} << 1 << "not both";
    QTest::newRow("tokens without text") << QStringList{"tokens"} << 1 << "definition text";
    QTest::newRow("tokens of empty text") << QStringList{"tokens", ""} << 2 << "empty definition";
}

void TestCliLanguage::failures() {
    QFETCH(QStringList, args);
    QFETCH(int, exitCode);
    QFETCH(QString, message);
    const CliResult run = cli(args);
    QCOMPARE(run.exitCode, exitCode);
    QCOMPARE(run.out, QString());
    QVERIFY2(run.err.contains(message), qPrintable(run.err));
}

QTEST_GUILESS_MAIN(TestCliLanguage)
#include "tst_cli_language.moc"
