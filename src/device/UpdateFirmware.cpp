#include "device/UpdateFirmware.h"

#include "app/Constants.h"
#include "device/Decisions.h"
#include "device/Models.h"
#include "device/ReadSettings.h"
#include "firmware/FirmwareUpdate.h"
#include "sf/SetupFile.h"
#include "util/Uploader.h"
#include "util/VersionCatalogue.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace device {

namespace {

constexpr int CHECK_ROUNDS = 3;

QString sentences(const QString& first, const QString& second) {
    return first.isEmpty() ? second : first + QLatin1Char('\n') + second;
}

} // namespace

UpdateFirmware::UpdateFirmware(util::Uploader& uploader, const util::VersionCatalogue& catalogue,
                               Decisions& decisions, QObject* parent)
    : Operation(uploader, catalogue, decisions, parent),
      m_reader([this](const QString& title) { return readOwn(title); }) {}

UpdateFirmware::~UpdateFirmware() = default;

QStringList UpdateFirmware::backups() {
    QStringList paths;
    const QFileInfoList files =
        QDir(ui::PATH_BACKUPS).entryInfoList({QStringLiteral("*.hex")}, QDir::Files, QDir::Time);
    for (const QFileInfo& file : files) {
        paths << file.absoluteFilePath();
    }
    return paths;
}

sf::SetupFile* UpdateFirmware::readOwn(const QString& title) {
    Q_UNUSED(title)
    ReadSettings read(m_uploader, m_catalogue, m_decisions);
    connect(&read, &Operation::status, this, &Operation::status);
    connect(&read, &Operation::resetting, this, &Operation::resetting);
    if (!read.run(false)) {
        return nullptr;
    }
    auto file = std::make_unique<sf::SetupFile>();
    if (file->open(QFileInfo(ReadSettings::imagePath()).absoluteFilePath(), read.version()) < 0) {
        return nullptr;
    }
    for (std::unique_ptr<sf::SetupFile>& slot : m_own) {
        if (!slot) {
            slot = std::move(file);
            return slot.get();
        }
    }
    return nullptr;
}

bool UpdateFirmware::probeBootloader(const util::VersionContainer& target, bool* recover) {
    emit log(QObject::tr("The Korvex does not answer in its display mode; looking for its "
                         "update mode..."));
    if (!m_uploader.probeForDevice()) {
        return fail(ui::MESSAGE_UPDATE_VERSION_NONE);
    }
    const QString model = modelOfIdentifier(m_uploader.getDeviceVersion());
    if (!model.isEmpty() && model.compare(modelOf(target), Qt::CaseInsensitive) != 0) {
        resetInstrument();
        return fail(ui::MESSAGE_UPDATE_OTHER_MODEL.arg(model, modelOf(target)));
    }
    // It may only have stayed in its service mode after a failed operation.
    resetInstrument();
    *recover = detectVersion().isEmpty();
    return true;
}

bool UpdateFirmware::keepSettings(const util::VersionContainer& current) {
    if (m_enq.isEmpty()) {
        return fail(ui::MESSAGE_UPDATE_VERSION_NONE);
    }
    if (current.fwVersion.isEmpty()) {
        return fail(ui::MESSAGE_UPDATE_UNKNOWN_FIRMWARE.arg(m_enq));
    }
    emit log(QObject::tr("The Korvex runs firmware %1. Reading its settings...")
                 .arg(util::printVersion(current.fwVersion)));
    m_before = m_reader(QObject::tr("Settings before the update.hex"));
    if (!m_before) {
        return fail(ui::ERROR_READHEX);
    }
    QDir().mkpath(ui::PATH_BACKUPS);
    const QString backup =
        m_decisions.backupPath(firmware::FirmwareUpdate::backupPath(current.fwVersion));
    if (!backup.isEmpty()) {
        QString error;
        if (!m_before->saveTo(backup, &error, true, false)) {
            return fail(ui::ERROR_SAVEHEX.arg(backup));
        }
        m_backup = backup;
        emit log(QObject::tr("Backup saved in %1").arg(backup));
    }
    return true;
}

