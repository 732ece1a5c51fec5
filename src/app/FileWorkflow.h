#pragma once
// The setup-file commands: new, open, save, save as, close and exit, over the open core
// that every workflow uses to turn a file on disk into a tab.
#include "util/VersionContainer.h"

#include <QString>

namespace ui {

class AppController;
class FileModel;
class KXFileModel;

class FileWorkflow {
public:
    explicit FileWorkflow(AppController& controller) : c(controller) {}

    KXFileModel* open(const QString& path, const QString& savePath, const QString& title,
                      bool modified, const util::VersionContainer& forcedVersion);
    void newFile();
    void openFile();
    // Opens a file named outside the dialogs (on the command line, by the desktop), as the
    // Open command would after its file dialog.
    void openPath(const QString& path);
    // Saves the current file, asking for a name when it has none or saveAs is set.
    void saveCurrent(bool saveAs);
    bool save(FileModel* file, bool saveAs);
    void exit();

private:
    util::VersionContainer versionOf(const QString& path);
    // Single-file mode: the file that a new one replaces, once it passed prepareToClose.
    FileModel* replaced(bool* proceed);
    AppController& c;
};

} // namespace ui
