// The settings table. Its model over the setting manager: a well-behaved item model on
// every sample generation; the colours and flags of missing, disabled and enabled cells;
// edits, row enabling and folding through the model, each seen by the manager and its undo.
// The table as a rider uses it, driven by mouse and keys: a number typed and committed, a
// list entry and a bit label chosen, a check box group unfolded and folded, a disabled row
// enabled from its header. Each edit reaches the manager and undo takes it back. Values
// typed or pasted out of range are refused with the command line's message; a value its
// dependent range no longer holds is marked until changed. The keys on a cell: Space,
// Enter, F2, typing, Escape and Alt+Down.
#include "sf/Category.h"
#include "sf/SettingManager.h"
#include "sf/SettingsTableModel.h"
#include "sf/ui/Editors.h"
#include "sf/ui/SettingsTableView.h"
#include "support/ManagerFixtures.h"
#include "support/SampleData.h"
#include "support/TableFile.h"

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>
#include <QSignalSpy>
#include <QStandardItemModel>
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

class TestSettingsTable : public QObject {
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

    void entriesRefused_data() { testsupport::loadTable(); }
    void entriesRefused() {
        QFETCH(QString, codeName);
        QFETCH(QString, how);
        QFETCH(QString, text);
        QFETCH(double, value);
        QFETCH(QString, message);
        Shown s;
        QSignalSpy refused(&s.model, &SettingsTableModel::editRefused);
        const QModelIndex cell = s.at(codeName);
        s.view.setCurrentIndex(cell);
        if (how == QLatin1String("paste")) {
            QGuiApplication::clipboard()->setText(text);
            QTest::keySequence(&s.view, QKeySequence::Paste);
        } else {
            QTest::keyClick(&s.view, Qt::Key_F2);
            auto* edit = s.editorAt<QLineEdit>(cell);
            QVERIFY(edit);
            edit->selectAll();
            QTest::keyClicks(edit, text);
            QTest::keyClick(edit, Qt::Key_Return);
        }
        QCOMPARE(s.value(codeName), value);
        QCOMPARE(refused.isEmpty() ? QString() : refused.first().first().toString(), message);
    }

    void keysOnACell_data() { testsupport::loadTable(); }
    void keysOnACell() {
        QFETCH(QString, codeName);
        QFETCH(int, subRow);
        QFETCH(QString, keys);
        QFETCH(int, raw);
        QFETCH(bool, popup);
        Shown s;
        s.view.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&s.view));
        s.view.setFocus();
        s.view.setCurrentIndex(s.at(codeName, subRow));
        for (const QString& key : keys.split(QLatin1Char(';'))) {
            QWidget* focus = QApplication::focusWidget();
            QTest::keySequence(focus ? focus : &s.view, QKeySequence::fromString(key));
        }
        QCOMPARE(s.raw(codeName), raw);
        auto* box = s.editorAt<sf::ui::ListComboBox>(s.at(codeName, subRow));
        QCOMPARE(box && box->view()->isVisible(), popup);
        QTRY_VERIFY(!s.editorAt<QLineEdit>(s.at(codeName, subRow))); // no editor left open
        QCOMPARE(QApplication::focusWidget(), popup ? QApplication::focusWidget() : &s.view);
    }

    // Low1 loaded as 40 V where 12 cells allow 36: bold red, the reason as its tool tip,
    // until it is changed; undo brings the mark back with the value.
    void valueOutsideItsRangeMarked() {
        QByteArray bytes = testsupport::standardImageBytes();
        bytes.replace(6, 2, QByteArray::fromHex("0190"));
        SettingManager manager;
        testsupport::ManagerFiles files;
        QCOMPARE(testsupport::loadStandard(
                     manager, files,
                     testsupport::hexImage({{0, bytes}}, testsupport::FW, testsupport::KXS)),
                 0);
        SettingsTableModel model(&manager);
        manager.mapCategory(&model, QStringLiteral("Batt"));
        const QModelIndex low = manager.modelIndex(&model, QStringLiteral("Low1"));
        QCOMPARE(low.data(Qt::ToolTipRole).toString(),
                 QStringLiteral("Low1: 40 is out of range (0 to 36 V)"));
        QCOMPARE(low.data(Qt::ForegroundRole).value<QColor>(),
                 SettingsTableModel::COLOUR_OUT_OF_RANGE);
        QVERIFY(low.data(Qt::FontRole).value<QFont>().bold());
        QVERIFY(model.setData(low, 30.0));
        QVERIFY(!low.data(Qt::ToolTipRole).isValid());
        QVERIFY(!low.data(Qt::FontRole).value<QFont>().bold());
        QVERIFY(manager.undoAction());
        QCOMPARE(low.data(Qt::ForegroundRole).value<QColor>(),
                 SettingsTableModel::COLOUR_OUT_OF_RANGE);
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

QTEST_MAIN(TestSettingsTable)
#include "tst_settingstable.moc"
