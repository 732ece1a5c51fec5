#include "DataHome.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QSaveFile>

namespace launcher {

namespace {

// What the folder was last seeded with: relative path -> SHA-1 of the installed file.
const char* const SEEDED = ".seeded";
const char* const HELPER = "data/serialup.exe";

using Manifest = QMap<QString, QByteArray>;

QByteArray digestOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return QByteArray();
    }
    QCryptographicHash hash(QCryptographicHash::Sha1);
    hash.addData(&file);
    return hash.result().toHex();
}

Manifest installedManifest(const QString& installedData) {
    Manifest manifest;
    const QDir root(installedData);
    QDirIterator it(installedData, QDir::Files | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        const QString relative = QStringLiteral("data/") + root.relativeFilePath(path);
        if (relative != QLatin1String(HELPER)) {
            manifest.insert(relative, digestOf(path));
        }
    }
    return manifest;
}

Manifest readManifest(const QString& path) {
    Manifest manifest;
    QFile file(path);
    if (file.open(QIODevice::ReadOnly)) {
        while (!file.atEnd()) {
            const QByteArray line = file.readLine().trimmed();
            const int tab = line.indexOf('\t');
            if (tab > 0) {
                manifest.insert(QString::fromUtf8(line.mid(tab + 1)), line.left(tab));
            }
        }
    }
    return manifest;
}

bool writeManifest(const QString& path, const Manifest& manifest) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    for (auto it = manifest.constBegin(); it != manifest.constEnd(); ++it) {
        file.write(it.value() + '\t' + it.key().toUtf8() + '\n');
    }
    return file.commit();
}

bool copyOver(const QString& from, const QString& to) {
    QFile source(from);
    QSaveFile target(to);
    if (!QDir().mkpath(QFileInfo(to).absolutePath()) || !source.open(QIODevice::ReadOnly) ||
        !target.open(QIODevice::WriteOnly)) {
        return false;
    }
    target.write(source.readAll());
    return target.commit();
}

bool linkHelper(const QString& home, const QString& helper) {
    const QString link = QDir(home).filePath(QLatin1String(HELPER));
    const QFileInfo info(link);
    if (info.isSymLink() && info.symLinkTarget() == QFileInfo(helper).absoluteFilePath()) {
        return true;
    }
    if (info.exists() && !info.isSymLink()) {
        return true; // a helper of the user's own stays
    }
    QFile::remove(link);
    return QFile::link(helper, link);
}

} // namespace

QString dataHome(const QProcessEnvironment& env) {
    const QString xdg = env.value(QStringLiteral("XDG_DATA_HOME"));
    const QString base = QDir::isAbsolutePath(xdg)
                             ? xdg
                             : env.value(QStringLiteral("HOME")) + QStringLiteral("/.local/share");
    return QDir::cleanPath(base + QStringLiteral("/kxsetup"));
}

SeedResult seedDataHome(const QString& installedData, const QString& home, const QString& helper) {
    SeedResult result;
    const QDir dir(home);
    if (!QFileInfo(installedData).isDir()) {
        result.error =
            QStringLiteral("The installed data folder %1 is missing.").arg(installedData);
        return result;
    }
    if (!QDir().mkpath(dir.filePath(QStringLiteral("setups/backups"))) ||
        !QDir().mkpath(dir.filePath(QStringLiteral("data/firmware")))) {
        result.error = QStringLiteral("Cannot create the data folder %1.").arg(home);
        return result;
    }
    const Manifest installed = installedManifest(installedData);
    const QString seededPath = dir.filePath(QLatin1String(SEEDED));
    const bool firstStart = !QFileInfo::exists(seededPath);
    const Manifest seeded = readManifest(seededPath);
    if (firstStart || seeded != installed) {
        for (auto it = installed.constBegin(); it != installed.constEnd(); ++it) {
            const QString target = dir.filePath(it.key());
            const bool present = QFileInfo::exists(target);
            const bool untouched =
                present && seeded.contains(it.key()) && digestOf(target) == seeded.value(it.key());
            const bool wanted = present ? untouched : firstStart || !seeded.contains(it.key());
            if (!wanted || (present && digestOf(target) == it.value())) {
                if (present) {
                    result.kept << it.key();
                }
                continue;
            }
            if (!copyOver(QDir(installedData).filePath(it.key().mid(5)), target)) {
                result.error = QStringLiteral("Cannot write %1.").arg(target);
                return result;
            }
            result.copied << it.key();
        }
        if (!writeManifest(seededPath, installed)) {
            result.error = QStringLiteral("Cannot write %1.").arg(seededPath);
            return result;
        }
    }
    if (!linkHelper(home, helper)) {
        result.error = QStringLiteral("Cannot link the helper program into %1.").arg(home);
        return result;
    }
    result.ok = true;
    return result;
}

} // namespace launcher
