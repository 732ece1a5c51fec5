#pragma once
// Every question a device workflow puts to the person in front of it, as one small
// interface: the window answers through its dialogs, the command line through its flags
// and defaults, a test through a script. A workflow asks nothing any other way.
#include "util/VersionContainer.h"

#include <QString>
#include <QStringList>

namespace firmware {
struct Migration;
}

namespace device {

class Decisions {
public:
    virtual ~Decisions() = default;

    // Whether the person stopped the operation (the progress dialog's Cancel).
    virtual bool cancelled() { return false; }

    // ---- writing settings
    // The last word before anything is sent to the instrument.
    virtual bool confirmWrite() = 0;
    // The instrument did not answer the version query before a write.
    enum class NoVersion { Retry, Ignore, Cancel };
    virtual NoVersion noVersionBeforeWrite() = 0;
    // The instrument runs a version the catalogue does not know: write anyway?
    virtual bool writeToUnknownFirmware(const QString& instrumentVersion,
                                        const QString& fileVersion) = 0;

    // ---- reading settings
    // The version to open settings read from the instrument with, when the catalogue does
    // not know what it answered (enq empty: it answered nothing); empty to give up.
    virtual util::VersionContainer chooseReadVersion(const QString& enq) = 0;

    // ---- updating firmware
    // Where to keep the settings before the update (proposed: the usual backup path);
    // empty for no backup.
    virtual QString backupPath(const QString& proposed) = 0;
    // Whether to go on with what happens to every setting (from and to: the versions as
    // shown).
    virtual bool acceptMigration(const firmware::Migration& migration, const QString& from,
                                 const QString& to) = 0;
    // The instrument holds no runnable firmware, only its bootloader answers. The settings
    // to finish the update with: one of the backups (newest first), or an empty text for
    // the new firmware's defaults. False to leave the instrument as it is.
    virtual bool recoverWith(const QStringList& backups, QString* settings) = 0;
};

} // namespace device
