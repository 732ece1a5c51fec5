// kxsetup-cli set: every setting kind can be changed, and the saved image differs from an
// unchanged save exactly in the bytes of the settings named and of their re-evaluated
// dependents, in every generation (phantom bytes included); saving in place keeps the
// file's permissions; edits survive re-opening and re-saving. Refusals and -o: cli-set.t.
#include "support/CliRunner.h"
#include "support/SampleData.h"
#include "support/TableFile.h"
#include "support/TestSupport.h"

#include "sf/parser/PhantomBytes.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

using namespace sampledata;
using testsupport::CliResult;
using testsupport::runCli;

namespace {

const Generation* generationOf(const QString& fw) {
    for (const Generation& g : generations()) {
        if (g.fw == fw) {
            return &g;
        }
    }
    return nullptr;
}

CliResult set(const QStringList& args) {
    return runCli(QStringList{QStringLiteral("-C"), runtimeDir(), QStringLiteral("set")} + args);
}

QStringList get(const QString& file, const QStringList& names) {
    const CliResult run = runCli(
        QStringList{QStringLiteral("-C"), runtimeDir(), QStringLiteral("get"), file} + names);
    return run.exitCode == 0
               ? run.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts)
               : QStringList{QStringLiteral("exit %1: %2").arg(run.exitCode).arg(run.err)};
}

// The settings whose spans hold an address at which the two images differ; "?" for a
// differing address that lies in no setting.
QSet<QString> changedSpans(const QString& before, const QString& after, const QList<Span>& spans) {
    QMap<quint64, quint8> a;
    QMap<quint64, quint8> b;
    QSet<QString> changed;
    if (!imageBytes(before, &a) || !imageBytes(after, &b)) {
        return {QStringLiteral("unreadable")};
    }
    const QList<quint64> addresses = a.keys() + b.keys();
    for (quint64 address : addresses) {
        if (a.contains(address) && b.contains(address) && a.value(address) == b.value(address)) {
            continue;
        }
        QString owner = QStringLiteral("?");
        for (const Span& s : spans) {
            if (address >= s.address && address < s.address + s.span) {
                owner = s.code;
            }
        }
        changed.insert(owner);
    }
    return changed;
}

// The settings whose real bytes, as the image reader reads them, differ.
QSet<QString> changedValues(const QString& before, const QString& after, const QList<Span>& spans,
                            int processor) {
    const QHash<QString, QByteArray> a = settingBytes(before, spans, processor);
    const QHash<QString, QByteArray> b = settingBytes(after, spans, processor);
    QSet<QString> changed;
    for (const Span& s : spans) {
        if (!a.contains(s.code) || !b.contains(s.code) || a.value(s.code) != b.value(s.code)) {
            changed.insert(s.code);
        }
    }
    return changed;
}

// Sets the file's modification time back so that a rewrite would show.
bool ageFile(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadWrite) && f.setFileTime(QDateTime::currentDateTime().addDays(-3),
                                                         QFileDevice::FileModificationTime);
}

QDateTime modified(const QString& path) {
    return QFileInfo(path).lastModified();
}

} // namespace

class TestCliSet : public QObject {
    Q_OBJECT
private slots:
    void changesExactlyItsBytes_data() { testsupport::loadTable(); }

    void changesExactlyItsBytes() {
        QFETCH(QString, fw);
        QFETCH(QStringList, assignments);
        QFETCH(QStringList, changed);
        QFETCH(QStringList, query);
        QFETCH(QStringList, answer);
        const Generation* g = generationOf(fw);
        QVERIFY(g);
        QTemporaryDir tmp;
        QVERIFY(tmp.isValid());
        const QString base = tmp.filePath(QStringLiteral("base.hex"));
        const QString edited = tmp.filePath(QStringLiteral("edited.hex"));
        QCOMPARE(set({firmwarePath(*g), QStringLiteral("SpdUnits=0"), QStringLiteral("-o"), base})
                     .exitCode,
                 0);
        const CliResult run =
            set(QStringList{firmwarePath(*g), QStringLiteral("-o"), edited} + assignments);
        QCOMPARE(run.exitCode, 0);
        QVERIFY2(run.err.isEmpty(), qPrintable(run.err));

        const QList<Span> spans = layoutSpans(layoutPath(g->kxs), g->processor);
        const QSet<QString> expected(changed.begin(), changed.end());
        QCOMPARE(changedSpans(base, edited, spans), expected);
        QCOMPARE(changedValues(base, edited, spans, g->processor), expected);
        // set reports each changed setting once.
        QSet<QString> reported;
        for (const QString& line : run.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
            reported.insert(line.section(QLatin1Char(':'), 0, 0));
        }
        QCOMPARE(reported, expected);
        QCOMPARE(get(edited, query), answer);
    }

    void inPlaceReplacesFile() {
        const Generation* g = generationOf(QStringLiteral("4.01"));
        QTemporaryDir tmp;
        QVERIFY(tmp.isValid());
        const QString file = copyInto(firmwarePath(*g), tmp.path(), QStringLiteral("setup.hex"));
        QVERIFY(!file.isEmpty() && ageFile(file));
        QVERIFY(
            QFile(file).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
        const QDateTime time = modified(file);
        QCOMPARE(set({file, QStringLiteral("Backlight=40")}).exitCode, 0);
        QVERIFY(modified(file) > time);
        QCOMPARE(QFile(file).permissions() &
                     (QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther),
                 QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup);
        QCOMPARE(get(file, {QStringLiteral("Backlight")}), QStringList{QStringLiteral("40")});
        QCOMPARE(QDir(tmp.path()).entryList(QDir::Files | QDir::Hidden),
                 QStringList{QStringLiteral("setup.hex")});
    }

    void editsSurviveReopening_data() {
        QTest::addColumn<QString>("fw");
        for (const Generation& g : generations()) {
            QTest::newRow(qPrintable(g.fw)) << g.fw;
        }
    }

    // Edit, save, re-open and edit again in place, then save unchanged: the second save is
    // byte-identical and both edits are there.
    void editsSurviveReopening() {
        QFETCH(QString, fw);
        const Generation* g = generationOf(fw);
        QTemporaryDir tmp;
        QVERIFY(tmp.isValid());
        const QString first = tmp.filePath(QStringLiteral("first.hex"));
        const QString second = tmp.filePath(QStringLiteral("second.hex"));
        QCOMPARE(set({firmwarePath(*g), QStringLiteral("BattCapB=33.33"),
                      QStringLiteral("Screens[3]=0"), QStringLiteral("-o"), first})
                     .exitCode,
                 0);
        QCOMPARE(
            set({first, QStringLiteral("CellChem@30001.B=SLA"), QStringLiteral("TempOffset=-20")})
                .exitCode,
            0);
        QCOMPARE(
            set({first, QStringLiteral("CellChemB=SLA"), QStringLiteral("-o"), second}).exitCode,
            0);
        QCOMPARE(testsupport::readFile(second), testsupport::readFile(first));
        QCOMPARE(get(second, {QStringLiteral("BattCapB"), QStringLiteral("Screens[3]"),
                              QStringLiteral("CellChemB"), QStringLiteral("TempOffset")}),
                 (QStringList{QStringLiteral("33.33"), QStringLiteral("0"), QStringLiteral("6"),
                              QStringLiteral("-20")}));
    }
};

QTEST_GUILESS_MAIN(TestCliSet)
#include "tst_cli_set.moc"
