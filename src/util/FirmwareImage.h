#pragma once

// A firmware file as an instrument's flash and settings memory see it: the program bytes
// the bootloader writes and the settings region's bytes, by full image address. Used by
// our helper to flash firmware and by the simulated instrument to start from a firmware
// file and to recognise the firmware it was given.

#include "util/LinkProtocol.h"

#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <QStringList>

namespace util::link {

struct FirmwareImage {
    // Image bytes of program flash [programStart, programEnd): 0xFF where the file has
    // nothing (erased flash); the bootloader's own area stays 0xFF.
    QByteArray program;
    // Image bytes of the settings region; 0 where the file has nothing.
    QByteArray settings;
    bool hasSettings = false;
    bool hasProgram = false; // the file holds data in program flash
    // Notes on data that cannot be written (below program flash, in the bootloader's
    // area or beyond any memory), one text per kind, as the helper prints them.
    QStringList warnings;
    // Empty when the file was read; otherwise the helper's text for what went wrong.
    QString error;
    QString fwVersion, kxsVersion, enqString; // metadata records, when present

    // The program's real bytes (phantom addresses left out), to compare two images.
    QByteArray programRealBytes(const DeviceProfile& profile) const;
};

// Reads an Intel HEX firmware file: data, extended linear and segment addresses, start
// addresses (ignored), end of file and the metadata records. Errors: "Failed to open file!", "Byte
// conv error?!" (not hexadecimal digits), "Byte conv error on checksum?!", "Line at address  %x
// rejected" (a record cut short or of an unknown type; the text is printed as it stands, the line
// number follows), "No end of file reached?".
FirmwareImage readFirmware(QIODevice* device, const DeviceProfile& profile);
FirmwareImage readFirmware(const QString& path, const DeviceProfile& profile);

} // namespace util::link
