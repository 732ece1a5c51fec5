#pragma once

#include "sf/WSISetting.h"

namespace sf {

// A number: a signed or unsigned integer of 1 to 64 bits stored most significant byte
// first, shown through a scale chain with units, within a range that may depend on other
// settings.
//
// Definition fields in order: num, WSI, format (s16 / u8 ...), range (lower ` upper, in
// raw units), scale chain ([*10/256]), precision, name, units, note.
class NumSetting : public WSISetting {
    Q_OBJECT
public:
    static constexpr int DOUBLE_PRECISION = 2;
    static const SettingInput INPUT_ORDER[];

    NumSetting(const QString& codeName, std::unique_ptr<parser::TokenList> tokens,
               SettingHost* host);

    QVariant getData(DataRole role) override;
    // The value as a shown (scaled) number: untranslated and written as raw bytes.
    bool setData(const QVariant& value) override;
    // Recomputes the range and clamps the raw value into it (see the documentation).
    bool update(SettingType changedType) override;
    // Computes the range and checks the scale chain (registers the references).
    bool finishSetup() override;

    bool isSigned() const { return m_signed; }
    QString getUnits();
    QString getNiceName();
    int getPrecision();

    // Reads bytes (size in bytes of them, image order) as an integer of the data size.
    bool readDouble(const char* bytes, double* value) const;
    // Truncates value toward zero (saturating at the integer's limits) and writes it in
    // image order into bytes (size in bytes of them). False for NaN.
    bool writeDouble(double value, char* bytes) const;

    // Shown value from a raw value through the scale chain, and back.
    bool translate(double raw, double* scaled);
    bool untranslate(double scaled, double* raw);
    // The same reading / writing raw bytes; without bytes, the setting's own data.
    bool translateBytes(const char* bytes, double* scaled);
    bool translate(double* scaled);
    bool untranslateToBytes(double scaled, char* bytes);

    // Minimum and maximum raw values from the range field.
    bool recomputeRange();
    // Whether the raw value lies within the raw range as last computed (true when the
    // range could not be computed): a cheap check for every paint of a cell.
    bool isWithinRange() const;
    // The raw range as last computed (size in bytes each, image order).
    const QByteArray& getMinimumRaw() const { return m_minimum; }
    const QByteArray& getMaximumRaw() const { return m_maximum; }

    // The smallest power of two not below value (1 below 2).
    static int asPowerOf2(int value);

private:
    bool typeCheck() const { return getType() == TypeNum; }
    bool scaleTokens(parser::TokenList* out);
    QString formatted(double value, int precision, const QString& units) const;

    QByteArray m_minimum;
    QByteArray m_maximum;
    bool m_signed = false;
    bool m_rangeValid = false;
};

} // namespace sf
