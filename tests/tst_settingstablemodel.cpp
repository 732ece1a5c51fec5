// The settings table model over the setting manager: a well-behaved item model on every
// sample generation; the colours and flags of missing, disabled and enabled cells; edits,
// row enabling and folding through the model, each seen by the manager and its undo.
#include "sf/Category.h"
#include "sf/SettingManager.h"
#include "sf/SettingsTableModel.h"

#include "support/ManagerFixtures.h"
#include "support/SampleData.h"
#include "support/TableFile.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QtTest>

using sf::SettingManager;
using sf::SettingsTableModel;

namespace {

// The standard layout loaded, with every category shown by one model.
struct Table {
    SettingManager manager;
    testsupport::ManagerFiles files;
    SettingsTableModel model{&manager};
    Table() {
        QVERIFY(testsupport::loadStandard(manager, files) >= 0);
        while (sf::Category* category = manager.getFirstUnmappedCategory()) {
            manager.mapCategory(&model, category);
        }
    }
    QModelIndex at(const QString& codeName) const { return manager.modelIndex(&model, codeName); }
};

} // namespace

class TestSettingsTableModel : public QObject {
    Q_OBJECT
private slots:
    void sampleGenerationsAreWellBehavedModels_data() {
        QTest::addColumn<int>("generation");
        for (int i = 0; i < sampledata::generations().size(); ++i) {
            QTest::newRow(qPrintable(sampledata::generations().at(i).fw)) << i;
        }
    }

    // The model tester checks every answer of the model while the table is built, its
    // rows enabled and disabled and its fonts changed. (Folding changes the text of the
    // folded setting's own row together with the rows below it, which the tester would
    // report as a change of the row above an insertion: foldingInsertsAndRemovesRows.)
    void sampleGenerationsAreWellBehavedModels() {
        QFETCH(int, generation);
        const sampledata::Generation& g = sampledata::generations().at(generation);
        SettingManager manager;
        const util::VersionContainer version =
            testsupport::managerVersion(g.fw, g.kxs, sampledata::layoutPath(g.kxs));
        QVERIFY(manager.loadRawSettings(version, sampledata::firmwarePath(g), false) >= 0);
        SettingsTableModel model(&manager);
        // A list's display data is its options (what its combo box is filled with). Qt 5's
        // tester insists that display data be a text, so there it reports instead of
        // failing; Qt 6's accepts a list of texts.
        QAbstractItemModelTester tester(
            &model, QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
                        ? QAbstractItemModelTester::FailureReportingMode::QtTest
                        : QAbstractItemModelTester::FailureReportingMode::Warning);
        while (sf::Category* category = manager.getFirstUnmappedCategory()) {
            QVERIFY(manager.mapCategory(&model, category));
        }
        QVERIFY(model.rowCount() > g.settings / 3);
        QCOMPARE(model.columnCount(), manager.maxPresets());
        for (int row = 0; row < model.rowCount(); row += 7) {
            model.toggleRowEnabled(row);
        }
        model.setFontSize(14);
    }

    // Cells by what the manager says of them: present, enabled, editable.
    void cellLook_data() { testsupport::loadTable(); }
    void cellLook() {
        QFETCH(QString, codeName);
        QFETCH(int, column);
        QFETCH(bool, disable);
        QFETCH(QString, background);
        QFETCH(bool, editable);
        QFETCH(bool, selectable);
        Table t;
        QModelIndex cell = t.at(codeName);
        cell = t.model.index(cell.row(), column);
        if (disable) {
            QVERIFY(t.manager.setEnabled(cell, false));
        }
        QCOMPARE(cell.data(Qt::BackgroundRole).value<QColor>().name(), background);
        QCOMPARE(bool(t.model.flags(cell) & Qt::ItemIsEditable), editable);
        QCOMPARE(bool(t.model.flags(cell) & Qt::ItemIsSelectable), selectable);
    }

