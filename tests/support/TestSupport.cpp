#include "support/TestSupport.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace testsupport {

bool writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return QDir().mkpath(QFileInfo(path).absolutePath()) && file.open(QIODevice::WriteOnly) &&
           file.write(bytes) == bytes.size();
}

QByteArray readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

QString expectedText(const QString& name, const QString& seen) {
    const QString path = sourceDir() + QStringLiteral("/tests/data/") + name;
    if (qEnvironmentVariableIsSet("KX_UPDATE_TRANSCRIPTS")) {
        writeFile(path, seen.toUtf8());
    }
    return QString::fromUtf8(readFile(path));
}

QString copyDataFolder(const QString& to) {
    const QDir from(runtimeDir() + QStringLiteral("/data"));
    QDirIterator it(from.path(), QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString source = it.next();
        const QString relative = from.relativeFilePath(source);
        if (relative.startsWith("CMakeFiles") || relative.endsWith(".cmake") ||
            relative.endsWith(".log") || relative == "temp.hex") {
            continue;
        }
        QDir().mkpath(QFileInfo(to + "/data/" + relative).absolutePath());
        QFile::copy(source, to + "/data/" + relative);
    }
    return to + "/data";
}

} // namespace testsupport