bool UpdateFirmware::openSettingsFile() {
    auto file = std::make_unique<sf::SetupFile>();
    QString error;
    if (!file->open(QFileInfo(m_settingsFile).absoluteFilePath(), QString(), &error)) {
        return fail(error);
    }
    m_own[0] = std::move(file);
    m_before = m_own[0].get();
    m_backup = m_settingsFile;
    emit log(QObject::tr("The settings of %1 go into the new firmware.").arg(m_settingsFile));
    return true;
}

bool UpdateFirmware::flashImage(const util::VersionContainer& target, const QString& image) {
    firmware::FirmwareUpdate update;
    connect(&update, &firmware::FirmwareUpdate::log, this, &UpdateFirmware::log);
    connect(&update, &firmware::FirmwareUpdate::progressLine, this, &UpdateFirmware::progressLine);
    connect(&update, &firmware::FirmwareUpdate::colour, this, &UpdateFirmware::colour);
    if (update.flash(m_uploader.getSerialPort(), image, modelOf(target))) {
        return true;
    }
    const QString reason = update.refusal().isEmpty() ? update.failureReason() : update.refusal();
    if (!update.writingStarted()) {
        if (!update.identifier().isEmpty()) {
            resetInstrument();
        }
        return fail(sentences(reason, ui::MESSAGE_UPDATE_UNCHANGED));
    }
    QString interrupted = ui::MESSAGE_UPDATE_INTERRUPTED;
    if (!m_backup.isEmpty()) {
        interrupted += QLatin1Char(' ') + ui::MESSAGE_UPDATE_BACKUP_KEPT.arg(m_backup);
    }
    return fail(sentences(reason, interrupted));
}

bool UpdateFirmware::run(const util::VersionContainer& target, bool keep) {
    m_error.clear();
    m_before = m_after = nullptr;
    m_migration = firmware::Migration();
    m_backup.clear();
    m_recovered = false;
    for (std::unique_ptr<sf::SetupFile>& slot : m_own) {
        slot.reset();
    }
    if (target.fwVersion.isEmpty()) {
        return fail(QObject::tr("Please choose the firmware to put on the Korvex."));
    }
    detectVersion();
    bool recover = false;
    if (m_enq.isEmpty() && !probeBootloader(target, &recover)) {
        return false;
    }
    const util::VersionContainer current = m_catalogue.byEnq(m_enq);
    if (!current.fwVersion.isEmpty() && !sameModel(current, target)) {
        return fail(ui::MESSAGE_UPDATE_OTHER_MODEL.arg(modelOf(current), modelOf(target)));
    }
    if (recover) {
        QString settings;
        if (!m_decisions.recoverWith(backups(), &settings)) {
            return fail(QString());
        }
        m_settingsFile = settings;
        keep = !settings.isEmpty();
        m_recovered = true;
    }
    if (keep && !(m_settingsFile.isEmpty() ? keepSettings(current) : openSettingsFile())) {
        return false;
    }
    const QString image =
        QFileInfo(ui::PATH_DATA + QStringLiteral("update.kxhex")).absoluteFilePath();
    QString error;
    if (!firmware::FirmwareUpdate::prepareImage(target, m_before ? &m_before->manager() : nullptr,
                                                image, &m_migration, &error)) {
        return fail(error);
    }
    if (m_before &&
        !m_decisions.acceptMigration(m_migration, util::printVersion(m_before->version().fwVersion),
                                     util::printVersion(target.fwVersion))) {
        QFile::remove(image);
        emit log(QObject::tr("Update cancelled; nothing was flashed."));
        return fail(QString());
    }
    const bool flashed = flashImage(target, image);
    QFile::remove(image);
    if (!flashed) {
        return false;
    }
    // The instrument restarts with the new firmware: give it a few tries.
    for (int round = 0; detectVersion() != target.enqString || m_enq.isEmpty(); ++round) {
        if (round == CHECK_ROUNDS - 1) {
            return fail(ui::MESSAGE_UPDATE_NOT_ANSWERING.arg(util::printVersion(target.fwVersion)));
        }
        pause(retryWaitMs());
    }
    emit log(
        QObject::tr("The Korvex now runs firmware %1.").arg(util::printVersion(target.fwVersion)));
    if (m_before) {
        m_after = m_reader(QObject::tr("Settings after the update.hex"));
    }
    return true;
}

} // namespace device
