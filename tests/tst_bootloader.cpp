// The flashing driver's reading of the helper's output (each text it looks for, in
// plain words and with its colour), and the confirmation before settings are reset.
#include "firmware/Bootloader.h"
#include "firmware/Migration.h"
#include "sf/SetupFile.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using firmware::bootloader;

class TestBootloader : public QObject {
    Q_OBJECT
private slots:
    void interpret_data() {
        QTest::addColumn<QString>("output");
        QTest::addColumn<QStringList>("lines"); // what the log gets, in order
        QTest::addColumn<QString>("progress");  // the progress line, when updated
        QTest::addColumn<QString>("colour");    // the last colour set: red, green or none
        QTest::addColumn<QString>("id");        // the identification reported
        const QString comm =
            "\nCommunication error! Please ensure all cables are secure and in good repair!\n";
        QTest::newRow("writing") << "Now writing\n"
                                 << QStringList{"Upload Progress   0%\n", "Now writing\n"} << ""
                                 << ""
                                 << "";
        QTest::newRow("upload progress")
            << "Progress 5%\nProgress 40%\n"
            << QStringList{"Progress 5%\nProgress 40%\n"} << "Upload Progress  40%"
            << ""
            << "";
        QTest::newRow("progress after a carriage return")
            << "Progress 10%\rProgress 12%" << QStringList{"Progress 10%\rProgress 12%"}
            << "Upload Progress  12%"
            << ""
            << "";
        QTest::newRow("verifying") << "Now verifying\n"
                                   << QStringList{"Upload complete, now verifying...\n",
                                                  "Verify Progress  0%\n", "Now verifying\n"}
                                   << ""
                                   << ""
                                   << "";
        QTest::newRow("done") << "Resetting device\nAll operations completed succesfully!\n"
                              << QStringList{"Verify Progress 100%\r", "Upload Complete!\n"} << ""
                              << "green"
                              << "";
        QTest::newRow("identification")
            << "Retrieved version number during KX entry procedure: KX4A\nTrying version command\n"
            << QStringList() << ""
            << ""
            << "KX4A";
        QTest::newRow("search timeout")
            << "Did not succeed in KX entry procedure\n"
            << QStringList{"\nUnable to find the device within a time limit of 30 seconds! Please "
                           "check connections and try again!\n",
                           "Did not succeed in KX entry procedure\n"}
            << ""
            << "red"
            << "";
        QTest::newRow("profile: two rows")
            << "Could not find device profile matching specified"
            << QStringList{"\nProgram requires an update to program this device, please download "
                           "the latest software from www.tessen-technologies.example!\n",
                           "\nCould not find device library file \"device.txt\" in the local "
                           "directory. Please replace this file or reinstall the program.\n",
                           "Could not find device profile matching specified"}
            << ""
            << "red"
            << "";
        QTest::newRow("truncated: a warning only")
            << "Truncating lower range limit to lower range of writable flash\n"
            << QStringList{"\nThis file specifies more data than the current device can hold. The "
                           "firmware may not behave as expected.\n",
                           "Truncating lower range limit to lower range of writable flash\n"}
            << ""
            << ""
            << "";
        QTest::newRow("no file name") << "No file name specified"
                                      << QStringList{"\nInput Firmware file name contains illegal "
                                                     "characters. Please rename and load again.\n",
                                                     "No file name specified"}
                                      << ""
                                      << "red"
                                      << "";
        QTest::newRow("communication") << "Erase command receive failed!"
                                       << QStringList{comm, "Erase command receive failed!"} << ""
                                       << "red"
                                       << "";
        QTest::newRow("line noise") << "no stx char!" << QStringList{comm, "no stx char!"} << ""
                                    << "red"
                                    << "";
        QTest::newRow("damaged file")
            << "Byte conv error on checksum?! (line 3)"
            << QStringList{"\nFile could not be uploaded to device. Please ensure the firmware "
                           "file is not corrupt and is a valid firmware file from "
                           "www.tessen-technologies.example!\n",
                           "Byte conv error on checksum?! (line 3)"}
            << ""
            << "red"
            << "";
        QTest::newRow("device file")
            << "size cannot be 0!"
            << QStringList{"\nError with device configuration. Please check that device.txt is not "
                           "corrupt, and reinstall the tool if necessary.\n",
                           "size cannot be 0!"}
            << ""
            << "red"
            << "";
    }
    void interpret() {
        QFETCH(QString, output);
        QFETCH(QStringList, lines);
        QFETCH(QString, progress);
        QFETCH(QString, colour);
        QFETCH(QString, id);
        bootloader driver;
        QSignalSpy logged(&driver, &bootloader::textreadysig);
        QSignalSpy updated(&driver, &bootloader::textupdatesig);
        QSignalSpy colours(&driver, &bootloader::changecolour);
        QSignalSpy reported(&driver, &bootloader::version_received);
        QSignalSpy done(&driver, &bootloader::fw_update_done);
        driver.interpret(output);
        QStringList got;
        for (const auto& args : logged) {
            got << args.at(0).toString();
        }
        QCOMPARE(got, lines);
        QCOMPARE(updated.isEmpty() ? QString() : updated.last().at(0).toString(), progress);
        const QColor last = colours.isEmpty() ? QColor() : colours.last().at(0).value<QColor>();
        QCOMPARE(last == bootloader::RED     ? "red"
                 : last == bootloader::GREEN ? "green"
                                             : "",
                 colour);
        QCOMPARE(reported.isEmpty() ? QString() : reported.first().at(0).toString(), id);
        QCOMPARE(done.size(), colour == QLatin1String("green") ? 1 : 0);
    }

