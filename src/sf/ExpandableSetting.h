#pragma once

#include "sf/MultiSetting.h"

namespace sf {

// A multi setting that the table can fold into one row and unfold into one row per
// sub-index. Construction sets the expandable flag.
class ExpandableSetting : public MultiSetting {
    Q_OBJECT
public:
    ExpandableSetting(const QString& codeName, std::unique_ptr<parser::TokenList> tokens,
                      SettingHost* host);

    // Rows taken while unfolded and while folded.
    virtual int expandedSize() = 0;
    virtual int unexpandedSize() = 0;

    int unfoldedRows() override { return expandedSize(); }
    int foldedRows() override { return unexpandedSize(); }

protected:
    bool folds() const override { return true; }
};

} // namespace sf
