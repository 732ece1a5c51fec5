#include "sf/NumSetting.h"

namespace sf {

const SettingInput NumSetting::INPUT_ORDER[] = {InputType,  InputWsi,       InputFormat, InputRange,
                                                InputScale, InputPrecision, InputName,   InputUnits,
                                                InputNote,  InputEnd};

NumSetting::NumSetting(const QString& codeName, std::unique_ptr<parser::TokenList> tokens,
                       SettingHost* host)
    : WSISetting(codeName, std::move(tokens), host) {
    setType(TypeNone);
}
QVariant NumSetting::getData(DataRole) {
    return QVariant();
}
bool NumSetting::setData(const QVariant&) {
    return false;
}
bool NumSetting::update(SettingType) {
    return false;
}
bool NumSetting::finishSetup() {
    return false;
}
QString NumSetting::getUnits() {
    return QString();
}
QString NumSetting::getNiceName() {
    return QString();
}
int NumSetting::getPrecision() {
    return DOUBLE_PRECISION;
}
bool NumSetting::readDouble(const char*, double*) const {
    return false;
}
bool NumSetting::writeDouble(double, char*) const {
    return false;
}
bool NumSetting::translate(double, double*) {
    return false;
}
bool NumSetting::untranslate(double, double*) {
    return false;
}
bool NumSetting::translateBytes(const char*, double*) {
    return false;
}
bool NumSetting::translate(double*) {
    return false;
}
bool NumSetting::untranslateToBytes(double, char*) {
    return false;
}
bool NumSetting::recomputeRange() {
    return false;
}
int NumSetting::asPowerOf2(int value) {
    int p = 1;
    while (p < value) {
        p *= 2;
    }
    return p;
}
bool NumSetting::scaleTokens(parser::TokenList*) {
    return false;
}
QString NumSetting::formatted(double, int, const QString&) const {
    return QString();
}

} // namespace sf
