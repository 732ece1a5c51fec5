#include "firmware/FirmwareUpdate.h"

#include "app/Constants.h"
#include "device/Models.h"
#include "firmware/Bootloader.h"
#include "firmware/FlashImage.h"
#include "sf/SetupFile.h"

#include <QDateTime>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QTimer>

namespace firmware {

FirmwareUpdate::FirmwareUpdate(QObject* parent) : QObject(parent) {}

bool FirmwareUpdate::prepareImage(const util::VersionContainer& target,
                                  const sf::SettingManager* old, const QString& imagePath,
                                  Migration* migration, QString* error) {
    sf::SetupFile image;
    if (image.open(target.mapFilePath, target) < 0) {
        *error = QStringLiteral("the firmware file \"%1\" cannot be read").arg(target.mapFilePath);
        return false;
    }
    if (old) {
        Migration m = migrateSettings(*old, image.manager());
        if (migration) {
            *migration = std::move(m);
        }
    }
    // The settings alone first (at their layout addresses), then placed into the
    // firmware's settings region.
    const QString settings = imagePath + QStringLiteral(".settings.hex");
    const bool built = image.saveTo(settings, error) &&
                       buildFlashImage(target.mapFilePath, settings, imagePath, error);
    QFile::remove(settings);
    return built;
}

bool FirmwareUpdate::flash(const QString& port, const QString& image, const QString& model,
                           int timeoutMs) {
    m_writing = false;
    m_identifier.clear();
    m_reasons.clear();
    m_refusal.clear();
    bootloader driver;
    connect(&driver, &bootloader::textreadysig, this, &FirmwareUpdate::log);
    connect(&driver, &bootloader::textupdatesig, this, &FirmwareUpdate::progressLine);
    connect(&driver, &bootloader::changecolour, this, &FirmwareUpdate::colour);
    bool failed = false;
    bool done = false;
    connect(&driver, &bootloader::changecolour, this,
            [&failed](const QColor& c) { failed = failed || c == bootloader::RED; });
    connect(&driver, &bootloader::fw_update_done, this, [&done] { done = true; });
    connect(&driver, &bootloader::writing_started, this, [this] { m_writing = true; });
    connect(&driver, &bootloader::helper_failed, this,
            [this](const QString& line, const QString& shown) {
                const QString reason = line.isEmpty() ? shown : line;
                if (!m_reasons.contains(reason)) {
                    m_reasons << reason;
                }
            });

    QEventLoop loop;
    QTimer limit;
    limit.setSingleShot(true);
    connect(&limit, &QTimer::timeout, &loop, &QEventLoop::quit);
    connect(&driver, &bootloader::supl_closed, &loop, &QEventLoop::quit);
    limit.start(timeoutMs);

    driver.changeserial(port);
    driver.filepathupdate(image);
    driver.search();
    loop.exec();
    m_identifier = driver.getIdentification();
    if (failed || m_identifier.isEmpty() || !limit.isActive()) {
        driver.stop();
        if (!limit.isActive()) {
            emit log(QStringLiteral("\nThe instrument did not answer in time.\n"));
            emit colour(bootloader::RED);
        }
        return false;
    }
    const QString found = device::modelOfIdentifier(m_identifier);
    if (!model.isEmpty() && !found.isEmpty() && found.compare(model, Qt::CaseInsensitive) != 0) {
        m_refusal = ui::MESSAGE_UPDATE_OTHER_MODEL.arg(found, model);
        emit colour(bootloader::RED);
        emit log(m_refusal);
        return false;
    }
    driver.update_firmware();
    loop.exec();
    driver.stop();
    return done && !failed && limit.isActive();
}

QString FirmwareUpdate::backupPath(const QString& version) {
    return ui::PATH_BACKUPS + QStringLiteral("%1-%2.hex")
                                  .arg(version, QDateTime::currentDateTime().toString(
                                                    QStringLiteral("yyyyMMdd-HHmmss")));
}

} // namespace firmware
