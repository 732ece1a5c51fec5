// Fuzzes the firmware update's handling of what it does not control: arbitrary chunks of
// the helper's output through the flashing driver's reading of it, and settings carried
// between arbitrary layouts (the instrument's old layout or the new firmware's) and
// arbitrary images, with the conversions and the preview. Nothing may crash, hang or read
// outside its bytes; every setting of the new layout is accounted for exactly once.
//
// Input: the first byte picks the mode. 0: the rest is helper output. 1: the rest is
// the old layout. 2: the rest is the new layout. 3: the rest is the old image.

#include "firmware/Bootloader.h"
#include "firmware/Migration.h"
#include "kxs/compiler/LayoutCompiler.h"
#include "sf/RawSetting.h"
#include "sf/Setting.h"
#include "sf/SettingManager.h"
#include "sf/SettingText.h"
#include "sf/parser/Inhex32Entry.h"

#include <QCoreApplication>
#include <QDir>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

void check(bool condition) {
    if (!condition) {
        std::abort();
    }
}

const char* const OLD_SOURCE =
    "version \"KX3-O\"\n"
    "category Batt \"Battery\" \"\"\n"
    "setting ChemA 0x00 1 = list, \"CellChem@30001\", Count, Chems, \"C\", \"\"\n"
    "setting CellsA 0x01 1 = num, \"CellCnt@30001\", u8, 1`36, [], 0, \"N\", \"cells\"\n"
    "setting AhA 0x02 4 = num, \"LifeAh@30001\", u32, 0`4000000000, [/100], 2, \"A\", \"Ah\"\n"
    "setting ChemB 0x06 1 = list, \"CellChem@30001.B\", Count, Chems, \"C\", \"\"\n"
    "setting CellsB 0x07 1 = num, \"CellCnt@30001.B\", u8, 1`36, [], 0, \"N\", \"cells\"\n"
    "setting AhB 0x08 4 = num, \"LifeAh@30001.B\", u32, 0`4000000000, [/100], 2, \"A\", \"Ah\"\n"
    "setting Flags 0x0C 2 = bool, 16, {\"Alarm\", \"Lights\", \"Horn\"}\n"
    "setting Old 0x0E 1 = num, \"Old@1\", u8, 0`255, [], 0, \"O\", \"\"\n"
    "u8 Count 4\n"
    "strings Chems \"LiPo\" \"LiFe\" \"NiMH\" \"Odd\"\n";

const char* const NEW_SOURCE =
    "version \"KX3-N\"\n"
    "category Batt \"Battery\" \"\"\n"
    "setting CellsA 0x00 1 = num, \"CellCnt@30001\", u8, 1`36, [], 0, \"N\", \"cells\"\n"
    "setting WhA 0x01 4 = num, \"LifeWh@31011\", u32, 0`4000000000, [/10], 1, \"E\", \"Wh\"\n"
    "setting WhB 0x05 4 = num, \"LifeWh@31011.B\", u32, 0`4000000000, [/10], 1, \"E\", \"Wh\"\n"
    "setting Flags2 0x09 1 = bool, 8, {\"Horn\", \"Alarm\", \"New\"}\n"
    "setting Fresh 0x0A 1 = num, \"Fresh@2\", u8, 0`255, [], 0, \"F\", \"\"\n";

QByteArray compiled(const char* source) {
    QByteArray out;
    QString error;
    kxs::compiler::LayoutCompiler::compile(QString::fromLatin1(source), &out, &error);
    return out;
}

QByteArray image(const char* fw, const char* kxs, const QByteArray& data) {
    using sf::parser::Inhex32Entry;
    return Inhex32Entry::line(0xC0, 0, fw) + Inhex32Entry::line(0xC1, 0, kxs) +
           Inhex32Entry::line(0x00, 0, data) + Inhex32Entry::line(0x01, 0, QByteArray());
}

util::VersionContainer version(const char* fw, const char* kxs) {
    util::VersionContainer v;
    v.fwVersion = QString::fromLatin1(fw);
    v.kxsVersion = QString::fromLatin1(kxs);
    return v;
}

firmware::bootloader& driver() {
    static int argc = 1;
    static char name[] = "fuzz_firmware";
    static char* argv[] = {name, nullptr};
    static QCoreApplication app(argc, argv);
    static bool moved = QDir::setCurrent(QDir::tempPath());
    (void)moved;
    static firmware::bootloader instance;
    return instance;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1 || size > 64 * 1024) {
        return 0;
    }
    const QByteArray input(reinterpret_cast<const char*>(data) + 1, static_cast<int>(size - 1));
    const int mode = data[0] % 4;
    if (mode == 0) {
        driver().interpret(QString::fromLatin1(input));
        return 0;
    }
    static const QByteArray oldLayout = compiled(OLD_SOURCE);
    static const QByteArray newLayout = compiled(NEW_SOURCE);
    static const QByteArray oldBytes = QByteArray::fromHex("0005102700000109E80300000300112A");
    sf::SettingManager old;
    sf::SettingManager target;
    const QByteArray oldImage = image("O1", "KX3-O", mode == 3 ? input.left(255) : oldBytes);
    if (old.loadRawSettingsData(version("O1", "KX3-O"), mode == 1 ? input : oldLayout, oldImage,
                                true) < 0 ||
        target.loadRawSettingsData(version("N1", "KX3-N"), mode == 2 ? input : newLayout,
                                   image("N1", "KX3-N", QByteArray(16, '\0')), true) < 0) {
        return 0;
    }
    const firmware::Migration m = firmware::migrateSettings(old, target);
    // Every bit and every setting with a help identifier is kept, converted or reset.
    int accounted = 0;
    for (const sf::RawSetting* raw : target.getRawSettings()) {
        const sf::Setting* s = target.getSetting(raw->getCodeName());
        if (s) {
            const bool bits = s->getType() == sf::TypeBool || s->getType() == sf::TypeCheckBool;
            accounted += bits ? static_cast<int>(sf::bitLabelTexts(s).size())
                              : (s->helpIdentifier().isEmpty() ? 0 : 1);
        }
    }
    check(m.report.kept.size() + m.report.converted.size() + m.report.defaults.size() == accounted);
    firmware::mergeMessage(m.missing, QStringLiteral("O1"), QStringLiteral("N1"));
    return 0;
}
