#include "ui/Prompts.h"

#include "ui/ComDialog.h"
#include "ui/VersionDialog.h"

#include <QFileDialog>

namespace ui {

void DialogPrompts::message(QMessageBox::Icon icon, const QString& title, const QString& text) {
    QMessageBox box(icon, title, text, QMessageBox::Ok, m_parent);
    box.setTextFormat(Qt::AutoText);
    box.exec();
}

QMessageBox::StandardButton DialogPrompts::ask(QMessageBox::Icon icon, const QString& title,
                                               const QString& text, const QString& details,
                                               QMessageBox::StandardButtons buttons,
                                               QMessageBox::StandardButton defaultButton) {
    QMessageBox box(icon, title, text, buttons, m_parent,
                    Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint);
    box.setWindowModality(Qt::ApplicationModal);
    box.setInformativeText(details);
    if (defaultButton != QMessageBox::NoButton) {
        box.setDefaultButton(defaultButton);
    }
    const int pressed = box.exec();
    return static_cast<QMessageBox::StandardButton>(pressed);
}

util::VersionContainer DialogPrompts::chooseVersion(const QList<util::VersionContainer>& versions,
                                                    const QString& message, const QString& title) {
    VersionDialog dialog(versions, message, title, m_parent);
    return dialog.exec() == QDialog::Accepted ? dialog.chosen() : util::VersionContainer();
}

PortAnswer DialogPrompts::choosePort(const QList<PortEntry>& ports, int index,
                                     const QString& lastPort, const QString& title) {
    ComDialog dialog(ports, index, lastPort, title, m_parent);
    dialog.exec();
    return dialog.answer();
}

QString DialogPrompts::openFileName(const QString& title, const QString& dir,
                                    const QString& filter) {
    return QFileDialog::getOpenFileName(m_parent, title, dir, filter);
}

QString DialogPrompts::saveFileName(const QString& title, const QString& start,
                                    const QString& filter) {
    return QFileDialog::getSaveFileName(m_parent, title, start, filter);
}

int DialogPrompts::run(QDialog& dialog) {
    return dialog.exec();
}

} // namespace ui
