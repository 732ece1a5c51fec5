#include "firmware/Transforms.h"

namespace firmware {

sf::SettingManager::TransformTable initTransforms() {
    sf::SettingManager::TransformTable table;
    for (const char* key : {"LifeWh@31011", "LifeWh@31011.B", "LifeWh@31016", "LifeWh@31016.B"}) {
        table.insert(QLatin1String(key), convertLifetimeBatteryUsage);
    }
    return table;
}

bool convertLifetimeBatteryUsage(const QString& key, const sf::SettingManager& old,
                                 sf::SettingManager& target) {
    const QString suffix = key.endsWith(QLatin1Char('B')) ? QStringLiteral(".B") : QString();
    const QString charge = QStringLiteral("LifeAh@30001") + suffix;
    if (!old.containsWsi(charge)) {
        return false;
    }
    const QString chemistry = QStringLiteral("CellChem@30001") + suffix;
    const QStringList options = old.getSettingDataByWsi(chemistry, sf::RoleDisplay).toStringList();
    bool ok = false;
    const int chosen = old.getSettingDataByWsi(chemistry, sf::RoleEdit).toInt(&ok);
    if (options.isEmpty() || !ok) {
        return false;
    }
    const double cells =
        old.getSettingDataByWsi(QStringLiteral("CellCnt@30001") + suffix, sf::RoleEdit)
            .toDouble(&ok);
    if (!ok) {
        return false;
    }
    const double ampHours = old.getSettingDataByWsi(charge, sf::RoleEdit).toDouble(&ok);
    if (!ok) {
        return false;
    }
    const double volts = sf::SettingManager::nominalCellVoltage(options.value(chosen).trimmed());
    return target.setSettingDataByWsi(volts * ampHours * cells, key);
}

} // namespace firmware
