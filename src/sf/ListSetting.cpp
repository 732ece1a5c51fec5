#include "sf/ListSetting.h"

namespace sf {

const SettingInput ListSetting::INPUT_ORDER[] = {
    InputType, InputWsi, InputListCount, InputListName, InputName, InputNote, InputEnd};

ListSetting::ListSetting(const QString& codeName, std::unique_ptr<parser::TokenList> tokens,
                         SettingHost* host)
    : WSISetting(codeName, std::move(tokens), host) {
    setType(TypeNone);
}
QVariant ListSetting::getData(DataRole) {
    return QVariant();
}
bool ListSetting::setData(const QVariant&) {
    return false;
}
bool ListSetting::finishSetup() {
    return false;
}
bool ListSetting::initOptions() {
    return false;
}

} // namespace sf
