#include "sf/MultiSetting.h"

namespace sf {

MultiSetting::MultiSetting(const QString& codeName, std::unique_ptr<parser::TokenList> tokens,
                           SettingHost* host)
    : Setting(codeName, std::move(tokens), host) {
    if (isInitialized()) {
        setMulti(true);
    }
}

} // namespace sf
