#pragma once

#include "support/TestSupport.h"

// Fixtures for the version reader, the catalogue and the versions command: firmware
// files written as Intel HEX text and small layout files, in temporary data folders.

#include <QByteArray>
#include <QString>

namespace versionfixtures {

using testsupport::writeFile;

// A firmware file: the metadata records 0xC0 (firmware), 0xC1 (layout) and 0xC2 (ENQ),
// each only when its text is non-empty, then a few data records and the end record.
QByteArray firmwareImage(const QString& fwVersion, const QString& kxsVersion,
                         const QString& enqString);

// A small valid layout file (a category and two settings) with this header version and
// format number.
QByteArray layoutFile(const QString& kxsVersion, quint16 format = 1000);

// Puts a firmware file at <root>/data/firmware/<relativePath> and, unless layoutFormat
// is 0, the layout <root>/data/kxs/<kxsVersion>.kxs next to it.
bool addVersion(const QString& root, const QString& relativePath, const QString& fwVersion,
                const QString& kxsVersion, const QString& enqString, quint16 layoutFormat = 1000);

} // namespace versionfixtures
