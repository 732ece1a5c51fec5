// The application's transfers against a simulated instrument: reading into a new tab,
// writing and reading back, the version checks before a write (another layout, the same
// layout under another firmware version, an instrument the catalogue does not know, an
// instrument that does not answer), and the comparison with the instrument.
#include "support/AppFixture.h"
#include "support/AppTexts.h"
#include "support/CliRunner.h"
#include "support/Simulator.h"
#include "support/TableFile.h"
#include "support/TestSupport.h"

#include "app/Constants.h"
#include "app/DeviceWorkflow.h"
#include "sf/SettingManager.h"
#include "sf/SetupFile.h"
#include "sf/parser/HexParser.h"
#include "ui/KXFileModel.h"
#include "ui/MainWindow.h"
#include "ui/ProgressDialog.h"
#include "util/KXCommunicator.h"
#include "util/Uploader.h"

#include <QComboBox>
#include <QPointer>
#include <QProgressBar>
#include <QTextEdit>
#include <QtTest>

using testsupport::App;
using testsupport::Simulator;
using namespace ui;

namespace {

const QString CAPACITY = QStringLiteral("BattCapA");

// Catalogue positions of the sample versions, highest first.
int choice(const QString& fw) {
    return QStringList{"4.01", "3.20", "3.12", "3.10", "v306"}.indexOf(fw);
}

QString firmwareOf(const QString& fw) {
    return fw == QLatin1String("4.01")   ? QStringLiteral("data/firmware/kx4/2025/4.01.kxhex")
           : fw == QLatin1String("v306") ? QStringLiteral("data/firmware/v306.kxhex")
                                         : QStringLiteral("data/firmware/kx3/%1.kxhex").arg(fw);
}

// A copy of a firmware file whose instrument answers the enquiry with another text.
QString renamedFirmware(App& app, const QString& fw, const QString& enq) {
    sf::parser::HexParser image;
    if (!image.loadHex(app.folder.path(firmwareOf(fw)), sf::parser::PhantomNone,
                       QIODevice::ReadOnly)) {
        return QString();
    }
    image.setEnqString(enq);
    QDir().mkpath(app.folder.path("sim"));
    QFile::copy(app.folder.path("data/device.txt"), app.folder.path("sim/device.txt"));
    QFile out(app.folder.path("sim/renamed.kxhex"));
    if (!out.open(QIODevice::WriteOnly) || !image.writeToDevice(&out, false, 16)) {
        return QString();
    }
    return out.fileName();
}

// A new file of the version with the capacity changed to a value the defaults lack.
KXFileModel* newEdited(App& app, const QString& fw, double capacity) {
    app.prompts.versionChoices << choice(fw);
    app.controller.newPressed();
    KXFileModel* file = app.current();
    return file && file->manager()->setSettingData(capacity, CAPACITY) ? file : nullptr;
}

} // namespace

