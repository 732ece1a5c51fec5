#include "sf/BoolSetting.h"

#include "sf/BitField.h"
#include "sf/SettingHost.h"

#include <cmath>

namespace sf {

const SettingInput BoolSetting::INPUT_ORDER[] = {InputType, InputFormat, InputLabels, InputEnd};

namespace {
constexpr int MAX_BITS = 1024;
}

BoolSetting::BoolSetting(const QString& codeName, std::unique_ptr<parser::TokenList> tokens,
                         SettingHost* host)
    : MultiSetting(codeName, std::move(tokens), host) {
    if (getType() != TypeUninit || !isMulti() || !setInputOrder(INPUT_ORDER)) {
        setType(TypeNone);
        return;
    }
    QString text;
    bool ok = false;
    const int bits = getSettingInputAsString(InputFormat, &text) ? text.toInt(&ok) : 0;
    if (!ok || bits < 1 || bits > MAX_BITS) {
        setType(TypeNone);
        return;
    }
    setSizeBits(bits);
    setSizeBytes((bits - 1) / BYTE_SIZE + 1);
    if (!initializeDataPointer() || !parseLabels()) {
        setType(TypeNone);
        return;
    }
    setType(TypeBool);
}

bool BoolSetting::parseLabels() {
    int begin = -1;
    int end = -1;
    if (!getSettingInputRange(InputLabels, &begin, &end)) {
        m_labels.clear();
        return true; // no labels field: no labelled bits
    }
    return BitLabelParser::parse(
        *getTokenList(), begin, end, &m_labels,
        [this](const QString& message) { report(message + debug_getProcessedKXSLine()); });
}

int BoolSetting::subIndices() {
    return typeCheck() ? m_labels.size() : 0;
}

bool BoolSetting::subIndexToOffset(int subIndex, int* byteIndex, int* bit) const {
    return typeCheck() &&
           BitField::offset(subIndex, getSizeBytes(), getSizeBits(), true, byteIndex, bit);
}

QVariant BoolSetting::getData(DataRole role) {
    if (!typeCheck()) {
        return QVariant();
    }
    quint64 value = 0;
    const bool integer = BitField::readUnsigned(getBytes(), &value);
    switch (role) {
    case RoleEdit:
    case RoleRaw:
        if (!integer) { // longer than 8 bytes: the base class's first byte
            return role == RoleRaw ? Setting::getData(RoleRaw) : QVariant();
        }
        return QVariant(static_cast<qulonglong>(value));
    case RoleDisplay:
    case RoleFullText:
        return integer ? QVariant(QString::number(value)) : QVariant();
    case RoleName:
        return getBaseCodeName();
    case RoleMinimum:
        return 0.0;
    case RoleMaximum:
        return std::ldexp(1.0, getSizeBits()) - 1.0;
    default:
        return QVariant();
    }
}

bool BoolSetting::setData(const QVariant& value) {
    if (!typeCheck()) {
        return false;
    }
    QByteArray bytes(getSizeBytes(), '\0');
    if (value.userType() == QMetaType::QByteArray) {
        bytes = value.toByteArray();
        if (bytes.size() != getSizeBytes()) {
            return false;
        }
    } else {
        bool ok = false;
        quint64 v = value.toULongLong(&ok);
        if (!ok) {
            return false;
        }
        if (getSizeBits() < 64) {
            v &= (quint64(1) << getSizeBits()) - 1;
        }
        BitField::writeUnsigned(v, bytes.data(), bytes.size());
    }
    if (bytes == getBytes()) {
        return false;
    }
    return writeRawData(bytes.constData());
}

QVariant BoolSetting::getData(int subIndex, DataRole role) {
    return labelledBitData(*this, typeCheck(), m_labels, subIndex, role);
}

bool BoolSetting::setData(int subIndex, const QVariant& value) {
    return setLabelledBit(*this, typeCheck(), m_labels, subIndex, value);
}

} // namespace sf
