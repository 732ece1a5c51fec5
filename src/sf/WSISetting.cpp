#include "sf/WSISetting.h"

#include "sf/SettingHost.h"

namespace sf {

WSISetting::WSISetting(const QString& codeName, std::unique_ptr<parser::TokenList> tokens,
                       SettingHost* host)
    : Setting(codeName, std::move(tokens), host) {}

QVariant WSISetting::getData(DataRole role) {
    if (role == RoleToolTip) {
        SettingHost* host = getParent();
        return host ? QVariant(host->getTooltip(m_wsi)) : QVariant();
    }
    return Setting::getData(role);
}

bool WSISetting::extractWsi() {
    return false;
}

} // namespace sf
