#include "firmware/FirmwareArchive.h"

#include "util/VersionParser.h"

#include <JlCompress.h>
#include <quazip.h>
#include <quazipfileinfo.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QStorageInfo>
#include <QTemporaryDir>

namespace firmware {

namespace {

const QStringList TOP_FOLDERS{QStringLiteral("firmware"), QStringLiteral("kxs"),
                              QStringLiteral("help")};

// Unix file type bits of a zip entry made on Unix; a link is 0120000.
bool isLink(const QuaZipFileInfo64& info) {
    const quint32 mode = info.externalAttr >> 16;
    return (mode & 0170000) == 0120000;
}

QString entryProblem(const QString& name) {
    if (name.isEmpty() || name.startsWith(QLatin1Char('/')) || name.startsWith(QLatin1Char('\\')) ||
        (name.size() > 1 && name.at(1) == QLatin1Char(':'))) {
        return QStringLiteral("\"%1\" has an absolute path").arg(name);
    }
    const QStringList parts =
        name.split(QRegularExpression(QStringLiteral("[/\\\\]")), Qt::SkipEmptyParts);
    if (parts.contains(QStringLiteral(".."))) {
        return QStringLiteral("\"%1\" points outside the data folder").arg(name);
    }
    if (parts.isEmpty() || !TOP_FOLDERS.contains(parts.first()) ||
        (parts.size() == 1 && !name.endsWith(QLatin1Char('/')))) {
        return QStringLiteral("\"%1\" is not below firmware/, kxs/ or help/").arg(name);
    }
    return QString();
}

bool moveInto(const QString& from, const QString& to) {
    QDir().mkpath(QFileInfo(to).absolutePath());
    if (QFile::exists(to) && !QFile::remove(to)) {
        return false;
    }
    return QFile::rename(from, to);
}

} // namespace

bool isPlainArchiveName(const QString& name) {
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z0-9._+-]+\\.zip$"));
    return plain.match(name).hasMatch() && !name.startsWith(QLatin1Char('.'));
}

bool parseIndex(const QByteArray& json, QList<IndexEntry>* entries, QString* error) {
    QJsonParseError parse{};
    const QJsonDocument doc = QJsonDocument::fromJson(json, &parse);
    const QJsonValue list = doc.object().value(QStringLiteral("firmware"));
    if (parse.error != QJsonParseError::NoError || !doc.isObject() || !list.isArray()) {
        *error = QStringLiteral("the firmware list from the server is damaged");
        return false;
    }
    entries->clear();
    for (const QJsonValue& v : list.toArray()) {
        const QJsonObject o = v.toObject();
        IndexEntry e{o.value(QStringLiteral("version")).toString(),
                     o.value(QStringLiteral("archive")).toString(),
                     o.value(QStringLiteral("sha256")).toString().toLower(),
                     static_cast<qint64>(o.value(QStringLiteral("size")).toDouble(-1))};
        if (e.version.isEmpty() || !isPlainArchiveName(e.archive) || e.sha256.size() != 64 ||
            e.size < 0) {
            *error = QStringLiteral("the firmware list from the server is damaged");
            return false;
        }
        entries->append(e);
    }
    return true;
}

bool checkArchive(QIODevice* zip, QStringList* files, QString* error) {
    QuaZip archive(zip);
    if (!archive.open(QuaZip::mdUnzip)) {
        *error = QStringLiteral("the archive is damaged");
        return false;
    }
    const QList<QuaZipFileInfo64> infos = archive.getFileInfoList64();
    if (archive.getZipError() != UNZ_OK || (infos.isEmpty() && archive.getEntriesCount() != 0)) {
        *error = QStringLiteral("the archive is damaged");
        archive.close();
        return false;
    }
    files->clear();
    for (const QuaZipFileInfo64& info : infos) {
        QString problem = entryProblem(info.name);
        if (problem.isEmpty() && isLink(info)) {
            problem = QStringLiteral("\"%1\" is a link").arg(info.name);
        }
        if (!problem.isEmpty()) {
            *error = QStringLiteral("the archive is unsafe: %1").arg(problem);
            archive.close();
            return false;
        }
        if (!info.name.endsWith(QLatin1Char('/'))) {
            files->append(info.name);
        }
    }
    archive.close();
    return true;
}

