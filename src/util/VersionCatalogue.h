#pragma once

#include "util/VersionContainer.h"

#include <QList>
#include <QString>

namespace util {

class VersionParser;

// The catalogue of known firmware versions: kept sorted from the highest version to the
// lowest (by VersionContainer::compare), never holding two versions that compare equal.
// Also scans a firmware folder into such a catalogue, as the application does at
// start-up and whenever firmware files were added or removed.
class VersionCatalogue {
public:
    // Sorted insert: before the first entry the new version orders after; a version
    // that compares equal to one already there is dropped (the one there is kept).
    // Returns whether the version was added.
    bool add(const VersionContainer& version);
    // add() for each, in list order.
    void add(const QList<VersionContainer>& versions);
    void clear() { m_versions.clear(); }

    const QList<VersionContainer>& versions() const { return m_versions; }
    bool isEmpty() const { return m_versions.isEmpty(); }
    int size() const { return m_versions.size(); }

    // The version with that firmware version or identification text; an empty one when
    // there is none (or the text is empty).
    VersionContainer byFw(const QString& fw) const;
    VersionContainer byEnq(const QString& enq) const;
    // Every version with that layout version, in catalogue order.
    QList<VersionContainer> sharingLayout(const QString& kxs) const;

    // Reads every "*.kxhex" file in firmwareDir and its sub-folders with the parser
    // (whose signals report each problem as it is met) against the layout folder kxsDir.
    // Unusable files are skipped. Each version's mapGroup is the folder of its file
    // relative to firmwareDir, empty for files directly in it. Returned in walk order:
    // in each folder its files by name, then its sub-folders by name. Hidden entries
    // and symbolic links to folders are not entered.
    static QList<VersionContainer> scanFirmwareFolder(const QString& firmwareDir,
                                                      const QString& kxsDir, VersionParser& parser);

    // Scans the folder and adds what it found. True when at least one usable firmware
    // file was found (even if all of them were already in the catalogue).
    bool enumerate(const QString& firmwareDir, const QString& kxsDir, VersionParser& parser);

private:
    QList<VersionContainer> m_versions;
};

} // namespace util
