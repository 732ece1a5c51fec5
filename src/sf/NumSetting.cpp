#include "sf/NumSetting.h"

#include "sf/SettingHost.h"
#include "sf/parser/CalcParser.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace sf {

using parser::Token;
using parser::TokenList;

const SettingInput NumSetting::INPUT_ORDER[] = {InputType,  InputWsi,       InputFormat, InputRange,
                                                InputScale, InputPrecision, InputName,   InputUnits,
                                                InputNote,  InputEnd};

namespace {

constexpr int MAX_BITS = 64;
constexpr int MAX_PRECISION = 99;
constexpr double TWO_POW_63 = 9223372036854775808.0;
constexpr double TWO_POW_64 = 18446744073709551616.0;

// Unsigned integer from little-endian bytes.
quint64 fromLittleEndian(const char* bytes, int size) {
    quint64 v = 0;
    for (int i = size - 1; i >= 0; --i) {
        v = (v << 8) | static_cast<quint8>(bytes[i]);
    }
    return v;
}

void toLittleEndian(quint64 v, char* bytes, int size) {
    for (int i = 0; i < size; ++i) {
        bytes[i] = static_cast<char>(v & 0xFF);
        v >>= 8;
    }
}

// value truncated toward zero and saturated to a signed integer of size bytes.
qint64 toSigned(double value, int size) {
    const double t = std::trunc(value);
    const int bits = 8 * size;
    if (bits == 64) {
        if (t >= TWO_POW_63) {
            return std::numeric_limits<qint64>::max();
        }
        if (t < -TWO_POW_63) {
            return std::numeric_limits<qint64>::min();
        }
        return static_cast<qint64>(t);
    }
    const double high = std::ldexp(1.0, bits - 1);
    if (t >= high) {
        return static_cast<qint64>(high) - 1;
    }
    if (t < -high) {
        return -static_cast<qint64>(high);
    }
    return static_cast<qint64>(t);
}

// value truncated toward zero and saturated to an unsigned integer of size bytes; values
// of 2^63 and above go through the high bit.
quint64 toUnsigned(double value, int size) {
    const double t = std::trunc(value);
    if (!(t > 0.0)) {
        return 0;
    }
    const int bits = 8 * size;
    if (bits == 64) {
        if (t >= TWO_POW_64) {
            return std::numeric_limits<quint64>::max();
        }
        if (t >= TWO_POW_63) {
            return static_cast<quint64>(t - TWO_POW_63) | (quint64(1) << 63);
        }
        return static_cast<quint64>(t);
    }
    const double limit = std::ldexp(1.0, bits);
    if (t >= limit) {
        return static_cast<quint64>(limit) - 1;
    }
    return static_cast<quint64>(t);
}

// A value that differs from an integer only by floating-point noise is that integer, so
// that 0.29 shown through *100 stores 29 and not 28 once truncated.
double snapToInteger(double value) {
    const double nearest = std::round(value);
    if (std::fabs(value - nearest) <= 1e-9 * std::max(1.0, std::fabs(value))) {
        return nearest;
    }
    return value;
}

} // namespace

NumSetting::NumSetting(const QString& codeName, std::unique_ptr<TokenList> tokens,
                       SettingHost* host)
    : WSISetting(codeName, std::move(tokens), host) {
    if (getType() != TypeUninit || !setInputOrder(INPUT_ORDER)) {
        setType(TypeNone);
        return;
    }
    // The format is s or u followed by one to nine digits: s16, u8.
    QString text;
    int bits = 0;
    if (getSettingInputAsString(InputFormat, &text) && text.size() >= 2 && text.size() <= 10 &&
        (text.at(0) == QLatin1Char('s') || text.at(0) == QLatin1Char('u'))) {
        for (int i = 1; i < text.size() && bits >= 0; ++i) {
            const char16_t c = text.at(i).unicode();
            bits = (c >= '0' && c <= '9') ? bits * 10 + (c - '0') : -1;
        }
    }
    if (bits < 1 || bits > MAX_BITS) {
        setType(TypeNone);
        return;
    }
    m_signed = text.at(0) == QLatin1Char('s');
    setSizeBits(bits);
    setSizeBytes(asPowerOf2((bits - 1) / 8 + 1));
    m_minimum = QByteArray(getSizeBytes(), '\0');
    m_maximum = QByteArray(getSizeBytes(), '\0');
    if (!initializeDataPointer() || !extractWsi()) {
        setType(TypeNone);
        return;
    }
    preprocessNumericInput(InputRange);
    preprocessNumericInput(InputScale);
    if (!purifyStringTerminals(InputName) || !purifyStringTerminals(InputUnits)) {
        setType(TypeNone);
        return;
    }
    setType(TypeNum);
}

