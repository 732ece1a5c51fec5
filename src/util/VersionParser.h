#pragma once

#include "util/VersionContainer.h"

#include <QDir>
#include <QObject>
#include <QString>

namespace util {

// Reads a firmware ("map") file's three metadata records into a VersionContainer and
// checks that the layout file it names exists in the layout folder and carries the same
// version. Holds no state between calls.
//
// Every failure is reported through showError (the firmware file cannot be opened, is
// empty or names no layout) or showWarning (the layout file is missing, unreadable,
// carries no version or another version) and ends in an empty container.
class VersionParser : public QObject {
    Q_OBJECT
public:
    explicit VersionParser(QObject* parent = nullptr);

    // fileName: the firmware file's name (as found); mapDir: the folder that holds it;
    // kxsDir: the layout folder. Messages name fileName as given.
    VersionContainer parseFirmwareFile(const QString& fileName, const QDir& mapDir,
                                       const QDir& kxsDir);

signals:
    void showError(const QString& message);
    void showWarning(const QString& message);
};

} // namespace util