    // A helper that cannot be started is reported in red, in the log.
    void helperMissing() {
        QTemporaryDir empty;
        const QString here = QDir::currentPath();
        QDir::setCurrent(empty.path());
        {
            bootloader driver;
            QSignalSpy logged(&driver, &bootloader::textreadysig);
            QSignalSpy colours(&driver, &bootloader::changecolour);
            driver.changeserial(QStringLiteral("/dev/kx-none"));
            driver.search();
            QTRY_VERIFY(!logged.isEmpty() && logged.last().at(0).toString().startsWith(
                                                 "Error occurred: Failed to start!"));
            QCOMPARE(colours.last().at(0).value<QColor>(), bootloader::RED);
        }
        QDir::setCurrent(here);
    }

    // The preview of carrying 3.10's settings into 3.20: bits by label with their old
    // values, the lifetime energy converted, a list without counterpart reset.
    void migrationPreview() {
        const QString here = QDir::currentPath();
        QDir::setCurrent(testsupport::runtimeDir());
        sf::SetupFile old, target;
        QString error;
        QVERIFY(old.open(testsupport::runtimeDir() + "/data/firmware/kx3/3.10.kxhex", QString(),
                         &error));
        util::VersionContainer v;
        QVERIFY(sf::SetupFile::catalogueVersion("3.20", &v, &error));
        QVERIFY(target.open(v.mapFilePath, v) >= 0);
        QDir::setCurrent(here);
        const firmware::Migration m = firmware::migrateSettings(old.manager(), target.manager());
        QHash<QString, firmware::MigrationRow> byKey;
        for (const firmware::MigrationRow& row : m.rows) {
            byKey.insert(row.key, row);
        }
        const firmware::MigrationRow bit = byKey.value("FeatFlags[0]");
        QCOMPARE(bit.how, firmware::MigrationRow::Kept);
        QVERIFY(!bit.oldValue.isEmpty());
        QCOMPARE(bit.oldValue, bit.newValue);
        QCOMPARE(byKey.value("LifeWhA").how, firmware::MigrationRow::Converted);
        QCOMPARE(byKey.value("ScreenAnim").how, firmware::MigrationRow::Default);
        QVERIFY(byKey.value("ScreenAnim").oldValue.isEmpty());
    }

    void mergeConfirmationListsEverySetting() {
        const firmware::MergeMessage m =
            firmware::mergeMessage({{"Screen change", 1}, {"`Bluetooth`", 2}}, "3.10", "4.01");
        QVERIFY(m.text.startsWith("You're about to update from a 3.10 to 4.01 firmware."));
        QCOMPARE(m.details,
                 QStringLiteral("The following 3.10 settings do not exist in 4.01 and will be "
                                "set to defaults:\n\u2022 `Bluetooth` (1)\n\u2022 `Bluetooth` "
                                "(2)\n\u2022 Screen change\n"));
    }
};

QTEST_GUILESS_MAIN(TestBootloader)
#include "tst_bootloader.moc"
