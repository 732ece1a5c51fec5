#include "sf/CheckBoolSetting.h"

#include "sf/BitField.h"

namespace sf {

using parser::TokenList;

const QString CheckBoolSetting::EXPAND_PROMPT = QStringLiteral("Expand");
const QString CheckBoolSetting::UNEXPAND_PROMPT = QStringLiteral("Hide");
const QRegularExpression CheckBoolSetting::SIZE_FORMAT{QStringLiteral("\\[[0-9]*\\]")};
const SettingInput CheckBoolSetting::INPUT_ORDER[] = {InputType, InputBoxes, InputName, InputNote,
                                                      InputEnd};

namespace {
constexpr int MAX_BITS = 1024;
}

CheckBoolSetting::CheckBoolSetting(const QString& codeName, std::unique_ptr<TokenList> tokens,
                                   SettingHost* host)
    : ExpandableSetting(codeName, std::move(tokens), host) {
    int bits = 0;
    if (getType() != TypeUninit || !isExpandable() || !setInputOrder(INPUT_ORDER) ||
        !readBitCount(&bits)) {
        setType(TypeNone);
        return;
    }
    setSizeBits(bits);
    setSizeBytes((bits - 1) / BYTE_SIZE + 1);
    if (!initializeDataPointer() || !initLabels()) {
        setType(TypeNone);
        return;
    }
    setType(TypeCheckBool);
}

bool CheckBoolSetting::readBitCount(int* bits) {
    // The type field: the keyword, then [ N ] (LBracket, a Numeric count, RBracket).
    int begin = -1;
    int end = -1;
    if (!getSettingInputRange(InputType, &begin, &end) || end - begin != 4) {
        return false;
    }
    const TokenList& tokens = *getTokenList();
    if (tokens.at(begin + 1).getType() != parser::LBracket ||
        tokens.at(begin + 2).getType() != parser::Numeric ||
        tokens.at(begin + 3).getType() != parser::RBracket) {
        return false;
    }
    const QString size = tokens.at(begin + 1).getPayload() + tokens.at(begin + 2).getPayload() +
                         tokens.at(begin + 3).getPayload();
    static const QRegularExpression exactSize(
        QRegularExpression::anchoredPattern(SIZE_FORMAT.pattern()));
    if (!exactSize.match(size).hasMatch()) {
        return false;
    }
    bool ok = false;
    const int n = tokens.at(begin + 2).getPayload().toInt(&ok);
    if (!ok || n < 1 || n > MAX_BITS) {
        return false;
    }
    *bits = n;
    return true;
}

bool CheckBoolSetting::initLabels() {
    int begin = -1;
    int end = -1;
    if (!getSettingInputRange(InputBoxes, &begin, &end)) {
        m_labels.clear();
        return true; // no labels field: no boxes
    }
    return BitLabelParser::parse(
        *getTokenList(), begin, end, &m_labels,
        [this](const QString& message) { report(message + debug_getProcessedKXSLine()); });
}

int CheckBoolSetting::subIndices() {
    return typeCheck() ? m_labels.size() : 0;
}

int CheckBoolSetting::expandedSize() {
    return typeCheck() ? m_labels.size() + 1 : 0;
}

int CheckBoolSetting::unexpandedSize() {
    return typeCheck() ? UNEXPANDED_SIZE : 0;
}

bool CheckBoolSetting::subIndexToOffset(int subIndex, int* byteIndex, int* bit) const {
    return typeCheck() &&
           BitField::offset(subIndex, getSizeBytes(), getSizeBits(), false, byteIndex, bit);
}

QVariant CheckBoolSetting::getData(DataRole role) {
    if (!typeCheck()) {
        return QVariant();
    }
    switch (role) {
    case RoleDisplay:
    case RoleFoldedDisplay:
        return EXPAND_PROMPT;
    case RoleExpandedDisplay:
        return UNEXPAND_PROMPT;
    case RoleName:
        return getStringField(InputName);
    case RoleNote:
        return getStringField(InputNote);
    case RoleRaw: {
        quint64 value = 0;
        if (BitField::readUnsigned(getBytes(), &value)) {
            return QVariant(static_cast<qulonglong>(value));
        }
        return Setting::getData(RoleRaw);
    }
    default:
        return QVariant();
    }
}

bool CheckBoolSetting::setData(const QVariant& value) {
    if (!typeCheck()) {
        return false;
    }
    const QByteArray bytes = value.toByteArray();
    if (bytes.size() != getSizeBytes() || bytes == getBytes()) {
        return false;
    }
    return writeRawData(bytes.constData());
}

QVariant CheckBoolSetting::getData(int subIndex, DataRole role) {
    return labelledBitData(*this, typeCheck(), m_labels, subIndex, role);
}

bool CheckBoolSetting::setData(int subIndex, const QVariant& value) {
    return setLabelledBit(*this, typeCheck(), m_labels, subIndex, value);
}

} // namespace sf
