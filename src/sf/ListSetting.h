#pragma once

#include "sf/WSISetting.h"

#include <QStringList>

namespace sf {

// A choice from a list of texts kept in the layout file; the stored byte is the index of
// the chosen option.
//
// Definition fields in order: list, WSI, count constant name, first string name, name,
// note.
class ListSetting : public WSISetting {
    Q_OBJECT
public:
    static constexpr int BYTE_SIZE = 1;
    static const SettingInput INPUT_ORDER[];

    ListSetting(const QString& codeName, std::unique_ptr<parser::TokenList> tokens,
                SettingHost* host);

    // RoleDisplay the option list (QStringList), RoleEdit the stored index, RoleFullText
    // the index as decimal text, RoleName / RoleNote fields 5 and 11, RoleMinimum 0,
    // RoleMaximum the number of options - 1; others as WSISetting.
    QVariant getData(DataRole role) override;
    // An index from 0 to options - 1; false when out of range or equal to the stored one.
    bool setData(const QVariant& value) override;
    bool finishSetup() override;

    const QStringList& getOptions() const { return m_options; }

protected:
    // Asks the host for the string list named by fields 10 and 9.
    bool initOptions();

private:
    bool typeCheck() const { return getType() == TypeList; }

    QStringList m_options;
};

} // namespace sf
