// One open setup file. Its model: a table per category, the load failure reports, edits
// that mark the file modified, undo and redo that point at the changed cell, showing
// protected settings, and saving. Its view, on a sample firmware's default setup: a table
// per category, the search over names and help texts (a bit's row stays with its setting),
// the help text of the selected setting, the marks of values that differ from the default
// and the reset to the default that undo takes back, and the jump to the cell undo changed.
// The keyboard: the tab order through the view, arrows on from one table into the next.
// At 800x600 every column of every table can be scrolled to and the help stays usable.
#include "sf/SettingManager.h"
#include "sf/SettingsTableModel.h"
#include "sf/SetupFile.h"
#include "sf/ui/SettingsTableView.h"
#include "support/ManagerFixtures.h"
#include "support/SampleData.h"
#include "support/TableFile.h"
#include "ui/KXFileModel.h"
#include "ui/KXFileView.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTextBrowser>
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
        return testsupport::managerVersion(testsupport::FW, testsupport::KXS,
                                           files.path(QStringLiteral("t1.kxs")));
    }
};

struct OpenView {
    ui::KXFileModel file;
    std::unique_ptr<ui::KXFileView> view;
    OpenView() {
        QDir::setCurrent(sampledata::runtimeDir());
        const QString path = sampledata::firmwarePath(sampledata::generations().at(3)); // 3.20
        util::VersionContainer version;
        QString error;
        QVERIFY2(sf::SetupFile::catalogueVersion(QStringLiteral("3.20"), &version, &error),
                 qPrintable(error));
        QVERIFY(file.open(path, version));
        view = std::make_unique<ui::KXFileView>(&file);
        view->resize(1000, 700);
        view->show();
    }
    sf::SettingsTableModel* tableOf(const QString& codeName, QModelIndex* index) const {
        for (const auto& table : file.tables()) {
            *index = file.manager()->modelIndex(table.get(), codeName);
            if (index->isValid()) {
                return table.get();
            }
        }
        return nullptr;
    }
};

} // namespace

class TestKXFile : public QObject {
    Q_OBJECT
private slots:
    void opensIntoOneTablePerCategory() {
        OpenFile f;
        QSignalSpy errors(&f.model, &KXFileModel::settingsLoadError);
        QVERIFY(f.model.open(f.image, f.version()));
        QCOMPARE(errors.size(), 0);
        QCOMPARE(int(f.model.tables().size()), f.model.manager()->getCategories().size());
        QVERIFY(f.model.tableTitles().contains(QStringLiteral("Battery")));
        QCOMPARE(f.model.getFWVersion(), testsupport::FW);
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

    // Editors open as their rows come near the screen: a list far down the page has
    // none until the page is scrolled to it.
    void oneTablePerCategoryWithEditorsNearTheScreen() {
        OpenView v;
        QCOMPARE(v.view->tables().size(), v.file.tables().size());
        QVERIFY(v.view->shownRows() > 100);
        QVERIFY(QTest::qWaitForWindowExposed(v.view.get()));
        QModelIndex index;
        const sf::SettingsTableModel* table = v.tableOf(QStringLiteral("RegenMode"), &index);
        sf::ui::SettingsTableView* view = nullptr;
        for (sf::ui::SettingsTableView* candidate : v.view->tables()) {
            view = candidate->model() == table ? candidate : view;
        }
        QVERIFY(!view->indexWidget(index));
        v.view->jumpTo(index);
        QVERIFY(view->indexWidget(index));
    }

    void search_data() { testsupport::loadTable(); }

    void search() {
        QFETCH(QString, text);
        QFETCH(QString, kept);
        QFETCH(QString, dropped);
        OpenView v;
        const int all = v.view->shownRows();
        v.view->setSearchText(text);
        QVERIFY(v.view->shownRows() < all);
        QModelIndex index;
        for (const auto& [code, shown] : {std::pair{kept, true}, std::pair{dropped, false}}) {
            const sf::SettingsTableModel* table = v.tableOf(code, &index);
            for (sf::ui::SettingsTableView* view : v.view->tables()) {
                if (view->model() == table) {
                    QCOMPARE(!view->isRowHidden(index.row()) && view->isVisibleTo(v.view.get()),
                             shown);
                }
            }
        }
        v.view->setSearchText(QString());
        QCOMPARE(v.view->shownRows(), all);
    }

    // Unfolded, the boxes of a group stay with it when the search finds the group.
    void bitRowsStayWithTheirSetting() {
        OpenView v;
        QVERIFY(v.file.manager()->expandSetting(QStringLiteral("Screens")));
        v.view->setSearchText(QStringLiteral("Display screens"));
        QCOMPARE(v.view->shownRows(), 1 + 13);
    }

    void selectedSettingShowsItsHelp() {
        OpenView v;
        QModelIndex index;
        v.tableOf(QStringLiteral("LVCA"), &index);
        v.view->jumpTo(index);
        QVERIFY(v.view->helpText().contains(QStringLiteral("rolled back")));
        QVERIFY(v.view->statusText().startsWith(QStringLiteral("Low voltage cutoff")));
    }

    // Tab: search, categories, every table, help, Reset to default. An arrow past a
    // table's last row goes on into the next table, whose cell shows and gets its help.
    // The tables below the first screen wait for its first paint; the view is whole right
    // after it.
    void tablesBelowTheFirstScreenMadeAfterItPaints() {
        OpenView v;
        const int categories = int(v.file.tables().size());
        QVERIFY(v.view->findChildren<sf::ui::SettingsTableView*>().size() < categories);
        QVERIFY(QTest::qWaitForWindowExposed(v.view.get()));
        QTRY_COMPARE(v.view->findChildren<sf::ui::SettingsTableView*>().size(), categories);
    }

    void keyboardThroughTheView() {
        OpenView v;
        QVERIFY(!v.view->helpText().isEmpty()); // the first setting's, from the start
        // The last table made before those between it and the first: the tab order is
        // still the tables' order.
        QModelIndex last;
        const auto& tables = v.file.tables();
        last = tables.back()->index(0, 0);
        v.view->jumpTo(last);
        v.view->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(v.view.get()));
        v.view->findChild<QLineEdit*>()->setFocus();
        const auto tab = [] {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            return QApplication::focusWidget();
        };
        QVERIFY(qobject_cast<QListWidget*>(tab()));
        for (sf::ui::SettingsTableView* table : v.view->tables()) {
            QCOMPARE(tab(), table);
        }
        QVERIFY(qobject_cast<QTextBrowser*>(tab()));
        auto* reset = qobject_cast<QPushButton*>(tab());
        QVERIFY(reset);
        QCOMPARE(reset->text(), QStringLiteral("Reset to default"));

        sf::ui::SettingsTableView* first = v.view->tables().at(0);
        sf::ui::SettingsTableView* second = v.view->tables().at(1);
        first->setFocus();
        first->setCurrentIndex(first->model()->index(first->model()->rowCount() - 1, 0));
        QTest::keyClick(first, Qt::Key_Down);
        QCOMPARE(QApplication::focusWidget(), second);
        const QModelIndex cell = second->currentIndex();
        QCOMPARE(cell.row(), 0);
        QVERIFY(second->viewport()->visibleRegion().contains(second->visualRect(cell).center()));
        QCOMPARE(v.view->statusText(),
                 v.file.manager()->getSettingData(cell, sf::RoleStatus).toString());
        QTest::keyClick(second, Qt::Key_Up);
        QCOMPARE(QApplication::focusWidget(), first);
        QCOMPARE(first->currentIndex().row(), first->model()->rowCount() - 1);
    }

