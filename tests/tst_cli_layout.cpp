// The layout tools from the outside: "kxsetup-cli layout" listings (JSON and plain) and
// exit codes, and kxs-compile's output, messages and exit codes.
#include "support/CliRunner.h"
#include "support/LayoutFixtures.h"
#include "support/TestSupport.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

using testsupport::rawEntry;
using testsupport::RawLayout;

namespace {

using Run = testsupport::ToolResult;

Run run(const QString& tool, const QStringList& args, const QString& workDir) {
    return testsupport::runTool(tool, args, workDir);
}

bool writeBytes(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

const QString Source = QStringLiteral("version \"KX3-1.63\"\n"
                                      "format 1001\n"
                                      "category Batt \"Battery\" \"BattPre\"\n"
                                      "setting Cap 0x20 2 = num, \"Capacity\", \"Ah\", 0`100\n"
                                      "u16 Max 0x1234\n"
                                      "strings Modes \"Off\" \"On\"\n");

// Every entry of Source as listed, apart from its type name and raw bytes.
const char* const ExpectedEntries =
    "[{\"type\": 4, \"name\": \"Batt\", \"title\": \"Battery\", \"preset\": \"BattPre\"},"
    " {\"type\": 1, \"name\": \"Cap\", \"address\": 32, \"size\": 2,"
    "  \"definition\": \"num, \\\"Capacity\\\", \\\"Ah\\\", 0`100\"},"
    " {\"type\": 2, \"name\": \"Max\", \"value\": 4660},"
    " {\"type\": 3, \"name\": \"Modes\", \"text\": \"Off\"},"
    " {\"type\": 3, \"name\": \"Modes#2\", \"text\": \"On\"},"
    " {\"type\": 2, \"name\": \"Modes_COUNT\", \"value\": 2}]";

} // namespace

class TestCliLayout : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;

private slots:
    void initTestCase() {
        QVERIFY(m_dir.isValid());
        const QByteArray good = testsupport::compileLayout(Source);
        QVERIFY(!good.isEmpty());
        QVERIFY(writeBytes(m_dir.filePath(QStringLiteral("good.kxs")), good));

        RawLayout badMagic;
        badMagic.magic = "KXDATB";
        QVERIFY(writeBytes(m_dir.filePath(QStringLiteral("magic.kxs")), badMagic.toBytes()));
        RawLayout format;
        format.format = 1002;
        QVERIFY(writeBytes(m_dir.filePath(QStringLiteral("format.kxs")), format.toBytes()));
        QVERIFY(writeBytes(m_dir.filePath(QStringLiteral("short.kxs")), good.left(30)));
        QVERIFY(writeBytes(m_dir.filePath(QStringLiteral("cut.kxs")), good.left(good.size() - 1)));
        RawLayout damaged;
        damaged.names = rawEntry(2, 0, 1, QByteArray("A\0", 2)) + rawEntry(5, 2, 0, 1, "B");
        damaged.data = "x";
        QVERIFY(writeBytes(m_dir.filePath(QStringLiteral("damaged.kxs")), damaged.toBytes()));
        RawLayout outside;
        outside.names = rawEntry(1, 4, 8, QByteArray("S\0", 2)) + rawEntry(0, 0, 2, "Any");
        outside.data = "zz";
        QVERIFY(writeBytes(m_dir.filePath(QStringLiteral("outside.kxs")), outside.toBytes()));
        QVERIFY(writeBytes(m_dir.filePath(QStringLiteral("good.kxl")), Source.toUtf8()));
        QVERIFY(writeBytes(m_dir.filePath(QStringLiteral("bad.kxl")),
                           QByteArray("u8 A 1\n\nu8 B 300\n")));
    }

    void jsonListing() {
        const Run r =
            run(QStringLiteral("kxsetup-cli"),
                {QStringLiteral("layout"), QStringLiteral("good.kxs"), QStringLiteral("--json")},
                m_dir.path());
        QCOMPARE(r.exitCode, 0);
        QJsonParseError error;
        const QJsonDocument doc = QJsonDocument::fromJson(r.out, &error);
        QVERIFY2(error.error == QJsonParseError::NoError, qPrintable(error.errorString()));
        const QJsonObject root = doc.object();
        QCOMPARE(root.value(QStringLiteral("version")).toString(), QStringLiteral("KX3-1.63"));
        QCOMPARE(root.value(QStringLiteral("format")).toInt(), 1001);
        const QJsonArray entries = root.value(QStringLiteral("entries")).toArray();
        const QJsonArray expected = QJsonDocument::fromJson(ExpectedEntries).array();
        QCOMPARE(entries.size(), expected.size());
        for (int i = 0; i < entries.size(); ++i) {
            QJsonObject entry = entries.at(i).toObject();
            entry.remove(QStringLiteral("typeName"));
            entry.remove(QStringLiteral("bytes"));
            QCOMPARE(entry, expected.at(i).toObject());
        }
    }

