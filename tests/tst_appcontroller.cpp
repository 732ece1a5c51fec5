// The application without a person: start-up on the sample data and without it, the
// catalogue lookups, the file workflows with their refusals and questions, single and
// multiple-file mode, show protected, undo and redo from the menu, removing all firmware.
#include "support/AppFixture.h"
#include "support/AppTexts.h"
#include "support/FirmwareServer.h"
#include "support/SampleData.h"
#include "support/TableFile.h"
#include "support/TestSupport.h"

#include "app/Constants.h"
#include "sf/SettingManager.h"
#include "sf/parser/HexParser.h"
#include "ui/KXFileModel.h"
#include "ui/MainWindow.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

using testsupport::App;
using namespace ui;

namespace {

QStringList fwVersions(const QList<util::VersionContainer>& versions) {
    QStringList names;
    for (const util::VersionContainer& v : versions) {
        names << v.fwVersion;
    }
    return names;
}

const QString CAPACITY = QStringLiteral("BattCapA");

} // namespace

class TestAppController : public QObject {
    Q_OBJECT
private slots:
    void startsOnTheSampleData() {
        App app;
        QVERIFY(app.controller.initialize());
        QCOMPARE(app.prompts.shown.size(), 0);
        // Highest first; 3.10 and 3.12 share one layout.
        QCOMPARE(fwVersions(app.model.getVersions()),
                 QStringList({"4.01", "3.20", "3.12", "3.10", "v306"}));
        QCOMPARE(fwVersions(app.model.getVersionsByKxs(QStringLiteral("KX3-3.10"))),
                 QStringList({"3.12", "3.10"}));
        QCOMPARE(app.model.getVersionByEnq(QStringLiteral("3.06")).fwVersion,
                 QStringLiteral("v306"));
        QCOMPARE(app.model.getDefaultVersion().fwVersion, QStringLiteral("4.01"));
        QCOMPARE(app.model.getDefaultVersion().mapGroup, QStringLiteral("kx4/2025"));
        QVERIFY(app.model.getNewEnabled() && app.model.getOpenEnabled());
        QVERIFY(app.model.getReadEnabled() && app.model.getSuplAvailable());
        // The first file is open, so saving and writing are possible.
        QVERIFY(app.model.getSaveEnabled() && app.model.getWriteEnabled());
        QCOMPARE(app.model.getLastOpenDir(), PATH_SAVED);
        QCOMPARE(app.view.tabCount(), 1);
        QCOMPARE(app.current()->getTitle(), QStringLiteral("New Setup 1.hex"));
        QVERIFY(app.current()->getPath().isEmpty());
        QVERIFY(QFileInfo::exists(app.folder.path("data/temp.hex")));
    }

    void startsWithSomethingMissing_data() { testsupport::loadTable(); }
    void startsWithSomethingMissing() {
        QFETCH(QStringList, remove);
        QFETCH(QStringList, shown);
        QFETCH(bool, started);
        QFETCH(bool, canRead);
        App app;
        for (const QString& path : remove) {
            QFileInfo(path).isDir() ? QDir(path).removeRecursively() : QFile::remove(path);
        }
        QCOMPARE(app.controller.initialize(), started);
        QStringList texts;
        for (const auto& s : app.prompts.shown) {
            texts << s.text;
        }
        QCOMPARE(texts, testsupport::shownTexts(shown));
        QCOMPARE(app.model.getReadEnabled(), canRead);
        // Saving needs a file: none opened without firmware.
        QCOMPARE(app.model.getSaveEnabled(), app.current() != nullptr);
        QCOMPARE(app.model.getNewEnabled(),
                 !remove.join(' ').contains("data/firmware") && !remove.contains("data"));
    }

    void fileNameFromPath_data() { testsupport::loadTable(); }
    void fileNameFromPath() {
        QFETCH(QString, path);
        QFETCH(QString, name);
        QCOMPARE(AppController::getFileNameFromPath(path), name);
    }

