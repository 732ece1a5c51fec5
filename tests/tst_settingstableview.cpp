// The settings table as a rider uses it, driven by mouse and keys: a number typed and
// committed, a list entry and a bit label chosen, a check box group unfolded and folded,
// a disabled row enabled from its header. Each edit reaches the manager and undo takes
// it back.
#include "sf/Category.h"
#include "sf/SettingManager.h"
#include "sf/SettingsTableModel.h"
#include "sf/ui/Editors.h"
#include "sf/ui/SettingsTableView.h"

#include "support/ManagerFixtures.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QStandardItemModel>
#include <QtTest>

using sf::SettingManager;

namespace {

struct Shown {
    SettingManager manager;
    testsupport::ManagerFiles files;
    sf::SettingsTableModel model{&manager};
    sf::ui::SettingsTableView view;
    Shown() {
        QVERIFY(testsupport::loadStandard(manager, files) >= 0);
        while (sf::Category* category = manager.getFirstUnmappedCategory()) {
            manager.mapCategory(&model, category);
        }
        view.setModel(&model);
        view.resize(700, view.height());
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
    }
    QModelIndex at(const QString& codeName, int subIndexRow = 0) const {
        const QModelIndex first = manager.modelIndex(&model, codeName);
        return model.index(first.row() + subIndexRow, first.column());
    }
    double value(const QString& codeName) const {
        return manager.getSettingData(codeName, sf::RoleEdit).toDouble();
    }
    int raw(const QString& codeName) const {
        return manager.getSettingData(codeName, sf::RoleRaw).toInt();
    }
    template <typename Editor> Editor* editorAt(const QModelIndex& index) const {
        return qobject_cast<Editor*>(view.indexWidget(index));
    }
};

} // namespace

class TestSettingsTableView : public QObject {
    Q_OBJECT
private slots:
    void numberTypedAndCommitted() {
        Shown s;
        const QModelIndex cell = s.at(QStringLiteral("Lim1"));
        QVERIFY(!s.editorAt<QWidget>(cell)); // numbers are edited on demand
        const QRect rect = s.view.visualRect(cell);
        QTest::mouseClick(s.view.viewport(), Qt::LeftButton, {}, rect.center());
        QTest::mouseDClick(s.view.viewport(), Qt::LeftButton, {}, rect.center());
        auto* edit = s.editorAt<QLineEdit>(cell);
        QVERIFY(edit);
        QCOMPARE(edit->text(), QStringLiteral("48.0")); // precision 1
        edit->selectAll();
        QTest::keyClicks(edit, QStringLiteral("40.5"));
        QTest::keyClick(edit, Qt::Key_Return);
        QCOMPARE(s.value(QStringLiteral("Lim1")), 40.5);
        QVERIFY(s.manager.undoAction());
        QCOMPARE(s.value(QStringLiteral("Lim1")), 48.0);
    }

    void listEntryChosen() {
        Shown s;
        auto* box = s.editorAt<sf::ui::ListComboBox>(s.at(QStringLiteral("Screen")));
        QVERIFY(box);
        QCOMPARE(box->currentIndex(), 1);
        QTest::keyClick(box, Qt::Key_Down);
        QCOMPARE(s.value(QStringLiteral("Screen")), 2.0);
        QVERIFY(s.manager.undoAction());
        QCOMPARE(s.value(QStringLiteral("Screen")), 1.0);
        QCOMPARE(box->currentIndex(), 1); // the editor follows the undo
    }

    // Flags holds 0x0005: its first bit is on, its second off.
    void bitLabelChosen() {
        Shown s;
        auto* second = s.editorAt<sf::ui::ListComboBox>(s.at(QStringLiteral("Flags"), 2));
        QVERIFY(second);
        QCOMPARE(second->count(), 2);
        QCOMPARE(second->currentIndex(), 0);
        QTest::keyClick(second, Qt::Key_Down);
        QCOMPARE(s.raw(QStringLiteral("Flags")), 7);
        QVERIFY(s.manager.undoAction());
        QCOMPARE(s.raw(QStringLiteral("Flags")), 5);
    }