int NumSetting::asPowerOf2(int value) {
    if (value < 2) {
        return 1;
    }
    int p = 1;
    while (p < value && p < (1 << 30)) {
        p *= 2;
    }
    return p;
}

QString NumSetting::getUnits() {
    return typeCheck() ? getStringField(InputUnits) : QString();
}

QString NumSetting::getNiceName() {
    return typeCheck() ? getStringField(InputName) : QString();
}

int NumSetting::getPrecision() {
    QString text;
    if (!typeCheck() || !getSettingInputAsString(InputPrecision, &text)) {
        return DOUBLE_PRECISION;
    }
    bool ok = false;
    const int precision = text.toInt(&ok);
    return (ok && precision >= 0 && precision <= MAX_PRECISION) ? precision : DOUBLE_PRECISION;
}

bool NumSetting::readDouble(const char* bytes, double* value) const {
    const int size = getSizeBytes();
    if (!isInitialized() || !bytes || !value ||
        (size != 1 && size != 2 && size != 4 && size != 8)) {
        return false;
    }
    char host[8] = {};
    if (!convertEndian(bytes, host)) {
        return false;
    }
    const quint64 u = fromLittleEndian(host, size);
    if (!m_signed) {
        *value = static_cast<double>(u);
        return true;
    }
    switch (size) {
    case 1:
        *value = static_cast<qint8>(static_cast<quint8>(u));
        break;
    case 2:
        *value = static_cast<qint16>(static_cast<quint16>(u));
        break;
    case 4:
        *value = static_cast<qint32>(static_cast<quint32>(u));
        break;
    default:
        *value = static_cast<double>(static_cast<qint64>(u));
        break;
    }
    return true;
}

bool NumSetting::writeDouble(double value, char* bytes) const {
    const int size = getSizeBytes();
    if (!isInitialized() || !bytes || std::isnan(value) ||
        (size != 1 && size != 2 && size != 4 && size != 8)) {
        return false;
    }
    const quint64 u =
        m_signed ? static_cast<quint64>(toSigned(value, size)) : toUnsigned(value, size);
    char host[8] = {};
    toLittleEndian(u, host, size);
    return convertEndian(host, bytes);
}

bool NumSetting::scaleTokens(TokenList* out) {
    out->clear();
    if (getSettingInputOffset(InputScale) < 0) {
        return true; // no scale field: shown value = raw value
    }
    TokenList tokens;
    int begin = -1;
    int end = -1;
    if (plainFieldRange(InputScale, &begin, &end)) {
        // The chain inside the brackets, read in place ("[]" leaves nothing to copy).
        if (end - begin == 1) {
            return false;
        }
        if (end - begin > 2) {
            tokens = getTokenList()->mid(begin + 1, end - begin - 2);
        }
    } else {
        if (!getSettingInput(InputScale, &tokens) || tokens.size() == 1) {
            return false;
        }
        if (tokens.size() >= 2) {
            tokens.removeFirst();
            tokens.removeLast();
        }
    }
    if (!resolveReferences(tokens)) {
        return false;
    }
    *out = tokens;
    return true;
}

