#include "SettingValues.h"

#include "sf/BoolSetting.h"
#include "sf/CheckBoolSetting.h"
#include "sf/Setting.h"
#include "sf/SettingManager.h"
#include "sf/WSISetting.h"

#include <QLocale>

namespace cli {

namespace {

QString hexText(const QVariant& raw) {
    bool ok = false;
    const qulonglong value = raw.toULongLong(&ok);
    return ok ? QStringLiteral("0x") + QString::number(value, 16).toUpper() : QString();
}

} // namespace

QString kindName(const sf::Setting* setting) {
    switch (setting ? setting->getType() : sf::TypeNone) {
    case sf::TypeNum:
        return QStringLiteral("num");
    case sf::TypeBool:
        return QStringLiteral("bool");
    case sf::TypeCheckBool:
        return QStringLiteral("checkbool");
    case sf::TypeList:
        return QStringLiteral("list");
    default:
        return QStringLiteral("none");
    }
}

QString numberText(double value) {
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

QString valueText(sf::SettingManager& manager, const SettingRef& ref) {
    const QString code = ref.setting->getCodeName();
    const QVariant edit = manager.getSettingData(code, sf::RoleEdit, ref.subIndex);
    if (ref.subIndex >= 0) {
        return edit.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    }
    switch (ref.setting->getType()) {
    case sf::TypeNum:
        return edit.isValid() ? numberText(edit.toDouble()) : QString();
    case sf::TypeCheckBool:
        return manager.getSettingData(code, sf::RoleRaw).toString();
    default:
        return edit.toString();
    }
}

QString shownText(sf::SettingManager& manager, const SettingRef& ref) {
    const QString code = ref.setting->getCodeName();
    if (ref.subIndex >= 0) {
        return manager.getSettingData(code, sf::RoleDisplay, ref.subIndex).toString();
    }
    switch (ref.setting->getType()) {
    case sf::TypeNum:
        // Without units the display text ends in a blank.
        return manager.getSettingData(code, sf::RoleDisplay).toString().trimmed();
    case sf::TypeList: {
        const QStringList options = listOptions(manager, ref.setting);
        const int index = manager.getSettingData(code, sf::RoleEdit).toInt();
        return index >= 0 && index < options.size() ? options.at(index)
                                                    : QStringLiteral("#%1").arg(index);
    }
    case sf::TypeBool:
    case sf::TypeCheckBool:
        return hexText(manager.getSettingData(code, sf::RoleRaw));
    default:
        return QString();
    }
}

QStringList listOptions(sf::SettingManager& manager, sf::Setting* setting) {
    if (!setting || setting->getType() != sf::TypeList) {
        return {};
    }
    return manager.getSettingData(setting->getCodeName(), sf::RoleDisplay).toStringList();
}

QStringList bitLabels(sf::Setting* setting) {
    const QList<sf::BitLabel>* labels = nullptr;
    if (auto* b = qobject_cast<sf::BoolSetting*>(setting)) {
        labels = &b->getLabels();
    } else if (auto* c = qobject_cast<sf::CheckBoolSetting*>(setting)) {
        labels = &c->getLabels();
    }
    QStringList texts;
    for (int k = 0; labels && k < labels->size(); ++k) {
        texts.append(labels->at(k).text);
    }
    return texts;
}

QString wsiOf(const sf::Setting* setting) {
    const auto* w = qobject_cast<const sf::WSISetting*>(setting);
    return w ? w->getWsi() : QString();
}

} // namespace cli
