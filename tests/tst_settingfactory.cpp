// The setting factory: choosing the kind from the first token, its error codes, copying
// the raw bytes, and the documented examples of every kind.
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

} // namespace

class TestSettingFactory : public QObject {
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
};

QTEST_GUILESS_MAIN(TestSettingFactory)
#include "tst_settingfactory.moc"
