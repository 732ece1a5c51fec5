#include "util/VersionParser.h"

#include "app/Constants.h"
#include "kxs/parser/KxsParser.h"
#include "sf/parser/HexParser.h"

#include <QFile>
#include <QFileInfo>

namespace util {

VersionParser::VersionParser(QObject* parent) : QObject(parent) {}

VersionContainer VersionParser::parseFirmwareFile(const QString& fileName, const QDir& mapDir,
                                                  const QDir& kxsDir) {
    const QString mapPath = mapDir.absoluteFilePath(fileName);

    QFile map(mapPath);
    if (!map.open(QIODevice::ReadOnly)) {
        emit showError(ui::ERROR_CANT_OPEN_FW.arg(fileName));
        return VersionContainer();
    }
    if (map.atEnd()) {
        map.close();
        emit showError(ui::ERROR_INVALID_FW.arg(fileName));
        return VersionContainer();
    }
    const QString fwVersion = sf::parser::HexParser::getFwVersion(mapPath);
    const QString kxsVersion = sf::parser::HexParser::getKxsVersion(mapPath);
    const QString enqString = sf::parser::HexParser::getEnqString(mapPath);
    map.close();

    if (kxsVersion.isEmpty()) {
        emit showError(ui::ERROR_INVALID_FW.arg(fileName));
        return VersionContainer();
    }

    const QString kxsPath = kxsDir.absoluteFilePath(kxsVersion + ui::STRING_ONLY_KXS);
    if (!QFileInfo::exists(kxsPath)) {
        emit showWarning(ui::ERROR_MAP_MISSING_FILE.arg(fileName, kxsPath));
        return VersionContainer();
    }

    kxs::parser::KxsParser layout;
    if (!layout.openKxsFile(kxsPath)) {
        emit showWarning(ui::ERROR_INVALID_KXS_SPECIFIC.arg(kxsPath));
        return VersionContainer();
    }
    const QString storedVersion = layout.getKxsVersion();
    if (storedVersion.isEmpty()) {
        emit showWarning(ui::ERROR_INVALID_KXS_SPECIFIC.arg(kxsPath));
        return VersionContainer();
    }
    const quint32 format = layout.getKxsFormat();
    // Case matters: the layout version is also the layout file's name.
    if (storedVersion != kxsVersion) {
        emit showWarning(ui::ERROR_KXS_VER_MISMATCH.arg(kxsPath, storedVersion, kxsVersion));
        return VersionContainer();
    }

    VersionContainer version;
    version.kxsVersion = kxsVersion;
    version.fwVersion = fwVersion;
    version.enqString = enqString;
    version.kxsFilePath = kxsPath;
    version.mapFilePath = mapPath;
    version.kxsFormat = format;
    return version;
}

} // namespace util
