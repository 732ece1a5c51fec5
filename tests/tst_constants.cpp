// The shared constants: path composition, the exact user-visible texts (including the
// historical spelling slips the users know) and their %N placeholders.
#include "app/Constants.h"

#include <QRegularExpression>
#include <QtTest>

using namespace ui;

class TestConstants : public QObject {
    Q_OBJECT

private slots:
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

    // Composed paths and texts, the user-visible texts with their known spelling slips, and
    // placeholders filled in order.
    void texts_data() {
        QTest::addColumn<QString>("actual");
        QTest::addColumn<QString>("expected");
        QTest::newRow("backups under saved") << PATH_BACKUPS << "./setups/backups/";
        QTest::newRow("device file") << PATH_AND_FILE_DEVICE << "./data/device.txt";
        QTest::newRow("data + scratch file") << PATH_DATA + FILE_TEMP << "./data/temp.hex";
        QTest::newRow("status line")
            << STATUS_DEFAULT
            << "KX Setup Utility Version 1.63 for Linux by Tessen Technologies Ltd.";
        QTest::newRow("update adds reason d")
            << MESSAGE_UPDATE_VERSION_NONE.left(MESSAGE_VERSION_NONE.size())
            << MESSAGE_VERSION_NONE;
        QTest::newRow("write ends with corruption warning")
            << MESSAGE_WRITE_VERSION_NONE.right(WARN_OF_CORRUPTION.size() + 22)
            << "Caution: ignoring and continuing may result in your Korvex data being corrupted.";
        QTest::newRow("close multiple details") << DETAILS_CLOSE_MULTIPLE << DETAILS_CLOSE;
        QTest::newRow("Thie file")
            << MESSAGE_SAVE_TEMP
            << "You are about to overwrite the Setup Utility's temporary hex "
               "file. Thie file is overwritten any time you read or write "
               "from or to the Korvex. Your data WILL be overwritten without "
               "warning.";
        QTest::newRow("the you are attempting")
            << ERROR_WRITE_KXS_VERSION_MISMATCH.left(120)
            << QStringLiteral(
                   "The connected Korvex has a firmware that is incompatible with the "
                   "setup file the you are attempting to write, and proceeding will cause "
                   "the KX to behave unpredictably.")
                   .left(120);
        QTest::newRow("these setup")
            << MESSAGE_WRITE_UNKNOWN_KX_FW.section(QLatin1String(". "), 2, 2)
            << "If you are certain \"%1\" has identical layout to \"%2\" you "
               "may forcibly write these setup";
        QTest::newRow("version none")
            << MESSAGE_VERSION_NONE
            << "The setup utility did not detect a Korvex version. This could be due to one of the "
               "following reasons:\n\na) The communication cable is not properly connected to the "
               "KX.\n\nb) An incorrect COM port is selected. It must be the same COM port that is "
               "associated with the TTL->USB cable.\n\nc) The Korvex is not powered up or is in "
               "either setup mode or \"...PC CONNECTION\" mode. The device must be turned on and "
               "in the normal display mode.\n";
        QTest::newRow("untitled counter") << FILE_UNTITLED.arg(1) << "New Setup 1.hex";
        QTest::newRow("read counter") << FILE_READ.arg(12) << "Read Setup 12.hex";
        QTest::newRow("three values in order")
            << ERROR_KXS_VER_MISMATCH.arg(QStringLiteral("/d/a.kxs"), QStringLiteral("KX4.0"),
                                          QStringLiteral("kx4.0"))
            << "KXS file \"/d/a.kxs\" has version \"KX4.0\", expected \"kx4.0\".";
        QTest::newRow("two values")
            << ERROR_MAP_MISSING_FILE.arg(QStringLiteral("m.kxhex"), QStringLiteral("/k/x.kxs"))
            << "Map \"m.kxhex\" references a missing file \"/k/x.kxs\". Skipping this FW version.";
        QTest::newRow("default mismatch location")
            << ERROR_MISMATCH_KXS_DEFAULT.arg(QStringLiteral("a"), QStringLiteral("b"),
                                              QStringLiteral("c"))
            << "The default setup file for \"a\" has mismatched version \"b\". (Location: \"c\")";
        QTest::newRow("brackets") << VERSION_BRACKETS.arg(QStringLiteral("KX3.06")) << " <KX3.06>";
        QTest::newRow("setting count")
            << WARNING_SETTINGS_LOAD.arg(3).left(16) << "3 settings that ";
    }

    void texts() {
        QFETCH(QString, actual);
        QFETCH(QString, expected);
        QCOMPARE(actual, expected);
    }

    void swLinkIsEmbeddable() {
        // The link is pasted into texts that are later filled with QString::arg and shown as
        // rich text: it must be an anchor with a single-quoted target and carry nothing arg()
        // would replace.
        const QRegularExpression anchor(QStringLiteral("^<a href='https?://[^'\"%]+'>[^<%]+</a>$"));
        QVERIFY2(anchor.match(KX_SW_LINK).hasMatch(), qPrintable(KX_SW_LINK));
        const QString filled =
            MESSAGE_WRITE_UNKNOWN_KX_FW.arg(QStringLiteral("X9"), QStringLiteral("Y1"));
        QVERIFY(filled.contains(KX_SW_LINK));
        QCOMPARE(filled.count(QLatin1String("\"X9\"")), 2);
        QVERIFY(!filled.contains(QLatin1Char('%')));
        const QString mismatch =
            ERROR_WRITE_KXS_VERSION_MISMATCH.arg(QStringLiteral("A1"), QStringLiteral("B2"));
        QCOMPARE(mismatch.count(QLatin1String("\"A1\"")), 2);
        QVERIFY(mismatch.contains(QLatin1String("KX versions B2.")));
        QVERIFY(MESSAGE_SELECT_VERSION_OPEN_MISMATCH.endsWith(KX_SW_LINK + QStringLiteral(".")));
        QVERIFY(MESSAGE_SELECT_VERSION_READ_MISMATCH.contains(
            QStringLiteral("available from ") + KX_SW_LINK + QStringLiteral(". You can")));
    }
};

QTEST_GUILESS_MAIN(TestConstants)
#include "tst_constants.moc"
