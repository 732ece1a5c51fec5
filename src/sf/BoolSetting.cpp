#include "sf/BoolSetting.h"

namespace sf {

const SettingInput BoolSetting::INPUT_ORDER[] = {InputType, InputFormat, InputLabels, InputEnd};

BoolSetting::BoolSetting(const QString& codeName, std::unique_ptr<parser::TokenList> tokens,
                         SettingHost* host)
    : MultiSetting(codeName, std::move(tokens), host) {
    setType(TypeNone);
}
QVariant BoolSetting::getData(DataRole) {
    return QVariant();
}
bool BoolSetting::setData(const QVariant&) {
    return false;
}
QVariant BoolSetting::getData(int, DataRole) {
    return QVariant();
}
bool BoolSetting::setData(int, const QVariant&) {
    return false;
}
int BoolSetting::subIndices() {
    return 0;
}
bool BoolSetting::subIndexToOffset(int, int*, int*) const {
    return false;
}
bool BoolSetting::parseLabels() {
    return false;
}

} // namespace sf
