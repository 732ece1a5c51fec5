#pragma once
// Carrying an instrument's settings into another firmware version's defaults, with what
// a person needs to decide before the update: what was kept, converted or left at its
// default, and the question with the list of settings that will be reset.
#include "sf/SettingManager.h"

#include <QHash>
#include <QList>
#include <QString>

namespace firmware {

struct MigrationRow {
    enum How { Kept, Converted, Default };
    QString setting;  // display name (a bit: the field's name and the bit's label)
    QString key;      // code name, NAME[k] for a bit, or the conversion's key
    QString oldValue; // as shown before, empty when the old layout has none
    QString newValue; // as it will be
    How how = Default;
};

struct Migration {
    QList<MigrationRow> rows; // in the new layout's order
    QHash<QString, int> missing;
    sf::SettingManager::MergeReport report;
};

// Merges old into target (a firmware's default settings) with the conversions of
// initTransforms().
Migration migrateSettings(const sf::SettingManager& old, sf::SettingManager& target);

// The confirmation shown before an update that resets some settings: the question and
// its details (a bullet line per setting, repeated names numbered).
struct MergeMessage {
    QString text;
    QString details;
};
MergeMessage mergeMessage(const QHash<QString, int>& missing, const QString& oldVersion,
                          const QString& newVersion);

} // namespace firmware
