#include "util/VersionCatalogue.h"

#include "app/Constants.h"
#include "util/VersionParser.h"

#include <QDir>
#include <QFileInfo>

namespace util {

namespace {

// Deeper folders are not entered (a guard against bind-mount loops; real firmware trees
// are two or three levels deep).
constexpr int MaxFolderDepth = 32;

// Depth-first walk in a fixed order: the folder's matching files by name, then its
// sub-folders by name. Symbolic links to folders are not followed.
void collectFirmwareFiles(const QDir& folder, int depth, QList<QFileInfo>& out) {
    const QStringList filter{ui::FILTER_ONLY_FW};
    const QFileInfoList files = folder.entryInfoList(filter, QDir::Files, QDir::Name);
    for (const QFileInfo& file : files) {
        if (file.isFile()) {
            out.append(file);
        }
    }
    const QFileInfoList folders =
        folder.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo& sub : folders) {
        if (!sub.isSymLink() && depth < MaxFolderDepth) {
            collectFirmwareFiles(QDir(sub.absoluteFilePath()), depth + 1, out);
        }
    }
}

} // namespace

bool VersionCatalogue::add(const VersionContainer& version) {
    for (int i = 0; i < m_versions.size(); ++i) {
        const int order = version.compare(m_versions.at(i));
        if (order > 0) {
            m_versions.insert(i, version);
            return true;
        }
        if (order == 0) {
            return false;
        }
    }
    m_versions.append(version);
    return true;
}

void VersionCatalogue::add(const QList<VersionContainer>& versions) {
    for (const VersionContainer& version : versions) {
        add(version);
    }
}

QList<VersionContainer> VersionCatalogue::scanFirmwareFolder(const QString& firmwareDir,
                                                             const QString& kxsDir,
                                                             VersionParser& parser) {
    QList<VersionContainer> found;
    const QDir root(firmwareDir);
    if (!root.exists()) {
        return found;
    }
    QList<QFileInfo> files;
    collectFirmwareFiles(QDir(root.absolutePath()), 0, files);

    const QDir layouts(kxsDir);
    for (const QFileInfo& file : files) {
        VersionContainer version =
            parser.parseFirmwareFile(file.fileName(), file.absoluteDir(), layouts);
        if (version.kxsVersion.isEmpty()) {
            continue;
        }
        const QString group = root.relativeFilePath(file.absolutePath());
        if (!group.isEmpty() && group != QLatin1String(".")) {
            version.mapGroup = group;
        }
        found.append(version);
    }
    return found;
}

bool VersionCatalogue::enumerate(const QString& firmwareDir, const QString& kxsDir,
                                 VersionParser& parser) {
    const QList<VersionContainer> found = scanFirmwareFolder(firmwareDir, kxsDir, parser);
    add(found);
    return !found.isEmpty();
}

VersionContainer VersionCatalogue::byFw(const QString& fw) const {
    for (const VersionContainer& v : m_versions) {
        if (!fw.isEmpty() && v.fwVersion == fw) {
            return v;
        }
    }
    return VersionContainer();
}

VersionContainer VersionCatalogue::byEnq(const QString& enq) const {
    for (const VersionContainer& v : m_versions) {
        if (!enq.isEmpty() && v.enqString == enq) {
            return v;
        }
    }
    return VersionContainer();
}

QList<VersionContainer> VersionCatalogue::sharingLayout(const QString& kxs) const {
    QList<VersionContainer> sharing;
    for (const VersionContainer& v : m_versions) {
        if (v.kxsVersion == kxs) {
            sharing.append(v);
        }
    }
    return sharing;
}

} // namespace util
