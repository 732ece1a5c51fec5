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
    int begin = -1;
    int end = -1;
    if (!getSettingInputRange(InputWsi, &begin, &end) || end - begin != 1) {
        return false;
    }
    // The WSI is taken from a copy: the definition keeps its token as written.
    parser::Token token = getTokenList()->at(begin);
    purifyStringToken(token);
    m_wsi = token.getPayload();
    return true;
}

} // namespace sf
