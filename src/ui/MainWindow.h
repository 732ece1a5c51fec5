#pragma once
// The firmware update window: the instrument's port, the firmware to put on it (a
// version of the catalogue, the default one first, or a firmware file), and whether
// its settings are kept or reset to the new firmware's defaults. Keeping them reads the
// instrument's settings, offers to save a backup, shows what happens to every setting,
// and flashes the new firmware with the settings carried into it. The log shows every
// step in colour; the controls are disabled while the update runs.
#include "util/VersionContainer.h"

#include <QWidget>

#include <memory>

class QCheckBox;
class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QTextEdit;

namespace ui {

class AppModel;
class KXFileModel;
class Prompts;

class MainWindow : public QWidget {
    Q_OBJECT
public:
    MainWindow(AppModel* model, const util::VersionContainer& defaultVersion,
               QWidget* parent = nullptr);
    ~MainWindow() override;
    // Where questions go (not owned); the real dialogs on this window unless set.
    void setPrompts(Prompts* prompts);

    void setPort(const QString& port);
    QString port() const;
    // The target: a version of the list, or a firmware file chosen with "Other file...".
    void selectVersion(const QString& fwVersion);
    util::VersionContainer target() const { return m_target; }
    void setResetSettings(bool reset);
    QString logText() const;
    bool isBusy() const { return m_busy; }

public slots:
    // Runs the update; true when the instrument answers with the new version.
    bool startUpdate();
    void refreshPorts();
    void chooseFile();
    // Asks the instrument on the chosen port for its version and selects the newest
    // firmware for its model.
    void identifyInstrument();

signals:
    void showError(const QString& text);
    // Reads the instrument's settings into a new file (answered by the controller).
    ui::KXFileModel* readSettings(const QString& port, const QString& title);
    void versionSelected(const util::VersionContainer& version);
    void updateFinished(bool success);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void appendLog(const QString& text);
    void replaceProgressLine(const QString& text);
    void setBusy(bool busy);
    void targetChanged();
    bool fail(const QString& text);
    Prompts& prompts();

    AppModel* m_model;
    util::VersionContainer m_target;
    QComboBox* m_port;
    QComboBox* m_versions;
    QCheckBox* m_reset;
    QPushButton* m_start;
    QTextEdit* m_log;
    QProgressBar* m_progress;
    QLabel* m_state;
    QColor m_colour;
    Prompts* m_prompts = nullptr;
    std::unique_ptr<Prompts> m_ownPrompts;
    bool m_busy = false;
    bool m_progressLine = false;
};

} // namespace ui
