// Every transcript under tests/data/transcripts/: the commands' output must equal the
// recorded one. KX_UPDATE_TRANSCRIPTS=1 rewrites the files with what the commands print
// (read the diff before committing it).
#include "support/TestSupport.h"
#include "support/Transcript.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

class TestTranscripts : public QObject {
    Q_OBJECT
private slots:
    void transcript_data() {
        QTest::addColumn<QString>("path");
        const QDir dir(testsupport::sourceDir() + QStringLiteral("/tests/data/transcripts"));
        for (const QString& name :
             dir.entryList({QStringLiteral("*.t")}, QDir::Files, QDir::Name)) {
            QTest::newRow(qPrintable(name)) << dir.filePath(name);
        }
    }

    void transcript() {
        QFETCH(QString, path);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray expected = file.readAll();
        file.close();
        QTemporaryDir tmp;
        QVERIFY(tmp.isValid());
        const QByteArray actual = testsupport::runTranscript(
            expected, {testsupport::runtimeDir(), testsupport::sourceDir(), tmp.path()});
        if (actual == expected) {
            return;
        }
        if (qgetenv("KX_UPDATE_TRANSCRIPTS") == "1") {
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(actual) == actual.size());
            return;
        }
        const QList<QByteArray> a = actual.split('\n');
        const QList<QByteArray> e = expected.split('\n');
        int line = 0;
        while (line < a.size() && line < e.size() && a[line] == e[line]) {
            ++line;
        }
        QFAIL(qPrintable(
            QStringLiteral("%1:%2: expected\n%3\nbut got\n%4")
                .arg(path)
                .arg(line + 1)
                .arg(QString::fromUtf8(e.value(line)), QString::fromUtf8(a.value(line)))));
    }
};

QTEST_GUILESS_MAIN(TestTranscripts)
#include "tst_transcripts.moc"
