#pragma once
// One firmware update, step by step, for the update window and the command line: the
// image to flash (the target firmware with the instrument's settings carried into it,
// or with its defaults), flashing it (search, then write and verify, through the
// flashing driver) and the check that the instrument answers with the new version.
// Each step reports through signals and returns whether it worked.
#include "firmware/Migration.h"
#include "util/VersionContainer.h"

#include <QColor>
#include <QObject>
#include <QString>
#include <QStringList>

namespace firmware {

class FirmwareUpdate : public QObject {
    Q_OBJECT
public:
    explicit FirmwareUpdate(QObject* parent = nullptr);

    // Writes the image to flash into imagePath: the target firmware file with old's
    // settings carried into its defaults (what happened to each in *migration), or, with
    // old null, a copy of the target firmware. False with *error on failure.
    static bool prepareImage(const util::VersionContainer& target, const sf::SettingManager* old,
                             const QString& imagePath, Migration* migration, QString* error);

    // Flashes the image (an absolute path) into the instrument on port: true when the
    // driver wrote, verified and reset it. Waits at most timeoutMs. With a model given, an
    // instrument whose bootloader reports another model is refused before anything is
    // written (refusal() says so).
    bool flash(const QString& port, const QString& image, const QString& model = QString(),
               int timeoutMs = 180000);
    // After a flash: whether the helper started writing (program flash was being erased);
    // the identifier the bootloader reported; why it failed, in the helper's own words.
    bool writingStarted() const { return m_writing; }
    const QString& identifier() const { return m_identifier; }
    QString failureReason() const { return m_reasons.join(QLatin1Char('\n')); }
    const QString& refusal() const { return m_refusal; }

    // Where the old settings are kept before an update: PATH_BACKUPS, named after the
    // version and the time.
    static QString backupPath(const QString& version);

signals:
    void log(const QString& text);
    void progressLine(const QString& text);
    void colour(const QColor& colour);

private:
    bool m_writing = false;
    QString m_identifier;
    QStringList m_reasons;
    QString m_refusal;
};

} // namespace firmware
