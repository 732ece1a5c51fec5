// Writing values back: copying settings into raw settings, writing and merging setup
// images, and copying raw settings between setup files.

#include "support/LayoutFixtures.h"
#include "support/ManagerFixtures.h"
#include "support/TableFile.h"

#include "sf/RawSetting.h"
#include "sf/Setting.h"
#include "sf/SettingManager.h"
#include "sf/parser/HexParser.h"

#include <QtTest>

using namespace testsupport;
using sf::SettingManager;

namespace {

const QString FW = QStringLiteral("FW1");
const QString KXS = QStringLiteral("KX4-T1");

// The first `count` bytes of a setup image from address 0; empty when unreadable.
QByteArray imageBytes(const QByteArray& text, int count) {
    sf::parser::HexParser image;
    if (!image.loadHexData(text, sf::parser::PhantomNone)) {
        return QByteArray();
    }
    return image.readData(0, static_cast<quint32>(count)).value_or(QByteArray());
}

// Addresses at which two byte arrays differ.
QList<int> differences(const QByteArray& a, const QByteArray& b) {
    QList<int> at;
    for (int i = 0; i < qMax(a.size(), b.size()); ++i) {
        if (i >= a.size() || i >= b.size() || a.at(i) != b.at(i)) {
            at << i;
        }
    }
    return at;
}

// Layout for the counting rules: a plain number, a hidden one, a disabled one, one whose
// raw size (3) differs from its setting's (2), one whose kind fails, and a hidden one
// whose sizes differ.
QString countingLayout() {
    return QStringLiteral("version \"KX4-T1\"\n"
                          "setting Plain 0 1 = num, W1, u8, 0`255, [], 0, \"P\", \"\"\n"
                          "setting Hidden 1 1 = num, W2, u8, 0`255, [], 0, \"H\", \"\", HID\n"
                          "setting Off 2 1 = num, W3, u8, 0`255, [], 0, \"O\", \"\", DIS\n"
                          "setting Odd 3 3 = num, W4, u16, 0`60000, [], 0, \"D\", \"\"\n"
                          "setting Broken 6 1 = num, W5, q8, 0`1, []\n"
                          "setting HiddenOdd 7 2 = num, W6, u8, 0`255, [], 0, \"HO\", \"\", HID\n");
}

} // namespace

class TestSettingManagerWrite : public QObject {
    Q_OBJECT

private slots:
    void copyCounts_data() { testsupport::loadTable(); }

    void copyCounts() {
        QFETCH(QString, prepare);
        QFETCH(bool, onlyEnabled);
        QFETCH(int, count);

        SettingManager manager;
        QCOMPARE(manager.loadRawSettingsData(
                     managerVersion(FW, KXS), compileLayout(countingLayout()),
                     hexImage({{0, QByteArray::fromHex("0102030405060708AA")}}, FW, KXS), false),
                 1); // Broken fails to build
        if (!prepare.isEmpty()) {
            const QStringList words = prepare.split(QLatin1Char(' '));
            QVERIFY(manager.setEnabled(words.at(1), words.at(0) == QLatin1String("enable")));
        }
        QCOMPARE(manager.copyDataToRawSettings(onlyEnabled), count);
        QVERIFY(manager.getRawSetting(QStringLiteral("Hidden"))->isEnabled());
        QVERIFY(manager.getRawSetting(QStringLiteral("HiddenOdd"))->isEnabled());
        QVERIFY(!manager.getRawSetting(QStringLiteral("Broken"))->isEnabled());
    }

