#include "firmware/Migration.h"

#include "firmware/Transforms.h"
#include "sf/RawSetting.h"
#include "sf/Setting.h"
#include "sf/SettingText.h"

#include <algorithm>

namespace firmware {

namespace {

QString shown(const sf::SettingManager& manager, sf::Setting* s, int bit) {
    // Reading a value's text changes nothing.
    return sf::shownText(const_cast<sf::SettingManager&>(manager), {s, bit});
}

// The old text of a bit: the first bit field of old with a bit of that label.
QString oldBitText(const sf::SettingManager& old, const QString& label) {
    for (const sf::RawSetting* raw : old.getRawSettings()) {
        sf::Setting* s = old.getSetting(raw->getCodeName());
        const int at = s ? static_cast<int>(sf::bitLabelTexts(s).indexOf(label)) : -1;
        if (at >= 0 && (s->getType() == sf::TypeBool || s->getType() == sf::TypeCheckBool)) {
            return shown(old, s, at);
        }
    }
    return QString();
}

MigrationRow::How how(const sf::SettingManager::MergeReport& report, const QString& key,
                      const QString& transformKey) {
    if (report.converted.contains(transformKey)) {
        return MigrationRow::Converted;
    }
    return report.kept.contains(key) ? MigrationRow::Kept : MigrationRow::Default;
}

} // namespace

Migration migrateSettings(const sf::SettingManager& old, sf::SettingManager& target) {
    Migration m;
    target.mergeSettings(old, initTransforms(), m.missing, &m.report);
    for (const sf::RawSetting* raw : target.getRawSettings()) {
        sf::Setting* s = target.getSetting(raw->getCodeName());
        if (!s) {
            continue;
        }
        const QString name = target.getSettingData(s->getCodeName(), sf::RoleName).toString();
        if (s->getType() == sf::TypeBool || s->getType() == sf::TypeCheckBool) {
            const QStringList labels = sf::bitLabelTexts(s);
            for (int bit = 0; bit < labels.size(); ++bit) {
                const QString key = QStringLiteral("%1[%2]").arg(s->getCodeName()).arg(bit);
                m.rows.append({QStringLiteral("%1: %2").arg(name, labels.at(bit)), key,
                               oldBitText(old, labels.at(bit)), shown(target, s, bit),
                               how(m.report, key, labels.at(bit))});
            }
            continue;
        }
        const QString wsi = s->helpIdentifier();
        if (wsi.isEmpty()) {
            continue;
        }
        sf::Setting* before = old.getSettingByWsi(wsi);
        m.rows.append({name, s->getCodeName(), before ? shown(old, before, -1) : QString(),
                       shown(target, s, -1), how(m.report, s->getCodeName(), wsi)});
    }
    return m;
}

MergeMessage mergeMessage(const QHash<QString, int>& missing, const QString& oldVersion,
                          const QString& newVersion) {
    MergeMessage message;
    message.text =
        QStringLiteral(
            "You're about to update from a %1 to %2 firmware. There are many settings in common "
            "between these firmware versions, but certain parameters don't exist in both or have "
            "changed meaning. These will be set to their default values during the %2 firmware "
            "update process.\n\nOnce the flash is complete, you will be able to see the new "
            "settings on the %2 build as well as the original %1 settings and make any "
            "adjustments if necessary.\n\nTo see which settings will be set to defaults, select "
            "\"Show Details\" below.\n\nDo you wish to continue?")
            .arg(oldVersion, newVersion);
    message.details =
        QStringLiteral(
            "The following %1 settings do not exist in %2 and will be set to defaults:\n")
            .arg(oldVersion, newVersion);
    QStringList keys = missing.keys();
    std::sort(keys.begin(), keys.end(), [](const QString& a, const QString& b) {
        return a.compare(b, Qt::CaseInsensitive) < 0;
    });
    for (const QString& key : keys) {
        const int count = missing.value(key);
        for (int n = 1; n <= count; ++n) {
            message.details += QStringLiteral("\u2022 ") + key +
                               (count > 1 ? QStringLiteral(" (%1)").arg(n) : QString()) +
                               QLatin1Char('\n');
        }
    }
    return message;
}

} // namespace firmware
