// Fuzzes the setting manager's load, edit, undo and write-back paths.
//
// Input: the first byte picks the mode. Even: the rest is a setup image (HEX text) read
// against a fixed small layout. Odd: the rest is a layout file read against a fixed image.
// Whatever loads is then edited through every setting (and sub-index), undone, redone,
// written back into the image in memory and loaded again. Nothing may crash, hang or read
// outside its bytes, and the undo history must restore every setting's bytes exactly.

#include "kxs/compiler/LayoutCompiler.h"
#include "sf/Setting.h"
#include "sf/SettingManager.h"
#include "sf/parser/Inhex32Entry.h"
#include "util/VersionContainer.h"

#include <QMap>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

void check(bool condition) {
    if (!condition) {
        std::abort();
    }
}

const char* const LAYOUT_SOURCE =
    "version \"KX4-F\"\n"
    "setting Early 0x00 1 = num, EARLY, u8, 0`255, [], 0, \"E\", \"\"\n"
    "category Batt \"Battery\" \"Packs\"\n"
    "setting Packs 0x01 1 = num, PACKS, u8, 0`2, [], 0, \"P\", \"\"\n"
    "setting Cells1 0x02 1 = num, CELLS, u8, 1`24, [], 0, \"C\", \"\"\n"
    "setting Cells2 0x03 1 = num, CELLS, u8, 1`24, [], 0, \"C\", \"\"\n"
    "setting Lim1 0x04 2 = num, LIM, u16, 0`Cells1*42, [/10], 1, \"L\", \"V\"\n"
    "category Disp \"Display\" \"\"\n"
    "setting Flags 0x06 2 = bool, 16, {\"A\", \"B\", \"C\"}\n"
    "setting Boxes 0x08 1 = checkbool[8], {\"A\", \"B\"}, \"X\", \"\"\n"
    "setting Screen 0x09 1 = list, SCREEN, Count, Names, \"S\", \"\"\n"
    "setting Hid 0x0A 1 = num, HIDW, u8, 0`255, [], 0, \"H\", \"\", HID\n"
    "u8 Count 3\n"
    "strings Names \"a\" \"b\" \"c\"\n";

QByteArray hexLine(quint8 type, const QByteArray& data) {
    return sf::parser::Inhex32Entry::line(type, 0, data);
}

// Firmware and layout version records, the settings' bytes from address 0, end of file.
const QByteArray& fixedImage() {
    static const QByteArray image = hexLine(0xC0, "FW1") + hexLine(0xC1, "KX4-F") +
                                    hexLine(0x00, QByteArray::fromHex("07010C0A01E0000502011143")) +
                                    hexLine(0x01, QByteArray());
    return image;
}

const QByteArray& fixedLayout() {
    static const QByteArray layout = [] {
        QByteArray out;
        QString error;
        kxs::compiler::LayoutCompiler::compile(QString::fromLatin1(LAYOUT_SOURCE), &out, &error);
        return out;
    }();
    return layout;
}

QMap<QString, QByteArray> snapshot(const sf::SettingManager& manager) {
    QMap<QString, QByteArray> all;
    for (const sf::Setting* setting : manager.getSettings()) {
        all.insert(setting->getCodeName(), setting->getBytes());
    }
    return all;
}

util::VersionContainer version() {
    util::VersionContainer v;
    v.fwVersion = QStringLiteral("FW1");
    v.kxsVersion = QStringLiteral("KX4-F");
    return v;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1 || size > 64 * 1024) {
        return 0;
    }
    const QByteArray input(reinterpret_cast<const char*>(data) + 1, static_cast<int>(size - 1));
    const bool layoutMode = data[0] & 1;
    const QByteArray layout = layoutMode ? input : fixedLayout();
    QByteArray image = layoutMode ? fixedImage() : input;

    sf::SettingManager manager;
    const int result = manager.loadRawSettingsData(version(), layout, image, true);
    if (result < 0) {
        check(manager.getSettings().isEmpty() && manager.totalSize() == 0);
        return 0;
    }
    check(manager.totalSize() >= 0 && manager.maxPresets() >= 0);

    // Edit everything a little (a bounded number of settings), then take it all back.
    const QMap<QString, QByteArray> before = snapshot(manager);
    int edits = 0;
    for (sf::Setting* setting : manager.getSettings()) {
        if (++edits > 64) {
            break;
        }
        manager.getSettingData(setting->getCodeName(), sf::RoleDisplay);
        manager.setSettingData(3, setting->getCodeName());
        manager.setSettingData(true, setting->getCodeName(), 1);
        manager.expandSetting(setting->getCodeName());
    }
    const QMap<QString, QByteArray> after = snapshot(manager);
    while (manager.undoAction()) {
    }
    check(snapshot(manager) == before);
    while (manager.redoAction()) {
    }
    check(snapshot(manager) == after);

    manager.copyDataToRawSettings(false);
    if (manager.writeAppendRawSettingsData(&image, false, false, false, 0, 0xFFFFFFFFu)) {
        sf::SettingManager reloaded;
        check(reloaded.loadRawSettingsData(version(), layout, image, true) >= 0);
    }
    return 0;
}
