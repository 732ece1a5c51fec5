// The yardstick of the start-up benchmark: a bare Qt Widgets main window with a menu,
// a tool bar, a table and a status bar, started and painted once.
#include "ui/FirstPaint.h"

#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QStatusBar>
#include <QTableWidget>
#include <QToolBar>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QMainWindow window;
    window.menuBar()->addMenu(QStringLiteral("&File"))->addAction(QStringLiteral("&Open"));
    window.addToolBar(QStringLiteral("Commands"))->addAction(QStringLiteral("Open"));
    window.setCentralWidget(new QTableWidget(20, 3, &window));
    window.statusBar()->showMessage(QStringLiteral("Ready"));
    window.resize(1100, 760);
    ui::FirstPaint::watchIfAsked(&window);
    window.show();
    return app.exec();
}
