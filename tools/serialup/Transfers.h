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
// Writes words [first, last) whole (the firmware's settings region).
bool writeWords(HelperLink& link, const util::link::DeviceProfile& p, quint32 first, quint32 last,
                const QByteArray& image);

// Writes only the real bytes the file holds (`held`, as regionFromImage gives it) among words
// [first, last): runs of words that hold any, a run with words only partly held read first so
// that the instrument's other bytes stay. `verifyHeld` reads those runs back and compares the
// held bytes; false in *same on a difference. Both return false when the line fails.
bool writeHeld(HelperLink& link, const util::link::DeviceProfile& p, quint32 first, quint32 last,
               const QByteArray& image, const QByteArray& held);
bool verifyHeld(HelperLink& link, const util::link::DeviceProfile& p, quint32 first, quint32 last,
                const QByteArray& image, const QByteArray& held, bool* same);

// Whether a firmware file read for a model can be flashed: empty, or the failure text.
QString checkFirmware(const util::link::DeviceProfile& p, const util::link::FirmwareImage& image);
// Erases the program flash, writes and verifies the firmware's rows and settings region;
// an empty text on success, otherwise the failure text to print.
QString flashFirmware(HelperLink& link, const util::link::DeviceProfile& p,
                      const util::link::FirmwareImage& image);
