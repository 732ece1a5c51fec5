#include "device/Models.h"

#include "app/Constants.h"
#include "sf/SettingManager.h"
#include "util/LinkProtocol.h"

namespace device {

QString modelOf(const util::VersionContainer& version) {
    const QString family = version.kxsVersion.section(QLatin1Char('-'), 0, 0).trimmed();
    return family.isEmpty() ? QString() : QStringLiteral("Korvex ") + family;
}

QString modelOfIdentifier(const QString& identifier) {
    util::link::DeviceProfile profile;
    if (identifier.isEmpty() ||
        !util::link::findProfile(util::link::readProfiles(ui::PATH_AND_FILE_DEVICE), identifier,
                                 &profile)) {
        return QString();
    }
    return profile.name;
}

bool sameModel(const util::VersionContainer& a, const util::VersionContainer& b) {
    constexpr int unknown = -1;
    return modelOf(a).compare(modelOf(b), Qt::CaseInsensitive) == 0 &&
           sf::SettingManager::processorTypeFor(a.kxsVersion, unknown) ==
               sf::SettingManager::processorTypeFor(b.kxsVersion, unknown);
}

} // namespace device
