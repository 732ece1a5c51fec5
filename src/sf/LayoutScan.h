#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

namespace sf {

// What the setting manager needs to know about a layout file beyond what the
// interpreter hands out: which category heading each setting entry falls under, and
// whether every setting entry has a size the image could hold.
//
// Setting and category entries are walked exactly as the interpreter walks them (each
// type on its own from the start of the names table), so both see the same entries.
class LayoutScan {
public:
    // Largest size in bytes of a setting entry that a layout may declare; larger ones
    // cannot lie in a setup image (which is read by 16-bit address).
    static constexpr qint32 MAX_SETTING_SIZE = 0x10000;

    // False for bytes that are no layout file or that declare a setting larger than
    // MAX_SETTING_SIZE.
    bool scan(const QByteArray& layout);

    // Label of the last category heading before the first setting entry with that code
    // name; empty when there is none.
    QString headingOf(const QString& codeName) const { return m_headings.value(codeName); }
    int settingEntries() const { return m_settingEntries; }

private:
    QHash<QString, QString> m_headings;
    int m_settingEntries = 0;
};

} // namespace sf
