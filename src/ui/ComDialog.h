#pragma once
// The serial port choice: the ports found as util::describePorts lists them (each named,
// USB adapters first), the port used last in this run chosen first, else the only USB
// adapter, else the first entry; a field to type a device path (a port the
// platform does not list, such as a simulated instrument's), Refresh, and Check connection
// (which explains what keeps the instrument from answering).
#include "ui/Prompts.h"

#include <QDialog>

class QLineEdit;
class QListWidget;
class QPushButton;

namespace ui {

class ComDialog : public QDialog {
    Q_OBJECT
public:
    // ports: as util::describePorts gives them. The uploader's index is not used: the
    // choice follows util::preselectedPort (the port used last in this run, lastPort, first).
    ComDialog(const QList<PortEntry>& ports, int index, const QString& lastPort,
              const QString& title, QWidget* parent = nullptr);
    PortAnswer answer() const { return m_answer; }
    // The device path OK would choose.
    QString chosenPort() const;

private:
    void finishWith(PortAnswer::Kind kind);
    void updateOk();
    QListWidget* m_list;
    QLineEdit* m_path;
    QPushButton* m_ok;
    PortAnswer m_answer;
};

} // namespace ui
