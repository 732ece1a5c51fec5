#pragma once
// The device workflows' questions answered by the windows: each one a message box or a
// dialog through the prompt seam, with the texts the application always used. The
// progress dialog is hidden while a question is open and shown again afterwards.
#include "device/Decisions.h"

#include <QList>
#include <QPointer>
#include <functional>

class QWidget;

namespace ui {

class ProgressDialog;
class Prompts;

class WindowDecisions : public device::Decisions {
public:
    // versions: the catalogue to choose from; parent: where dialogs open.
    WindowDecisions(Prompts& prompts, QWidget* parent,
                    const QList<util::VersionContainer>& versions,
                    ProgressDialog* progress = nullptr);

    // Runs once the write is confirmed (the progress dialog appears then).
    void setOnConfirmed(std::function<void()> confirmed) { m_confirmed = std::move(confirmed); }
    void setProgress(ProgressDialog* progress);

    bool cancelled() override;
    bool confirmWrite() override;
    NoVersion noVersionBeforeWrite() override;
    bool writeToUnknownFirmware(const QString& instrumentVersion,
                                const QString& fileVersion) override;
    util::VersionContainer chooseReadVersion(const QString& enq) override;
    QString backupPath(const QString& proposed) override;
    bool acceptMigration(const firmware::Migration& migration, const QString& from,
                         const QString& to) override;
    bool recoverWith(const QStringList& backups, QString* settings) override;

private:
    // Hides the progress dialog for the length of a question.
    class Aside;

    Prompts& m_prompts;
    QWidget* m_parent;
    QList<util::VersionContainer> m_versions;
    QPointer<ProgressDialog> m_progress;
    std::function<void()> m_confirmed;
};

} // namespace ui
