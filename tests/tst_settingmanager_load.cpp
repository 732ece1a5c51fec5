// Loading a setup image against a layout: result codes, problem counts, categories,
// processor types and help texts.

#include "support/HexFixtures.h"
#include "support/LayoutFixtures.h"
#include "support/ManagerFixtures.h"
#include "support/TableFile.h"

#include "kxs/compiler/KxsWriter.h"
#include "sf/Category.h"
#include "sf/ImageReader.h"
#include "sf/RawSetting.h"
#include "sf/Setting.h"
#include "sf/SettingManager.h"
#include "sf/parser/HexParser.h"

#include <QDir>
#include <QSignalSpy>
#include <QtTest>

using namespace testsupport;
using sf::SettingManager;

namespace {

// One numeric entry per line: "NAME ADDRESS".
QString numEntries(const QStringList& entries) {
    QString out;
    for (const QString& entry : entries) {
        const QStringList parts = entry.split(QLatin1Char(' '));
        out += QStringLiteral("setting %1 %2 1 = num, W%1, u8, 0`255, [], 0, \"%1\", \"\"\n")
                   .arg(parts.at(0), parts.at(1));
    }
    return out;
}

QByteArray imageOf(const QByteArray& bytes, const QString& fw = FW, const QString& kxs = KXS) {
    QMap<quint32, QByteArray> blocks;
    blocks.insert(0, bytes);
    return hexImage(blocks, fw, kxs);
}

} // namespace

class TestSettingManagerLoad : public QObject {
    Q_OBJECT

private slots:
    void resultCodes_data() { loadTable(); }

    void resultCodes() {
        QFETCH(QStringList, layout);
        QFETCH(QString, image);
        QFETCH(bool, ignore);
        QFETCH(int, expected);

        ManagerFiles files;
        QString layoutPath = files.path(QStringLiteral("none.kxs"));
        if (layout != QStringList{QStringLiteral("-")}) {
            QString source;
            for (const QString& line : layout) {
                source += line == QLatin1String("version") ? QStringLiteral("version \"KX4-T1\"\n")
                          : line.startsWith(QLatin1String("setting ")) ? line + QLatin1Char('\n')
                                                                       : numEntries({line});
            }
            layoutPath = files.write(QStringLiteral("l.kxs"), compileLayout(source));
        }
        QString imagePath = files.path(QStringLiteral("none.hex"));
        if (image == QLatin1String("bad")) {
            imagePath = files.write(QStringLiteral("i.hex"), ":0100000001FF\r\n");
        } else if (image != QLatin1String("-")) {
            const QStringList names =
                image.split(QLatin1Char(' ')).replaceInStrings(QStringLiteral("none"), QString());
            imagePath = files.write(QStringLiteral("i.hex"), imageOf(QByteArray::fromHex("010203"),
                                                                     names.at(0), names.at(1)));
        }
        SettingManager manager;
        QCOMPARE(manager.loadRawSettings(managerVersion(FW, KXS, layoutPath), imagePath, ignore),
                 expected);
        if (expected < 0) {
            QCOMPARE(manager.getSettings().size(), 0);
            QCOMPARE(manager.totalSize(), 0);
        }
    }

    void duplicateCodeNamesKeepTheFirst() {
        // The layout compiler refuses repeated names, so the file is written entry by entry.
        kxs::compiler::KxsWriter writer;
        QVERIFY(writer.setVersion(KXS));
        const QString definition = QStringLiteral("num, W, u8, 0`255, [], 0, \"N\", \"\"");
        QVERIFY(writer.addSetting(QStringLiteral("A"), 0, 1, definition));
        QVERIFY(writer.addSetting(QStringLiteral("A"), 1, 1, definition));
        QVERIFY(writer.addSetting(QStringLiteral("B"), 2, 1, definition));
        QVERIFY(writer.addSetting(QStringLiteral("A"), 0x90, 1, definition));
        SettingManager manager;
        QCOMPARE(manager.loadRawSettingsData(managerVersion(FW, KXS), writer.toBytes(),
                                             imageOf(QByteArray::fromHex("0A0B0C")), false),
                 0); // the repeat at 0x90 is not read, so its missing bytes do not count
        QCOMPARE(manager.getRawSettings().size(), 2);
        QCOMPARE(manager.getRawSetting(QStringLiteral("A"))->getAddress(), 0);
        QCOMPARE(manager.getSettings().size(), 2);
        QCOMPARE(manager.getSettingData(QStringLiteral("A"), sf::RoleEdit).toInt(), 10);
    }

