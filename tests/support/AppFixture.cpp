#include "support/AppFixture.h"

#include "support/TestSupport.h"

#include "app/Constants.h"

#include <QDialog>
#include <QDir>
#include <QLabel>
#include <QLayout>
#include <QTimer>

namespace testsupport {

namespace {

// True when the layout, or one nested in it, places the widget.
bool places(const QLayout* layout, const QWidget* widget) {
    for (int i = 0; layout && i < layout->count(); ++i) {
        if (layout->itemAt(i)->widget() == widget || places(layout->itemAt(i)->layout(), widget)) {
            return true;
        }
    }
    return false;
}

} // namespace

QStringList ScriptedPrompts::titles() const {
    QStringList all;
    for (const Shown& s : shown) {
        all << s.title;
    }
    return all;
}

QStringList ScriptedPrompts::texts(const QString& title) const {
    QStringList all;
    for (const Shown& s : shown) {
        if (s.title == title) {
            all << s.text;
        }
    }
    return all;
}

void ScriptedPrompts::message(QMessageBox::Icon icon, const QString& title, const QString& text) {
    shown.append({icon, title, text});
}

QMessageBox::StandardButton ScriptedPrompts::ask(QMessageBox::Icon icon, const QString& title,
                                                 const QString& text, const QString&,
                                                 QMessageBox::StandardButtons buttons,
                                                 QMessageBox::StandardButton) {
    shown.append({icon, title, text});
    if (answers.isEmpty()) {
        return QMessageBox::NoButton;
    }
    const QMessageBox::StandardButton answer = answers.takeFirst();
    return buttons.testFlag(answer) ? answer : QMessageBox::NoButton;
}

util::VersionContainer ScriptedPrompts::chooseVersion(const QList<util::VersionContainer>& versions,
                                                      const QString& message,
                                                      const QString& title) {
    shown.append({QMessageBox::Question, title, message});
    const int choice = versionChoices.isEmpty() ? -1 : versionChoices.takeFirst();
    return choice >= 0 && choice < versions.size() ? versions.at(choice) : util::VersionContainer();
}

ui::PortAnswer ScriptedPrompts::choosePort(const QList<ui::PortEntry>&, int, const QString&,
                                           const QString& title) {
    shown.append({QMessageBox::Question, title, QString()});
    return portAnswers.isEmpty() ? ui::PortAnswer() : portAnswers.takeFirst();
}

QString ScriptedPrompts::openFileName(const QString& title, const QString&, const QString&) {
    shown.append({QMessageBox::Question, title, QString()});
    return openNames.isEmpty() ? QString() : openNames.takeFirst();
}

QString ScriptedPrompts::saveFileName(const QString& title, const QString&, const QString&) {
    shown.append({QMessageBox::Question, title, QString()});
    return saveNames.isEmpty() ? QString() : saveNames.takeFirst();
}

int ScriptedPrompts::run(QDialog& dialog) {
    dialogsRun << dialog.windowTitle();
    QStringList texts;
    for (const QLabel* label : dialog.findChildren<QLabel*>()) {
        if (places(label->parentWidget()->layout(), label)) {
            texts << label->text();
        }
    }
    lastDialogText = texts.join(QLatin1Char('\n'));
    return dialogResults.isEmpty() ? QDialog::Accepted : dialogResults.takeFirst();
}

RuntimeCopy::RuntimeCopy() : m_previous(QDir::currentPath()) {
    copyDataFolder(m_dir.path());
    QDir().mkpath(m_dir.filePath(QStringLiteral("setups")));
    QDir::setCurrent(m_dir.path());
}

RuntimeCopy::~RuntimeCopy() {
    QDir::setCurrent(m_previous);
}

QString RuntimeCopy::path(const QString& relative) const {
    return m_dir.filePath(relative);
}

App::App() {
    controller.setModel(&model);
    controller.setView(&view);
    controller.setPrompts(&prompts);
    model.setTitle(ui::TITLE_APP);
}

void App::usePort(const QString& port) {
    prompts.portAnswers.append({ui::PortAnswer::Ok, port});
}

void watchWhile(const std::function<void()>& action, const std::function<void()>& look) {
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, look);
    timer.start(0);
    action();
    timer.stop();
}

} // namespace testsupport
