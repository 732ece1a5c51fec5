// A category's grid: rows shared by presets, columns, virtual and literal rows, folding,
// hidden rows, lookups and the layout maintenance operations.

#include "sf/Category.h"
#include "sf/CategoryIndex.h"
#include "support/CategoryFixtures.h"
#include "support/TableFile.h"

#include <QPointer>
#include <QSignalSpy>
#include <QtTest>

using sf::Category;
using sf::CategoryIndex;
using sf::Setting;
using testsupport::FakeSettingHost;
using testsupport::GroupSetting;
using testsupport::layoutFault;
using testsupport::PlainSetting;
using testsupport::WsiSetting;

namespace {

// A category filled from a compact description: comma-separated code names, where a
// trailing "+N" makes a foldable group of N rows unfolded and a leading "~" a hidden one.
class Grid {
public:
    explicit Grid(const QString& names)
        : category(QStringLiteral("Battery"), QStringLiteral("BAT"), QStringLiteral("Pack"), true) {
        for (QString name : names.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
            const bool hidden = name.startsWith(QLatin1Char('~'));
            if (hidden)
                name.remove(0, 1);
            const int plus = name.indexOf(QLatin1Char('+'));
            if (plus > 0)
                category.appendSetting(new GroupSetting(name.left(plus), &host,
                                                        name.mid(plus + 1).toInt(), 1, hidden));
            else
                category.appendSetting(new PlainSetting(name, &host, hidden));
        }
    }
    Setting* find(const char* codeName) const {
        return category.findSetting(QString::fromLatin1(codeName));
    }
    CategoryIndex* cell(const char* codeName) const { return category.findIndex(find(codeName)); }
    QString at(const char* codeName) const {
        const sf::CategoryPosition p = category.indexOf(QString::fromLatin1(codeName));
        return QStringLiteral("%1:%2").arg(p.row).arg(p.column);
    }
    Setting* add(const char* codeName, int expandedRows = 0) {
        const QString name = QString::fromLatin1(codeName);
        if (expandedRows > 0)
            return new GroupSetting(name, &host, expandedRows);
        return new PlainSetting(name, &host);
    }

    FakeSettingHost host;
    Category category;
};

} // namespace

class TestCategory : public QObject {
    Q_OBJECT

private slots:
    void placement_data() { testsupport::loadTable(); }

    void placement() {
        QFETCH(QString, names);
        QFETCH(int, presets);
        QFETCH(QString, codeName);
        QFETCH(int, rows);
        QFETCH(QString, position);
        Grid grid(names);
        QCOMPARE(grid.category.numberOfPresets(), presets);
        QCOMPARE(grid.category.getLiteralSize(), rows);
        QCOMPARE(grid.at(codeName.toLatin1().constData()), position);
        QCOMPARE(layoutFault(grid.category), QString());
        QVERIFY(grid.category.isAligned());
        for (Setting* setting : grid.category.getSettings())
            QCOMPARE(setting->getCategory(), QStringLiteral("BAT"));
    }

    void presetSizeOfMissingColumns() {
        Grid grid(QStringLiteral("A1,A2,B1"));
        QCOMPARE(grid.category.getPresetSize(2), -1);
        QCOMPARE(grid.category.getPresetSize(1), 2);
        QCOMPARE(Grid(QString()).category.getPresetSize(0), -1);
        const Grid other(QStringLiteral("A1,A2"));
        QCOMPARE(grid.category.getPreset(other.cell("A2")), -1); // not a cell of this grid

        // Columns stay when their rows go: an emptied column has size 0.
        QVERIFY(grid.category.removeChain(grid.category.getAtLiteral(0, 0)));
        QVERIFY(grid.category.removeChain(grid.category.getAtLiteral(0, 0)));
        QCOMPARE(grid.category.numberOfPresets(), 2);
        QCOMPARE(grid.category.getPresetSize(1), 0);
        QCOMPARE(grid.category.getSettings().size(), 0);
    }

    void presetEnabledByCounter_data() { testsupport::loadTable(); }

    void presetEnabledByCounter() {
        QFETCH(int, counter);
        QFETCH(int, preset);
        QFETCH(bool, enabled);
        Grid grid(QStringLiteral("A1,A2"));
        PlainSetting count(QStringLiteral("PRESETS"), &grid.host);
        if (counter >= 0) {
            count.setRawByte(static_cast<quint8>(counter));
            grid.category.setPresetCount(&count);
        }
        QCOMPARE(grid.category.isPresetEnabled(preset), enabled);
    }

