#pragma once

#include "sf/Setting.h"

namespace sf {

// A setting with sub-indices: parts of its value that the table shows as rows of their
// own (the bits of a bit field). Construction sets the multi flag.
class MultiSetting : public Setting {
    Q_OBJECT
public:
    MultiSetting(const QString& codeName, std::unique_ptr<parser::TokenList> tokens,
                 SettingHost* host);

    using Setting::getData;
    using Setting::setData;
    // One sub-index's answer; a negative sub-index asks for the whole value.
    virtual QVariant getData(int subIndex, DataRole role) = 0;
    virtual bool setData(int subIndex, const QVariant& value) = 0;
    virtual int subIndices() = 0;

    int subIndexCount() override { return subIndices(); }
    QVariant subIndexData(int subIndex, DataRole role) override { return getData(subIndex, role); }

protected:
    bool hasSubIndices() const override { return true; }
};

} // namespace sf
