#pragma once

#include "sf/BitLabels.h"
#include "sf/MultiSetting.h"

namespace sf {

// A field of independent bits, one labelled row per bit. Sub-index k is bit k mod 8 of
// byte (size in bytes - 1 - k / 8): bit 0 lies in the last byte.
//
// Definition fields in order: bool, bit count, labels.
class BoolSetting : public MultiSetting {
    Q_OBJECT
public:
    static constexpr int BYTE_SIZE = 8;
    static const SettingInput INPUT_ORDER[];

    BoolSetting(const QString& codeName, std::unique_ptr<parser::TokenList> tokens,
                SettingHost* host);

    using MultiSetting::getData;
    using MultiSetting::setData;
    // Whole value: RoleEdit / RoleRaw the unsigned integer of the bytes, RoleDisplay and
    // RoleFullText it as decimal text, RoleName the base code name, RoleMinimum 0,
    // RoleMaximum the largest value of the size in bits.
    QVariant getData(DataRole role) override;
    // Whole value as an unsigned integer; false when unchanged.
    bool setData(const QVariant& value) override;
    // Per bit: RoleDisplay on/off text, RoleEdit shown state (bool), RoleFullText "1"/"0",
    // RoleName and RoleNote the label, RoleRaw the stored bit (0/1), RoleMinimum 0,
    // RoleMaximum 1, RoleToolTip the host's tool tip of the bit's wsi option.
    QVariant getData(int subIndex, DataRole role) override;
    // Sets or clears the bit by the value's truth (in shown terms); a negative sub-index
    // sets the whole value. False when unchanged or the sub-index names no labelled bit.
    bool setData(int subIndex, const QVariant& value) override;
    int subIndices() override;

    // Byte and bit of a sub-index. Fails for a negative sub-index, a bit position within
    // its byte not below the size in bits (the position, not the sub-index, is compared),
    // and a byte outside the data.
    bool subIndexToOffset(int subIndex, int* byteIndex, int* bit) const;
    const QList<BitLabel>& getLabels() const { return m_labels; }
    const QList<BitLabel>* bitLabels() const override { return &m_labels; }

protected:
    // Reads field InputLabels into the labels (see BitLabelParser).
    bool parseLabels();

private:
    bool typeCheck() const { return getType() == TypeBool; }

    QList<BitLabel> m_labels;
};

} // namespace sf