    void failedSettingsAreLeftOutAndTheirRawDisabled() {
        const QString source = QStringLiteral("version \"KX4-T1\"\n") +
                               numEntries({QStringLiteral("A 0")}) +
                               QStringLiteral("setting Q 1 1 = num, WQ, q16, 0`1, []\n");
        SettingManager manager;
        QCOMPARE(manager.loadRawSettingsData(managerVersion(FW, KXS), compileLayout(source),
                                             imageOf(QByteArray::fromHex("0A0B")), false),
                 1);
        QVERIFY(manager.containsRaw(QStringLiteral("Q")));
        QVERIFY(!manager.contains(QStringLiteral("Q")));
        QVERIFY(!manager.getRawSetting(QStringLiteral("Q"))->isEnabled());
        QCOMPARE(manager.getRawSettingData(QStringLiteral("Q")), QByteArray::fromHex("0B"));
    }

    void processorType_data() { testsupport::loadTable(); }

    void processorType() {
        QFETCH(QString, layoutVersion);
        QFETCH(int, before);
        QFETCH(int, expected);

        QCOMPARE(SettingManager::processorTypeFor(layoutVersion, before), expected);

        const QString source = QStringLiteral("version \"%1\"\n").arg(layoutVersion) +
                               numEntries({QStringLiteral("A 0")});
        SettingManager manager;
        manager.set_processor_type(before);
        QVERIFY(manager.loadRawSettingsData(
                    managerVersion(FW, layoutVersion), compileLayout(source),
                    imageOf(QByteArray::fromHex("0A"), FW, layoutVersion), false) >= 0);
        QCOMPARE(manager.get_processor_type(), expected);
    }

    void phantomBytesAreSkippedForKx3Layouts() {
        // With a phantom byte at every odd address, the two real bytes of a 16-bit setting
        // at 0x100 lie at 0x100 and 0x102.
        const QString source = QStringLiteral("version \"KX3-1\"\n"
                                              "setting W 0x100 2 = num, WW, u16, 0`65535, [], 0, "
                                              "\"W\", \"\"\n");
        QMap<quint32, QByteArray> blocks;
        blocks.insert(0x100, QByteArray::fromHex("120034"));
        SettingManager manager;
        QCOMPARE(manager.loadRawSettingsData(managerVersion(FW, QStringLiteral("KX3-1")),
                                             compileLayout(source),
                                             hexImage(blocks, FW, QStringLiteral("KX3-1")), false),
                 0);
        QCOMPARE(manager.get_processor_type(), 1);
        QCOMPARE(manager.getRawSettingData(QStringLiteral("W")), QByteArray::fromHex("1234"));
        QCOMPARE(manager.getSettingData(QStringLiteral("W"), sf::RoleEdit).toInt(), 0x1234);
    }