    // Save refuses the files the program lives on, and asks before the scratch image.
    void saveRefusals_data() { testsupport::loadTable(); }
    void saveRefusals() {
        QFETCH(QString, target);
        QFETCH(QStringList, answers);
        QFETCH(QString, error);
        QFETCH(bool, written);
        App app;
        QVERIFY(app.controller.initialize());
        const QByteArray before = testsupport::readFile(target);
        app.prompts.saveNames << app.folder.path(target);
        app.prompts.answers = testsupport::buttons(answers);
        app.controller.savePressed();
        QCOMPARE(app.prompts.texts(TITLE_ERROR),
                 error.isEmpty() ? QStringList() : QStringList{testsupport::shownText(error)});
        QCOMPARE(testsupport::readFile(target) != before, written);
        QCOMPARE(app.current()->getTitle(),
                 written ? QFileInfo(target).fileName() : QStringLiteral("New Setup 1.hex"));
        if (written) {
            QCOMPARE(app.current()->getStatus(), STATUS_SAVED.arg(QFileInfo(target).fileName()));
        }
    }

    // Cancelling the file name of a first save saves nothing and says nothing was saved.
    void saveCancelled() {
        App app;
        QVERIFY(app.controller.initialize());
        app.controller.saveAsPressed();
        QCOMPARE(app.current()->getStatus(), STATUS_DEFAULT);
        QVERIFY(app.current()->getPath().isEmpty());
        QCOMPARE(app.prompts.titles(), QStringList{TITLE_SAVE});
    }

    // The version of a file to open: recorded and known, recorded and unknown, none.
    void openAsksForUnknownVersions_data() { testsupport::loadTable(); }
    void openAsksForUnknownVersions() {
        QFETCH(QString, recorded);
        QFETCH(QString, question);
        QFETCH(int, choice);
        QFETCH(QString, opened);
        App app;
        QVERIFY(app.controller.initialize());
        sf::parser::HexParser image;
        QVERIFY(image.loadHex(app.folder.path("data/firmware/kx3/3.20.kxhex"),
                              sf::parser::PhantomNone, QIODevice::ReadOnly));
        image.setFwVersion(recorded);
        const QString path = app.folder.path("setups/in.hex");
        QFile out(path);
        QVERIFY(out.open(QIODevice::WriteOnly) && image.writeToDevice(&out, false, 16));
        out.close();
        app.prompts.openNames << path;
        app.prompts.versionChoices << choice;
        app.controller.openPressed();
        QStringList asked;
        for (const auto& shown : app.prompts.shown) {
            if (!shown.text.isEmpty()) {
                asked << shown.text;
            }
        }
        QCOMPARE(asked, question.isEmpty() ? QStringList()
                                           : QStringList{testsupport::shownText(question)});
        QCOMPARE(app.model.getFiles().size(), 1); // single-file mode replaces
        QCOMPARE(app.current()->getFWVersion(), opened.isEmpty() ? QStringLiteral("4.01") : opened);
        if (!opened.isEmpty()) {
            QCOMPARE(app.current()->getTitle(), QStringLiteral("in.hex"));
            QCOMPARE(app.current()->getStatus(), STATUS_OPENED.arg(path));
            // Opening it again only brings it forward.
            app.prompts.openNames << path;
            app.controller.openPressed();
            QCOMPARE(app.model.getFiles().size(), 1);
        }
    }

    // Files named on the command line (a double click in the file manager) open after the
    // start, relative names against the working folder, the last one in front.
    void openFilesNamedOnTheCommandLine() {
        App app;
        QVERIFY(app.controller.initialize());
        app.view.action("enableMultiple")->trigger();
        QVERIFY(QFile::copy(app.folder.path("data/firmware/kx3/3.20.kxhex"),
                            app.folder.path("setups/bike.hex")));
        app.controller.openFiles({app.folder.path("data/firmware/v306.kxhex"), "setups/bike.hex"});
        QCOMPARE(app.view.tabCount(), 3);
        QCOMPARE(app.current()->getTitle(), QStringLiteral("bike.hex"));
        QCOMPARE(app.current()->getFWVersion(), QStringLiteral("3.20"));
        QVERIFY(app.prompts.shown.isEmpty());
    }

    void openBrokenFile() {
        App app;
        QVERIFY(app.controller.initialize());
        const QString path = app.folder.path("setups/broken.hex");
        QVERIFY(testsupport::writeFile(path, ":10000000ZZ\r\n"));
        app.prompts.openNames << path;
        app.prompts.versionChoices << 0;
        app.controller.openPressed();
        QVERIFY(app.prompts.texts(TITLE_ERROR)
                    .contains(ERROR_OPENHEX.arg(QFileInfo(path).absoluteFilePath())) ||
                app.prompts.texts(TITLE_ERROR).contains(ERROR_OPENHEX.arg(path)));
        QCOMPARE(app.current()->getTitle(), QStringLiteral("New Setup 1.hex"));
    }

