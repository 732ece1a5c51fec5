#pragma once
// Two open setup files compared setting by setting, of the same or of different firmware
// versions: settings are matched by help identifier (WSI) and then by code name, bits by
// their labels. What the command line's diff and the windows' comparison with the
// instrument show.
#include <QList>
#include <QString>

namespace sf {

class Setting;
class SettingManager;

// One value that differs: the setting (or bit) in each file and its shown texts.
struct Difference {
    QString nameA;
    QString nameB;
    QString wsi;   // help identifier of a setting
    QString label; // label of a bit
    QString from;
    QString to;
};

// The differences in the layout order of the first file, and the settings without a
// counterpart in the other.
struct Comparison {
    QList<Difference> differ;
    QList<Setting*> onlyA;
    QList<Setting*> onlyB;
};

Comparison compareSettings(SettingManager& a, SettingManager& b);

} // namespace sf
