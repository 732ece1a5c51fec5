#include "device/ReadSettings.h"

#include "app/Constants.h"
#include "device/Decisions.h"
#include "device/Transfer.h"
#include "sf/parser/HexParser.h"
#include "util/Uploader.h"
#include "util/VersionCatalogue.h"

#include <QSaveFile>

namespace device {

QString ReadSettings::imagePath() {
    return ui::PATH_DATA + ui::FILE_TEMP;
}

bool ReadSettings::run(bool chooseUnknown) {
    m_error.clear();
    m_version = util::VersionContainer();
    const QString enq = detectVersion();
    if (m_decisions.cancelled()) {
        return fail(QString());
    }
    Transfer read(m_uploader);
    if (!m_uploader.readSettings(ui::FILE_TEMP, true)) {
        if (read.reachedInstrument() && !m_decisions.cancelled()) {
            resetInstrument();
        }
        return fail(m_decisions.cancelled() ? QString() : ui::ERROR_READHEX);
    }
    m_version = m_catalogue.byEnq(enq);
    if (m_version.fwVersion.isEmpty() && chooseUnknown) {
        m_version = m_decisions.chooseReadVersion(enq);
    }
    if (m_version.fwVersion.isEmpty()) {
        return fail(chooseUnknown
                        ? QString()
                        : QStringLiteral("version \"%1\" is not in the catalogue").arg(enq));
    }
    return true;
}

bool ReadSettings::saveTo(const QString& target, QString* error) const {
    sf::parser::HexParser image;
    if (!image.loadHex(imagePath(), sf::parser::PhantomNone, QIODevice::ReadOnly)) {
        *error = image.errorString();
        return false;
    }
    image.setFwVersion(m_version.fwVersion);
    image.setKxsVersion(m_version.kxsVersion);
    image.setEnqString(m_version.enqString);
    QSaveFile file(target);
    if (!file.open(QIODevice::WriteOnly) || !image.writeToDevice(&file, false, 16) ||
        !file.commit()) {
        *error = QStringLiteral("cannot write the file");
        return false;
    }
    return true;
}

} // namespace device
