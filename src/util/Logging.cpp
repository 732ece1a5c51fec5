#include "util/Logging.h"

namespace util {

// Debug messages are off by default (QtInfoMsg and above are shown).
Q_LOGGING_CATEGORY(lcFile, "kx.file", QtInfoMsg)
Q_LOGGING_CATEGORY(lcDevice, "kx.device", QtInfoMsg)
Q_LOGGING_CATEGORY(lcFirmware, "kx.firmware", QtInfoMsg)
Q_LOGGING_CATEGORY(lcDownload, "kx.download", QtInfoMsg)

} // namespace util
