// kxsetup: the KX Setup Utility's main window. Its arguments are setup files to open
// after the start; every data path resolves against the working directory (the folder
// holding data/).
#include "app/AppController.h"
#include "app/AppModel.h"
#include "app/Constants.h"
#include "ui/AppView.h"
#include "ui/FirstPaint.h"

#include <QApplication>
#include <QIcon>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    // The desktop's menu entry and icon (installed as kxsetup.desktop and the kxsetup icon).
    QGuiApplication::setDesktopFileName(QStringLiteral("kxsetup"));
    QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("kxsetup")));
    qputenv("QT_QPA_FONTDIR", QCoreApplication::applicationDirPath().toUtf8() + "/data/fonts");

    ui::AppView view;
    ui::AppModel model;
    ui::AppController controller;
    controller.setModel(&model);
    controller.setView(&view);
    model.setTitle(ui::TITLE_APP);
    ui::FirstPaint::watchIfAsked(&view);
    view.show();
    if (!controller.initialize()) {
        return 1;
    }
    // QApplication has taken its own options out of argv by now.
    QStringList files;
    for (int i = 1; i < argc; ++i) {
        files << QString::fromLocal8Bit(argv[i]);
    }
    controller.openFiles(files);
    return app.exec();
}
