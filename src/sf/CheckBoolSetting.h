#pragma once

#include "sf/BitLabels.h"
#include "sf/ExpandableSetting.h"

#include <QRegularExpression>

namespace sf {

// A group of check boxes stored as bits, shown as one row that unfolds into one row per
// box. The bit count follows the keyword in brackets: checkbool[16].
//
// Definition fields in order: checkbool[N], box labels, name, note.
class CheckBoolSetting : public ExpandableSetting {
    Q_OBJECT
public:
    static constexpr int BYTE_SIZE = 8;
    static constexpr int UNEXPANDED_SIZE = 1;
    static const QString EXPAND_PROMPT;
    static const QString UNEXPAND_PROMPT;
    static const QRegularExpression SIZE_FORMAT;
    static const SettingInput INPUT_ORDER[];

    CheckBoolSetting(const QString& codeName, std::unique_ptr<parser::TokenList> tokens,
                     SettingHost* host);

    using ExpandableSetting::getData;
    using ExpandableSetting::setData;
    // RoleDisplay and RoleFoldedDisplay "Expand", RoleExpandedDisplay "Hide", RoleName and
    // RoleNote fields 5 and 11; RoleRaw the first byte.
    QVariant getData(DataRole role) override;
    // The value as a byte array of exactly the size in bytes is written over the data.
    bool setData(const QVariant& value) override;
    // Per box: as BoolSetting's per-bit answers.
    QVariant getData(int subIndex, DataRole role) override;
    // Sets or clears the box; a negative sub-index writes the whole value (byte array).
    // False when unchanged or the sub-index names no box.
    bool setData(int subIndex, const QVariant& value) override;
    int subIndices() override;
    int expandedSize() override;
    int unexpandedSize() override;

    // As BoolSetting::subIndexToOffset without the size-in-bits test.
    bool subIndexToOffset(int subIndex, int* byteIndex, int* bit) const;
    const QList<BitLabel>& getLabels() const { return m_labels; }
    const QList<BitLabel>* bitLabels() const override { return &m_labels; }

protected:
    // Reads field InputBoxes into the labels (see BitLabelParser).
    bool initLabels();

private:
    bool typeCheck() const { return getType() == TypeCheckBool; }
    bool readBitCount(int* bits);

    QList<BitLabel> m_labels;
};

} // namespace sf
