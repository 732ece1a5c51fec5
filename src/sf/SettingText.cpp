#include "sf/SettingText.h"

#include "sf/Setting.h"
#include "sf/SettingFactory.h"
#include "sf/SettingManager.h"

#include <QLocale>

namespace sf {

namespace {

QString hexText(const QVariant& raw) {
    bool ok = false;
    const qulonglong value = raw.toULongLong(&ok);
    return ok ? QStringLiteral("0x") + QString::number(value, 16).toUpper() : QString();
}

} // namespace

QString kindName(const Setting* setting) {
    const SettingType type = setting ? setting->getType() : TypeNone;
    return type > TypeUninit && type < SETTING_TYPE_COUNT
               ? QString::fromLatin1(SettingFactory::TYPE_LABELS[type])
               : QStringLiteral("none");
}

QString numberText(double value) {
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

QString valueText(SettingManager& manager, const SettingRef& ref) {
    const QString code = ref.setting->getCodeName();
    const QVariant edit = manager.getSettingData(code, RoleEdit, ref.subIndex);
    if (ref.subIndex >= 0) {
        return edit.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    }
    switch (ref.setting->getType()) {
    case TypeNum:
        return edit.isValid() ? numberText(edit.toDouble()) : QString();
    case TypeCheckBool:
        return manager.getSettingData(code, RoleRaw).toString();
    default:
        return edit.toString();
    }
}

QString shownText(SettingManager& manager, const SettingRef& ref) {
    const QString code = ref.setting->getCodeName();
    if (ref.subIndex >= 0) {
        return manager.getSettingData(code, RoleDisplay, ref.subIndex).toString();
    }
    switch (ref.setting->getType()) {
    case TypeNum:
        // Without units the display text ends in a blank.
        return manager.getSettingData(code, RoleDisplay).toString().trimmed();
    case TypeList: {
        const QStringList options = listOptions(manager, ref.setting);
        const int index = manager.getSettingData(code, RoleEdit).toInt();
        return index >= 0 && index < options.size() ? options.at(index)
                                                    : QStringLiteral("#%1").arg(index);
    }
    case TypeBool:
    case TypeCheckBool:
        return hexText(manager.getSettingData(code, RoleRaw));
    default:
        return QString();
    }
}

QStringList listOptions(SettingManager& manager, Setting* setting) {
    if (!setting || setting->getType() != TypeList) {
        return {};
    }
    return manager.getSettingData(setting->getCodeName(), RoleDisplay).toStringList();
}

QStringList bitLabelTexts(const Setting* setting) {
    const QList<BitLabel>* labels = setting ? setting->bitLabels() : nullptr;
    QStringList texts;
    for (int k = 0; labels && k < labels->size(); ++k) {
        texts.append(labels->at(k).text);
    }
    return texts;
}

} // namespace sf