    void copyMovesBytesAndEnableState() {
        SettingManager manager;
        QCOMPARE(manager.loadRawSettingsData(
                     managerVersion(FW, KXS), compileLayout(countingLayout()),
                     hexImage({{0, QByteArray::fromHex("0102030405060708AA")}}, FW, KXS), false),
                 1);
        QVERIFY(manager.setSettingData(9, QStringLiteral("Plain")));
        QVERIFY(manager.setSettingData(9, QStringLiteral("Off")));
        QVERIFY(manager.setSettingData(9, QStringLiteral("Hidden")));
        QVERIFY(manager.setSettingData(9, QStringLiteral("Odd")));
        QVERIFY(manager.setSettingData(9, QStringLiteral("HiddenOdd")));

        manager.copyDataToRawSettings(true);
        QCOMPARE(manager.getRawSettingData(QStringLiteral("Plain")), QByteArray::fromHex("09"));
        QCOMPARE(manager.getRawSettingData(QStringLiteral("Off")), QByteArray::fromHex("03"));
        QCOMPARE(manager.getRawSettingData(QStringLiteral("Hidden")), QByteArray::fromHex("09"));
        QCOMPARE(manager.getRawSettingData(QStringLiteral("Odd")), QByteArray::fromHex("040506"));
        QCOMPARE(manager.getRawSettingData(QStringLiteral("HiddenOdd")),
                 QByteArray::fromHex("08AA"));

        manager.copyDataToRawSettings(false);
        QCOMPARE(manager.getRawSettingData(QStringLiteral("Off")), QByteArray::fromHex("09"));
        QCOMPARE(manager.getRawSettingData(QStringLiteral("Odd")), QByteArray::fromHex("040506"));

        QVERIFY(manager.setEnabled(QStringLiteral("Plain"), false));
        manager.copyDataToRawSettings(false);
        QVERIFY(!manager.getRawSetting(QStringLiteral("Plain"))->isEnabled());
    }

    void roundTrip_data() { testsupport::loadTable(); }

    void roundTrip() {
        QFETCH(bool, replace);
        QFETCH(bool, reformat);

        ManagerFiles files;
        SettingManager manager;
        QCOMPARE(loadStandard(manager, files), 0);
        const QString path = files.path(QStringLiteral("setup.hex"));
        const QByteArray before = imageBytes(ManagerFiles::read(path), 16);
        QCOMPARE(before, standardImageBytes());

        QVERIFY(manager.setSettingData(10, QStringLiteral("Cells1"))); // clamps Lim1 and Low1
        QVERIFY(manager.setSettingData(2, QStringLiteral("Screen")));
        QVERIFY(manager.setSettingData(true, QStringLiteral("Flags"), 1));
        QVERIFY(manager.writeAppendRawSettings(path, reformat, true, replace, 0, 0xFFFFFFFFu));

        const QByteArray text = ManagerFiles::read(path);
        // With replace only the enabled settings' records remain: Dis (0x0D, disabled) and
        // the two bytes after it are gone.
        const QByteArray after = imageBytes(text, replace ? 13 : 16);
        QVERIFY(!after.isEmpty());
        if (replace) {
            QVERIFY(imageBytes(text, 14).isEmpty());
        }
        // Changed exactly at the bytes that differ: Cells1 (2), the low bytes of Lim1 (480 to
        // 420) and Low1 (350 to 300), Flags' last byte (bit 1) and Screen (0x0B).
        QCOMPARE(differences(before.left(after.size()), after), (QList<int>{2, 5, 7, 9, 11}));

        SettingManager reloaded;
        QCOMPARE(reloaded.loadRawSettingsData(managerVersion(FW, KXS),
                                              compileLayout(standardLayoutSource()), text, false),
                 replace ? 1 : 0); // replaced: the disabled Dis is no longer in the image
        for (const sf::Setting* setting : manager.getSettings()) {
            if (replace && setting->getCodeName() == QLatin1String("Dis")) {
                continue;
            }
            QCOMPARE(reloaded.getSetting(setting->getCodeName())->getBytes(), setting->getBytes());
        }
        QCOMPARE(sf::parser::HexParser::getFwVersion(path), FW);
        QCOMPARE(sf::parser::HexParser::getKxsVersion(path), KXS);
        QCOMPARE(sf::parser::HexParser::getEnqString(path), QStringLiteral("ENQ FW1"));
    }

    void writeRange() {
        ManagerFiles files;
        SettingManager manager;
        QCOMPARE(loadStandard(manager, files), 0);
        const QString path = files.path(QStringLiteral("setup.hex"));
        QVERIFY(manager.setSettingData(30.0, QStringLiteral("Lim1")));
        QVERIFY(manager.setSettingData(3, QStringLiteral("Early")));
        // Only Lim1 and Low1 lie in [4, 8): with replace they are all the file keeps.
        QVERIFY(manager.writeAppendRawSettings(path, false, true, true, 4, 8));
        const QByteArray text = ManagerFiles::read(path);
        sf::parser::HexParser image;
        QVERIFY(image.loadHexData(text, sf::parser::PhantomNone));
        QCOMPARE(image.readData(4, 4).value_or(QByteArray()), QByteArray::fromHex("012C015E"));
        QVERIFY(!image.readData(0, 1).has_value());
    }

