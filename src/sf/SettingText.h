#pragma once

#include "sf/SetupFile.h"

#include <QString>
#include <QStringList>
#include <QVariant>

namespace sf {

// The kind word of a setting as the layout writes it: "num", "bool", "checkbool",
// "list", or "none" for a setting that failed to build.
QString kindName(const Setting* setting);

// The edit value (data role 2) as get prints it: numbers in their shortest exact form,
// a list's index, a bit's shown state as 1 or 0, a bit field's whole value as an
// unsigned integer. A check box group, which has no edit value of its own, gives its raw
// value (data role 13).
QString valueText(SettingManager& manager, const SettingRef& ref);

// What a person reads: a number with its units (data role 1), a list's chosen option, a
// bit's on or off text, a bit field's or check box group's whole value in hexadecimal.
QString shownText(SettingManager& manager, const SettingRef& ref);

// A number in its shortest form that reads back as the same double.
QString numberText(double value);

// The options of a list setting (data role 1), empty for other kinds.
QStringList listOptions(SettingManager& manager, Setting* setting);

// The labels of a bit field's or check box group's bits, empty for other kinds.
QStringList bitLabelTexts(const Setting* setting);

} // namespace sf