    // The group's button unfolds it into one row per box and folds it again; a box
    // clicked changes its bit. The table grows and shrinks with its rows (it is shown at
    // its full height, one below the other).
    void groupUnfoldedAndFolded() {
        Shown s;
        const int rows = s.model.rowCount();
        const int height = s.view.height();
        int rowsHeight = 0; // the table shows all its rows, without space to spare
        for (int row = 0; row < rows; ++row) {
            rowsHeight += s.view.isRowHidden(row) ? 0 : s.view.rowHeight(row);
        }
        QCOMPARE(s.view.viewport()->height(), rowsHeight);
        auto* button = s.editorAt<sf::ui::BoolButton>(s.at(QStringLiteral("Boxes")));
        QVERIFY(button);
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(s.model.rowCount(), rows + 3);
        QCOMPARE(s.view.height(), height + 3 * s.view.rowHeight(0));
        // The group's button says what a click does next.
        QCOMPARE(s.editorAt<sf::ui::BoolButton>(s.at(QStringLiteral("Boxes")))->text(),
                 QStringLiteral("Hide"));
        QVERIFY(s.manager.isExpanded(QStringLiteral("Boxes")));
        auto* first = s.editorAt<sf::ui::CheckBoolBox>(s.at(QStringLiteral("Boxes"), 1));
        QVERIFY(first);
        QVERIFY(!first->isChecked()); // Boxes holds 0x02
        QTest::mouseClick(first, Qt::LeftButton, {}, QPoint(first->width() - 2, 2));
        QCOMPARE(s.raw(QStringLiteral("Boxes")), 3);
        button = s.editorAt<sf::ui::BoolButton>(s.at(QStringLiteral("Boxes")));
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(s.model.rowCount(), rows);
        QCOMPARE(s.view.height(), height);
        QCOMPARE(s.editorAt<sf::ui::BoolButton>(s.at(QStringLiteral("Boxes")))->text(),
                 QStringLiteral("Expand"));
        QVERIFY(!s.manager.isExpanded(QStringLiteral("Boxes")));
    }

    // The row header measures its widest name once, and again after every change of the
    // rows or their names: always as wide as a header that measures from scratch.
    void rowHeaderFollowsItsNames() {
        QStandardItemModel model(1, 1);
        model.setVerticalHeaderItem(0, new QStandardItem(QStringLiteral("Cells")));
        sf::ui::PlainHeader header;
        header.setModel(&model);
        const auto measuredAgain = [&model] {
            sf::ui::PlainHeader fresh;
            fresh.setModel(&model);
            return fresh.sizeHint().width();
        };
        const int narrow = header.sizeHint().width();
        QCOMPARE(narrow, measuredAgain());
        const QString wide = QStringLiteral("Lifetime battery energy used");
        model.appendRow(new QStandardItem);
        model.setVerticalHeaderItem(1, new QStandardItem(wide));
        QVERIFY(header.sizeHint().width() > narrow);
        QCOMPARE(header.sizeHint().width(), measuredAgain());
        model.removeRow(1);
        QCOMPARE(header.sizeHint().width(), narrow);
        model.setHeaderData(0, Qt::Vertical, wide);
        QCOMPARE(header.sizeHint().width(), measuredAgain());
        QVERIFY(header.sizeHint().width() > narrow);
    }

    void disabledRowEnabledFromItsHeader() {
        Shown s;
        const QModelIndex cell = s.at(QStringLiteral("Dis"));
        QVERIFY(!s.manager.isEnabled(QStringLiteral("Dis")));
        QHeaderView* header = s.view.verticalHeader();
        const int y =
            header->sectionViewportPosition(cell.row()) + header->sectionSize(cell.row()) / 2;
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, QPoint(8, y));
        QVERIFY(s.manager.isEnabled(QStringLiteral("Dis")));
        // A row of a setting enabled by default has no box to click.
        const QModelIndex cells = s.at(QStringLiteral("Cells1"));
        const int y2 = header->sectionViewportPosition(cells.row()) + 4;
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, QPoint(8, y2));
        QVERIFY(s.manager.isEnabled(QStringLiteral("Cells1")));
    }

    // A second model replaces the first: its editors edit the second manager only.
    void anotherModel() {
        Shown first;
        Shown second;
        first.view.setModel(&second.model);
        auto* box = first.editorAt<sf::ui::ListComboBox>(second.at(QStringLiteral("Screen")));
        QVERIFY(box);
        QTest::keyClick(box, Qt::Key_Down);
        QCOMPARE(second.value(QStringLiteral("Screen")), 2.0);
        QCOMPARE(first.value(QStringLiteral("Screen")), 1.0);
    }
};

QTEST_MAIN(TestSettingsTableView)
#include "tst_settingstableview.moc"