class TestAppDevice : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() {
        util::KXCommunicator::setAnswerWaitMs(300);
        util::Uploader::setWaits(3000, 15000, 3000);
        DeviceWorkflow::setRetryWaitMs(10);
    }

    // Read: a new, modified tab without a path; Save asks for a name and the saved file
    // records its version. Write, then read back: the edited value is on the instrument.
    void readWriteReadBack() {
        App app;
        QVERIFY(app.controller.initialize());
        Simulator sim(app.folder.path(firmwareOf("3.20")), app.folder.path("state.hex"));

        KXFileModel* edited = newEdited(app, "3.20", 23.5);
        QVERIFY(edited);
        app.usePort(sim.port());
        app.prompts.answers << QMessageBox::Yes;
        app.controller.writePressed();
        QCOMPARE(app.prompts.texts(TITLE_ERROR), QStringList());
        QCOMPARE(edited->getStatus(), STATUS_WRITE.arg("New Setup 2.hex"));
        QCOMPARE(app.prompts.texts(TITLE_CONFIRM_WRITE), QStringList{MESSAGE_CONFIRM_WRITE});

        app.usePort(sim.port());
        app.controller.readPressed();
        KXFileModel* read = app.current();
        QVERIFY(read != edited);
        QCOMPARE(app.model.getFiles().size(), 1);
        QCOMPARE(read->getTitle(), QStringLiteral("Read Setup 1.hex"));
        QVERIFY(read->isModified());
        QVERIFY(read->getPath().isEmpty());
        QCOMPARE(read->getStatus(), STATUS_READ);
        QCOMPARE(read->getFWVersion(), QStringLiteral("3.20"));
        QCOMPARE(read->manager()->getSettingData(CAPACITY, sf::RoleEdit).toDouble(), 23.5);
        QCOMPARE(app.model.getLastPort(), sim.port());
        // The transfer's dialog said what it was doing.
        const QList<ProgressDialog*> dialogs = app.view.findChildren<ProgressDialog*>();
        QCOMPARE(dialogs.size(), 1);
        QCOMPARE(dialogs.first()->windowTitle(), TITLE_READ_PROGRESS);

        const QString saved = app.folder.path("setups/from-korvex.hex");
        app.prompts.saveNames << saved;
        app.controller.savePressed();
        QCOMPARE(read->getTitle(), QStringLiteral("from-korvex.hex"));
        QVERIFY(!read->isModified());
        QCOMPARE(sf::SetupFile::recordedFirmware(saved), QStringLiteral("3.20"));
    }

    void writeChecksVersions_data() { testsupport::loadTable(); }
    void writeChecksVersions() {
        QFETCH(QString, instrument);
        QFETCH(QString, enq);
        QFETCH(QStringList, faults);
        QFETCH(QString, file);
        QFETCH(QStringList, answers);
        QFETCH(QStringList, shown);
        QFETCH(bool, written);
        App app;
        QVERIFY(app.controller.initialize());
        const QString firmware = enq.isEmpty() ? app.folder.path(firmwareOf(instrument))
                                               : renamedFirmware(app, instrument, enq);
        const QString state = app.folder.path("state.hex");
        Simulator sim(firmware, state, faults);
        QVERIFY(newEdited(app, file, 31.0));
        const QByteArray before = testsupport::readFile(state);

        app.usePort(sim.port());
        app.prompts.answers << QMessageBox::Yes << testsupport::buttons(answers);
        app.prompts.shown.clear();
        app.controller.writePressed();
        QStringList texts;
        for (const auto& s : app.prompts.shown.mid(2)) { // the port and the confirmation
            texts << s.text;
        }
        if (!written && shown.size() == 1 && texts.size() > 1) {
            texts = texts.mid(0, 1); // the helper's own report of a failed reset may follow
        }
        QCOMPARE(texts, testsupport::shownTexts(shown));
        QCOMPARE(app.current()->getStatus() == STATUS_WRITE.arg("New Setup 2.hex"), written);
        if (faults.isEmpty()) {
            QCOMPARE(testsupport::readFile(state) != before, written);
        }
    }

    // The firmware update window on a 3.10 instrument whose settings were changed: keep
    // them (read, backed up, converted, shown, flashed), reset them, cancel at the last
    // question, or find no instrument.
    void firmwareUpdateWindow_data() { testsupport::loadTable(); }
    void firmwareUpdateWindow() {
        QFETCH(bool, reset);
        QFETCH(QStringList, faults);
        QFETCH(int, preview);
        QFETCH(bool, updated);
        QFETCH(QStringList, after);
        App app;
        QVERIFY(app.controller.initialize());
        const QString state = app.folder.path("state.hex");
        const QString here = app.folder.path("");
        if (faults.isEmpty()) {
            // The instrument holds changed settings before it is updated.
            Simulator setup(app.folder.path(firmwareOf("3.10")), state);
            const QString set = QStringLiteral("set %1 -o start.hex -q LifeAhA=100 CellCntA=13 "
                                               "CellChemA=LiPo BattCapA=21.5");
            const QString write = QStringLiteral("device write --port %1 start.hex");
            for (const QString& command : {set.arg(firmwareOf("3.10")), write.arg(setup.port())}) {
                QCOMPARE(testsupport::runCli(command.split(' '), here).exitCode, 0);
            }
        }
        Simulator sim(app.folder.path(firmwareOf("3.10")), state, faults);
        app.controller.updateFirmwarePressed();
        MainWindow* window = app.controller.firmwareUpdateWindow();
        QVERIFY(window);
        QCOMPARE(window->target().fwVersion, QStringLiteral("4.01")); // the default version
        window->setPort(sim.port());
        window->selectVersion("3.20");
        window->setResetSettings(reset);
        app.prompts.saveNames << app.folder.path("setups/backups/before.hex");
        app.prompts.dialogResults << preview;
        // While it works, its choices are locked and its log stays readable.
        int looks = 0;
        int wrong = 0;
        const auto look = [&] {
            if (window->isBusy()) {
                const auto boxes = window->findChildren<QComboBox*>();
                ++looks;
                wrong += std::any_of(boxes.begin(), boxes.end(),
                                     [](QComboBox* b) { return b->isEnabled(); }) ||
                         !window->findChild<QTextEdit*>()->isEnabled();
            }
        };
        bool result = false;
        testsupport::watchWhile([&] { result = window->startUpdate(); }, look);
        QCOMPARE(result, updated);
        QVERIFY(wrong == 0 && (looks > 0 || !updated));
        QCOMPARE(app.controller.firmwareUpdateVersion().fwVersion, QStringLiteral("3.20"));
        QVERIFY(!window->isBusy());
        QCOMPARE(app.prompts.texts(TITLE_ERROR).contains(MESSAGE_UPDATE_VERSION_NONE),
                 !faults.isEmpty());
        QCOMPARE(window->logText().contains("Upload Complete!"), updated);
        QCOMPARE(window->findChild<QProgressBar*>()->value() == 100, updated);
        QCOMPARE(app.model.getLastPort(), sim.port());
        QCOMPARE(QFileInfo::exists(app.folder.path("setups/backups/before.hex")),
                 !reset && faults.isEmpty());
        QVERIFY(!QFileInfo::exists(app.folder.path("data/update.kxhex")));
        QStringList titles;
        for (const FileModel* f : app.model.getFiles()) {
            titles << f->getTitle();
        }
        // The settings read before the update stay open in a tab of their own, those read
        // back after it beside them; no file twice.
        QCOMPARE(titles.contains("Settings before the update.hex"), !reset && faults.isEmpty());
        QCOMPARE(titles.contains("Settings after the update.hex"), !reset && updated);
        QCOMPARE(titles.removeDuplicates(), 0);
        QCOMPARE(QDir::currentPath(), QDir(app.folder.path("")).absolutePath());
        for (const QString& check : after) {
            const testsupport::CliResult value =
                testsupport::runCli({"-C", here, "get", state, check.section('=', 0, 0)}, here);
            QCOMPARE(value.out.trimmed(), check.section('=', 1));
        }
    }

    // Choosing the port asks the instrument: the newest firmware for its model is chosen,
    // the others stay listed with their models; another model's firmware is refused with
    // the instrument untouched and still answering.
    void updateWindowFollowsTheModel() {
        App app;
        QVERIFY(app.controller.initialize());
        const QString state = app.folder.path("state.hex");
        Simulator sim(app.folder.path(firmwareOf("3.10")), state);
        app.controller.updateFirmwarePressed();
        MainWindow* window = app.controller.firmwareUpdateWindow();
        window->setPort(sim.port());
        window->identifyInstrument();
        QCOMPARE(window->target().fwVersion, QStringLiteral("3.20"));
        auto* list = window->findChildren<QComboBox*>().at(1);
        QCOMPARE(list->itemText(0), QStringLiteral("Firmware 4.01 (Korvex KX4)"));
        window->selectVersion("4.01");
        QVERIFY(!window->startUpdate());
        QCOMPARE(app.prompts.texts(TITLE_ERROR),
                 QStringList{MESSAGE_UPDATE_OTHER_MODEL.arg("Korvex KX3", "Korvex KX4")});
        QVERIFY(!QFileInfo::exists(state)); // nothing was written to it
        QCOMPARE(
            testsupport::runCli({"device", "enq", "--port", sim.port()}, app.folder.path("")).out,
            QStringLiteral("3.10\n"));
    }

    // The window's read, write and update on a faulty line run the same workflows as the
    // command line: each ends with its message; after a power cycle (and one update from
    // the window with the backup, when only the update mode answers) the instrument
    // answers and holds the old or the new settings whole.
    void windowFaults_data() { testsupport::loadTable(); }
    void windowFaults() {
        QFETCH(QString, operation);
        QFETCH(QStringList, faults);
        QFETCH(QString, shown);
        QFETCH(QString, answers);
        QFETCH(QString, holds);
        App app;
        QVERIFY(app.controller.initialize());
        const QString here = app.folder.path("");
        const QString state = app.folder.path("state.hex");
        const auto run = [&here](const QString& command) {
            return testsupport::runCli(command.split(' '), here);
        };
        QCOMPARE(run("set " + firmwareOf("3.10") + " -o start.hex -q BattCapA=21.5").exitCode, 0);
        QCOMPARE(run("set start.hex -o new.hex -q BattCapA=30 Backlight=40").exitCode, 0);
        {
            Simulator setup(app.folder.path(firmwareOf("3.10")), state);
            QCOMPARE(run("device write --port " + setup.port() + " start.hex").exitCode, 0);
        }
        const QString before = app.folder.path("before-state.hex");
        QVERIFY(QFile::copy(state, before));
        QPointer<MainWindow> window;
        const auto update = [&](const QString& port) {
            if (!window) {
                app.controller.updateFirmwarePressed();
                window = app.controller.firmwareUpdateWindow();
            }
            window->setPort(port);
            window->selectVersion("3.20");
            app.prompts.saveNames << app.folder.path("setups/backups/before.hex");
            return window->startUpdate();
        };
        {
            Simulator sim(app.folder.path(firmwareOf("3.10")), state, faults);
            app.usePort(sim.port());
            if (operation == QLatin1String("read")) {
                app.controller.readPressed();
            } else if (operation == QLatin1String("write")) {
                app.prompts.versionChoices << choice("3.10");
                app.controller.openFiles({app.folder.path("new.hex")});
                app.usePort(sim.port());
                app.prompts.answers << QMessageBox::Yes;
                app.controller.writePressed();
            } else {
                QVERIFY(!update(sim.port()));
            }
            QStringList texts;
            for (const auto& s : app.prompts.shown) {
                texts << s.text;
            }
            QVERIFY2(shown.isEmpty() ? app.prompts.texts(TITLE_ERROR).isEmpty()
                                     : texts.join('\n').contains(shown),
                     qPrintable(texts.join('\n')));
        }
        if (operation == QLatin1String("write") && faults.isEmpty()) {
            // The command line's write of the same file leaves the same bytes.
            Simulator cli(app.folder.path(firmwareOf("3.10")), before);
            QCOMPARE(run("device write --port " + cli.port() + " new.hex").exitCode, 0);
            QCOMPARE(testsupport::readFile(before), testsupport::readFile(state));
        }
        Simulator again(app.folder.path(firmwareOf("3.10")), state);
        if (run("device enq --port " + again.port()).exitCode != 0) {
            app.prompts.answers << QMessageBox::Yes; // finish with the newest backup
            QVERIFY(update(again.port()));
        }
        QCOMPARE(run("device enq --port " + again.port()).out.trimmed(), answers);
        QCOMPARE(run("device read --port " + again.port() + " -o after.hex").exitCode, 0);
        const QString expected = holds == QLatin1String("old")   ? QStringLiteral("start.hex")
                                 : holds == QLatin1String("new") ? QStringLiteral("new.hex")
                                                                 : QString();
        if (!expected.isEmpty()) {
            const testsupport::CliResult diff = run("diff " + expected + " after.hex");
            QVERIFY2(diff.out.endsWith("0 differ, 0 only in A, 0 only in B\n"),
                     qPrintable(diff.out));
        } else { // carried into 3.20
            QCOMPARE(run("get after.hex BattCapA").out.trimmed(), QStringLiteral("21.5"));
        }
    }

    void compareWithInstrument() {
        App app;
        QVERIFY(app.controller.initialize());
        Simulator sim(app.folder.path(firmwareOf("4.01")), app.folder.path("state.hex"));
        QVERIFY(app.current()->manager()->setSettingData(42.0, CAPACITY));
        app.usePort(sim.port());
        app.controller.comparePressed();
        QCOMPARE(app.prompts.dialogsRun, QStringList{"Compare with Korvex"});
        for (const ProgressDialog* progress : app.view.findChildren<ProgressDialog*>()) {
            QVERIFY(!progress->isVisible()); // the transfer's dialog is gone
        }
        QVERIFY2(app.prompts.lastDialogText.contains("1 setting(s) of \"New Setup 1.hex\" differ"),
                 qPrintable(app.prompts.lastDialogText));
    }

    // Check connection in the port dialog reports on the port and asks again; the checked
    // port is then the one the dialog offers, and the instrument answers on it.
    void checkConnectionFromThePortDialog() {
        // The doctor waits as long as the application does, whatever the machine's load.
        util::KXCommunicator::setAnswerWaitMs(1000);
        App app;
        QVERIFY(app.controller.initialize());
        Simulator sim(app.folder.path(firmwareOf("3.20")), app.folder.path("state.hex"));
        app.prompts.portAnswers << PortAnswer{PortAnswer::Check, "/dev/kx-no-such-port"}
                                << PortAnswer{PortAnswer::Check, sim.port()} << PortAnswer();
        app.controller.readPressed();
        const QStringList reports = app.prompts.texts(TITLE_CHECK_CONNECTION);
        QCOMPARE(reports.size(), 2);
        QVERIFY(reports.at(0).contains("Problem: The port /dev/kx-no-such-port does not exist."));
        QVERIFY2(reports.at(1).endsWith(QString("The instrument on %1 answered \"3.20\": the "
                                                "connection works.")
                                            .arg(sim.port())),
                 qPrintable(reports.at(1)));
        QList<QMessageBox::Icon> icons;
        for (const auto& shown : app.prompts.shown) {
            if (shown.title == TITLE_CHECK_CONNECTION) {
                icons << shown.icon;
            }
        }
        QCOMPARE(icons, (QList<QMessageBox::Icon>{QMessageBox::Warning, QMessageBox::Information}));
        QCOMPARE(app.model.getLastPort(), sim.port());
        QCOMPARE(app.model.getFiles().size(), 1); // cancelled: nothing read
        util::KXCommunicator::setAnswerWaitMs(300);
    }
};

QTEST_MAIN(TestAppDevice)
#include "tst_appdevice.moc"
