// The flashing driver's reading of the helper's output (each text it looks for, in
// plain words and with its colour), and the confirmation before settings are reset.
#include "firmware/Bootloader.h"
#include "firmware/Migration.h"
#include "sf/SetupFile.h"
#include "support/TableFile.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using firmware::bootloader;

class TestBootloader : public QObject {
    Q_OBJECT
private slots:
    void interpret_data() { testsupport::loadTable(); }
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
