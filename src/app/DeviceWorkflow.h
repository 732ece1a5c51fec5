#pragma once
// The window's side of the commands that talk to the instrument: the port dialog, the
// progress dialog and the tabs. The steps themselves are the device library's workflows
// (read, write, compare), whose questions the window's dialogs answer
// (WindowDecisions). Cancel in the progress dialog asks the helper to stop.
#include "ui/ProgressDialog.h"
#include "util/VersionContainer.h"

#include <QList>
#include <QMetaObject>
#include <QPointer>
#include <QString>

class QWidget;

namespace util {
class SerialSystem;
}
namespace device {
class Operation;
}

namespace ui {

class AppController;
class KXFileModel;

class DeviceWorkflow {
public:
    explicit DeviceWorkflow(AppController& controller) : c(controller) {}
    ~DeviceWorkflow();

    // Asks for the serial port; false when the user cancels. Check connection shows what
    // the connection doctor finds on the port and asks again.
    bool promptForCom(const QString& title);
    // Where the connection doctor looks (the machine unless a test sets its own; not owned).
    void setSerialSystem(util::SerialSystem* system) { serialSystem = system; }
    void readPressed();
    // Reads the instrument into a new file model (null on failure or cancel). Not
    // interactive: a version the catalogue does not know fails instead of asking.
    KXFileModel* readHelper(QWidget* parent, bool interactive);
    KXFileModel* readCurrentSettings(const QString& port, const QString& title);
    bool write(KXFileModel* file);
    void compare(KXFileModel* file);
    // The dialog of the transfer under way (null when none ran yet).
    ProgressDialog* progressDialog() const { return progress; }

    // How long a retry waits after the reset, in ms (1000). Tests shorten it.
    static void setRetryWaitMs(int ms);

private:
    // Shows the progress dialog with the title and connects the helper's progress to it
    // (and its errors to the error box when asked).
    void startProgress(const QString& title, QWidget* parent, bool showErrors);
    void endProgress();
    void checkConnection(const QString& port);
    // Shows what a device workflow does in the progress dialog.
    void follow(device::Operation& operation);

    AppController& c;
    QPointer<ProgressDialog> progress;
    QList<QMetaObject::Connection> wires;
    QMetaObject::Connection progressText;
    bool resetWasVisible = false;
    util::SerialSystem* serialSystem = nullptr;
};

} // namespace ui
