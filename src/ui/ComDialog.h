#pragma once
// The serial port choice: the ports found, each with its adapter's description and USB
// identifiers where the platform knows them, a field to type a device path (a port the
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
    // index: the port to select first; lastPort, when set, wins over it.
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