    void settingsFallUnderThePrecedingHeading() {
        SettingManager manager;
        ManagerFiles files;
        QCOMPARE(loadStandard(manager, files), 0);

        QStringList labels;
        for (const sf::Category* category : manager.getCategories()) {
            labels << category->getLabel();
        }
        QCOMPARE(labels, (QStringList{"UC", "Batt", "Disp"}));
        QCOMPARE(manager.getCategoryTitle(QStringLiteral("UC")), QStringLiteral("Uncategorized"));
        QCOMPARE(manager.getCategoryTitle(QStringLiteral("Batt")), QStringLiteral("Battery"));
        QCOMPARE(manager.getCategoryTitle(QStringLiteral("Nope")), QString());
        // Setting, category: before any heading, first and last under a heading, after the next.
        const QStringList pairs{"Early", "UC", "Packs", "Batt", "Low1", "Batt", "Flags", "Disp"};
        for (int i = 0; i + 1 < pairs.size(); i += 2) {
            const sf::Setting* setting = manager.getSetting(pairs.at(i));
            QVERIFY2(setting, qPrintable(pairs.at(i)));
            QCOMPARE(setting->getCategory(), pairs.at(i + 1));
            QVERIFY(manager.getCategory(pairs.at(i + 1))->contains(setting));
        }
        // Rows: Early; Packs, Cells (two presets), Lim, Low; Flags and a row per bit, Boxes
        // (folded), Screen, Dis (Hid is hidden).
        QCOMPARE(manager.totalSize(), 1 + 4 + 7);
        QCOMPARE(manager.maxPresets(), 2);

        // The layout's markers: Dis is disabled, Hid hidden but enabled.
        QVERIFY(!manager.isEnabled(QStringLiteral("Dis")));
        QVERIFY(!manager.getSetting(QStringLiteral("Dis"))->isHidden());
        QVERIFY(manager.isEnabled(QStringLiteral("Hid")));
        QVERIFY(manager.getSetting(QStringLiteral("Hid"))->isHidden());
        QVERIFY(manager.getRawSetting(QStringLiteral("Hid"))->isHidden());
    }

    void presetCounterIsFoundByPresetName() {
        SettingManager manager;
        ManagerFiles files;
        QCOMPARE(loadStandard(manager, files), 0);
        const sf::Category* batt = manager.getCategory(QStringLiteral("Batt"));
        QCOMPARE(batt->getPresetCount(), manager.getSetting(QStringLiteral("Packs")));
        QVERIFY(manager.getSetting(QStringLiteral("Packs"))->isPresetCounter());
        QVERIFY(!manager.getCategory(QStringLiteral("Disp"))->getPresetCount());

        QSignalSpy presets(&manager, &SettingManager::presetsChanged);
        QVERIFY(manager.setSettingData(0, QStringLiteral("Packs")));
        QCOMPARE(presets.count(), 1);
        QVERIFY(!batt->isPresetEnabled(1));
        QVERIFY(manager.setSettingData(7, QStringLiteral("Early")));
        QCOMPARE(presets.count(), 1); // no counter changed
    }

    void reloadDropsEverything() {
        SettingManager manager;
        ManagerFiles files;
        QCOMPARE(loadStandard(manager, files), 0);
        QVERIFY(manager.setSettingData(9, QStringLiteral("Cells1")));
        QVERIFY(manager.canUndo());
        const QString source =
            QStringLiteral("version \"KX4-T1\"\n") + numEntries({QStringLiteral("Z 0")});
        QCOMPARE(manager.loadRawSettingsData(managerVersion(FW, KXS), compileLayout(source),
                                             imageOf(QByteArray::fromHex("05")), false),
                 0);
        QVERIFY(!manager.canUndo());
        QVERIFY(!manager.contains(QStringLiteral("Cells1")));
        QCOMPARE(manager.getSettings().size(), 1);
        QCOMPARE(manager.getCategories().size(), 1);
        // The new layout's texts are read, not those of the old one under the same name.
        const QString lists = QStringLiteral(
            "version \"KX4-T1\"\n"
            "setting Screen 0 1 = list, SCREEN, ScreenCount, ScreenNames, \"Screen\", \"\"\n"
            "u8 ScreenCount 2\nstrings ScreenNames \"Left\" \"Right\"\n");
        QCOMPARE(manager.loadRawSettingsData(managerVersion(FW, KXS), compileLayout(lists),
                                             imageOf(QByteArray::fromHex("01")), false),
                 0);
        QCOMPARE(manager.getSettingData(QStringLiteral("Screen"), sf::RoleDisplay).toStringList(),
                 (QStringList{"Left", "Right"}));
        // A failed load leaves nothing behind either.
        QCOMPARE(manager.loadRawSettingsData(managerVersion(FW, KXS), QByteArray("junk"),
                                             imageOf(QByteArray::fromHex("05")), false),
                 -3);
        QCOMPARE(manager.getSettings().size(), 0);
        QCOMPARE(manager.getCategories().size(), 0);
    }

