#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

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

    // Label of the last category heading before setting entry `entry` (0 for the first
    // setting entry, counted as the interpreter hands them out); empty when there is none.
    QString headingOf(int entry) const {
        return entry >= 0 && entry < m_headings.size() ? m_headings.at(entry) : QString();
    }
    int settingEntries() const { return static_cast<int>(m_headings.size()); }

private:
    QVector<QString> m_headings; // per setting entry, in order
};

} // namespace sf
