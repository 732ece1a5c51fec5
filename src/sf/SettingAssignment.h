#pragma once

#include "sf/SetupFile.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace sf {

class SettingManager;

// One NAME=VALUE of the set command. NAME is a code name, a help identifier (WSI), a
// bit as NAME[k] or a bit's help identifier.
struct Assignment {
    QString name;
    QString value;
    QString origin; // where it was written, for messages ("defaults.txt:12"), or empty
};

// Splits "NAME=VALUE" at the first '='; both sides trimmed. False for a missing '=' or
// an empty name.
bool parseAssignment(const QString& text, Assignment* out);

// Reads assignments from text: one per line; blank lines and lines starting with '#'
// are skipped. False with *error ("NAME:LINE: ...") for a line that is no assignment.
bool parseAssignments(const QByteArray& text, const QString& name, QList<Assignment>* out,
                      QString* error);

enum class AssignResult { Changed, Unchanged, Refused };

// Sets the value as the settings table would: a number in shown units within the
// setting's range (data roles 8 and 9); a list entry by option text or index; a bit as
// 0/1 (also off/on, false/true, no/yes) in its shown sense; a bit field's or check box
// group's whole value as an unsigned integer (decimal or 0x hexadecimal). Disabled
// settings are not edited. Refused with *error naming the setting and what it accepts.
AssignResult assign(SetupFile& file, const Assignment& assignment, QString* error);

// The same for a setting (or one bit of it) already found: the one way a value is set
// from text, for the command line, the table's editors and a paste into the table. A
// number outside its range, or one its bytes cannot hold, is refused and nothing
// changes; *error is "NAME: what is wrong" (NAME the code name, NAME[k] for a bit).
AssignResult assignText(SettingManager& manager, const SettingRef& ref, const QString& text,
                        QString* error);

// Why a number setting's value is outside its current range (a range that depends on
// another setting can shrink below it), in the words of a refusal; empty when it is
// within or the setting is no number.
QString outOfRangeReason(SettingManager& manager, Setting* setting);

} // namespace sf