    void helpFile_data() { testsupport::loadTable(); }
    void helpFile() {
        QFETCH(QByteArray, html);
        QFETCH(QString, cellsHelp);
        QFETCH(QString, categoryHelp);

        ManagerFiles files;
        QVERIFY(QDir(files.path(QString())).mkpath(QStringLiteral("data/help")));
        if (!html.isEmpty()) {
            QVERIFY(!files.write(QStringLiteral("data/help/FW1_help.html"), html).isEmpty());
        }
        const QString previous = QDir::currentPath();
        QVERIFY(QDir::setCurrent(files.path(QString())));
        SettingManager manager;
        const int result = loadStandard(manager, files);
        QDir::setCurrent(previous);

        QCOMPARE(result, 0);
        QVERIFY(SettingManager::getTooltipFilename(FW).endsWith(
            QLatin1String("data/help/FW1_help.html")));
        QCOMPARE(manager.getTooltip(QStringLiteral("CELLS")), cellsHelp);
        QCOMPARE(manager.getSettingData(QStringLiteral("Cells1"), sf::RoleToolTip).toString(),
                 cellsHelp);
        QCOMPARE(manager.getCategoryTooltip(QStringLiteral("Batt")), categoryHelp);
        QCOMPARE(manager.getTooltip(QStringLiteral("NOPE")), QString());
    }

    void parseTooltips_data() { testsupport::loadTable(); }

    void parseTooltips() {
        QFETCH(QString, html);
        QFETCH(QStringList, pairs);

        SettingManager manager;
        manager.parseTooltips(html);
        QHash<QString, QString> expected;
        for (int i = 0; i + 1 < pairs.size(); i += 2) {
            expected.insert(pairs.at(i), pairs.at(i + 1));
        }
        QCOMPARE(manager.getTooltips(), expected);
    }

    void imageReaderAnswersLikeTheParser_data() { loadTable(); }

    void imageReaderAnswersLikeTheParser() {
        QFETCH(QString, records);
        QFETCH(int, processor);
        QFETCH(bool, indexed);

        sf::parser::HexParser image;
        QVERIFY(image.loadHexData(testsupport::hex::text(records), processor));
        const sf::ImageReader reader(image);
        QCOMPARE(reader.isIndexed(), indexed);
        const QList<quint32> starts = {0x0,    0xE,     0xF,     0x10,   0x11, 0x12,   0x13,
                                       0x14,   0x15,    0x16,    0x17,   0x18, 0x1A,   0x20,
                                       0x24,   0x27,    0x2F,    0x30,   0x32, 0xFFFB, 0xFFFC,
                                       0xFFFF, 0x10000, 0x10003, 0x10004};
        for (const quint32 address : starts) {
            for (quint32 count = 0; count <= 9; ++count) {
                const std::optional<QByteArray> expected = image.readData(address, count);
                const std::optional<QByteArray> actual = reader.read(address, count);
                QVERIFY2(expected.has_value() == actual.has_value() &&
                             (!expected || *expected == *actual),
                         qPrintable(
                             QStringLiteral("address %1 count %2").arg(address, 0, 16).arg(count)));
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestSettingManagerLoad)
#include "tst_settingmanager_load.moc"
