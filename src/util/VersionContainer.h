#pragma once

#include <QString>
#include <QtGlobal>

namespace util {

// The identity of one firmware version, as named by its firmware ("map") file: the
// firmware version, the settings layout that belongs to it and the text the instrument
// answers to an ENQ query, plus where the files lie. A plain copyable value.
//
// A container whose texts are all empty is "no version"; that is what the firmware-file
// reader returns on every failure.
class VersionContainer {
public:
    QString kxsVersion;    // layout version (record 0xC1); base name of the .kxs file
    QString fwVersion;     // firmware version (record 0xC0); versions are ordered by it
    QString enqString;     // the instrument's identification text (record 0xC2)
    QString kxsFilePath;   // absolute path of the layout file
    QString mapFilePath;   // absolute path of the firmware (map) file
    QString mapGroup;      // folder of the map file relative to the firmware folder, or empty
    quint32 kxsFormat = 0; // format number from the layout file's header

    // True when every text is empty (the format number is not looked at).
    bool isEmpty() const;

    // Orders two versions by their firmware version names: negative when this one orders
    // before other, 0 when they are equal, positive when after. The catalogue lists
    // versions from the highest (ordering last) to the lowest.
    //
    // Legacy names (first letter v or V) order before all others; among themselves, and
    // otherwise, names are compared as lower-cased text. The raw text comparison result
    // is returned, so the value is not always -1/0/+1.
    int compare(const VersionContainer& other) const;

    bool operator==(const VersionContainer& other) const;
    bool operator!=(const VersionContainer& other) const { return !(*this == other); }
};

// Display form of a version name. Legacy names starting with v or V lose all their
// letters and get "KX" in front and a point after their first digit: "v306" is shown as
// "KX3.06", "V3p1" as "KX3.1". Every other name is returned unchanged.
QString printVersion(const QString& version);

} // namespace util
