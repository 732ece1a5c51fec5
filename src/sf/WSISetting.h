#pragma once

#include "sf/Setting.h"

namespace sf {

// A setting with a help identifier (its WSI), by which the host finds its tool tip.
class WSISetting : public Setting {
    Q_OBJECT
public:
    WSISetting(const QString& codeName, std::unique_ptr<parser::TokenList> tokens,
               SettingHost* host);

    // RoleToolTip: the host's tool tip for the WSI; other roles as Setting::getData.
    QVariant getData(DataRole role) override;

    const QString& getWsi() const { return m_wsi; }
    QString helpIdentifier() const override { return m_wsi; }
    void setWsi(const QString& wsi) { m_wsi = wsi; }

protected:
    // Field InputWsi must hold exactly one token; its purified payload becomes the WSI.
    bool extractWsi();

private:
    QString m_wsi;
};

} // namespace sf
