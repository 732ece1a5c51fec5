#pragma once
// The conversions of settings whose meaning changed between firmware layouts, applied
// when settings are carried across firmware versions.
#include "sf/SettingManager.h"

namespace firmware {

// The four keys of the lifetime energy ("LifeWh@31011", "LifeWh@31016" and their ".B"
// twins), each computed by convertLifetimeBatteryUsage.
sf::SettingManager::TransformTable initTransforms();

// The lifetime energy of a battery (Wh) from the older layouts' lifetime charge (Ah),
// cell count and cell chemistry: nominal cell voltage x charge x cells. The key ending
// in "B" reads the second battery's settings (".B"). False, leaving the new setting at
// its default, when the old layout has no lifetime charge or a value cannot be read.
bool convertLifetimeBatteryUsage(const QString& key, const sf::SettingManager& old,
                                 sf::SettingManager& target);

} // namespace firmware
