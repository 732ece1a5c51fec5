#pragma once
// The image flashed in a firmware update: the firmware file (its program and its
// metadata) with the settings region holding other settings.
#include <QString>

namespace firmware {

// Writes to out the firmware file with the data of settingsImage (a setup image, whose
// settings lie at their 16-bit layout addresses) placed in the firmware's settings
// region: each byte goes to the address of the firmware's data whose low 16 bits are
// the byte's address. False with *error when a file cannot be read or written, or a
// settings byte has no place in the firmware's data.
bool buildFlashImage(const QString& firmware, const QString& settingsImage, const QString& out,
                     QString* error);

} // namespace firmware
