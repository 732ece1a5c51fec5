#pragma once

#include "sf/SettingHost.h"
#include "sf/parser/Token.h"

#include <QString>

#include <functional>

namespace sf {

class Setting;

// Replaces references to other settings in a token list by their current values.
//
// A reference is a Dependent token (or a NegDependent, whose value is negated) whose
// payload is a code name, optionally followed by a sub-index in brackets: "Mode1",
// "Flags[3]", "Flags[0x0A]". The value of "Name" is the setting's edit value (RoleEdit:
// the shown number of a NumSetting, the index of a ListSetting, the integer of a
// BoolSetting); a setting without one gives the unsigned integer of its bytes (most
// significant first, up to 8 bytes). The value of "Name[k]" is sub-index k of a multi
// setting as 1 or 0 (its shown state).
//
// The replacement is a token of the requested type whose payload is the value in decimal
// (up to 17 significant digits). Each resolved setting other than the referrer itself gets
// the referrer as a dependent, so it can be re-evaluated when the value changes; a
// referrer that is still being built (type TypeUninit) is not registered.
class DependentResolver {
public:
    using Lookup = std::function<Setting*(const QString& codeName)>;

    explicit DependentResolver(Lookup lookup);

    bool replace(Setting* referrer, parser::TokenList& tokens, parser::TokenType type,
                 ReplaceBehaviour behaviour) const;

    // Splits "Name[k]" into Name and k (decimal, 0x.. or ..h); plain "Name" gives -1.
    // False for an empty name or a sub-index that is no number.
    static bool splitReference(const QString& payload, QString* name, int* subIndex);
    // The value of a setting (subIndex -1) or of one of its sub-indices, as above.
    static bool referenceValue(Setting* setting, int subIndex, double* value);

private:
    Lookup m_lookup;
};

} // namespace sf