    void appendRefusesMissingAndRepeatedSettings() {
        Grid grid(QStringLiteral("A1"));
        QSignalSpy problems(&grid.category, &Category::problem);
        QVERIFY(!grid.category.appendSetting(nullptr));
        QVERIFY(!grid.category.appendSetting(grid.find("A1")));
        QVERIFY(!grid.category.appendSetting(grid.find("A1"), -9)); // same as -1
        QCOMPARE(problems.count(), 3);
        QCOMPARE(grid.find("A1")->getReferenceCount(), 1);
        QCOMPARE(grid.category.getLiteralSize(), 1);
    }

    void forcedSubIndicesGetRowsOfTheirOwn() {
        Grid grid(QStringLiteral("BITS1,BITS2"));
        Setting* bits = grid.find("BITS1");
        Setting* bits2 = grid.find("BITS2");
        QVERIFY(grid.category.appendSetting(bits, 0));
        QVERIFY(grid.category.appendSetting(bits, 1));
        QVERIFY(grid.category.appendSetting(bits2, 1));
        QCOMPARE(bits->getReferenceCount(), 3);
        QCOMPARE(grid.category.getLiteralSize(), 3);
        int subIndex = -9;
        QCOMPARE(grid.category.getSettingAt(2, 1, &subIndex), bits2);
        QCOMPARE(subIndex, 1);
        QCOMPARE(grid.category.getSettingAt(1, 1, &subIndex), nullptr); // filler beside bit 0
        QCOMPARE(grid.at("BITS1"), QStringLiteral("0:0"));
        QCOMPARE(layoutFault(grid.category), QString());
    }

    void categoryReleasesItsSettings() {
        FakeSettingHost host;
        QPointer<Setting> shared = new PlainSetting(QStringLiteral("S1"), &host);
        QPointer<Setting> own = new PlainSetting(QStringLiteral("O1"), &host);
        auto* first = new Category(QStringLiteral("One"), QStringLiteral("1"), QString(), true);
        auto* second = new Category(QStringLiteral("Two"), QStringLiteral("2"), QString(), true);
        first->appendSetting(shared);
        first->appendSetting(own);
        second->appendSetting(shared);
        second->setPresetCount(shared);
        delete first;
        QVERIFY(shared);
        QVERIFY(!own);
        delete second;
        QVERIFY(!shared);
    }

    void findByWsi() {
        FakeSettingHost host;
        Category category(QStringLiteral("Help"), QStringLiteral("H"), QString(), true);
        auto* first = new WsiSetting(QStringLiteral("W1"), QStringLiteral("wsi.one"), &host);
        auto* twin = new WsiSetting(QStringLiteral("W2"), QStringLiteral("wsi.one"), &host);
        auto* other = new WsiSetting(QStringLiteral("V1"), QStringLiteral("wsi.two"), &host);
        for (Setting* setting : {static_cast<Setting*>(first), static_cast<Setting*>(twin),
                                 static_cast<Setting*>(other)})
            category.appendSetting(setting);
        QCOMPARE(category.findSettingByWsi(QStringLiteral("wsi.one")), first); // first added wins
        QCOMPARE(category.findSettingByWsi(QStringLiteral("wsi.three")), nullptr);
        QCOMPARE(category.findSettingByWsi(QString()), nullptr);

        // Removing the first holder hands the identifier to the next one.
        QVERIFY(category.remove(category.findIndex(first)));
        QCOMPARE(category.findSettingByWsi(QStringLiteral("wsi.one")), twin);
        // A WSI changed after joining no longer answers for the old identifier.
        other->setWsi(QStringLiteral("wsi.renamed"));
        QCOMPARE(category.findSettingByWsi(QStringLiteral("wsi.two")), nullptr);
    }

