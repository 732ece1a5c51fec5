#include "sf/SetupComparison.h"

#include "sf/RawSetting.h"
#include "sf/Setting.h"
#include "sf/SettingManager.h"
#include "sf/SettingText.h"

#include <QSet>

namespace sf {

namespace {

QList<Setting*> inLayoutOrder(SettingManager& manager) {
    QList<Setting*> settings;
    for (const RawSetting* raw : manager.getRawSettings()) {
        if (Setting* s = manager.getSetting(raw->getCodeName())) {
            settings.append(s);
        }
    }
    return settings;
}

// The counterpart of a setting of A in B: the setting of the same help identifier,
// else the one of the same code name when that has no help identifier of its own
// found in A.
Setting* counterpart(SettingManager& a, SettingManager& b, Setting* s) {
    const QString wsi = s->helpIdentifier();
    if (!wsi.isEmpty()) {
        if (Setting* byWsi = b.getSettingByWsi(wsi)) {
            return byWsi;
        }
    }
    Setting* byName = b.getSetting(s->getCodeName());
    if (byName && byName->getType() == s->getType()) {
        const QString otherWsi = byName->helpIdentifier();
        if (otherWsi.isEmpty() || otherWsi == wsi || !a.getSettingByWsi(otherWsi)) {
            return byName;
        }
    }
    return nullptr;
}

// Bits are compared by label, so a bit that moved within its field still matches.
void compareBits(SettingManager& a, SettingManager& b, Setting* sa, Setting* sb,
                 QList<Difference>* out) {
    const QStringList labelsA = bitLabelTexts(sa);
    const QStringList labelsB = bitLabelTexts(sb);
    for (int i = 0; i < labelsA.size(); ++i) {
        const int j = labelsB.indexOf(labelsA.at(i));
        if (j < 0) {
            continue;
        }
        const bool va = a.getSettingData(sa->getCodeName(), RoleEdit, i).toBool();
        const bool vb = b.getSettingData(sb->getCodeName(), RoleEdit, j).toBool();
        if (va != vb) {
            out->append({QStringLiteral("%1[%2]").arg(sa->getCodeName()).arg(i),
                         QStringLiteral("%1[%2]").arg(sb->getCodeName()).arg(j), QString(),
                         labelsA.at(i), shownText(a, {sa, i}), shownText(b, {sb, j})});
        }
    }
}

bool sameValue(SettingManager& a, SettingManager& b, Setting* sa, Setting* sb) {
    if (sa->getType() == TypeNum) {
        return a.getSettingData(sa->getCodeName(), RoleEdit) ==
               b.getSettingData(sb->getCodeName(), RoleEdit);
    }
    // Lists by the chosen text (the option lists of two layouts may differ).
    return shownText(a, {sa, -1}) == shownText(b, {sb, -1});
}

} // namespace

Comparison compareSettings(SettingManager& a, SettingManager& b) {
    Comparison c;
    QSet<Setting*> matched;
    for (Setting* sa : inLayoutOrder(a)) {
        Setting* sb = counterpart(a, b, sa);
        if (!sb || matched.contains(sb)) {
            c.onlyA.append(sa);
            continue;
        }
        matched.insert(sb);
        const bool multi = sa->getType() == TypeBool || sa->getType() == TypeCheckBool;
        if (multi && sb->getType() == sa->getType()) {
            compareBits(a, b, sa, sb, &c.differ);
        } else if (!sameValue(a, b, sa, sb)) {
            c.differ.append({sa->getCodeName(), sb->getCodeName(), sa->helpIdentifier(), QString(),
                             shownText(a, {sa, -1}), shownText(b, {sb, -1})});
        }
    }
    for (Setting* sb : inLayoutOrder(b)) {
        if (!matched.contains(sb)) {
            c.onlyB.append(sb);
        }
    }
    return c;
}

} // namespace sf
