#include "app/WindowDecisions.h"

#include "app/Constants.h"
#include "ui/MigrationDialog.h"
#include "ui/ProgressDialog.h"
#include "ui/Prompts.h"

#include <QFileInfo>

namespace ui {

class WindowDecisions::Aside {
public:
    explicit Aside(ProgressDialog* progress)
        : m_progress(progress), m_shown(progress && progress->isVisible()) {
        if (m_shown) {
            m_progress->hide();
        }
    }
    ~Aside() {
        if (m_shown && m_progress) {
            m_progress->show();
        }
    }

private:
    QPointer<ProgressDialog> m_progress;
    bool m_shown;
};

WindowDecisions::WindowDecisions(Prompts& prompts, QWidget* parent,
                                 const QList<util::VersionContainer>& versions,
                                 ProgressDialog* progress)
    : m_prompts(prompts), m_parent(parent), m_versions(versions), m_progress(progress) {}

void WindowDecisions::setProgress(ProgressDialog* progress) {
    m_progress = progress;
}

bool WindowDecisions::cancelled() {
    return m_progress && m_progress->wasAborted();
}

bool WindowDecisions::confirmWrite() {
    const bool yes =
        m_prompts.ask(QMessageBox::Question, TITLE_CONFIRM_WRITE, MESSAGE_CONFIRM_WRITE, QString(),
                      QMessageBox::Yes | QMessageBox::No,
                      QMessageBox::NoButton) == QMessageBox::Yes;
    if (yes && m_confirmed) {
        m_confirmed();
    }
    return yes;
}

device::Decisions::NoVersion WindowDecisions::noVersionBeforeWrite() {
    const QMessageBox::StandardButton answer = m_prompts.ask(
        QMessageBox::Information, TITLE_WRITE_CONFIRM, MESSAGE_WRITE_VERSION_NONE,
        DETAILS_WRITE_VERSION_NONE, QMessageBox::Retry | QMessageBox::Ignore | QMessageBox::Cancel,
        QMessageBox::NoButton);
    if (answer == QMessageBox::Retry) {
        return NoVersion::Retry;
    }
    return answer == QMessageBox::Ignore ? NoVersion::Ignore : NoVersion::Cancel;
}

bool WindowDecisions::writeToUnknownFirmware(const QString& instrumentVersion,
                                             const QString& fileVersion) {
    return m_prompts.ask(QMessageBox::Information, TITLE_WRITE_CONFIRM,
                         MESSAGE_WRITE_UNKNOWN_KX_FW.arg(instrumentVersion, fileVersion),
                         DETAILS_WRITE_VERSION_MISMATCH, QMessageBox::Yes | QMessageBox::No,
                         QMessageBox::No) == QMessageBox::Yes;
}

util::VersionContainer WindowDecisions::chooseReadVersion(const QString& enq) {
    Aside aside(m_progress);
    if (!enq.isEmpty()) {
        return m_prompts.chooseVersion(
            m_versions, MESSAGE_SELECT_VERSION_READ_MISMATCH.arg(util::printVersion(enq)),
            TITLE_VERSION_SELECT);
    }
    return m_prompts.chooseVersion(m_versions, MESSAGE_SELECT_VERSION_READ, TITLE_VERSION);
}

QString WindowDecisions::backupPath(const QString& proposed) {
    Aside aside(m_progress);
    return m_prompts.saveFileName(TITLE_SAVE_BACKUP, proposed, FILTER_HEX);
}

bool WindowDecisions::acceptMigration(const firmware::Migration& migration, const QString& from,
                                      const QString& to) {
    Aside aside(m_progress);
    MigrationDialog preview(migration, from, to, m_parent);
    return m_prompts.run(preview) == QDialog::Accepted;
}

bool WindowDecisions::recoverWith(const QStringList& backups, QString* settings) {
    Aside aside(m_progress);
    QString text = MESSAGE_UPDATE_NO_FIRMWARE + QStringLiteral("\n\n");
    QMessageBox::StandardButtons buttons =
        QMessageBox::No | QMessageBox::Open | QMessageBox::Cancel;
    if (backups.isEmpty()) {
        text += QObject::tr("No: finish with the default settings.\nOpen: choose a backup.");
    } else {
        text += QObject::tr("Yes: finish with the settings of the newest backup, %1.\nNo: finish "
                            "with the default settings.\nOpen: choose another backup.")
                    .arg(QFileInfo(backups.first()).fileName());
        buttons |= QMessageBox::Yes;
    }
    const QMessageBox::StandardButton answer =
        m_prompts.ask(QMessageBox::Warning, TITLE_UPDATE_RECOVER, text, QString(), buttons,
                      backups.isEmpty() ? QMessageBox::No : QMessageBox::Yes);
    switch (answer) {
    case QMessageBox::Yes:
        *settings = backups.first();
        return true;
    case QMessageBox::No:
        settings->clear();
        return true;
    case QMessageBox::Open:
        *settings = m_prompts.openFileName(TITLE_OPEN, PATH_BACKUPS, FILTER_HEX);
        return !settings->isEmpty();
    default:
        return false;
    }
}

} // namespace ui
