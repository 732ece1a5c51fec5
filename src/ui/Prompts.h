#pragma once
// Every question and message the application puts to the user goes through one seam, so
// that each workflow runs in a test with scripted answers: DialogPrompts shows the real
// dialogs; a test gives the controller its own Prompts.
#include "util/SerialPorts.h"
#include "util/VersionContainer.h"

#include <QList>
#include <QMessageBox>
#include <QString>

class QDialog;
class QWidget;

namespace ui {

// A serial port as the port dialog lists it.
using PortEntry = util::SerialPortDescription;

// What the port dialog was answered with.
struct PortAnswer {
    enum Kind { Ok, Cancel, Refresh, Check };
    Kind kind = Cancel;
    QString port; // the chosen or typed device path, with Ok and Check
};

class Prompts {
public:
    virtual ~Prompts() = default;
    // A modal message with only an OK button (errors, warnings, information).
    virtual void message(QMessageBox::Icon icon, const QString& title, const QString& text) = 0;
    // A modal question; the button pressed (NoButton when the box was closed).
    virtual QMessageBox::StandardButton ask(QMessageBox::Icon icon, const QString& title,
                                            const QString& text, const QString& details,
                                            QMessageBox::StandardButtons buttons,
                                            QMessageBox::StandardButton defaultButton) = 0;
    // The version chosen from the list, or an empty one when the user cancels.
    virtual util::VersionContainer chooseVersion(const QList<util::VersionContainer>& versions,
                                                 const QString& message, const QString& title) = 0;
    virtual PortAnswer choosePort(const QList<PortEntry>& ports, int index, const QString& lastPort,
                                  const QString& title) = 0;
    // A file to open or to save to; empty when the user cancels.
    virtual QString openFileName(const QString& title, const QString& dir,
                                 const QString& filter) = 0;
    virtual QString saveFileName(const QString& title, const QString& start,
                                 const QString& filter) = 0;
    // Runs a dialog until the user closes it; its result (QDialog::Accepted or Rejected).
    virtual int run(QDialog& dialog) = 0;
};

// The real dialogs, on the given window.
class DialogPrompts : public Prompts {
public:
    explicit DialogPrompts(QWidget* parent) : m_parent(parent) {}
    void message(QMessageBox::Icon icon, const QString& title, const QString& text) override;
    QMessageBox::StandardButton ask(QMessageBox::Icon icon, const QString& title,
                                    const QString& text, const QString& details,
                                    QMessageBox::StandardButtons buttons,
                                    QMessageBox::StandardButton defaultButton) override;
    util::VersionContainer chooseVersion(const QList<util::VersionContainer>& versions,
                                         const QString& message, const QString& title) override;
    PortAnswer choosePort(const QList<PortEntry>& ports, int index, const QString& lastPort,
                          const QString& title) override;
    QString openFileName(const QString& title, const QString& dir, const QString& filter) override;
    QString saveFileName(const QString& title, const QString& start,
                         const QString& filter) override;
    int run(QDialog& dialog) override;

private:
    QWidget* m_parent;
};

} // namespace ui
