#pragma once

// The simulated instrument's memory between runs: its state file, and the firmware files
// it recognises in its flash.
//
// A state file is a setup image (Intel HEX, so `kxsetup-cli get STATE NAME` reads it):
// - the firmware version and layout version of the firmware the instrument last ran, whose
//   layout its settings have, and the identification (ENQ) text only while it runs that
//   firmware: none when it has no runnable firmware (it answers only its bootloader);
// - program flash: every 16-byte line that is not erased, and always the last line (whose
//   16-bit addresses no settings region shares), so that a state file without program data
//   is one of the older ones that kept only the settings (those run their firmware file's
//   program);
// - the settings region.

#include "Instrument.h"

#include "util/LinkProtocol.h"

#include <QByteArray>
#include <QString>

// What the instrument starts with; `error` tells why a file could not be read.
struct StartState {
    QByteArray settings, program;
    Identity identity;
    bool runnable = true;
    QString error;
};

// From the state file when it exists, otherwise from the firmware file.
StartState loadStart(const QString& firmware, const QString& state,
                     const util::link::DeviceProfile& profile);
bool writeState(const QString& path, const util::link::DeviceProfile& profile,
                const Instrument& instrument);

// The firmware file among `firmware` and the *.kxhex files under `folder` whose program
// bytes these are; false when there is none.
bool recognise(const QString& firmware, const QString& folder,
               const util::link::DeviceProfile& profile, const QByteArray& program,
               Identity* identity);