    void virtualRowsFollowFolding() {
        Grid grid(QStringLiteral("A1,G1+4,G2+4,B1,B2"));
        Category& category = grid.category;
        QCOMPARE(category.getSize(), 3);
        QVERIFY(category.expandSetting(1, 1));
        QCOMPARE(category.getSize(), 6);
        QCOMPARE(grid.at("B2"), QStringLiteral("5:1"));
        CategoryIndex* group = grid.cell("G1");
        for (int row = 1; row <= 4; ++row) {
            int subIndex = -9;
            QCOMPARE(category.getSettingAt(row, 0, &subIndex), grid.find("G1"));
            QCOMPARE(subIndex, row - 2); // the heading row has none
        }
        QVERIFY(category.isExpanded(3, 0)); // the row unfolds in every preset
        QVERIFY(!category.isExpanded(0, 0));
        QCOMPARE(category.getAt(-1, 0), nullptr);
        QCOMPARE(category.getAt(0, 2), nullptr);
        QCOMPARE(layoutFault(category), QString());

        QVERIFY(category.unexpandSetting(group));
        QVERIFY(!category.isExpanded(group));
        QCOMPARE(category.getSize(), 3);
        QCOMPARE(grid.at("B2"), QStringLiteral("2:1"));
    }

    void expansionSignals_data() { testsupport::loadTable(); }

    void expansionSignals() {
        QFETCH(QString, names);
        QFETCH(int, row);
        QFETCH(int, newSize);
        Grid grid(names);
        Category& category = grid.category;
        if (category.getAtLiteral(0, 0)->getContent()->isExpandable())
            QVERIFY(category.expandSetting(0, 0)); // "F1+3": unfold the first group beforehand
        QSignalSpy before(&category, &Category::settingAboutToBeExpanded);
        QSignalSpy after(&category, &Category::settingExpanded);
        int sizeSeenBefore = -1;
        connect(&category, &Category::settingAboutToBeExpanded, this,
                [&] { sizeSeenBefore = category.getSize(); });
        const int sizeBefore = category.getSize();

        QVERIFY(category.expandSetting(row, 0));
        QCOMPARE(before.count(), 1);
        QCOMPARE(before.first(), (QList<QVariant>{row, 1, newSize}));
        QCOMPARE(after.count(), 1);
        QCOMPARE(after.first(), (QList<QVariant>{1, newSize}));
        QCOMPARE(sizeSeenBefore, sizeBefore); // announced before the change
        QCOMPARE(category.getSize(), sizeBefore + newSize - 1);

        QVERIFY(category.unexpandSetting(row + newSize - 1, 0)); // from its last row
        QCOMPARE(before.last(), (QList<QVariant>{row, newSize, 1}));
        QCOMPARE(after.last(), (QList<QVariant>{newSize, 1}));
        QCOMPARE(category.getSize(), sizeBefore);
        QCOMPARE(layoutFault(category), QString());
    }

    void expansionRefusals() {
        Grid grid(QStringLiteral("A1,G1+4,N1+1"));
        Category& category = grid.category;
        QVERIFY(category.appendSetting(grid.find("G1"), 2)); // one bit of the group on its own
        QSignalSpy before(&category, &Category::settingAboutToBeExpanded);
        QVERIFY(!category.expandSetting(0, 0));   // not foldable
        QVERIFY(!category.unexpandSetting(1, 0)); // already folded
        QVERIFY(!category.expandSetting(3, 0));   // forced sub-index row
        QVERIFY(!category.expandSetting(9, 0));   // past the end
        QVERIFY(!category.expandSetting(nullptr));
        // A group whose unfolded size equals its folded one changes state without a signal.
        QVERIFY(category.expandSetting(2, 0));
        QVERIFY(category.isExpanded(2, 0));
        QVERIFY(!category.expandSetting(2, 0));
        QCOMPARE(before.count(), 0);

        Grid other(QStringLiteral("Z1+3"));
        QVERIFY(!category.expandSetting(other.category.getAtLiteral(0, 0))); // foreign cell
    }

    void rowTakesTheLargestGroup() {
        Grid grid(QStringLiteral("G1+3,G2+6,G3"));
        Category& category = grid.category;
        QSignalSpy before(&category, &Category::settingAboutToBeExpanded);
        QVERIFY(category.expandSetting(0, 0));
        QCOMPARE(before.first(), (QList<QVariant>{0, 1, 6})); // every cell of the row is 6
        int subIndex = 0;
        QCOMPARE(category.getSettingAt(4, 0, &subIndex), grid.find("G1")); // beyond G1's own rows
        QCOMPARE(subIndex, 3);
        QCOMPARE(category.getSettingAt(6, 0, &subIndex), nullptr);
        QCOMPARE(subIndex, -1);
        QCOMPARE(layoutFault(category), QString());

        // A group joining an unfolded row unfolds with it and may widen the row.
        QVERIFY(category.appendSetting(grid.add("G4", 9)));
        QCOMPARE(category.getSize(), 9);
        QVERIFY(category.isExpanded(0, 3));
        QCOMPARE(layoutFault(category), QString());
    }

