#pragma once

// Shared helpers for the test programs. Each helper lives in its own file under
// tests/support/ and is declared here.

#include <QByteArray>
#include <QString>

namespace testsupport {

// Folder of the built command-line tools (kxsetup-cli, kxs-compile, ...).
inline QString toolPath(const QString& name) {
    return QStringLiteral(KX_TOOLS_DIR) + QLatin1Char('/') + name;
}

// Folder that holds the runtime data/ folder built from the sample data sources.
inline QString runtimeDir() {
    return QStringLiteral(KX_BINARY_DIR);
}

inline QString sourceDir() {
    return QStringLiteral(KX_SOURCE_DIR);
}

// A copy of the runtime data folder into root/data, without the build's own files, logs and
// the application's scratch image; the new folder's path.
QString copyDataFolder(const QString& root);

// Writes the file, making its folders; false when that fails.
bool writeFile(const QString& path, const QByteArray& bytes);
// The file's bytes, or "<unreadable>" (which no test file holds).
QByteArray readFile(const QString& path);
// The expected text kept in tests/data/NAME, for a QCOMPARE with what a test saw; with
// KX_UPDATE_TRANSCRIPTS=1 the file is written with the seen text instead.
QString expectedText(const QString& name, const QString& seen);

} // namespace testsupport
