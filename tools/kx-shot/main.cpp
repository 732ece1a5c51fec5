// kx-shot: renders what a tab of the application shows for a setup file into a PNG
// image, without a display (QT_QPA_PLATFORM=offscreen). Used for the screenshots of the
// documentation and to look at the tables while building them.
//
//   kx-shot -C DIR FILE -o IMAGE.png [--size WxH] [--search TEXT] [--select NAME]
//           [--unfold NAME] [--protected]
//   kx-shot -C DIR --window [FILE] -o IMAGE.png [--size WxH] [--select NAME]
//           (the whole main window as the program starts in DIR)
//   kx-shot -C DIR --update [FILE --to FW] -o IMAGE.png [--size WxH]
//           (the firmware update window, or the preview of FILE's settings carried
//           into firmware FW)
//   kx-shot --doctor PORT -o IMAGE.png
//           (the port dialog and what Check connection reports for PORT)
#include "WindowShot.h"

#include "sf/SettingManager.h"
#include "sf/SettingsTableModel.h"
#include "sf/SetupFile.h"
#include "ui/KXFileModel.h"
#include "ui/KXFileView.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QPixmap>

#include <cstdio>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM",
            qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    QString dir, file, output, search, select, unfold;
    QSize size(1280, 800);
    bool showProtected = false;
    bool window = false;
    bool update = false;
    QString target;
    QString doctorPort;
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args.at(i);
        const bool more = i + 1 < args.size();
        if (a == QLatin1String("-C") && more) {
            dir = args.at(++i);
        } else if (a == QLatin1String("-o") && more) {
            output = args.at(++i);
        } else if (a == QLatin1String("--search") && more) {
            search = args.at(++i);
        } else if (a == QLatin1String("--select") && more) {
            select = args.at(++i);
        } else if (a == QLatin1String("--unfold") && more) {
            unfold = args.at(++i);
        } else if (a == QLatin1String("--size") && more) {
            const QStringList wh = args.at(++i).split(QLatin1Char('x'));
            size = QSize(wh.value(0).toInt(), wh.value(1).toInt());
        } else if (a == QLatin1String("--protected")) {
            showProtected = true;
        } else if (a == QLatin1String("--window")) {
            window = true;
        } else if (a == QLatin1String("--update")) {
            update = true;
        } else if (a == QLatin1String("--doctor") && more) {
            doctorPort = args.at(++i);
        } else if (a == QLatin1String("--to") && more) {
            target = args.at(++i);
        } else if (file.isEmpty() && !a.startsWith(QLatin1Char('-'))) {
            file = a;
        } else {
            std::fprintf(stderr, "usage: kx-shot -C DIR FILE -o IMAGE.png [--size WxH] "
                                 "[--search TEXT] [--select NAME] [--unfold NAME] [--protected]\n");
            return 1;
        }
    }
    if (!doctorPort.isEmpty() && !output.isEmpty()) {
        return shootDoctor(doctorPort, output);
    }
    if (update && !output.isEmpty()) {
        output = QFileInfo(output).absoluteFilePath();
        file = file.isEmpty() ? file : QFileInfo(file).absoluteFilePath();
        if (!dir.isEmpty() && !QDir::setCurrent(dir)) {
            std::fprintf(stderr, "kx-shot: %s: no such folder\n", qPrintable(dir));
            return 2;
        }
        return shootUpdate(file, target, size, output);
    }
    if (window && !output.isEmpty()) {
        output = QFileInfo(output).absoluteFilePath();
        file = file.isEmpty() ? file : QFileInfo(file).absoluteFilePath();
        if (!dir.isEmpty() && !QDir::setCurrent(dir)) {
            std::fprintf(stderr, "kx-shot: %s: no such folder\n", qPrintable(dir));
            return 2;
        }
        return shootWindow(file, select, size, output);
    }
    if (file.isEmpty() || output.isEmpty()) {
        std::fprintf(stderr, "kx-shot: a file and -o IMAGE.png are needed\n");
        return 1;
    }
    file = QFileInfo(file).absoluteFilePath();
    output = QFileInfo(output).absoluteFilePath();
    if (!dir.isEmpty() && !QDir::setCurrent(dir)) {
        std::fprintf(stderr, "kx-shot: %s: no such folder\n", qPrintable(dir));
        return 2;
    }
    util::VersionContainer version;
    QString error;
    if (!sf::SetupFile::catalogueVersion(sf::SetupFile::recordedFirmware(file), &version, &error)) {
        std::fprintf(stderr, "kx-shot: %s: %s\n", qPrintable(file), qPrintable(error));
        return 2;
    }
    ui::KXFileModel model;
    if (!model.open(file, version)) {
        std::fprintf(stderr, "kx-shot: %s: cannot be opened\n", qPrintable(file));
        return 2;
    }
    model.setShowProtected(showProtected);
    ui::KXFileView view(&model);
    view.resize(size);
    if (!unfold.isEmpty()) {
        model.manager()->expandSetting(unfold);
    }
    view.show();
    if (!search.isEmpty()) {
        view.setSearchText(search);
    }
    if (!select.isEmpty()) {
        for (const auto& table : model.tables()) {
            const QModelIndex index = model.manager()->modelIndex(table.get(), select);
            if (index.isValid()) {
                view.jumpTo(index);
            }
        }
    }
    QApplication::processEvents();
    if (!view.grab().save(output)) {
        std::fprintf(stderr, "kx-shot: cannot write %s\n", qPrintable(output));
        return 2;
    }
    return 0;
}
