// The view of one open file, on a sample firmware's default setup: a table per category,
// the search over names and help texts (a bit's row stays with its setting), the help
// text of the selected setting, the marks of values that differ from the default and the
// reset to the default that undo takes back, and the jump to the cell undo changed.
#include "sf/SettingManager.h"
#include "sf/SettingsTableModel.h"
#include "sf/SetupFile.h"
#include "sf/ui/SettingsTableView.h"
#include "ui/KXFileModel.h"
#include "ui/KXFileView.h"

#include "support/SampleData.h"
#include "support/TableFile.h"

#include <QtTest>

namespace {

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

class TestKXFileView : public QObject {
    Q_OBJECT
private slots:
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

QTEST_MAIN(TestKXFileView)
#include "tst_kxfileview.moc"
