#include "device/WriteSettings.h"

#include "app/Constants.h"
#include "device/Decisions.h"
#include "device/Transfer.h"
#include "sf/SetupFile.h"
#include "util/Uploader.h"
#include "util/VersionCatalogue.h"

namespace device {

bool WriteSettings::failAfterAnswer(const QString& error, bool reached) {
    if (!m_enq.isEmpty() || reached) {
        resetInstrument();
    }
    return fail(error);
}

bool WriteSettings::checkVersions(const sf::SetupFile& file) {
    if (m_enq.isEmpty()) {
        return true;
    }
    const util::VersionContainer ours = m_catalogue.byEnq(m_enq);
    const util::VersionContainer theirs = m_catalogue.byFw(file.version().fwVersion);
    if (ours.fwVersion.isEmpty()) {
        return m_decisions.writeToUnknownFirmware(m_enq, file.version().fwVersion) ||
               failAfterAnswer(QString(), true);
    }
    if (!theirs.fwVersion.isEmpty() &&
        ours.kxsVersion.compare(theirs.kxsVersion, Qt::CaseInsensitive) != 0) {
        QStringList sharing;
        for (const util::VersionContainer& v : m_catalogue.sharingLayout(theirs.kxsVersion)) {
            sharing << QLatin1Char('"') + v.fwVersion + QLatin1Char('"');
        }
        return failAfterAnswer(
            ui::ERROR_WRITE_KXS_VERSION_MISMATCH.arg(m_enq, sharing.join(QStringLiteral(", "))),
            true);
    }
    return true;
}

bool WriteSettings::run(sf::SetupFile& file) {
    m_error.clear();
    if (!m_decisions.confirmWrite()) {
        return fail(QString());
    }
    for (;;) {
        if (!detectVersion().isEmpty()) {
            break;
        }
        const Decisions::NoVersion answer = m_decisions.noVersionBeforeWrite();
        if (answer == Decisions::NoVersion::Ignore) {
            break;
        }
        resetInstrument();
        if (answer != Decisions::NoVersion::Retry) {
            return fail(QString());
        }
        pause(retryWaitMs());
    }
    {
        Transfer read(m_uploader);
        if (!m_uploader.readSettings(ui::FILE_TEMP, false)) {
            return failAfterAnswer(ui::ERROR_READHEX, read.reachedInstrument());
        }
    }
    if (!checkVersions(file)) {
        return false;
    }
    const QString temp = ui::PATH_DATA + ui::FILE_TEMP;
    QString error;
    if (!file.saveTo(temp, &error, false, true)) {
        return failAfterAnswer(ui::ERROR_SAVEHEX.arg(temp), true);
    }
    if (!m_uploader.writeSettings(ui::FILE_TEMP, true)) {
        return failAfterAnswer(ui::ERROR_WRITEHEX, true);
    }
    return true;
}

} // namespace device
