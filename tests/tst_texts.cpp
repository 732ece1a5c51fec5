// Texts to the letter. Every transcript under tests/data/transcripts/: the commands' output
// must equal the recorded one. The shared constants: path composition, the exact
// user-visible texts (including the historical spelling slips the users know) and their %N
// placeholders. KX_UPDATE_TRANSCRIPTS=1 rewrites the expected files with what is seen (read
// the diff before committing it).
#include "app/Constants.h"
#include "support/TestSupport.h"
#include "support/Transcript.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace ui;

class TestTexts : public QObject {
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

    void pathsEndWithSeparator() {
        for (const QString& path : {PATH_APP, PATH_DATA, PATH_SAVED, PATH_BACKUPS, PATH_FW,
                                    PATH_KXS, PATH_MAP, PATH_DEFAULT, PATH_HELP}) {
            QVERIFY2(path.endsWith(PATH_SEPERATOR), qPrintable(path));
            QVERIFY2(!path.endsWith(PATH_SEPERATOR + PATH_SEPERATOR), qPrintable(path));
            // Everything but the device folder is relative to the working directory.
            QVERIFY2(path.startsWith(QLatin1String("./")), qPrintable(path));
        }
        QVERIFY(PATH_DEV.endsWith(PATH_SEPERATOR));
    }

    // The user-visible texts (with the spelling slips the users know), composed paths and
    // texts, placeholders filled in order and the link to the software page embedded in
    // texts filled with arg(), against tests/data/constants.txt
    // (KX_UPDATE_TRANSCRIPTS=1 rewrites it).
    void texts() {
        const QList<QPair<QString, QString>> shown{
            {"PATH_BACKUPS", PATH_BACKUPS},
            {"PATH_AND_FILE_DEVICE", PATH_AND_FILE_DEVICE},
            {"PATH_DATA + FILE_TEMP", PATH_DATA + FILE_TEMP},
            {"STATUS_DEFAULT", STATUS_DEFAULT},
            {"MESSAGE_VERSION_NONE", MESSAGE_VERSION_NONE},
            {"MESSAGE_UPDATE_VERSION_NONE", MESSAGE_UPDATE_VERSION_NONE},
            {"MESSAGE_WRITE_VERSION_NONE", MESSAGE_WRITE_VERSION_NONE},
            {"DETAILS_CLOSE_MULTIPLE", DETAILS_CLOSE_MULTIPLE},
            {"DETAILS_CLOSE", DETAILS_CLOSE},
            {"MESSAGE_SAVE_TEMP", MESSAGE_SAVE_TEMP},
            {"ERROR_WRITE_KXS_VERSION_MISMATCH.arg(A1, B2)",
             ERROR_WRITE_KXS_VERSION_MISMATCH.arg("A1", "B2")},
            {"MESSAGE_WRITE_UNKNOWN_KX_FW.arg(X9, Y1)",
             MESSAGE_WRITE_UNKNOWN_KX_FW.arg("X9", "Y1")},
            {"MESSAGE_SELECT_VERSION_OPEN_MISMATCH", MESSAGE_SELECT_VERSION_OPEN_MISMATCH},
            {"MESSAGE_SELECT_VERSION_READ_MISMATCH", MESSAGE_SELECT_VERSION_READ_MISMATCH},
            {"FILE_UNTITLED.arg(1)", FILE_UNTITLED.arg(1)},
            {"FILE_READ.arg(12)", FILE_READ.arg(12)},
            {"ERROR_KXS_VER_MISMATCH.arg(a, b, c)",
             ERROR_KXS_VER_MISMATCH.arg("/d/a.kxs", "KX4.0", "kx4.0")},
            {"ERROR_MAP_MISSING_FILE.arg(a, b)", ERROR_MAP_MISSING_FILE.arg("m.kxhex", "/k/x.kxs")},
            {"ERROR_MISMATCH_KXS_DEFAULT.arg(a, b, c)",
             ERROR_MISMATCH_KXS_DEFAULT.arg("a", "b", "c")},
            {"VERSION_BRACKETS.arg(KX3.06)", VERSION_BRACKETS.arg("KX3.06")},
            {"WARNING_SETTINGS_LOAD.arg(3)", WARNING_SETTINGS_LOAD.arg(3)},
            {"TITLE_APP", TITLE_APP},
            {"TITLE_CHECK_CONNECTION", TITLE_CHECK_CONNECTION},
        };
        QString text;
        for (const auto& [name, value] : shown) {
            text += QStringLiteral("== %1 ==\n%2\n").arg(name, value);
        }
        QCOMPARE(text, testsupport::expectedText(QStringLiteral("constants.txt"), text));
    }
};

QTEST_GUILESS_MAIN(TestTexts)
#include "tst_texts.moc"
