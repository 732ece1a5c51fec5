#include "WindowShot.h"

#include "app/AppController.h"
#include "app/AppModel.h"
#include "app/Constants.h"
#include "firmware/Migration.h"
#include "sf/SettingManager.h"
#include "sf/SettingsTableModel.h"
#include "sf/SetupFile.h"
#include "ui/AppView.h"
#include "ui/ComDialog.h"
#include "ui/KXFileModel.h"
#include "ui/KXFileView.h"
#include "ui/MainWindow.h"
#include "ui/MigrationDialog.h"
#include "ui/Prompts.h"
#include "util/ConnectionDoctor.h"
#include "util/SerialPorts.h"
#include "util/SerialSystem.h"

#include <QApplication>
#include <QFileInfo>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>

#include <cstdio>

namespace {

// Nobody is there to answer: messages go to the error stream, questions are cancelled.
class NoOne : public ui::Prompts {
public:
    void message(QMessageBox::Icon, const QString& title, const QString& text) override {
        std::fprintf(stderr, "kx-shot: %s: %s\n", qPrintable(title), qPrintable(text));
    }
    QMessageBox::StandardButton ask(QMessageBox::Icon, const QString&, const QString&,
                                    const QString&, QMessageBox::StandardButtons,
                                    QMessageBox::StandardButton) override {
        return QMessageBox::Cancel;
    }
    util::VersionContainer chooseVersion(const QList<util::VersionContainer>&, const QString&,
                                         const QString&) override {
        return {};
    }
    ui::PortAnswer choosePort(const QList<ui::PortEntry>&, int, const QString&,
                              const QString&) override {
        return {};
    }
    QString openFileName(const QString&, const QString&, const QString&) override { return {}; }
    QString saveFileName(const QString&, const QString&, const QString&) override { return {}; }
    int run(QDialog&) override { return 0; }
};

} // namespace

int shootWindow(const QString& file, const QString& select, const QSize& size,
                const QString& output) {
    ui::AppView view;
    ui::AppModel model;
    ui::AppController controller;
    NoOne prompts;
    controller.setModel(&model);
    controller.setView(&view);
    controller.setPrompts(&prompts);
    model.setTitle(ui::TITLE_APP);
    view.resize(size);
    view.show();
    if (!controller.initialize()) {
        return 2;
    }
    if (!file.isEmpty()) {
        const QString name = ui::AppController::getFileNameFromPath(file);
        ui::KXFileModel* opened = controller.open(file, file, name, false, {});
        if (!opened) {
            return 2;
        }
        model.setMultipleEnabled(true);
        opened->setStatus(ui::STATUS_OPENED.arg(name));
    }
    if (!select.isEmpty()) {
        ui::KXFileModel* current = controller.currentFile();
        ui::KXFileView* tab = view.fileView(model.getCurrentIndex());
        for (const auto& table : current->tables()) {
            const QModelIndex index = current->manager()->modelIndex(table.get(), select);
            if (index.isValid()) {
                tab->jumpTo(index);
            }
        }
    }
    // The first paint, then what the window does after it (its icons).
    for (int pass = 0; pass < 3; ++pass) {
        QApplication::processEvents();
    }
    if (!view.grab().save(output)) {
        std::fprintf(stderr, "kx-shot: cannot write %s\n", qPrintable(output));
        return 2;
    }
    return 0;
}

int shootUpdate(const QString& file, const QString& target, const QSize& size,
                const QString& output) {
    ui::AppView view;
    ui::AppModel model;
    ui::AppController controller;
    NoOne prompts;
    controller.setModel(&model);
    controller.setView(&view);
    controller.setPrompts(&prompts);
    if (!controller.initialize()) {
        return 2;
    }
    QWidget* shown = nullptr;
    std::unique_ptr<ui::MigrationDialog> preview;
    sf::SetupFile old, image;
    if (file.isEmpty()) {
        controller.updateFirmwarePressed();
        shown = controller.firmwareUpdateWindow();
    } else {
        QString error;
        util::VersionContainer version;
        if (!old.open(file, QString(), &error) ||
            !sf::SetupFile::catalogueVersion(target, &version, &error) ||
            image.open(version.mapFilePath, version) < 0) {
            std::fprintf(stderr, "kx-shot: %s\n", qPrintable(error));
            return 2;
        }
        const firmware::Migration m = firmware::migrateSettings(old.manager(), image.manager());
        preview = std::make_unique<ui::MigrationDialog>(m, old.version().fwVersion, target);
        shown = preview.get();
    }
    shown->resize(size);
    shown->show();
    for (int pass = 0; pass < 3; ++pass) {
        QApplication::processEvents();
    }
    if (!shown->grab().save(output)) {
        std::fprintf(stderr, "kx-shot: cannot write %s\n", qPrintable(output));
        return 2;
    }
    return 0;
}

int shootDoctor(const QString& port, const QString& output) {
    ui::ComDialog dialog(util::describePorts({port}), 0, port, ui::TITLE_READ);
    util::LinuxSerialSystem machine;
    const util::DoctorReport report = util::examineConnection(machine, port);
    QMessageBox box(report.ok() ? QMessageBox::Information : QMessageBox::Warning,
                    ui::TITLE_CHECK_CONNECTION, report.text());
    dialog.show();
    box.show();
    QApplication::processEvents();
    const QPixmap left = dialog.grab();
    const QPixmap right = box.grab();
    QPixmap both(left.width() + right.width() + 24, qMax(left.height(), right.height()) + 16);
    both.fill(QColor(0x5a, 0x5a, 0x5a));
    QPainter painter(&both);
    painter.drawPixmap(8, 8, left);
    painter.drawPixmap(left.width() + 16, 8, right);
    painter.end();
    if (!both.save(output)) {
        std::fprintf(stderr, "kx-shot: cannot write %s\n", qPrintable(output));
        return 2;
    }
    return 0;
}
