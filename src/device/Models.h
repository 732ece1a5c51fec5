#pragma once
// Which instrument model a firmware version is for, so that firmware for one model is
// never put on another: the model is named by the layout version ("KX3-3.20" is for the
// Korvex KX3) and must also have the same processor kind; an instrument's bootloader
// names its model by the identifier it reports (device.txt).
#include "util/VersionContainer.h"

#include <QString>

namespace device {

// "Korvex KX3" for a version whose layout version is "KX3-..."; empty for no version.
QString modelOf(const util::VersionContainer& version);
// The model of a bootloader identifier ("KX3A": "Korvex KX3") from the device file of the
// data folder; empty when it lists none.
QString modelOfIdentifier(const QString& identifier);
// Whether the two versions are for the same model (the same name and processor kind).
bool sameModel(const util::VersionContainer& a, const util::VersionContainer& b);

} // namespace device