    void hiddenRows_data() { testsupport::loadTable(); }

    void hiddenRows() {
        QFETCH(QString, names);
        QFETCH(int, hiddenSize);
        QFETCH(QString, probe);
        QFETCH(int, visibleSize);
        QFETCH(QString, positions);
        Grid grid(names);
        const QByteArray name = probe.toLatin1();
        QVERIFY(!grid.category.hiddenVisible());
        QCOMPARE(grid.category.getSize(), hiddenSize);
        QCOMPARE(grid.at(name.constData()), positions.section(QLatin1Char(' '), 0, 0));
        QCOMPARE(layoutFault(grid.category), QString());
        grid.category.setHiddenVisible(true);
        QCOMPARE(grid.category.getSize(), visibleSize);
        QCOMPARE(grid.at(name.constData()), positions.section(QLatin1Char(' '), 1, 1));
        QCOMPARE(layoutFault(grid.category), QString());
        grid.category.setHiddenVisible(false);
        QCOMPARE(grid.category.getSize(), hiddenSize);
    }

    void foldingAHiddenRowIsSilent() {
        Grid grid(QStringLiteral("A1,~G1+4"));
        Category& category = grid.category;
        QSignalSpy before(&category, &Category::settingAboutToBeExpanded);
        QSignalSpy after(&category, &Category::settingExpanded);
        QVERIFY(category.expandSetting(grid.cell("G1")));
        QCOMPARE(before.count() + after.count(), 0);
        QCOMPARE(category.getSize(), 1);
        category.setHiddenVisible(true);
        QCOMPARE(category.getSize(), 5); // shown unfolded
        QVERIFY(category.unexpandSetting(2, 0));
        QCOMPARE(before.count(), 1);
        QCOMPARE(before.first(), (QList<QVariant>{1, 4, 1}));
    }

    void insertAndAbortRoundTrip() {
        Grid grid(QStringLiteral("A1,A2,B1"));
        Category& category = grid.category;
        QPointer<Setting> extra = grid.add("C2");
        auto* cell = new CategoryIndex(1, -1, nullptr, nullptr, extra);
        QVERIFY(!category.insertIndex(cell, 4, 1)); // past the end
        QVERIFY(!category.insertIndex(cell, -1, 1));
        QVERIFY(category.insertIndex(cell, 1, 1));
        QVERIFY(!category.insertIndex(cell, 0, 0)); // already placed
        QCOMPARE(category.getAtLiteral(1, 1), cell);
        QVERIFY(category.getAtLiteral(1, 0)->isFiller());
        QCOMPARE(grid.at("B1"), QStringLiteral("2:0"));
        QCOMPARE(layoutFault(category), QString());

        QVERIFY(category.abortInsertIndex(cell));
        QVERIFY(!category.contains(extra.data()));
        QCOMPARE(category.getLiteralSize(), 2);
        QCOMPARE(cell->getLeft(), nullptr);
        QCOMPARE(cell->getNext(), nullptr);
        QVERIFY(extra); // handed back, still referenced by the cell
        QCOMPARE(layoutFault(category), QString());
        QVERIFY(!category.abortInsertIndex(category.getAtLiteral(0, 0))); // row holds A2 too
        delete cell;
        QVERIFY(!extra);
    }

    void removeLeavesFillersAndDropsEmptyRows() {
        Grid grid(QStringLiteral("A1,A2,B1"));
        Category& category = grid.category;
        QPointer<Setting> a2 = grid.find("A2");
        QVERIFY(!category.remove(category.getAtLiteral(1, 1))); // a filler beside B1
        QVERIFY(category.remove(grid.cell("A2")));
        QVERIFY(!a2);
        QVERIFY(category.getAtLiteral(0, 1)->isFiller());
        QVERIFY(category.remove(grid.cell("B1")));
        QCOMPARE(category.getLiteralSize(), 1);
        QCOMPARE(category.findSetting(QStringLiteral("B1")), nullptr);
        QCOMPARE(layoutFault(category), QString());

        // A2 may come back into the freed place of its row.
        QVERIFY(category.appendSetting(grid.add("A2")));
        QCOMPARE(category.getLiteralSize(), 1);
        QVERIFY(category.insertFiller(0));
        QCOMPARE(category.getSize(), 2);
        QVERIFY(category.remove(category.getAtLiteral(0, 1))); // a row of fillers goes
        QCOMPARE(category.getSize(), 1);
        QCOMPARE(layoutFault(category), QString());
    }

