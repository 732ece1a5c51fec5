#include "sf/Setting.h"

#include "sf/ExpandableSetting.h"
#include "sf/MultiSetting.h"
#include "sf/SettingHost.h"

#include <cstring>

namespace sf {

using parser::Token;
using parser::TokenList;

const QRegularExpression Setting::BATT_PRESET_CHARS{QStringLiteral("A|B")};

namespace {

bool isPresetLetter(QChar c) {
    static const QRegularExpression exact(
        QRegularExpression::anchoredPattern(Setting::BATT_PRESET_CHARS.pattern()));
    return exact.match(QString(c)).hasMatch();
}

bool isDecimalDigit(QChar c) {
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

} // namespace

Setting::Setting(const QString& codeName, std::unique_ptr<TokenList> tokens, SettingHost* host)
    : m_codeName(codeName), m_tokens(std::move(tokens)), m_parent(host) {
    if (m_codeName.isEmpty() || !m_tokens || !m_parent) {
        return;
    }
    const QChar last = m_codeName.back();
    if (isDecimalDigit(last)) {
        m_preset = last.unicode() - '0' - 1;
    } else if (isPresetLetter(last)) {
        m_preset = last.unicode() - 'A';
    }
    connect(this, &Setting::problem, m_parent, &SettingHost::problem);
    m_type = TypeUninit;
}

Setting::~Setting() = default;

QVariant Setting::getData(DataRole role) {
    if (!isInitialized() || role != RoleRaw || m_data.isEmpty()) {
        return QVariant();
    }
    return QVariant(static_cast<int>(static_cast<quint8>(m_data.at(0))));
}

bool Setting::update(SettingType) {
    return true;
}

bool Setting::finishSetup() {
    return true;
}

bool Setting::isBigEndian() const {
    return false;
}

QString Setting::getBaseCodeName() const {
    if (m_codeName.isEmpty()) {
        return m_codeName;
    }
    const QChar last = m_codeName.back();
    if (isDecimalDigit(last) || isPresetLetter(last)) {
        return m_codeName.left(m_codeName.size() - 1);
    }
    return m_codeName;
}

int Setting::getPreset() const {
    return isInitialized() ? m_preset : 0;
}

void Setting::setMulti(bool multi) {
    if (dynamic_cast<MultiSetting*>(this)) {
        m_multi = multi;
    } else {
        m_multi = false;
        m_expandable = false;
    }
}

void Setting::setExpandable(bool expandable) {
    m_expandable = dynamic_cast<ExpandableSetting*>(this) ? expandable : false;
}

TokenList* Setting::getTokenList() const {
    return isInitialized() ? m_tokens.get() : nullptr;
}

SettingHost* Setting::getParent() const {
    return isInitialized() ? m_parent : nullptr;
}

bool Setting::setInputOrder(const SettingInput* order) {
    if (!isInitialized() || !order) {
        return false;
    }
    m_inputOrder = order;
    return true;
}

char* Setting::getRawData() {
    return (isInitialized() && !m_data.isEmpty()) ? m_data.data() : nullptr;
}

const char* Setting::getRawData() const {
    return (isInitialized() && !m_data.isEmpty()) ? m_data.constData() : nullptr;
}

QByteArray Setting::getBytes() const {
    return isInitialized() ? m_data : QByteArray();
}

char* Setting::initializeDataPointer() {
    if (m_sizeBits < 1 || m_sizeBytes < 1) {
        return nullptr;
    }
    m_data = QByteArray(m_sizeBytes, '\0');
    return m_data.data();
}

bool Setting::writeRawData(const char* bytes) {
    char* data = getRawData();
    if (!data || !bytes || m_data.size() != m_sizeBytes) {
        return false;
    }
    std::memmove(data, bytes, static_cast<size_t>(m_sizeBytes));
    return true;
}

bool Setting::convertEndian(const char* source, char* destination) const {
    if (!isInitialized() || !source || !destination || m_sizeBytes < 1) {
        return false;
    }
    const QByteArray copy(source, m_sizeBytes);
    for (int i = 0; i < m_sizeBytes; ++i) {
        destination[i] = isBigEndian() ? copy.at(i) : copy.at(m_sizeBytes - 1 - i);
    }
    return true;
}

bool Setting::addDependent(Setting* dependent) {
    if (!dependent || m_dependents.contains(dependent)) {
        return false;
    }
    m_dependents.append(dependent);
    return true;
}

int Setting::addReference() {
    return ++m_referenceCount;
}

int Setting::dereference() {
    if (m_referenceCount > 0) {
        --m_referenceCount;
    }
    return m_referenceCount;
}

QString Setting::debug_getProcessedKXSLine() const {
    QString line;
    if (m_tokens) {
        for (const Token& t : *m_tokens) {
            line += t.getPayload() + QLatin1Char(' ');
        }
    }
    return line;
}

void Setting::report(const QString& message) {
    emit problem(message);
}

void Setting::markPurified(SettingInput input) {
    m_purifiedInputs.insert(input);
}

int Setting::inputPosition(SettingInput input) const {
    if (!m_inputOrder) {
        return -1;
    }
    for (int i = 0; m_inputOrder[i] != InputEnd; ++i) {
        if (m_inputOrder[i] == input) {
            return i;
        }
    }
    return -1;
}

} // namespace sf

// ---- field access (being filled in) ----
namespace sf {
bool Setting::getSettingInput(SettingInput, TokenList* out) {
    if (out) {
        out->clear();
    }
    return false;
}
int Setting::getSettingInputOffset(SettingInput) const {
    return -1;
}
bool Setting::getSettingInputRange(SettingInput, int*, int*) const {
    return false;
}
QString Setting::getStringField(SettingInput) {
    return QString();
}
bool Setting::getSettingInputAsString(SettingInput, QString*) {
    return false;
}
bool Setting::preprocessNumericInput(SettingInput) {
    return false;
}
bool Setting::purifyStringTerminals(SettingInput) {
    return false;
}
bool Setting::purifyStringToken(Token&) {
    return false;
}
bool Setting::evaluateExpression(TokenList, double*) {
    return false;
}
bool Setting::resolveReferences(TokenList&) {
    return false;
}
} // namespace sf