    void writeFailures() {
        ManagerFiles files;
        SettingManager manager;
        QCOMPARE(loadStandard(manager, files), 0);
        QVERIFY(!manager.writeAppendRawSettings(QString(), false, true, true, 0, 0xFFFFFFFFu));
        QVERIFY(!manager.writeAppendRawSettings(files.path(QStringLiteral("missing.hex")), false,
                                                true, true, 0, 0xFFFFFFFFu));
        QVERIFY(!QFile::exists(files.path(QStringLiteral("missing.hex"))));
        const QString junk = files.write(QStringLiteral("junk.hex"), "not a hex file");
        QVERIFY(!manager.appendRawSettings(junk, false, true, 0, 0xFFFFFFFFu));
        QCOMPARE(ManagerFiles::read(junk), QByteArray("not a hex file"));

        // Nothing to write: the file stays as it was.
        SettingManager empty;
        const QString path = files.path(QStringLiteral("setup.hex"));
        const QByteArray original = ManagerFiles::read(path);
        QVERIFY(!empty.writeAppendRawSettings(path, false, true, true, 0, 0xFFFFFFFFu));
        QCOMPARE(ManagerFiles::read(path), original);
        QByteArray text = original;
        QVERIFY(!empty.writeAppendRawSettingsData(&text, false, true, true, 0, 0xFFFFFFFFu));
        QVERIFY(!manager.writeAppendRawSettingsData(nullptr, false, true, true, 0, 0xFFFFFFFFu));
    }

    void memoryWriteMatchesFileWrite() {
        ManagerFiles files;
        SettingManager manager;
        QCOMPARE(loadStandard(manager, files), 0);
        QVERIFY(manager.setSettingData(20, QStringLiteral("Cells2")));
        const QString path = files.path(QStringLiteral("setup.hex"));
        QByteArray text = ManagerFiles::read(path);
        QVERIFY(manager.writeAppendRawSettingsData(&text, false, true, false, 0, 0xFFFFFFFFu));
        QVERIFY(manager.appendRawSettings(path, false, true, 0, 0xFFFFFFFFu));
        QCOMPARE(text, ManagerFiles::read(path));
        QCOMPARE(imageBytes(text, 16).at(3), char(20));
        QCOMPARE(imageBytes(text, 16).right(2), QByteArray::fromHex("EEEF")); // merged, kept
    }

    void appendFromAnotherSetupFile() {
        ManagerFiles files;
        SettingManager manager;
        QCOMPARE(loadStandard(manager, files), 0);
        const QString destination = files.path(QStringLiteral("setup.hex"));

        // The source holds other values for the settings up to Screen (0x0B); it lacks the
        // bytes of Hid and Dis.
        QByteArray other = QByteArray::fromHex("1102030405060708090A0B0C");
        const QString source =
            files.write(QStringLiteral("source.hex"),
                        hexImage({{0, other}}, QStringLiteral("FW9"), QStringLiteral("KX4-T9")));
        QCOMPARE(manager.appendRawSettingsFromHexFile(source, destination, false), 9);

        const QByteArray text = ManagerFiles::read(destination);
        QCOMPARE(imageBytes(text, 16), other + QByteArray::fromHex("1122EEEF"));
        QCOMPARE(sf::parser::HexParser::getFwVersion(destination), FW); // destination's own
        // The manager's values are untouched.
        QCOMPARE(manager.getSettingData(QStringLiteral("Early"), sf::RoleEdit).toInt(), 7);

        // Only enabled settings: a disabled one is not copied even when the source has it.
        QVERIFY(manager.setEnabled(QStringLiteral("Early"), false));
        manager.copyDataToRawSettings(false);
        QCOMPARE(manager.appendRawSettingsFromHexFile(source, destination, true), 8);
        QCOMPARE(manager.appendRawSettingsFromHexFile(files.path(QStringLiteral("none.hex")),
                                                      destination, false),
                 -1);
        QCOMPARE(manager.appendRawSettingsFromHexFile(
                     source, files.path(QStringLiteral("none.hex")), false),
                 -1);
    }
};

QTEST_GUILESS_MAIN(TestSettingManagerWrite)
#include "tst_settingmanager_write.moc"