    void plainListing() {
        const Run r = run(QStringLiteral("kxsetup-cli"),
                          {QStringLiteral("layout"), m_dir.filePath(QStringLiteral("good.kxs"))},
                          QDir::tempPath());
        QCOMPARE(r.exitCode, 0);
        QVERIFY(r.err.isEmpty());
        const QStringList lines =
            QString::fromUtf8(r.out).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 3 + 6); // version, format, count, one line per entry
        QVERIFY(lines.at(0).contains(QStringLiteral("KX3-1.63")));
        QVERIFY(lines.at(1).contains(QStringLiteral("1001")));
        QVERIFY(lines.at(4).contains(QStringLiteral("0`100")));
        QVERIFY(lines.at(8).contains(QStringLiteral("Modes_COUNT")));
    }

    void damagedDataIsReported() {
        // Entries whose data lie outside the file are listed with a problem note.
        const Run r =
            run(QStringLiteral("kxsetup-cli"),
                {QStringLiteral("layout"), QStringLiteral("outside.kxs"), QStringLiteral("--json")},
                m_dir.path());
        QCOMPARE(r.exitCode, 0);
        const QJsonArray entries =
            QJsonDocument::fromJson(r.out).object().value(QStringLiteral("entries")).toArray();
        QCOMPARE(entries.size(), 2);
        QVERIFY(entries.at(0).toObject().contains(QStringLiteral("problem")));
        QVERIFY(!entries.at(0).toObject().contains(QStringLiteral("definition")));
        QCOMPARE(entries.at(1).toObject().value(QStringLiteral("type")).toInt(), 0);
        QVERIFY(!entries.at(1).toObject().contains(QStringLiteral("problem")));
    }

    void layoutExitCodes_data() {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("error"); // a part of the (single) error line

        const QString layout = QStringLiteral("layout");
        QTest::newRow("missing file") << QStringList{layout, "none.kxs"} << 2 << "none.kxs";
        QTest::newRow("bad magic") << QStringList{layout, "magic.kxs"} << 2 << "KXDATA";
        QTest::newRow("format 1002")
            << QStringList{layout, "format.kxs", "--json"} << 2 << "unsupported layout format 1002";
        QTest::newRow("shorter than the header")
            << QStringList{layout, "short.kxs"} << 2 << "header";
        QTest::newRow("data section cut short")
            << QStringList{layout, "cut.kxs"} << 2 << "beyond the end of the file";
        QTest::newRow("damaged names table")
            << QStringList{layout, "damaged.kxs"} << 2 << "offset 52 is damaged";
        QTest::newRow("no file") << QStringList{layout} << 1 << "no layout file";
        QTest::newRow("two files")
            << QStringList{layout, "good.kxs", "good.kxs"} << 1 << "exactly one";
        QTest::newRow("unknown option") << QStringList{layout, "--xml"} << 1 << "unknown option";
    }

    void layoutExitCodes() {
        QFETCH(QStringList, args);
        QFETCH(int, exitCode);
        QFETCH(QString, error);
        const Run r = run(QStringLiteral("kxsetup-cli"), args, m_dir.path());
        QCOMPARE(r.exitCode, exitCode);
        QVERIFY(r.out.isEmpty());
        const QString err = QString::fromUtf8(r.err);
        QVERIFY2(err.contains(error), qPrintable(err));
        if (exitCode == 2) {
            QCOMPARE(err.count(QLatin1Char('\n')), 1);
            QVERIFY(err.startsWith(QStringLiteral("kxsetup-cli: ") + args.at(1) +
                                   QStringLiteral(": ")));
        }
    }

    void compileTool_data() {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("error");  // a part of stderr; empty: stderr is empty
        QTest::addColumn<QString>("output"); // file that must exist afterwards, or empty

        QTest::newRow("compiles") << QStringList{"good.kxl", "-o", "out.kxs"} << 0 << QString()
                                  << "out.kxs";
        QTest::newRow("bad source names file and line")
            << QStringList{"bad.kxl", "-o", "bad.kxs"} << 2 << "bad.kxl:3: " << QString();
        QTest::newRow("missing source")
            << QStringList{"none.kxl", "-o", "x.kxs"} << 2 << "none.kxl" << QString();
        QTest::newRow("unwritable output") << QStringList{"good.kxl", "-o", "no/such/dir/x.kxs"}
                                           << 2 << "cannot write" << QString();
        QTest::newRow("no output") << QStringList{"good.kxl"} << 1 << "no output file" << QString();
        QTest::newRow("-o without value")
            << QStringList{"good.kxl", "-o"} << 1 << "needs a file" << QString();
        QTest::newRow("help") << QStringList{"--help"} << 0 << QString() << QString();
    }

    void compileTool() {
        QFETCH(QStringList, args);
        QFETCH(int, exitCode);
        QFETCH(QString, error);
        QFETCH(QString, output);
        const Run r = run(QStringLiteral("kxs-compile"), args, m_dir.path());
        QCOMPARE(r.exitCode, exitCode);
        const QString err = QString::fromUtf8(r.err);
        if (error.isEmpty()) {
            QVERIFY2(err.isEmpty(), qPrintable(err));
        } else {
            QVERIFY2(err.contains(error), qPrintable(err));
        }
        if (!output.isEmpty()) {
            QFile f(m_dir.filePath(output));
            QVERIFY(f.open(QIODevice::ReadOnly));
            QCOMPARE(f.readAll(), testsupport::compileLayout(Source));
        }
        if (exitCode != 0) {
            QVERIFY(!QFile::exists(m_dir.filePath(QStringLiteral("bad.kxs"))));
        }
    }
};

QTEST_GUILESS_MAIN(TestCliLayout)
#include "tst_cli_layout.moc"
