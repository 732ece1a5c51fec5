#pragma once

// The application as its entry point builds it (main window, model, controller), in a
// private copy of the runtime data folder, with every question answered from a script.

#include "app/AppController.h"
#include "app/AppModel.h"
#include "ui/AppView.h"
#include "ui/Prompts.h"

#include <QTemporaryDir>

#include <functional>

namespace testsupport {

// Answers the application's questions from queues and records everything it shows.
// A question with no answer queued is recorded and answered with NoButton / cancel.
class ScriptedPrompts : public ui::Prompts {
public:
    struct Shown {
        QMessageBox::Icon icon;
        QString title;
        QString text;
    };
    QList<Shown> shown;
    QList<QMessageBox::StandardButton> answers;
    QList<int> versionChoices; // an index into the offered list; -1 cancels
    QList<ui::PortAnswer> portAnswers;
    QStringList openNames;
    QStringList saveNames;
    QStringList dialogsRun; // window titles

    QStringList titles() const;
    // The texts shown with the given title.
    QStringList texts(const QString& title) const;

    void message(QMessageBox::Icon icon, const QString& title, const QString& text) override;
    QMessageBox::StandardButton ask(QMessageBox::Icon icon, const QString& title,
                                    const QString& text, const QString& details,
                                    QMessageBox::StandardButtons buttons,
                                    QMessageBox::StandardButton defaultButton) override;
    util::VersionContainer chooseVersion(const QList<util::VersionContainer>& versions,
                                         const QString& message, const QString& title) override;
    ui::PortAnswer choosePort(const QList<ui::PortEntry>& ports, int index, const QString& lastPort,
                              const QString& title) override;
    QString openFileName(const QString& title, const QString& dir, const QString& filter) override;
    QString saveFileName(const QString& title, const QString& start,
                         const QString& filter) override;
    int run(QDialog& dialog) override;
    QList<int> dialogResults; // what run() answers, Accepted when none is queued
    // What the labels of the last dialog run showed, grabbed before it closed (a label its
    // layout does not place shows nothing readable).
    QString lastDialogText;
};

// A working directory for one test: a copy of the runtime folder's data/ and an empty
// setups/ folder, entered for the fixture's life.
class RuntimeCopy {
public:
    RuntimeCopy();
    ~RuntimeCopy();
    RuntimeCopy(const RuntimeCopy&) = delete;
    RuntimeCopy& operator=(const RuntimeCopy&) = delete;
    QString path(const QString& relative) const;

private:
    QTemporaryDir m_dir;
    QString m_previous;
};

// Runs the action and calls look at every turn of the event loops it spins: how a test
// sees a window while a long operation runs.
void watchWhile(const std::function<void()>& action, const std::function<void()>& look);

struct App {
    RuntimeCopy folder;
    ui::AppView view;
    ui::AppModel model;
    ui::AppController controller;
    ScriptedPrompts prompts;
    App();
    ui::KXFileModel* current() const { return controller.currentFile(); }
    // The serial port dialog answered with this path next.
    void usePort(const QString& port);
};

} // namespace testsupport
