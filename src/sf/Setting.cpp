#include "sf/Setting.h"

#include "sf/FieldEvaluator.h"
#include "sf/NumericPreprocessor.h"
#include "sf/SettingHost.h"
#include "sf/StringPurifier.h"
#include "sf/parser/CalcParser.h"

#include <QVarLengthArray>

#include <array>
#include <cstring>

namespace sf {

using parser::Token;
using parser::TokenList;

const QRegularExpression Setting::BATT_PRESET_CHARS{QStringLiteral("A|B")};

namespace {

// Whether BATT_PRESET_CHARS matches c alone; answered from a table of the ASCII
// characters, filled once, since every setting asks.
bool isPresetLetter(QChar c) {
    static const std::array<bool, 128> letters = [] {
        const QRegularExpression exact(
            QRegularExpression::anchoredPattern(Setting::BATT_PRESET_CHARS.pattern()));
        std::array<bool, 128> table{};
        for (int i = 0; i < 128; ++i) {
            table[i] = exact.match(QString(QChar(i))).hasMatch();
        }
        return table;
    }();
    return c.unicode() < 128 && letters[c.unicode()];
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
    const QChar last = m_codeName.at(m_codeName.size() - 1);
    if (isDecimalDigit(last)) {
        m_preset = last.unicode() - '0' - 1;
    } else if (isPresetLetter(last)) {
        m_preset = last.unicode() - 'A';
    }
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

QVariant Setting::subIndexData(int, DataRole) {
    return QVariant();
}

void Setting::setMulti(bool multi) {
    if (hasSubIndices()) {
        m_multi = multi;
    } else {
        m_multi = false;
        m_expandable = false;
    }
}

void Setting::setExpandable(bool expandable) {
    m_expandable = folds() ? expandable : false;
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
    // source and destination may be the same bytes.
    QVarLengthArray<char, 16> copy(m_sizeBytes);
    std::memcpy(copy.data(), source, static_cast<size_t>(m_sizeBytes));
    const bool bigEndian = isBigEndian();
    for (int i = 0; i < m_sizeBytes; ++i) {
        destination[i] = bigEndian ? copy[i] : copy[m_sizeBytes - 1 - i];
    }
    return true;
}

bool Setting::addDependent(Setting* dependent) {
    if (!dependent || m_dependents.contains(dependent)) {
        return false;
    }
    m_dependents.append(QPointer<Setting>(dependent));
    return true;
}

QList<Setting*> Setting::getDependents() const {
    QList<Setting*> live;
    live.reserve(m_dependents.size());
    for (const QPointer<Setting>& d : m_dependents) {
        if (d) {
            live.append(d.data());
        }
    }
    return live;
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
    if (m_reported.contains(message)) {
        return;
    }
    m_reported.insert(message);
    // The host hears of every setting's problems, before anybody else listening here.
    if (m_parent) {
        emit m_parent->problem(message);
    }
    emit problem(message);
}

void Setting::markPurified(SettingInput input) {
    m_purifiedInputs |= quint32(1) << input;
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

// ---- fields of the definition ----
namespace sf {

int Setting::getSettingInputOffset(SettingInput input) const {
    int begin = -1;
    int end = -1;
    return getSettingInputRange(input, &begin, &end) ? begin : -1;
}

bool Setting::getSettingInputRange(SettingInput input, int* begin, int* end) const {
    if (!isInitialized() || !m_inputOrder || !m_tokens) {
        return false;
    }
    const int position = inputPosition(input);
    const FieldEvaluator::Ranges& ranges = fields();
    if (position < 0 || position >= ranges.size()) {
        return false;
    }
    *begin = ranges.at(position).begin;
    *end = ranges.at(position).end;
    return true;
}

const FieldEvaluator::Ranges& Setting::fields() const {
    // Fields move only when tokens are inserted or removed (rewriting a scale chain
    // inserts one; a list changed through getTokenList() is covered too).
    if (!m_fieldsKnown || m_fieldsTokenCount != m_tokens->size()) {
        FieldEvaluator::locateAll(*m_tokens, &m_fields);
        m_fieldsKnown = true;
        m_fieldsTokenCount = m_tokens->size();
    }
    return m_fields;
}

bool Setting::getSettingInput(SettingInput input, TokenList* out) {
    if (!out) {
        return false;
    }
    out->clear();
    int begin = -1;
    int end = -1;
    if (!getSettingInputRange(input, &begin, &end)) {
        return false;
    }
    const FieldEvaluator evaluator(
        *m_tokens,
        [this](TokenList condition, double* value) {
            return evaluateExpression(std::move(condition), value);
        },
        [this](const QString& message) { report(message + debug_getProcessedKXSLine()); });
    return evaluator.evaluate(begin, end, out);
}

bool Setting::hasConditions(int begin, int end) const {
    for (int i = begin; i < end; ++i) {
        const parser::TokenType type = m_tokens->at(i).getType();
        if (type == parser::TernaryOp || type == parser::LCurly || type == parser::RCurly) {
            return true;
        }
    }
    return false;
}

bool Setting::plainFieldRange(SettingInput input, int* begin, int* end) const {
    return getSettingInputRange(input, begin, end) && !hasConditions(*begin, *end);
}

void Setting::evaluateConditions(SettingInput input) {
    int begin = -1;
    int end = -1;
    if (getSettingInputRange(input, &begin, &end) && hasConditions(begin, end)) {
        TokenList ignored;
        getSettingInput(input, &ignored);
    }
}

QString Setting::getStringField(SettingInput input) {
    TokenList tokens;
    if (!getSettingInput(input, &tokens) || tokens.isEmpty()) {
        return QString();
    }
    Token first = tokens.first();
    if ((m_purifiedInputs & (quint32(1) << input)) == 0) {
        purifyStringToken(first);
    }
    return first.getPayload();
}

bool Setting::getSettingInputAsString(SettingInput input, QString* out) {
    if (!out) {
        return false;
    }
    int begin = -1;
    int end = -1;
    if (plainFieldRange(input, &begin, &end)) {
        if (begin == end) {
            return false;
        }
        QString text = m_tokens->at(begin).getPayload();
        for (int i = begin + 1; i < end; ++i) {
            text += QLatin1Char(' ') + m_tokens->at(i).getPayload();
        }
        *out = text;
        return true;
    }
    TokenList tokens;
    if (!getSettingInput(input, &tokens) || tokens.isEmpty()) {
        return false;
    }
    if (tokens.size() == 1) {
        *out = tokens.first().getPayload();
        return true;
    }
    QStringList payloads;
    payloads.reserve(tokens.size());
    for (const Token& t : tokens) {
        payloads.append(t.getPayload());
    }
    *out = payloads.join(QLatin1Char(' '));
    return true;
}

bool Setting::preprocessNumericInput(SettingInput input) {
    const int offset = getSettingInputOffset(input);
    if (offset < 0) {
        return false;
    }
    return NumericPreprocessor::rewrite(*m_tokens, offset, m_parent->getKXSFormat());
}

bool Setting::purifyStringTerminals(SettingInput input) {
    int begin = -1;
    int end = -1;
    if (!isInitialized()) {
        return false;
    }
    if (!getSettingInputRange(input, &begin, &end)) {
        return true; // an absent field has nothing to purify
    }
    StringPurifier purifier(*m_tokens, [this](const QString& message) { report(message); });
    if (!purifier.purifyRange(begin, end)) {
        return false;
    }
    markPurified(input);
    return true;
}

bool Setting::purifyStringToken(Token& token) {
    return StringPurifier::purifyToken(token);
}

bool Setting::resolveReferences(TokenList& tokens) {
    return m_parent &&
           m_parent->replaceDependents(this, tokens, parser::Numeric, ReplaceBehaviour::Strict);
}

bool Setting::evaluateExpression(TokenList tokens, double* value) {
    if (!value || !isInitialized() || !resolveReferences(tokens)) {
        return false;
    }
    // A lone number is its own value (what the calculator would make of it).
    if (tokens.size() == 1 && (tokens.at(0).getType() == parser::Numeric ||
                               tokens.at(0).getType() == parser::Hexadecimal)) {
        return parser::CalcParser::tokenValue(tokens.at(0), value);
    }
    parser::CalcParser calc;
    const double result = calc.calculate(tokens);
    if (!calc.lastCalcSuccessful()) {
        return false;
    }
    *value = result;
    return true;
}

} // namespace sf