    void singleAndMultipleFiles() {
        App app;
        QVERIFY(app.controller.initialize());
        app.prompts.versionChoices << 1; // 3.20
        app.controller.newPressed();
        QCOMPARE(app.model.getFiles().size(), 1);
        QCOMPARE(app.current()->getTitle(), QStringLiteral("New Setup 2.hex"));
        QCOMPARE(app.current()->getStatus(), STATUS_CREATED);

        app.view.action("enableMultiple")->trigger();
        QVERIFY(app.model.getMultipleEnabled());
        app.prompts.versionChoices << 0 << 4;
        app.controller.newPressed();
        app.controller.newPressed();
        QCOMPARE(app.view.tabCount(), 3);
        QCOMPARE(app.model.getCurrentIndex(), 2);
        QCOMPARE(app.current()->getFWVersion(), QStringLiteral("v306"));

        // Leaving multiple-file mode asks; Cancel keeps everything, OK keeps the current.
        app.prompts.answers << QMessageBox::Cancel << QMessageBox::Ok;
        app.view.action("enableMultiple")->trigger();
        QVERIFY(app.model.getMultipleEnabled());
        QVERIFY(app.view.action("enableMultiple")->isChecked());
        QCOMPARE(app.model.getFiles().size(), 3);
        app.view.action("enableMultiple")->trigger();
        QVERIFY(!app.model.getMultipleEnabled());
        QCOMPARE(app.prompts.texts(TITLE_CLOSE_MULTIPLE),
                 (QStringList{MESSAGE_CLOSE_MULTIPLE, MESSAGE_CLOSE_MULTIPLE}));
        QCOMPARE(app.model.getFiles().size(), 1);
        QCOMPARE(app.current()->getFWVersion(), QStringLiteral("v306"));
        QCOMPARE(app.view.tabCount(), 1);

        // Closing the last file leaves nothing to save or write.
        app.controller.closePressed(0);
        QVERIFY(!app.model.getSaveEnabled() && !app.model.getWriteEnabled());
        QVERIFY(app.model.getNewEnabled() && app.model.getReadEnabled());
        QCOMPARE(app.view.tabCount(), 0);
    }

    // Exit closes every file and ends the program well.
    void exitClosesEveryFile() {
        App app;
        QVERIFY(app.controller.initialize());
        QTimer::singleShot(0, app.view.action("exit"), &QAction::trigger);
        QTimer::singleShot(10000, [] { QCoreApplication::exit(-1); }); // Exit did nothing
        QCOMPARE(QCoreApplication::exec(), 0);
        QVERIFY(app.model.getFiles().isEmpty());
    }

    void showProtectedReachesEveryFile() {
        App app;
        QVERIFY(app.controller.initialize());
        app.view.action("showProtected")->trigger();
        QVERIFY(app.model.getShowProtected());
        QVERIFY(app.current()->showProtected());
        app.view.action("enableMultiple")->trigger();
        app.prompts.versionChoices << 1;
        app.controller.newPressed();
        QVERIFY(app.current()->showProtected());
        app.view.action("showProtected")->trigger();
        for (FileModel* f : app.model.getFiles()) {
            QVERIFY(!static_cast<KXFileModel*>(f)->showProtected());
        }
    }

    void undoRedoFromTheMenu() {
        App app;
        QVERIFY(app.controller.initialize());
        sf::SettingManager* m = app.current()->manager();
        const double before = m->getSettingData(CAPACITY, sf::RoleEdit).toDouble();
        QVERIFY(!app.view.action("undo")->isEnabled());
        QVERIFY(m->setSettingData(before + 1.0, CAPACITY));
        QVERIFY(app.current()->isModified());
        QVERIFY(app.view.action("undo")->isEnabled());
        app.view.action("undo")->trigger();
        QCOMPARE(m->getSettingData(CAPACITY, sf::RoleEdit).toDouble(), before);
        QVERIFY(!app.view.action("undo")->isEnabled());
        QVERIFY(app.view.action("redo")->isEnabled());
        app.view.action("redo")->trigger();
        QCOMPARE(m->getSettingData(CAPACITY, sf::RoleEdit).toDouble(), before + 1.0);
    }

