#include "sf/CheckBoolSetting.h"

namespace sf {

const QString CheckBoolSetting::EXPAND_PROMPT = QStringLiteral("Expand");
const QString CheckBoolSetting::UNEXPAND_PROMPT = QStringLiteral("Hide");
const QRegularExpression CheckBoolSetting::SIZE_FORMAT{QStringLiteral("\\[[0-9]*\\]")};
const SettingInput CheckBoolSetting::INPUT_ORDER[] = {InputType, InputBoxes, InputName, InputNote,
                                                      InputEnd};

CheckBoolSetting::CheckBoolSetting(const QString& codeName,
                                   std::unique_ptr<parser::TokenList> tokens, SettingHost* host)
    : ExpandableSetting(codeName, std::move(tokens), host) {
    setType(TypeNone);
}
QVariant CheckBoolSetting::getData(DataRole) {
    return QVariant();
}
bool CheckBoolSetting::setData(const QVariant&) {
    return false;
}
QVariant CheckBoolSetting::getData(int, DataRole) {
    return QVariant();
}
bool CheckBoolSetting::setData(int, const QVariant&) {
    return false;
}
int CheckBoolSetting::subIndices() {
    return 0;
}
int CheckBoolSetting::expandedSize() {
    return 0;
}
int CheckBoolSetting::unexpandedSize() {
    return UNEXPANDED_SIZE;
}
bool CheckBoolSetting::subIndexToOffset(int, int*, int*) const {
    return false;
}
bool CheckBoolSetting::initLabels() {
    return false;
}
bool CheckBoolSetting::readBitCount(int*) {
    return false;
}

} // namespace sf