    void replaceNearestAndMove() {
        Grid grid(QStringLiteral("A1,B1,C1"));
        Category& category = grid.category;
        auto* b2 = new CategoryIndex(1, -1, nullptr, nullptr, grid.add("B2"));
        QVERIFY(category.replaceNearest(b2, 1, 1)); // new column, filler at row 1 taken
        QCOMPARE(category.getLiteralSize(), 3);
        QCOMPARE(grid.at("B2"), QStringLiteral("1:1"));
        auto* bx = new CategoryIndex(1, -1, nullptr, nullptr, grid.add("BX"));
        QVERIFY(category.replaceNearest(bx, 1, 0)); // B1 holds the place: a row right below
        QCOMPARE(category.getIndexLiteral(bx), 2);
        QCOMPARE(category.getLiteralSize(), 4);
        QVERIFY(category.move(grid.cell("A1"), 3));
        QVERIFY(!category.move(bx, 4));
        QVERIFY(!category.move(bx, -1));
        Grid other(QStringLiteral("Z1"));
        QVERIFY(!category.move(other.cell("Z1"), 0)); // a cell of another category
        QCOMPARE(layoutFault(category), QString());

        // The moved row still receives its other presets.
        QVERIFY(category.appendSetting(grid.add("A2")));
        QCOMPARE(grid.at("A2"), QStringLiteral("3:1"));
        // So does a row that a placement made.
        auto* d1 = new CategoryIndex(1, -1, nullptr, nullptr, grid.add("D1"));
        QVERIFY(category.replaceNearest(d1, 0, 0));
        QVERIFY(category.appendSetting(grid.add("D2")));
        QCOMPARE(grid.at("D2"), grid.at("D1").replace(QStringLiteral(":0"), QStringLiteral(":1")));
        QCOMPARE(layoutFault(category), QString());
    }

    void move_data() { testsupport::loadTable(); }

    void move() {
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(QString, order);
        Grid grid(QStringLiteral("A1,B1,C1,D1,D2"));
        QVERIFY(grid.category.move(grid.category.getAtLiteral(from, 0), to));
        QString seen;
        for (int row = 0; row < grid.category.getLiteralSize(); ++row)
            seen += grid.category.getAtLiteral(row, 0)->getContent()->getCodeName().left(1);
        QCOMPARE(seen, order);
        QCOMPARE(layoutFault(grid.category), QString());
    }

    void removedPresetCanReturnToItsRow() {
        // A row left without a foldable setting folds; a group joining it later comes in
        // folded.
        Grid mixed(QStringLiteral("G1+3,G2,B1"));
        Category& other = mixed.category;
        QVERIFY(other.expandSetting(0, 0));
        QCOMPARE(other.getSize(), 4);
        QVERIFY(other.remove(mixed.cell("G1")));
        QCOMPARE(other.getSize(), 2);
        QVERIFY(other.appendSetting(mixed.add("G1", 3)));
        QCOMPARE(other.getLiteralSize(), 2);
        QCOMPARE(other.getSize(), 2);
        QVERIFY(!other.isExpanded(0, 0));

        // Removing one preset of a row keeps the row known by its name for the next append.
        Grid pair(QStringLiteral("A1,A2,B1"));
        QVERIFY(pair.category.remove(pair.cell("A1")));
        QVERIFY(pair.category.appendSetting(pair.add("A1")));
        QCOMPARE(pair.category.getLiteralSize(), 2);
        QCOMPARE(pair.at("A1"), QStringLiteral("0:0"));
    }

    void realignRepairsManualSizes() {
        Grid grid(QStringLiteral("A1,A2,G1+3"));
        Category& category = grid.category;
        category.getAtLiteral(0, 1)->setSize(4);
        QVERIFY(!category.isAligned());
        QVERIFY(!layoutFault(category).isEmpty());
        category.getAtLiteral(1, 0)->setExpanded(true); // one cell of the group's row
        category.realign();
        QVERIFY(category.isAligned());
        QCOMPARE(layoutFault(category), QString());
        QCOMPARE(category.getSize(), 4); // A row back to 1, group row unfolded to 3
        QCOMPARE(category.updateSize(), 4);
    }
};

QTEST_GUILESS_MAIN(TestCategory)
#include "tst_category.moc"
