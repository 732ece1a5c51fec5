#pragma once

#include "sf/SettingTypes.h"
#include "sf/parser/Token.h"

#include <QString>

#include <memory>

namespace sf {

class RawSetting;
class Setting;
class SettingHost;

// Builds the typed setting of one layout entry from its raw setting (code name and bytes)
// and its definition tokens.
class SettingFactory {
public:
    enum Error {
        NoError = 0,           // success
        ErrorUnknownType = 1,  // no token list, or the first token names no known kind
        ErrorNoRawSetting = 2, // the raw setting is missing
        ErrorNotBuilt = 3      // "" or "uninit", or the kind failed to build
    };

    // Labels of the kinds, indexed by SettingType: "", "uninit", "num", "bool",
    // "checkbool", "list".
    static const char* const TYPE_LABELS[SETTING_TYPE_COUNT];

    // A new setting owned by the caller, or null (see lastError()). The factory owns the
    // tokens: they are handed to the setting, or destroyed on every failure path. The raw
    // setting's bytes are copied in (as many as both sizes allow; the rest stays zero).
    Setting* buildSetting(const RawSetting* raw, std::unique_ptr<parser::TokenList> tokens,
                          SettingHost* host);
    int lastError() const { return m_lastError; }

    // The kind named by a definition's first token: the token's payload, taken as a
    // case-insensitive regular expression, must match a label exactly; the first label
    // (in type order) that matches wins. -1 for no match or an invalid expression.
    static int typeFromKeyword(const QString& keyword);

private:
    static int matchKeyword(const QString& keyword);

    int m_lastError = NoError;
};

} // namespace sf
