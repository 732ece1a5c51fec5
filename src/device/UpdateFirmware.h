#pragma once
// One firmware update from start to end, for the update window and the command line:
//  1. the instrument's version; firmware for another model is refused here, before
//     anything is read, saved or flashed;
//  2. keeping the settings: they are read (the front end shows them), backed up, carried
//     into the new version's defaults, and the person accepts what happens to each;
//  3. the image is flashed; a flash that fails before the helper started writing resets
//     the instrument, which runs its old firmware again, unchanged;
//  4. the instrument must answer with the new version, and its settings are read back.
// An instrument that answers only in its bootloader (its firmware was cut short) is
// recovered: the update is finished with a backup's settings or the new defaults.
#include "device/Operation.h"
#include "firmware/Migration.h"

#include <QColor>

#include <functional>
#include <memory>

namespace sf {
class SetupFile;
}

namespace device {

class UpdateFirmware : public Operation {
    Q_OBJECT
public:
    // Reads the instrument's settings under a title ("Settings before the update.hex");
    // null when the read fails. The file stays the front end's.
    using SettingsReader = std::function<sf::SetupFile*(const QString& title)>;

    UpdateFirmware(util::Uploader& uploader, const util::VersionCatalogue& catalogue,
                   Decisions& decisions, QObject* parent = nullptr);
    ~UpdateFirmware() override;

    // How the instrument's settings are read; by default a read into a file of its own.
    void setSettingsReader(SettingsReader reader) { m_reader = std::move(reader); }
    // Flash with the settings of this setup file (a backup) instead of the instrument's.
    void setSettingsFile(const QString& path) { m_settingsFile = path; }

    // Puts the target version on the instrument; keepSettings false flashes its defaults.
    bool run(const util::VersionContainer& target, bool keepSettings);

    // After run(): the settings before (read or from the settings file) and after the
    // update (null when there are none), what happened to each, where the backup went.
    sf::SetupFile* before() const { return m_before; }
    sf::SetupFile* after() const { return m_after; }
    const firmware::Migration& migration() const { return m_migration; }
    const QString& backup() const { return m_backup; }
    bool recovered() const { return m_recovered; }

    // The backups of the backup folder, newest first.
    static QStringList backups();

signals:
    void log(const QString& text);
    void progressLine(const QString& text);
    void colour(const QColor& colour);

private:
    sf::SetupFile* readOwn(const QString& title);
    // The instrument does not answer the enquiry: whether its bootloader does (then it is
    // reset once, in case it only stayed in its service mode).
    bool probeBootloader(const util::VersionContainer& target, bool* recover);
    bool keepSettings(const util::VersionContainer& current);
    bool openSettingsFile();
    bool flashImage(const util::VersionContainer& target, const QString& image);

    SettingsReader m_reader;
    QString m_settingsFile;
    std::unique_ptr<sf::SetupFile> m_own[3];
    sf::SetupFile* m_before = nullptr;
    sf::SetupFile* m_after = nullptr;
    firmware::Migration m_migration;
    QString m_backup;
    bool m_recovered = false;
};

} // namespace device
