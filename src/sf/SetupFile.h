#pragma once

#include "util/VersionContainer.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace sf {

class Setting;
class SettingManager;

// A setting named on the command line: the whole setting, or one bit (sub-index) of a
// bit field or check box group.
struct SettingRef {
    sf::Setting* setting = nullptr;
    int subIndex = -1;
};

// One setup or firmware file opened through a setting manager: the one way the
// command-line tool and the application's file models open, look up and save a file.
// The version comes from the file's firmware version and the catalogue of
// ./data/firmware (layouts in ./data/kxs), or from a layout file given explicitly; the
// manager chooses the processor kind from the layout's version text and loads the image
// ignoring the versions it records.
class SetupFile {
public:
    SetupFile();
    ~SetupFile();
    SetupFile(const SetupFile&) = delete;
    SetupFile& operator=(const SetupFile&) = delete;

    // Opens the file at path (absolute). With an empty layoutPath the file's firmware
    // version must be in the catalogue; otherwise the layout file is used and the file's
    // own metadata names the versions. False with *error set when the version cannot be
    // found or the file cannot be loaded; problems with single settings do not fail.
    bool open(const QString& path, const QString& layoutPath, QString* error);
    // Opens the file at path with a version already chosen (the application's catalogue):
    // the manager's load result, a LoadError below 0 or the number of problems met.
    int open(const QString& path, const util::VersionContainer& version);

    sf::SettingManager& manager() { return *m_manager; }
    const sf::SettingManager& manager() const { return *m_manager; }
    const util::VersionContainer& version() const { return m_version; }
    const QString& path() const { return m_path; }
    // The number of problems the load counted (settings the image does not hold or that
    // could not be built) and the messages the settings reported.
    int problems() const { return m_problems; }
    const QStringList& messages() const { return m_messages; }

    // Finds a setting by code name or help identifier (WSI), a bit as NAME[k], or a bit
    // by the help identifier of its label. False with *error naming what is wrong.
    bool resolve(const QString& name, SettingRef* ref, QString* error) const;

    // Saves the settings into target the way the application saves a setup file (the
    // whole address range, records replaced, reformatted with 16 bytes per record). The
    // image is written to a temporary file next to target, which then replaces target in
    // one step: target is either the old or the new file. The file itself is the
    // starting image, so target may be a new file.
    // The catalogue's version (./data/firmware, layouts in ./data/kxs) of a firmware
    // version; false with *error saying why when it has none.
    static bool catalogueVersion(const QString& fwVersion, util::VersionContainer* version,
                                 QString* error);
    // The firmware version a setup file records (empty when it records none).
    static QString recordedFirmware(const QString& path);

    // reformat and onlyEnabled are the manager's (writeAppendRawSettings).
    bool saveTo(const QString& target, QString* error, bool reformat = true,
                bool onlyEnabled = false);

private:
    bool versionFromLayout(const QString& layoutPath, const QString& fw, const QString& kxs,
                           const QString& enq, QString* error);

    std::unique_ptr<sf::SettingManager> m_manager;
    util::VersionContainer m_version;
    QString m_path;
    int m_problems = 0;
    QStringList m_messages;
};

} // namespace sf
