// The windows. End to end through the real main window: open a sample setup from the File
// menu, edit a cell with its editor, save with the keyboard, open the file again in a new
// window: the value is there; the window's commands follow the model's states, and the
// status bar shows the current file's status. The dialogs the workflows put up: the port
// choice (OK only with a port; the last port, else the only USB adapter, else the first
// entry chosen first; a typed path, Refresh), the
// version choice, and the progress dialog, whose Cancel only asks the transfer to stop.
#include "app/Constants.h"
#include "sf/SettingManager.h"
#include "sf/SettingsTableModel.h"
#include "sf/ui/SettingsTableView.h"
#include "support/AppFixture.h"
#include "support/TableFile.h"
#include "support/TestSupport.h"
#include "ui/ComDialog.h"
#include "ui/KXFileModel.h"
#include "ui/KXFileView.h"
#include "ui/ProgressDialog.h"
#include "ui/VersionDialog.h"
#include "util/Uploader.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QtTest>

using testsupport::App;
using namespace ui;

Q_DECLARE_METATYPE(util::SerialPortDescription)

namespace {

// The table and cell that show a setting in the current tab.
sf::ui::SettingsTableView* cellOf(App& app, const QString& codeName, QModelIndex* index) {
    KXFileView* view = app.view.fileView(app.model.getCurrentIndex());
    for (sf::ui::SettingsTableView* table : view->tables()) {
        *index = app.current()->manager()->modelIndex(
            static_cast<sf::SettingsTableModel*>(table->model()), codeName);
        if (index->isValid()) {
            view->jumpTo(*index);
            return table;
        }
    }
    return nullptr;
}

QPushButton* button(QDialog& dialog, QDialogButtonBox::StandardButton which) {
    return dialog.findChild<QDialogButtonBox*>()->button(which);
}

const QList<PortEntry> PORTS{{"/dev/ttyS0", "On-board serial port", QString()},
                             {"/dev/ttyUSB0", "USB serial PL2303 (067b:2303)", "067b:2303"},
                             {"/dev/ttyUSB1", "USB serial CH340 (1a86:7523)", "1a86:7523"}};

} // namespace

class TestWindows : public QObject {
    Q_OBJECT
private slots:
    void openEditSaveReopen() {
        const QString capacity = QStringLiteral("BattCapA");
        QTemporaryDir keep;
        const QString saved = keep.filePath(QStringLiteral("mine.hex"));
        {
            App app;
            app.view.show();
            QVERIFY(QTest::qWaitForWindowExposed(&app.view));
            QVERIFY(app.controller.initialize());
            const QString sample = app.folder.path("setups/mine.hex");
            QVERIFY(QFile::copy(app.folder.path("data/firmware/kx3/3.20.kxhex"), sample));
            app.prompts.openNames << sample;
            app.view.action("open")->trigger();
            QCOMPARE(app.view.statusText(), STATUS_OPENED.arg(sample));
            QCOMPARE(app.view.windowTitle(), TITLE_APP);

            QModelIndex cell;
            sf::ui::SettingsTableView* table = cellOf(app, capacity, &cell);
            QVERIFY(table);
            const QRect rect = table->visualRect(cell);
            QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, rect.center());
            QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, rect.center());
            auto* edit = qobject_cast<QLineEdit*>(table->indexWidget(cell));
            QVERIFY(edit);
            edit->selectAll();
            QTest::keyClicks(edit, QStringLiteral("27.25"));
            QTest::keyClick(edit, Qt::Key_Return);
            QCoreApplication::processEvents(); // the editor closes
            QVERIFY(app.current()->isModified());
            QVERIFY(app.view.action("undo")->isEnabled());
            // One edit, one step back.
            app.view.action("undo")->trigger();
            QVERIFY(!app.view.action("undo")->isEnabled());
            app.view.action("redo")->trigger();

