// Carrying the settings of one firmware layout into another.
#include "sf/SettingManager.h"

#include "sf/RawSetting.h"
#include "sf/Setting.h"
#include "sf/SettingText.h"

namespace sf {

namespace {

bool isBitField(const Setting* s) {
    return s->getType() == TypeBool || s->getType() == TypeCheckBool;
}

QString quoted(const QString& text) {
    return QLatin1Char('`') + text + QLatin1Char('`');
}

QString bitName(const Setting* s, int bit) {
    return QStringLiteral("%1[%2]").arg(s->getCodeName()).arg(bit);
}

// The first bit of a bit field of old, in layout order, whose label is label.
bool findBit(const SettingManager& old, const QString& label, QString* codeName, int* bit) {
    for (const RawSetting* raw : old.getRawSettings()) {
        const Setting* s = old.getSetting(raw->getCodeName());
        if (!s || !isBitField(s)) {
            continue;
        }
        const int at = static_cast<int>(bitLabelTexts(s).indexOf(label));
        if (at >= 0) {
            *codeName = s->getCodeName();
            *bit = at;
            return true;
        }
    }
    return false;
}

} // namespace

bool SettingManager::mergeSettings(const SettingManager& old, const TransformTable& transforms,
                                   QHash<QString, int>& missing, MergeReport* report) {
    MergeReport ignored;
    MergeReport& r = report ? *report : ignored;
    for (const RawSetting* raw : m_rawSettings) {
        Setting* s = getSetting(raw->getCodeName());
        if (!s) {
            continue;
        }
        if (isBitField(s)) {
            const QStringList labels = bitLabelTexts(s);
            for (int bit = 0; bit < labels.size(); ++bit) {
                const QString& label = labels.at(bit);
                QString from;
                int fromBit = -1;
                if (transforms.contains(label)) {
                    // A conversion that fails leaves the default, and says nothing.
                    (transforms.value(label)(label, old, *this) ? r.converted : r.defaults)
                        << label;
                } else if (findBit(old, label, &from, &fromBit)) {
                    setSettingData(old.getSettingData(from, RoleEdit, fromBit), s->getCodeName(),
                                   bit);
                    r.kept << bitName(s, bit);
                } else {
                    ++missing[quoted(label)];
                    r.defaults << bitName(s, bit);
                }
            }
            continue;
        }
        const QString wsi = s->helpIdentifier();
        if (wsi.isEmpty()) {
            continue;
        }
        if (transforms.contains(wsi)) {
            (transforms.value(wsi)(wsi, old, *this) ? r.converted : r.defaults) << wsi;
        } else if (const Setting* before = old.getSettingByWsi(wsi)) {
            setSettingData(old.getSettingData(before->getCodeName(), RoleEdit), s->getCodeName());
            r.kept << s->getCodeName();
        } else {
            const QString name = getSettingData(s->getCodeName(), RoleName).toString();
            ++missing[name.isEmpty() ? quoted(wsi) : name];
            r.defaults << s->getCodeName();
        }
    }
    return true;
}

} // namespace sf
