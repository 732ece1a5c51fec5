#include "sf/SettingFactory.h"

#include "sf/Setting.h"

namespace sf {

const char* const SettingFactory::TYPE_LABELS[SETTING_TYPE_COUNT] = {"",     "uninit",    "num",
                                                                     "bool", "checkbool", "list"};

Setting* SettingFactory::buildSetting(const RawSetting*, std::unique_ptr<parser::TokenList>,
                                      SettingHost*) {
    m_lastError = ErrorNotBuilt;
    return nullptr;
}

int SettingFactory::typeFromKeyword(const QString&) {
    return -1;
}

} // namespace sf
