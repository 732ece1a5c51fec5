#pragma once
// Connects the main window to the application model and runs the user's commands. The
// workflows themselves live in small pieces a test can drive: FileWorkflow (new, open,
// save, close) and DeviceWorkflow (read, write, compare with the instrument); this
// class starts the program, keeps the catalogue and answers the simple commands.
#include "util/VersionContainer.h"

#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <memory>

namespace kxs::parser {
class KxsParser;
}
namespace sf::parser {
class HexParser;
}
namespace util {
class KXCommunicator;
class SerialSystem;
class Uploader;
} // namespace util

namespace ui {

class AppModel;
class AppView;
class DeviceWorkflow;
class FileModel;
class FileWorkflow;
class HelpWindow;
class KXFileModel;
class MainWindow;
class Prompts;

class AppController : public QObject {
    Q_OBJECT
public:
    explicit AppController(QObject* parent = nullptr);
    ~AppController() override;

    void setModel(AppModel* model);
    void setView(AppView* view);
    AppModel* getModel() const { return model; }
    AppView* getView() const { return view; }
    // Where every question and message goes: the real dialogs on the main window unless
    // a test sets its own (not owned).
    void setPrompts(Prompts* prompts);
    Prompts& prompts();
    // Where the connection doctor looks: the machine unless a test sets its own (not owned).
    void setSerialSystem(util::SerialSystem* system);

    bool initialize();
    bool enumerateVersions();
    bool setDefaultVersion();
    bool isFirmwareFile(const QString& path) const;

    // The open core every workflow uses: the new file model, or null (with the reason
    // shown) when it could not be opened or the file is already open.
    KXFileModel* open(const QString& path, const QString& savePath, const QString& title,
                      bool modified, const util::VersionContainer& forcedVersion);
    KXFileModel* currentFile() const;
    // Opens files named on the command line or by the desktop, one after the other.
    void openFiles(const QStringList& paths);
    // Closes the file and takes it out of the application.
    void close(FileModel* file);
    // Whether the file may be closed. Closing never asks about unsaved changes.
    bool prepareToClose(FileModel*) const { return true; }

    QMessageBox::StandardButton promptUser(const QString& text, const QString& informative,
                                           const QString& title,
                                           QMessageBox::StandardButtons buttons,
                                           QMessageBox::StandardButton defaultButton);
    util::VersionContainer getVersionFromUser(const QList<util::VersionContainer>& versions,
                                              const QString& message, const QString& title);
    // Everything after the last "/" or "\".
    static QString getFileNameFromPath(const QString& path);

    util::Uploader& uploader() { return *supl; }
    util::KXCommunicator& communicator() { return *kxCommunicator; }
    int nextUntitled() { return ++untitledCounter; }
    int nextRead() { return ++readCounter; }
    const util::VersionContainer& firmwareUpdateVersion() const { return fwUpdateVersion; }
    // The firmware update window while it is open.
    MainWindow* firmwareUpdateWindow() const;
    // The command states that follow the current file (after a tab change, an open or a
    // close).
    void updateFlags();

public slots:
    void showError(const QString& text);
    void showWarning(const QString& text);
    void settingsLoadError(int count);
    void transferAborted();
    void settingTipChanged(const QString& tip);
    void indexChanged(int index);

    void newPressed();
    void openPressed();
    void closePressed(int index);
    void savePressed();
    void saveAsPressed();
    void exitPressed();
    void readPressed();
    void writePressed();
    void comparePressed();
    void showProtectedPressed();
    void enableMultiplePressed();
    void undoPressed();
    void redoPressed();
    void aboutPressed();
    void helpPressed();
    void updateFirmwarePressed();
    void getFirmwarePressed();
    void clearFirmwarePressed();

    // How the firmware update window reads the instrument (from the folder above).
    KXFileModel* readCurrentSettings(const QString& port, const QString& title);
    void firmwareUpdateVersionSelected(const util::VersionContainer& version);

private:
    void wireView(bool connectThem);
    void rebuildCatalogue();

    AppModel* model = nullptr;
    AppView* view = nullptr;
    util::Uploader* supl;
    util::KXCommunicator* kxCommunicator;
    std::unique_ptr<sf::parser::HexParser> hexParser;
    std::unique_ptr<kxs::parser::KxsParser> kxsParser;
    qint32 untitledCounter = 0;
    qint32 readCounter = 0;
    util::VersionContainer fwUpdateVersion;

    std::unique_ptr<Prompts> ownPrompts;
    Prompts* currentPrompts = nullptr;
    std::unique_ptr<FileWorkflow> files;
    std::unique_ptr<DeviceWorkflow> device;
    QPointer<HelpWindow> help;
    QPointer<MainWindow> firmwareUpdate;
};

} // namespace ui