    void removeAllFirmware_data() { testsupport::loadTable(); }
    void removeAllFirmware() {
        QFETCH(QStringList, answer);
        App app;
        QVERIFY(app.controller.initialize());
        QVERIFY(testsupport::writeFile(FILE_FIRMWARE_LIST, QByteArray()));
        app.prompts.answers << testsupport::buttons(answer);
        app.controller.clearFirmwarePressed();
        const bool yes = answer == QStringList{"Yes"};
        QCOMPARE(app.model.getVersions().isEmpty(), yes);
        QCOMPARE(QFileInfo::exists(FILE_FIRMWARE_LIST), !yes);
        QCOMPARE(QDir(PATH_KXS).entryList(QDir::Files).isEmpty(), yes);
        QVERIFY(QDir(PATH_FW + "kx3").exists()); // folders stay
        QCOMPARE(app.prompts.titles().contains("Firmware Deleted Successfuly"), yes);
        QVERIFY(QFileInfo::exists(PATH_AND_FILE_SUPL));
    }

    // Get New Firmware: the new version joins the catalogue at once; asked again, the
    // server has nothing new.
    void getNewFirmware() {
        App app;
        QVERIFY(app.controller.initialize());
        QTemporaryDir served;
        QVERIFY(testsupport::writeZip(
            served.filePath("kx4-4.02.zip"),
            {{"firmware/kx4/2026/4.02.kxhex", testsupport::newFirmware("4.02", "KX4-4.01")}}));
        testsupport::serve(served.path(), "kx4-4.02.zip",
                           testsupport::readFile(served.filePath("kx4-4.02.zip")));
        testsupport::FirmwareServer server(served.path());
        qputenv("KX_FIRMWARE_URL", server.url().toUtf8());
        const auto downloader = []() -> QWidget* {
            for (QWidget* w : QApplication::topLevelWidgets()) {
                if (w->windowTitle() == "Get New Firmware" && w->isVisible()) {
                    return w;
                }
            }
            return nullptr;
        };
        // On screen while it fetches, its messages clear of its progress bar.
        bool shownWhileFetching = false;
        const auto look = [&] {
            if (QWidget* w = downloader()) {
                shownWhileFetching |= !w->findChild<QLabel*>()->geometry().intersects(
                    w->findChild<QProgressBar*>()->geometry());
            }
        };
        testsupport::watchWhile([&] { app.view.action("getFirmware")->trigger(); }, look);
        QVERIFY(shownWhileFetching && !downloader());
        QCOMPARE(app.model.getDefaultVersion().fwVersion, QStringLiteral("4.02"));
        QVERIFY(app.model.containsFwVersion("4.02") && app.model.containsFwVersion("4.01"));
        app.view.action("getFirmware")->trigger();
        qunsetenv("KX_FIRMWARE_URL");
        QCOMPARE(app.prompts.texts("Get New Firmware"),
                 (QStringList{"Installed kx4-4.02.zip.",
                              "There is no new firmware: this program has every version the "
                              "server has."}));
    }

    void helpAndAbout() {
        App app;
        QVERIFY(app.controller.initialize());
        app.controller.aboutPressed();
        QCOMPARE(app.prompts.dialogsRun, QStringList{TITLE_ABOUT});
        QVERIFY(app.prompts.lastDialogText.contains(VERSION));
        app.controller.helpPressed();
        QVERIFY(app.prompts.shown.isEmpty());
        QFile::remove(app.folder.path("data/help/4.01_help.html"));
        app.controller.helpPressed();
        QCOMPARE(app.prompts.texts("Could not find help file"),
                 QStringList{"No help file found for this firmware version"});
        // The update window opens centred over the main window, not in a corner.
        app.view.setGeometry(60, 40, 900, 700);
        app.controller.updateFirmwarePressed();
        const QPoint off = app.controller.firmwareUpdateWindow()->geometry().center() -
                           app.view.geometry().center();
        QVERIFY2(off.manhattanLength() <= 4, "centred up to the window frame"); // not the corner
        app.controller.firmwareUpdateWindow()->close();
    }
};

QTEST_MAIN(TestAppController)
#include "tst_appcontroller.moc"
