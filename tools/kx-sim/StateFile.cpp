#include "StateFile.h"

#include "util/FirmwareImage.h"

#include <QDirIterator>
#include <QFileInfo>

using namespace util::link;

StartState loadStart(const QString& firmware, const QString& state, const DeviceProfile& profile) {
    const bool fromState = !state.isEmpty() && QFileInfo::exists(state);
    const FirmwareImage start = readFirmware(fromState ? state : firmware, profile);
    StartState s;
    if (!start.error.isEmpty()) {
        s.error = QStringLiteral("%1: not a firmware file (%2)")
                      .arg(fromState ? state : firmware, start.error);
        return s;
    }
    s.settings = start.settings;
    s.program = start.program;
    s.identity = Identity{start.fwVersion, start.kxsVersion, start.enqString};
    if (fromState && start.hasProgram) {
        s.runnable = !start.enqString.isEmpty();
    } else if (fromState) { // an older state file: the settings only
        const FirmwareImage original = readFirmware(firmware, profile);
        if (!original.error.isEmpty()) {
            s.error = QStringLiteral("%1: not a firmware file (%2)").arg(firmware, original.error);
        }
        s.program = original.program;
    }
    return s;
}

bool writeState(const QString& path, const DeviceProfile& profile, const Instrument& instrument) {
    QList<ImageBlock> blocks;
    const QByteArray& program = instrument.program();
    for (int i = 0; i < program.size(); i += 16) {
        const QByteArray line = program.mid(i, 16);
        const bool erased =
            line.count(char(0xFF)) + line.count('\0') == line.size() && line.count(char(0xFF)) > 0;
        if (erased && i + 16 < program.size()) {
            continue;
        }
        if (!blocks.isEmpty() && blocks.last().from + quint64(blocks.last().bytes.size()) ==
                                     profile.programStart + quint64(i)) {
            blocks.last().bytes += line;
        } else {
            blocks << ImageBlock{profile.programStart + quint64(i), line};
        }
    }
    blocks << ImageBlock{profile.imageAddress(profile.settingsStart), instrument.memory()};
    const Identity& id = instrument.identity();
    return writeImage(path, blocks, id.fw, id.kxs, instrument.runnable() ? id.enq : QString());
}

bool recognise(const QString& firmware, const QString& folder, const DeviceProfile& profile,
               const QByteArray& program, Identity* identity) {
    FirmwareImage flashed;
    flashed.program = program;
    const QByteArray real = flashed.programRealBytes(profile);
    QStringList candidates{firmware};
    QDirIterator it(folder, {QStringLiteral("*.kxhex")}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        candidates << it.next();
    }
    for (const QString& path : candidates) {
        const FirmwareImage candidate = readFirmware(path, profile);
        if (candidate.error.isEmpty() && candidate.programRealBytes(profile) == real) {
            *identity = Identity{candidate.fwVersion, candidate.kxsVersion, candidate.enqString};
            return true;
        }
    }
    return false;
}
