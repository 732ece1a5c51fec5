#include "sf/ExpandableSetting.h"

namespace sf {

ExpandableSetting::ExpandableSetting(const QString& codeName,
                                     std::unique_ptr<parser::TokenList> tokens, SettingHost* host)
    : MultiSetting(codeName, std::move(tokens), host) {
    if (isInitialized()) {
        setExpandable(true);
    }
}

} // namespace sf
