#pragma once

namespace sf {

// The kind of a setting. The value also tells whether construction succeeded: a setting
// whose type is TypeNone failed to build and refuses every operation. The factory's label
// table names the kinds by their index ("", "uninit", "num", "bool", "checkbool", "list").
enum SettingType : int {
    TypeNone = 0,      // failed / not initialised
    TypeUninit = 1,    // the base is ready, the kind's own construction has not finished
    TypeNum = 2,       // NumSetting
    TypeBool = 3,      // BoolSetting
    TypeCheckBool = 4, // CheckBoolSetting
    TypeList = 5,      // ListSetting
    SETTING_TYPE_COUNT = 6
};

// A field of a definition. Which field stands at which position of a definition is given
// by the kind's input order table (see Setting::setInputOrder), which ends with InputEnd.
enum SettingInput : int {
    InputType = 0,      // the kind keyword, always the first field
    InputFormat = 1,    // num: s/u and bit count (s16, u8); bool: the bit count
    InputRange = 2,     // num: raw range "lower ` upper"
    InputScale = 3,     // num: scale chain in brackets, such as [*10/256]
    InputPrecision = 4, // num: decimal places shown (2 when absent or not an integer)
    InputName = 5,      // num, list, checkbool: the display name (data role 5)
    InputUnits = 6,     // num: units text
    InputLabels = 7,    // bool: the bit labels
    InputBoxes = 8,     // checkbool: the check box labels
    InputListCount = 9, // list: name of the integer constant holding the option count
    InputListName = 10, // list: name of the first string of the option list
    InputNote = 11,     // num, list, checkbool: a free text (data role 11)
    InputWsi = 12,      // num, list: the help identifier (WSI)
    InputEnd = 13       // end marker of an input order table
};

// What a setting is asked for (by the tables, the manager and the merge).
enum DataRole : int {
    RoleDisplay = 1,         // display text: value formatted, with units
    RoleEdit = 2,            // edit value: the translated value as a number, or the state
    RoleFullText = 3,        // the translated value as text at full precision
    RoleName = 5,            // the display name (row header)
    RoleExpandedDisplay = 6, // display text of an expandable setting while unfolded
    RoleFoldedDisplay = 7,   // display text of an expandable setting while folded
    RoleMinimum = 8,         // minimum (translated)
    RoleMaximum = 9,         // maximum (translated)
    RolePrecision = 10,      // display precision (decimal places)
    RoleNote = 11,           // the definition's text field 11
    RoleStatus = 12,         // status line text (name, maximum, minimum)
    RoleRaw = 13,            // raw value
    RoleToolTip = 14         // tool tip: help text found by the WSI
};

} // namespace sf