bool NumSetting::translate(double raw, double* scaled) {
    TokenList tokens;
    if (!typeCheck() || !scaled || !scaleTokens(&tokens)) {
        return false;
    }
    parser::CalcParser calc;
    const double v = calc.calculateScaledFromRaw(raw, tokens);
    if (!calc.lastCalcSuccessful()) {
        return false;
    }
    *scaled = v;
    return true;
}

bool NumSetting::untranslate(double scaled, double* raw) {
    TokenList tokens;
    if (!typeCheck() || !raw || !scaleTokens(&tokens)) {
        return false;
    }
    parser::CalcParser calc;
    const double v = calc.calculateRawFromScaled(scaled, tokens);
    if (!calc.lastCalcSuccessful()) {
        return false;
    }
    *raw = v;
    return true;
}

bool NumSetting::translateBytes(const char* bytes, double* scaled) {
    double raw = 0.0;
    return typeCheck() && readDouble(bytes, &raw) && translate(raw, scaled);
}

bool NumSetting::translate(double* scaled) {
    return translateBytes(getRawData(), scaled);
}

bool NumSetting::untranslateToBytes(double scaled, char* bytes) {
    double raw = 0.0;
    return typeCheck() && untranslate(scaled, &raw) && writeDouble(snapToInteger(raw), bytes);
}

bool NumSetting::recomputeRange() {
    if (!typeCheck()) {
        return false;
    }
    if (getSettingInputOffset(InputRange) < 0) {
        // No range field: the whole range of the size in bits.
        const double span = std::ldexp(1.0, getSizeBits() - (m_signed ? 1 : 0));
        const bool ok = writeDouble(m_signed ? -span : 0.0, m_minimum.data()) &&
                        writeDouble(span - 1.0, m_maximum.data());
        m_rangeValid = ok;
        return ok;
    }
    preprocessNumericInput(InputRange);
    // The field's tokens are [first, last) of `tokens`: a field without conditions is
    // read in place (through a shared copy of the whole list, so that nothing evaluated
    // below can change it underneath), any other is evaluated first.
    TokenList tokens;
    int first = 0;
    int last = 0;
    if (plainFieldRange(InputRange, &first, &last)) {
        tokens = *getTokenList();
    } else {
        if (!getSettingInput(InputRange, &tokens)) {
            return false;
        }
        first = 0;
        last = static_cast<int>(tokens.size());
    }
    int split = -1;
    for (int i = first; i < last && split < 0; ++i) {
        if (tokens.at(i).getType() == parser::Range) {
            split = i;
        }
    }
    if (split < 0) {
        return false;
    }
    int lowBegin = first;
    int highEnd = last;
    // A range may be written in brackets: [lower ` upper].
    if (split > first && split + 1 < highEnd && tokens.at(first).getType() == parser::LBracket &&
        tokens.at(highEnd - 1).getType() == parser::RBracket) {
        ++lowBegin;
        --highEnd;
    }
    // Each bound is an expression; a lone number (the usual case) is read as it is.
    const auto bound = [&](int begin, int end, double* value) {
        const bool number = end - begin == 1 && (tokens.at(begin).getType() == parser::Numeric ||
                                                 tokens.at(begin).getType() == parser::Hexadecimal);
        return number ? parser::CalcParser::tokenValue(tokens.at(begin), value)
                      : evaluateExpression(tokens.mid(begin, end - begin), value);
    };
    double low = 0.0;
    double high = 0.0;
    if (!bound(lowBegin, split, &low) || !bound(split + 1, highEnd, &high)) {
        return false;
    }
    char minimum[8] = {};
    char maximum[8] = {};
    if (!writeDouble(low, minimum) || !writeDouble(high, maximum)) {
        return false;
    }
    std::memcpy(m_minimum.data(), minimum, static_cast<size_t>(getSizeBytes()));
    std::memcpy(m_maximum.data(), maximum, static_cast<size_t>(getSizeBytes()));
    m_rangeValid = true;
    return true;
}

