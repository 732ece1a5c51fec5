// The file model of an open setup file: setters that announce only changes, a table per
// category, the load failure reports, edits that mark the file modified, undo and redo
// that point at the changed cell, showing protected settings, and saving.
#include "sf/SettingManager.h"
#include "sf/SettingsTableModel.h"
#include "ui/KXFileModel.h"

#include "support/ManagerFixtures.h"

#include <QSignalSpy>
#include <QtTest>

using ui::KXFileModel;

namespace {

struct OpenFile {
    testsupport::ManagerFiles files;
    KXFileModel model;
    QString image;
    OpenFile() {
        sf::SettingManager probe;
        testsupport::loadStandard(probe, files); // writes the layout and the image
        image = files.path(QStringLiteral("setup.hex"));
    }
    util::VersionContainer version() const {
        return testsupport::managerVersion(QStringLiteral("FW1"), QStringLiteral("KX4-T1"),
                                           files.path(QStringLiteral("t1.kxs")));
    }
};

} // namespace

class TestKXFileModel : public QObject {
    Q_OBJECT
private slots:
    void settersAnnounceOnlyChanges() {
        KXFileModel model(QStringLiteral("ready"));
        QSignalSpy titles(&model, &ui::FileModel::titleChanged);
        QSignalSpy statuses(&model, &ui::FileModel::statusChanged);
        model.setTitle(QStringLiteral("a.hex"));
        model.setTitle(QStringLiteral("a.hex"));
        model.setStatus(QStringLiteral("ready"));
        QCOMPARE(titles.size(), 1);
        QCOMPARE(statuses.size(), 0);
    }

    void opensIntoOneTablePerCategory() {
        OpenFile f;
        QSignalSpy errors(&f.model, &KXFileModel::settingsLoadError);
        QVERIFY(f.model.open(f.image, f.version()));
        QCOMPARE(errors.size(), 0);
        QCOMPARE(int(f.model.tables().size()), f.model.manager()->getCategories().size());
        QVERIFY(f.model.tableTitles().contains(QStringLiteral("Battery")));
        QCOMPARE(f.model.getFWVersion(), QStringLiteral("FW1"));
        QVERIFY(!f.model.isModified());
    }

    void layoutThatCannotBeOpened() {
        OpenFile f;
        QSignalSpy problems(&f.model, &KXFileModel::problem);
        QSignalSpy errors(&f.model, &KXFileModel::settingsLoadError);
        util::VersionContainer version = f.version();
        version.kxsFilePath = f.files.path(QStringLiteral("nope.kxs"));
        QVERIFY(!f.model.open(f.image, version));
        QCOMPARE(problems.size(), 2);
        QCOMPARE(problems.at(0).at(0).toString(),
                 QStringLiteral("Error occurred loading raw settings "));
        QCOMPARE(problems.at(1).at(0).toString(),
                 QStringLiteral("Less data found than expected in settings! "));
        QCOMPARE(errors.size(), 1);
        QCOMPARE(errors.first().at(0).toInt(), int(sf::SettingManager::LoadLayoutFailed));
        QVERIFY(f.model.tables().empty());
    }

    // An edit marks the file modified and enables undo; undo jumps to the edited cell and
    // then reports that nothing more can be undone; redo brings the edit back.
    void editUndoRedo() {
        OpenFile f;
        QVERIFY(f.model.open(f.image, f.version()));
        QSignalSpy modified(&f.model, &ui::FileModel::modifiedChanged);
        QSignalSpy undoEnabled(&f.model, &ui::FileModel::undoEnabledChanged);
        QSignalSpy jumps(&f.model, &KXFileModel::jumpToIndex);
        sf::SettingsTableModel* battery = f.model.tables().at(1).get();
        const QModelIndex cell = f.model.manager()->modelIndex(battery, QStringLiteral("Lim1"));
        QVERIFY(cell.isValid());
        QVERIFY(battery->setData(cell, 40.0, Qt::EditRole));
        QCOMPARE(modified.size(), 1);
        QCOMPARE(undoEnabled.last().at(0).toBool(), true);
        undoEnabled.clear();
        f.model.undoAction();
        QCOMPARE(jumps.size(), 1);
        QCOMPARE(jumps.first().at(0).toModelIndex(), cell);
        QCOMPARE(undoEnabled.last().at(0).toBool(), false);
        QCOMPARE(cell.data(Qt::EditRole).toDouble(), 48.0);
        QVERIFY(f.model.getRedoEnabled());
        f.model.redoAction();
        QCOMPARE(cell.data(Qt::EditRole).toDouble(), 40.0);
    }

    void showProtected() {
        OpenFile f;
        QVERIFY(f.model.open(f.image, f.version()));
        QSignalSpy changed(&f.model, &ui::FileModel::showProtectedChanged);
        int rows = 0;
        for (const auto& table : f.model.tables()) {
            rows += table->rowCount();
        }
        f.model.setShowProtected(true);
        f.model.setShowProtected(true);
        QCOMPARE(changed.size(), 1);
        int shown = 0;
        for (const auto& table : f.model.tables()) {
            shown += table->rowCount();
        }
        QCOMPARE(shown, rows + 1); // the hidden setting Hid
    }

    // Saving writes the edited value; a save that cannot be written leaves the file alone.
    void save() {
        OpenFile f;
        QVERIFY(f.model.open(f.image, f.version()));
        QVERIFY(f.model.manager()->setSettingData(40.0, QStringLiteral("Lim1")));
        const QString saved = f.files.path(QStringLiteral("saved.hex"));
        QVERIFY(f.model.save(saved, true, false));
        KXFileModel again;
        QVERIFY(again.open(saved, f.version()));
        QCOMPARE(again.manager()->getSettingData(QStringLiteral("Lim1"), sf::RoleEdit).toDouble(),
                 40.0);
        QSignalSpy problems(&f.model, &KXFileModel::problem);
        QVERIFY(!f.model.save(f.files.path(QStringLiteral("no/such/folder/x.hex")), true, false));
        QCOMPARE(problems.size(), 1);
    }
};

QTEST_MAIN(TestKXFileModel)
#include "tst_kxfilemodel.moc"
