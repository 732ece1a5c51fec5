#pragma once
// The per-user data folder of an installed KX Setup Utility. The application resolves every
// path against its working directory, so an installation gives each user a writable folder
// (data/ and setups/) seeded from the read-only installed data:
//
// - on the first start every installed file is copied;
// - when the installed data changed since the last seeding (a new package), a file the user
//   still has unchanged from the last seeding is replaced, a file new to the installation is
//   added, and everything else stays: setups, downloaded or replaced firmware, and files the
//   user deleted (removing all firmware is not undone by the next start);
// - data/serialup.exe is a link to the installed helper program.
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace launcher {

struct SeedResult {
    bool ok = false;
    QString error;      // why the folder could not be prepared, for the user
    QStringList copied; // paths relative to the folder that were written
    QStringList kept;   // installed files left as the user has them
};

// $XDG_DATA_HOME/kxsetup, or ~/.local/share/kxsetup when XDG_DATA_HOME is unset or not
// absolute.
QString dataHome(const QProcessEnvironment& env);

// Prepares `home` from `installedData` (the installed data/ folder) and links
// data/serialup.exe to `helper`.
SeedResult seedDataHome(const QString& installedData, const QString& home, const QString& helper);

} // namespace launcher
