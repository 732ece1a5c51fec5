#pragma once

// Small settings and an independent layout checker for the category tests.

#include "sf/ExpandableSetting.h"
#include "sf/Setting.h"
#include "sf/SettingHost.h"
#include "sf/WSISetting.h"

#include <QString>

namespace sf {
class Category;
}

namespace testsupport {

// A host that knows nothing: enough for settings that never evaluate a definition.
class FakeSettingHost : public sf::SettingHost {
public:
    quint32 getKXSFormat() const override { return 1001; }
    QString getTooltip(const QString&) const override { return QString(); }
    QStringList getStringList(const QString&, const QString&) override { return {}; }
    sf::Setting* lookupSetting(const QString&) override { return nullptr; }
};

// A one-byte setting whose raw value can be set (a preset counter, for instance).
class PlainSetting : public sf::Setting {
public:
    PlainSetting(const QString& codeName, sf::SettingHost* host, bool hidden = false);
    bool setData(const QVariant&) override { return false; }
    void setRawByte(quint8 value);
};

// A foldable group taking `expandedRows` rows unfolded and `foldedRows` folded.
class GroupSetting : public sf::ExpandableSetting {
public:
    GroupSetting(const QString& codeName, sf::SettingHost* host, int expandedRows,
                 int foldedRows = 1, bool hidden = false);
    QVariant getData(int, sf::DataRole) override { return QVariant(); }
    bool setData(int, const QVariant&) override { return false; }
    bool setData(const QVariant&) override { return false; }
    int subIndices() override { return m_expandedRows - 1; }
    int expandedSize() override { return m_expandedRows; }
    int unexpandedSize() override { return m_foldedRows; }

private:
    int m_expandedRows;
    int m_foldedRows;
};

// A setting with a help identifier.
class WsiSetting : public sf::WSISetting {
public:
    WsiSetting(const QString& codeName, const QString& wsi, sf::SettingHost* host);
    bool setData(const QVariant&) override { return false; }
};

// Checks a category's grid through its public interface only, without trusting
// Category::isAligned: links agree both ways, every column has a cell in every literal row,
// a row's cells share one size and that size is what its settings ask for (folded or
// unfolded), the size equals every column's count of shown rows, and virtual rows map to
// cells and back. Returns an empty text when all holds, else what is wrong.
QString layoutFault(const sf::Category& category);

} // namespace testsupport
