#include "sf/SettingHost.h"

#include "sf/DependentResolver.h"

namespace sf {

SettingHost::SettingHost(QObject* parent) : QObject(parent) {}

SettingHost::~SettingHost() = default;

bool SettingHost::replaceDependents(Setting* referrer, parser::TokenList& tokens,
                                    parser::TokenType type, ReplaceBehaviour behaviour) {
    const DependentResolver resolver(
        [this](const QString& codeName) { return lookupSetting(codeName); });
    return resolver.replace(referrer, tokens, type, behaviour);
}

} // namespace sf