            QTest::keySequence(&app.view, QKeySequence::Save);
            QCOMPARE(app.prompts.texts(TITLE_ERROR), QStringList());
            QVERIFY(!app.current()->isModified());
            QCOMPARE(app.view.statusText(), STATUS_SAVED.arg("mine.hex"));
            QVERIFY(QFile::copy(sample, saved));
        }
        App again;
        QVERIFY(again.controller.initialize());
        again.prompts.openNames << saved;
        again.view.action("open")->trigger();
        QCOMPARE(again.prompts.texts(TITLE_ERROR), QStringList());
        QCOMPARE(again.current()->getTitle(), QStringLiteral("mine.hex"));
        QCOMPARE(again.current()->manager()->getSettingData(capacity, sf::RoleEdit).toDouble(),
                 27.25);
    }

    // The program itself, asked to end after its first paint (what the start-up benchmark
    // and the package check rely on): it paints, says when, and ends well.
    void programEndsAfterItsFirstPaintWhenAsked() {
        testsupport::RuntimeCopy folder;
        QProcess program;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("KX_QUIT_AFTER_FIRST_PAINT"), QStringLiteral("1"));
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        program.setProcessEnvironment(env);
        program.start(testsupport::toolPath(QStringLiteral("kxsetup")), QStringList());
        QVERIFY(program.waitForFinished(60000));
        QCOMPARE(program.exitCode(), 0);
        const QString out = QString::fromLocal8Bit(program.readAllStandardOutput());
        QVERIFY2(QRegularExpression(QStringLiteral("^painted \\d+\n$")).match(out).hasMatch(),
                 qPrintable(out));
    }

    // The port scan waits for the window's first paint, and is done before anyone can ask.
    void portsListedOnceTheWindowPainted() {
        qputenv(util::Uploader::EXTRA_PORTS_VARIABLE, "/dev/kx-test-port");
        App app;
        QVERIFY(app.controller.initialize());
        QVERIFY(app.controller.uploader().getComList().isEmpty());
        app.view.show();
        QTRY_VERIFY(app.view.hasPainted());
        QTRY_VERIFY(app.controller.uploader().getComList().contains("/dev/kx-test-port"));
        qunsetenv(util::Uploader::EXTRA_PORTS_VARIABLE);
    }

    void commandsFollowTheModel() {
        App app;
        app.model.setReadEnabled(false);
        QVERIFY(!app.view.action("read")->isEnabled());
        app.model.setReadEnabled(true);
        QVERIFY(app.view.action("read")->isEnabled());
        app.model.setSaveEnabled(true);
        QVERIFY(app.view.action("saveAs")->isEnabled() && app.view.action("close")->isEnabled());
        app.model.setTitle(QStringLiteral("t"));
        QCOMPARE(app.view.windowTitle(), QStringLiteral("t"));
        QVERIFY(app.view.action("updateFirmware")->isEnabled());
        QVERIFY(app.view.action("getFirmware")->isEnabled());
    }

    void portChoice_data() { testsupport::loadTable(); }
    void portChoice() {
        QFETCH(int, ports);
        QFETCH(QString, last);
        QFETCH(QString, typed);
        QFETCH(QString, chosen);
        ComDialog dialog(PORTS.mid(0, ports), 0, last, QStringLiteral("Read"));
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Read"));
        if (!typed.isEmpty()) {
            QTest::keyClicks(dialog.findChild<QLineEdit*>(), typed);
        }
        QPushButton* ok = button(dialog, QDialogButtonBox::Ok);
        QCOMPARE(ok->isEnabled(), !chosen.isEmpty());
        if (ok->isEnabled()) {
            ok->click();
            QCOMPARE(dialog.answer().kind, PortAnswer::Ok);
            QCOMPARE(dialog.answer().port, chosen);
        }
    }

    void portListShowsTheAdapter() {
        ComDialog dialog(PORTS, 0, QString(), QStringLiteral("Read"));
        QCOMPARE(dialog.findChild<QListWidget*>()->item(1)->text(),
                 QStringLiteral("USB serial PL2303 (067b:2303) at /dev/ttyUSB0"));
        dialog.findChild<QListWidget*>()->setCurrentRow(2);
        QCOMPARE(dialog.chosenPort(), QStringLiteral("/dev/ttyUSB1"));
    }

    // The buttons besides OK: each closes the dialog with its answer; only Check connection
    // carries the port along (to be examined).
    void otherButtons_data() { testsupport::loadTable(); }
    void otherButtons() {
        QFETCH(QString, label);
        QFETCH(int, kind);
        QFETCH(QString, port);
        ComDialog dialog(PORTS, 0, QString(), QStringLiteral("Write"));
        const QList<QAbstractButton*> buttons = dialog.findChild<QDialogButtonBox*>()->buttons();
        const auto it = std::find_if(buttons.begin(), buttons.end(),
                                     [&](QAbstractButton* b) { return b->text() == label; });
        QVERIFY(it != buttons.end());
        (*it)->click();
        QCOMPARE(int(dialog.answer().kind), kind);
        QCOMPARE(dialog.answer().port, port);
    }

    void versionChoice() {
        util::VersionContainer a, b;
        a.fwVersion = "4.01";
        a.kxsVersion = "KX4-4.01";
        b.fwVersion = "v306";
        VersionDialog dialog({a, b}, "Which?", "Select Version");
        QCOMPARE(dialog.chosen().fwVersion, QStringLiteral("4.01"));
        dialog.select(1);
        QCOMPARE(dialog.chosen().fwVersion, QStringLiteral("v306"));
        VersionDialog none({}, "Which?", "Select Version");
        QVERIFY(none.chosen().isEmpty());
        QVERIFY(!button(none, QDialogButtonBox::Ok)->isEnabled());
    }

    void progressCancelAsksOnce() {
        ProgressDialog progress(QStringLiteral("Reading"));
        QSignalSpy aborted(&progress, &ProgressDialog::aborted);
        progress.setProgressText(QStringLiteral("Connecting\nline two"));
        progress.setProgress(140);
        QCOMPARE(progress.progressText(), QStringLiteral("Connecting"));
        QCOMPARE(progress.progress(), 100);
        button(progress, QDialogButtonBox::Cancel)->click();
        progress.abort(); // closing the window as well
        QCOMPARE(aborted.size(), 1);
        QVERIFY(progress.wasAborted());
        progress.finish();
        QVERIFY(!progress.wasAborted());
        QCOMPARE(progress.progress(), 0);
    }
};

QTEST_MAIN(TestWindows)
#include "tst_windows.moc"
