#pragma once
// Firmware archives from the download server (docs/firmware-server.md): the server's
// list, the checks an archive must pass before anything of it reaches the data folder,
// its installation, the download history, and removing all firmware.
#include <QList>
#include <QString>
#include <QStringList>

class QIODevice;

namespace firmware {

struct IndexEntry {
    QString version;
    QString archive; // file name, relative to the server's base address
    QString sha256;  // lower-case hexadecimal
    qint64 size = -1;
};

// Parses the server's index.json. False with *error in plain words when it is not the
// list we expect.
bool parseIndex(const QByteArray& json, QList<IndexEntry>* entries, QString* error);

// An archive name the server may name: a plain file name ending in ".zip".
bool isPlainArchiveName(const QString& name);

// Checks every entry of a zip archive without extracting anything: only files and
// folders below firmware/, kxs/ or help/, relative, without "..", no links. *files gets
// the files' names. False with *error naming the first entry refused, or saying the
// archive is damaged.
bool checkArchive(QIODevice* zip, QStringList* files, QString* error);

// Installs a checked archive into dataDir: extracts it into a staging folder inside
// dataDir, checks that each firmware file reads as a catalogue version whose layout is
// there (in the archive or already in the data folder), then moves the files into place.
// On failure the data folder is left exactly as it was. *installed gets the paths
// installed, relative to dataDir.
bool installArchive(QIODevice* zip, const QString& dataDir, QStringList* installed, QString* error);

// The archives installed so far, one name per line of the history file.
QStringList readHistory(const QString& path);
bool appendHistory(const QString& path, const QString& archive, QString* error);

// Deletes every file below the firmware, layout and help folders (the folders stay) and
// the download history. The number of files deleted.
int removeAllFirmware(const QString& firmwareDir, const QString& kxsDir, const QString& helpDir,
                      const QString& history);

} // namespace firmware