bool NumSetting::isWithinRange() const {
    double value = 0.0;
    double low = 0.0;
    double high = 0.0;
    if (!m_rangeValid || !readDouble(getRawData(), &value) ||
        !readDouble(m_minimum.constData(), &low) || !readDouble(m_maximum.constData(), &high)) {
        return true;
    }
    return std::min(low, high) <= value && value <= std::max(low, high);
}

bool NumSetting::update(SettingType) {
    if (!typeCheck()) {
        return false;
    }
    if (!recomputeRange()) {
        return false;
    }
    double value = 0.0;
    double low = 0.0;
    double high = 0.0;
    if (!readDouble(getRawData(), &value) || !readDouble(m_minimum.constData(), &low) ||
        !readDouble(m_maximum.constData(), &high)) {
        return false;
    }
    if (low > high) {
        std::swap(low, high);
    }
    if (value < low) {
        return writeDouble(low, getRawData());
    }
    if (value > high) {
        return writeDouble(high, getRawData());
    }
    return true;
}

bool NumSetting::finishSetup() {
    if (!typeCheck()) {
        return false;
    }
    // Evaluating every field once registers this setting with the settings its
    // conditions, range and scale chain refer to.
    const bool range = recomputeRange();
    double shown = 0.0;
    const bool scale = translate(&shown);
    for (const SettingInput input : {InputPrecision, InputName, InputUnits, InputNote}) {
        evaluateConditions(input);
    }
    return range && scale;
}

QString NumSetting::formatted(double value, int precision, const QString& units) const {
    return QString::number(value, 'f', precision) + QLatin1Char(' ') + units;
}

bool NumSetting::setData(const QVariant& value) {
    bool ok = false;
    const double scaled = value.toDouble(&ok);
    return typeCheck() && ok && untranslateToBytes(scaled, getRawData());
}

QVariant NumSetting::getData(DataRole role) {
    if (!typeCheck()) {
        return QVariant();
    }
    double v = 0.0;
    switch (role) {
    case RoleDisplay:
        if (!translate(&v)) {
            return QVariant();
        }
        return formatted(v, getPrecision(), getUnits());
    case RoleEdit:
        return translate(&v) ? QVariant(v) : QVariant();
    case RoleFullText:
        return translate(&v) ? QVariant(QString::number(v, 'f', 99)) : QVariant();
    case RoleName:
        return getNiceName();
    case RoleMinimum:
        return translateBytes(m_minimum.constData(), &v) ? QVariant(v) : QVariant();
    case RoleMaximum:
        return translateBytes(m_maximum.constData(), &v) ? QVariant(v) : QVariant();
    case RolePrecision:
        return getPrecision();
    case RoleNote:
        return getStringField(InputNote);
    case RoleStatus: {
        double minimum = 0.0;
        double maximum = 0.0;
        if (!translateBytes(m_minimum.constData(), &minimum) ||
            !translateBytes(m_maximum.constData(), &maximum)) {
            return QVariant();
        }
        const int precision = getPrecision();
        const QString units = getUnits();
        return getNiceName() + QStringLiteral(" | Maximum Value: ") +
               formatted(maximum, precision, units) + QStringLiteral(" | Minimum Value: ") +
               formatted(minimum, precision, units);
    }
    case RoleRaw: {
        // Read as an integer: a double cannot hold every 64-bit value.
        const int size = getSizeBytes();
        char host[8] = {};
        if (!readDouble(getRawData(), &v) || !convertEndian(getRawData(), host)) {
            return QVariant();
        }
        const quint64 u = fromLittleEndian(host, size);
        if (!m_signed) {
            return QVariant(static_cast<qulonglong>(u));
        }
        const int unused = 64 - 8 * size;
        return QVariant(static_cast<qlonglong>(static_cast<qint64>(u << unused) >> unused));
    }
    default:
        return WSISetting::getData(role);
    }
}

} // namespace sf