    // Typed into the cell as a user types: the refusal's words stay on the status line
    // once the editor has closed and the table has the focus again.
    void refusedEntryKeepsItsMessage() {
        OpenView v;
        v.view->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(v.view.get()));
        QModelIndex index;
        v.tableOf(QStringLiteral("CellCntA"), &index);
        sf::ui::SettingsTableView* table = nullptr;
        for (sf::ui::SettingsTableView* candidate : v.view->tables()) {
            table = candidate->model() == index.model() ? candidate : table;
        }
        const QString before = index.data().toString();
        table->setFocus();
        table->setCurrentIndex(index);
        QTest::keyClick(table, Qt::Key_F2);
        QWidget* editor = QApplication::focusWidget();
        QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(editor, QStringLiteral("99"));
        QTest::keyClick(editor, Qt::Key_Return);
        QTRY_COMPARE(QApplication::focusWidget(), table);
        QCOMPARE(index.data().toString(), before);
        QCOMPARE(v.view->statusText(),
                 QStringLiteral("CellCntA: 99 is out of range (1 to 36 cells)"));
    }

    void everyColumnReachableAt800x600() {
        OpenView v;
        v.view->resize(800, 600);
        QVERIFY(QTest::qWaitForWindowExposed(v.view.get()));
        // It opens at the left edge, the setting names in sight.
        QCOMPARE(v.view->findChild<QScrollArea*>()->horizontalScrollBar()->value(), 0);
        auto* reset = v.view->findChild<QPushButton*>();
        QVERIFY(reset->visibleRegion().boundingRect().width() >= reset->sizeHint().width());
        QVERIFY(v.view->findChild<QTextBrowser*>()->width() >= 150);
        for (sf::ui::SettingsTableView* table : v.view->tables()) {
            const QAbstractItemModel* model = table->model();
            for (int column = 0; column < model->columnCount(); ++column) {
                QModelIndex cell; // the column's first setting (none in a filler column)
                for (int row = 0; row < model->rowCount() && !cell.isValid(); ++row) {
                    const QModelIndex candidate = model->index(row, column);
                    cell = model->flags(candidate) & Qt::ItemIsEnabled ? candidate : cell;
                }
                if (!cell.isValid()) {
                    continue;
                }
                table->setCurrentIndex(cell);
                QVERIFY(table->columnWidth(column) >= 100);
                QVERIFY2(
                    table->viewport()->visibleRegion().contains(table->visualRect(cell).center()),
                    qPrintable(model->headerData(column, Qt::Horizontal).toString()));
            }
        }
    }

    // A changed value is marked; resetting it to the default clears the mark, and undo
    // brings the change back and jumps to its cell.
    void defaultsMarkedAndRestored() {
        OpenView v;
        QModelIndex index;
        sf::SettingsTableModel* table = v.tableOf(QStringLiteral("Backlight"), &index);
        QVERIFY(!table->differsFromDefault(index));
        QVERIFY(table->setData(index, 40, Qt::EditRole));
        QVERIFY(table->differsFromDefault(index));
        QCOMPARE(index.data(Qt::ForegroundRole).value<QColor>(),
                 sf::SettingsTableModel::COLOUR_CHANGED);
        QVERIFY(index.data(Qt::FontRole).value<QFont>().bold());
        v.view->jumpTo(index);
        v.view->resetSelectedToDefault();
        QVERIFY(!table->differsFromDefault(index));
        QSignalSpy jumps(&v.file, &ui::KXFileModel::jumpToIndex);
        v.file.undoAction();
        QVERIFY(table->differsFromDefault(index));
        QCOMPARE(jumps.size(), 1);
        QCOMPARE(jumps.first().at(0).toModelIndex(), index);
    }
};

QTEST_MAIN(TestKXFile)
#include "tst_kxfile.moc"