bool installArchive(QIODevice* zip, const QString& dataDir, QStringList* installed,
                    QString* error) {
    QStringList files;
    if (!checkArchive(zip, &files, error)) {
        return false;
    }
    QTemporaryDir staging(QDir(dataDir).filePath(QStringLiteral(".staging-XXXXXX")));
    if (!staging.isValid()) {
        *error = QStringLiteral("the data folder cannot be written");
        return false;
    }
    if (!zip->isOpen()) {
        zip->open(QIODevice::ReadOnly); // the check closes it
    }
    zip->seek(0);
    const QStringList extracted = JlCompress::extractDir(zip, staging.path());
    if (extracted.size() < files.size()) {
        const QStorageInfo disk(dataDir);
        *error = disk.bytesAvailable() < 1024 * 1024 ? QStringLiteral("the disk is full")
                                                     : QStringLiteral("the archive is damaged");
        return false;
    }
    // Every firmware file must read as a version whose layout is known.
    util::VersionParser parser;
    const QDir stagedKxs(staging.filePath(QStringLiteral("kxs")));
    for (const QString& name : files) {
        if (!name.startsWith(QLatin1String("firmware/")) ||
            !name.endsWith(QLatin1String(".kxhex"))) {
            continue;
        }
        const QFileInfo file(staging.filePath(name));
        const QDir kxs =
            stagedKxs.exists() ? stagedKxs : QDir(QDir(dataDir).filePath(QStringLiteral("kxs")));
        util::VersionContainer v =
            parser.parseFirmwareFile(file.fileName(), file.absoluteDir(), kxs);
        if (v.kxsVersion.isEmpty() && stagedKxs.exists()) {
            v = parser.parseFirmwareFile(file.fileName(), file.absoluteDir(),
                                         QDir(QDir(dataDir).filePath(QStringLiteral("kxs"))));
        }
        if (v.kxsVersion.isEmpty()) {
            *error = QStringLiteral("the firmware file %1 does not read as a version with its "
                                    "settings layout")
                         .arg(name);
            return false;
        }
    }
    // Into place: a failure part way takes back what was moved.
    QStringList moved;
    QStringList backups;
    for (const QString& name : files) {
        const QString target = QDir(dataDir).filePath(name);
        const QString backup = staging.filePath(QStringLiteral(".old/") + name);
        if (QFile::exists(target) && !moveInto(target, backup)) {
            *error = QStringLiteral("%1 cannot be replaced").arg(name);
            break;
        }
        if (QFile::exists(backup)) {
            backups << name;
        }
        if (!moveInto(staging.filePath(name), target)) {
            *error = QStringLiteral("%1 cannot be written").arg(name);
            break;
        }
        moved << name;
    }
    if (moved.size() != files.size()) {
        for (const QString& name : moved) {
            QFile::remove(QDir(dataDir).filePath(name));
        }
        for (const QString& name : backups) {
            moveInto(staging.filePath(QStringLiteral(".old/") + name),
                     QDir(dataDir).filePath(name));
        }
        return false;
    }
    *installed = files;
    return true;
}

QStringList readHistory(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return {};
    }
    QStringList names;
    for (const QByteArray& line : file.readAll().split('\n')) {
        const QString name = QString::fromUtf8(line).trimmed();
        if (!name.isEmpty()) {
            names << name;
        }
    }
    return names;
}

bool appendHistory(const QString& path, const QString& archive, QString* error) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text) ||
        file.write(archive.toUtf8() + '\n') < 0) {
        *error = QStringLiteral("the download history %1 cannot be written").arg(path);
        return false;
    }
    return true;
}

int removeAllFirmware(const QString& firmwareDir, const QString& kxsDir, const QString& helpDir,
                      const QString& history) {
    int removed = 0;
    for (const QString& folder : {firmwareDir, kxsDir, helpDir}) {
        QDirIterator it(folder, QDir::Files | QDir::Hidden | QDir::System,
                        QDirIterator::Subdirectories);
        while (it.hasNext()) {
            removed += QFile::remove(it.next()) ? 1 : 0;
        }
    }
    QFile::remove(history);
    return removed;
}

} // namespace firmware
