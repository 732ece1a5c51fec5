#pragma once

// What the helper does over an open link: settings memory read and written word by word,
// firmware flashed row by row, with the progress texts the driver reads.

#include "HelperLink.h"

#include "util/FirmwareImage.h"

#include <QByteArray>
#include <QString>

void say(const QString& text);

// The image bytes of words [first, last): real bytes read, phantom addresses 0.
bool readWords(HelperLink& link, const util::link::DeviceProfile& p, quint32 first, quint32 last,
               QByteArray* image, bool report = true);
bool writeWords(HelperLink& link, const util::link::DeviceProfile& p, quint32 first, quint32 last,
                const QByteArray& image, bool report = true);

// Whether a firmware file read for a model can be flashed: empty, or the failure text.
QString checkFirmware(const util::link::DeviceProfile& p, const util::link::FirmwareImage& image);
// Erases the program flash, writes and verifies the firmware's rows and settings region;
// an empty text on success, otherwise the failure text to print.
QString flashFirmware(HelperLink& link, const util::link::DeviceProfile& p,
                      const util::link::FirmwareImage& image);