    // An edit through the model is the manager's, announced for its row and undone by undo.
    void editThroughTheModel() {
        Table t;
        const QModelIndex cell = t.at(QStringLiteral("Lim1"));
        QSignalSpy changed(&t.model, &QAbstractItemModel::dataChanged);
        QVERIFY(t.model.setData(cell, 40.0, Qt::EditRole));
        QCOMPARE(t.manager.getSettingData(QStringLiteral("Lim1"), sf::RoleEdit).toDouble(), 40.0);
        QVERIFY(!changed.isEmpty());
        QVERIFY(changed.first().at(0).toModelIndex().row() <= cell.row());
        QVERIFY(!t.model.setData(cell, 41.0, Qt::DisplayRole)); // only the edit role edits
        QVERIFY(t.manager.undoAction());
        QCOMPARE(cell.data(Qt::EditRole).toDouble(), 48.0);
    }

    // A click on a disabled row's header enables the row (in every preset column); rows of
    // settings enabled by default carry no check box.
    void toggleRowEnabled() {
        Table t;
        QVERIFY(!t.model.rowNeedsCheckBox(t.at(QStringLiteral("Cells1")).row()));
        const int row = t.at(QStringLiteral("Dis")).row();
        QVERIFY(t.model.rowNeedsCheckBox(row));
        QVERIFY(!t.manager.isEnabled(QStringLiteral("Dis")));
        QCOMPARE(t.model.headerData(row, Qt::Vertical, Qt::BackgroundRole).value<QColor>(),
                 SettingsTableModel::COLOUR_HEADER_DISABLED);
        t.model.toggleRowEnabled(row);
        QVERIFY(t.manager.isEnabled(QStringLiteral("Dis")));
        QCOMPARE(t.model.index(row, 0).data(Qt::BackgroundRole).value<QColor>(),
                 SettingsTableModel::COLOUR_ENABLED);
        t.model.toggleRowEnabled(row);
        QVERIFY(!t.manager.isEnabled(QStringLiteral("Dis")));
    }

    // Unfolding a foldable group inserts exactly new - old rows below it; folding removes
    // them; the rows of its bits carry no check box.
    void foldingInsertsAndRemovesRows() {
        Table t;
        const QModelIndex boxes = t.at(QStringLiteral("Boxes"));
        QSignalSpy inserted(&t.model, &QAbstractItemModel::rowsInserted);
        QSignalSpy removed(&t.model, &QAbstractItemModel::rowsRemoved);
        const int rows = t.model.rowCount();
        QVERIFY(t.manager.expandSetting(boxes));
        QCOMPARE(inserted.size(), 1);
        QCOMPARE(inserted.first().at(1).toInt(), boxes.row() + 1);
        QCOMPARE(inserted.first().at(2).toInt(), boxes.row() + 3); // three boxes
        QCOMPARE(t.model.rowCount(), rows + 3);
        QVERIFY(!t.model.rowNeedsCheckBox(boxes.row() + 1));
        QVERIFY(t.manager.unexpandSetting(boxes));
        QCOMPARE(removed.size(), 1);
        QCOMPARE(t.model.rowCount(), rows);
    }

    // Column titles: the preset name and mark of a category with presets, else its name.
    void headers() {
        Table t;
        SettingsTableModel battery(&t.manager);
        SettingsTableModel display(&t.manager);
        t.manager.unmap(&t.model);
        QVERIFY(t.manager.mapCategory(&battery, QStringLiteral("Batt")));
        QVERIFY(t.manager.mapCategory(&display, QStringLiteral("Disp")));
        QCOMPARE(battery.headerData(1, Qt::Horizontal).toString(), QStringLiteral("Packs 2"));
        QCOMPARE(display.headerData(0, Qt::Horizontal).toString(), QStringLiteral("Display"));
        const QModelIndex lim = t.manager.modelIndex(&battery, QStringLiteral("Lim1"));
        QCOMPARE(battery.headerData(lim.row(), Qt::Vertical).toString(),
                 t.manager.getSettingData(QStringLiteral("Lim1"), sf::RoleName).toString());
        QVERIFY(!battery.headerData(battery.rowCount(), Qt::Vertical).isValid());
    }
};

QTEST_MAIN(TestSettingsTableModel)
#include "tst_settingstablemodel.moc"
