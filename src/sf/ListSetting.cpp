#include "sf/ListSetting.h"

#include "sf/SettingHost.h"

namespace sf {

const SettingInput ListSetting::INPUT_ORDER[] = {
    InputType, InputWsi, InputListCount, InputListName, InputName, InputNote, InputEnd};

ListSetting::ListSetting(const QString& codeName, std::unique_ptr<parser::TokenList> tokens,
                         SettingHost* host)
    : WSISetting(codeName, std::move(tokens), host) {
    if (getType() != TypeUninit || !setInputOrder(INPUT_ORDER)) {
        setType(TypeNone);
        return;
    }
    setSizeBits(8);
    setSizeBytes(BYTE_SIZE);
    if (!initializeDataPointer() || !initOptions() || !extractWsi() ||
        !purifyStringTerminals(InputName)) {
        setType(TypeNone);
        return;
    }
    setType(TypeList);
}

bool ListSetting::initOptions() {
    SettingHost* host = getParent();
    if (!host) {
        return false;
    }
    const QString name = getStringField(InputListName);
    const QString countName = getStringField(InputListCount);
    m_options = host->getStringList(name, countName);
    return !m_options.isEmpty();
}

bool ListSetting::finishSetup() {
    if (!typeCheck()) {
        return false;
    }
    // Registers this setting with the settings its name and note conditions refer to.
    evaluateConditions(InputName);
    evaluateConditions(InputNote);
    return true;
}

QVariant ListSetting::getData(DataRole role) {
    if (!typeCheck()) {
        return QVariant();
    }
    const int index = static_cast<quint8>(getRawData()[0]);
    switch (role) {
    case RoleDisplay:
        return m_options;
    case RoleEdit:
        return index;
    case RoleFullText:
        return QString::number(index);
    case RoleName:
        return getStringField(InputName);
    case RoleNote:
        return getStringField(InputNote);
    case RoleMinimum:
        return 0;
    case RoleMaximum:
        return m_options.size() - 1;
    default:
        return WSISetting::getData(role);
    }
}

bool ListSetting::setData(const QVariant& value) {
    if (!typeCheck()) {
        return false;
    }
    bool ok = false;
    const int index = value.toInt(&ok);
    if (!ok || index < 0 || index >= m_options.size() || index > 0xFF ||
        index == static_cast<quint8>(getRawData()[0])) {
        return false;
    }
    getRawData()[0] = static_cast<char>(index);
    return true;
}

} // namespace sf
