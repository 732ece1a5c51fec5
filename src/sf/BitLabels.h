#pragma once

#include "sf/BitField.h"
#include "sf/SettingTypes.h"
#include "sf/parser/Token.h"

#include <QList>
#include <QString>
#include <QVariant>

#include <functional>

namespace sf {

class SettingHost;

// One labelled bit of a bit field or check box group, with its options.
struct BitLabel {
    QString text;          // the label shown for the bit
    bool inverted = false; // option "inverted": shown state is the opposite of the bit
    QString wsi;           // option wsi = "ID": help identifier of the bit
    QString onText;        // option on = "text": display text when set (default "On")
    QString offText;       // option off = "text": display text when clear (default "Off")
    // The text shown for a state (on or off, as shown: after inversion), defaults applied.
    QString stateText(bool shownOn) const;
};

// Reads a list of bit labels from a field of a definition:
//     { "Label" option option ..., "Label" ..., ... }
// or a single label without braces. Options follow the label text within its entry:
// the word inverted, or one of wsi, on, off followed by = and a (quoted) text.
class BitLabelParser {
public:
    static const QString DEFAULT_ON_TEXT;  // "On"
    static const QString DEFAULT_OFF_TEXT; // "Off"

    using Reporter = std::function<void(const QString&)>;

    // Parses tokens [begin, end) (one field). An empty range gives no labels. False, with
    // a message through report, for a malformed list (the messages end in "in: ", for the
    // caller to append the definition line).
    static bool parse(const parser::TokenList& tokens, int begin, int end, QList<BitLabel>* out,
                      const Reporter& report);
    // Applies the option in tokens [begin, end) (one option) to label. False for an
    // unknown option or a malformed one.
    static bool parseOption(const parser::TokenList& tokens, int begin, int end, BitLabel* label);
};

// What one bit answers for a role, given its label and its stored state: RoleDisplay the
// on/off text of the shown state, RoleEdit the shown state (bool), RoleFullText "1"/"0",
// RoleName and RoleNote the label text, RoleRaw the stored bit (0/1), RoleMinimum 0,
// RoleMaximum 1, RoleToolTip the host's tool tip for the label's wsi (when it has one).
QVariant bitLabelData(const BitLabel& label, bool stored, DataRole role, SettingHost* host);

// What a field of labelled bits (a bit field or a check box group) answers per sub-index:
// nothing when the setting is not of its kind (`ownKind` false), the whole value for a
// negative sub-index, else the answer of the sub-index's labelled bit. A sub-index
// without a label, or one the field's subIndexToOffset refuses, reads as an invalid value.
template <typename Field>
QVariant labelledBitData(Field& field, bool ownKind, const QList<BitLabel>& labels, int subIndex,
                         DataRole role) {
    if (!ownKind || subIndex < 0) {
        return ownKind ? field.getData(role) : QVariant();
    }
    int byte = 0;
    int bit = 0;
    if (subIndex >= labels.size() || !field.subIndexToOffset(subIndex, &byte, &bit)) {
        return QVariant();
    }
    return bitLabelData(labels.at(subIndex), BitField::getBit(field.getRawData(), byte, bit), role,
                        field.getParent());
}

// Sets or clears the labelled bit by the value's truth in shown terms (an inverted label
// stores the opposite), or for a negative sub-index the whole value; false when unchanged,
// when the setting is not of its kind or the sub-index names no labelled bit.
template <typename Field>
bool setLabelledBit(Field& field, bool ownKind, const QList<BitLabel>& labels, int subIndex,
                    const QVariant& value) {
    if (!ownKind || subIndex < 0) {
        return ownKind && field.setData(value);
    }
    int byte = 0;
    int bit = 0;
    if (subIndex >= labels.size() || !field.subIndexToOffset(subIndex, &byte, &bit)) {
        return false;
    }
    return BitField::setBit(field.getRawData(), byte, bit,
                            value.toBool() != labels.at(subIndex).inverted);
}

} // namespace sf
