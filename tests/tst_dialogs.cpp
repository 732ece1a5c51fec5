// The dialogs the workflows put up: the port choice (OK only with a port, the last port
// chosen first, a typed path, Refresh), the version choice, and the progress dialog,
// whose Cancel only asks the transfer to stop.
#include "support/TableFile.h"
#include "ui/ComDialog.h"
#include "ui/ProgressDialog.h"
#include "ui/VersionDialog.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

using namespace ui;

Q_DECLARE_METATYPE(util::SerialPortDescription)

namespace {

QPushButton* button(QDialog& dialog, QDialogButtonBox::StandardButton which) {
    return dialog.findChild<QDialogButtonBox*>()->button(which);
}

const QList<PortEntry> PORTS{{"/dev/ttyUSB0", "USB-Serial Controller", "067b:2303"},
                             {"/dev/ttyUSB1", QString(), QString()}};

} // namespace

class TestDialogs : public QObject {
    Q_OBJECT
private slots:
    void portChoice_data() { testsupport::loadTable(); }
    void portChoice() {
        QFETCH(bool, ports);
        QFETCH(int, index);
        QFETCH(QString, last);
        QFETCH(QString, typed);
        QFETCH(QString, chosen);
        ComDialog dialog(ports ? PORTS : QList<PortEntry>(), index, last, QStringLiteral("Read"));
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
        const QString first = dialog.findChild<QListWidget*>()->item(0)->text();
        QVERIFY(first.contains("USB-Serial Controller") && first.contains("USB 067b:2303"));
        dialog.findChild<QListWidget*>()->setCurrentRow(1);
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

QTEST_MAIN(TestDialogs)
#include "tst_dialogs.moc"
