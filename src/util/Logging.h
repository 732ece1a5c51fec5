#pragma once

// The program's diagnostics, one logging category per area. Their debug messages are off
// unless QT_LOGGING_RULES turns them on ("kx.device.debug=true", or "kx.*.debug=true"
// for all); warnings are always shown.

#include <QLoggingCategory>

namespace util {

Q_DECLARE_LOGGING_CATEGORY(lcFile)     // kx.file: opening and saving setup files
Q_DECLARE_LOGGING_CATEGORY(lcDevice)   // kx.device: the serial link and the helper program
Q_DECLARE_LOGGING_CATEGORY(lcFirmware) // kx.firmware: flashing and moving settings
Q_DECLARE_LOGGING_CATEGORY(lcDownload) // kx.download: firmware downloads

} // namespace util
