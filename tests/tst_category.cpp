// A category's grid: rows shared by presets, columns, virtual and literal rows, folding,
// hidden rows, lookups and the layout maintenance operations.

#include "sf/Category.h"
#include "sf/CategoryIndex.h"
#include "support/CategoryFixtures.h"

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
        const QStringList list = names.split(QLatin1Char(','), Qt::SkipEmptyParts);
        for (QString name : list) {
            const bool hidden = name.startsWith(QLatin1Char('~'));
            if (hidden)
                name.remove(0, 1);
            const int plus = name.indexOf(QLatin1Char('+'));
            Setting* setting = nullptr;
            if (plus > 0)
                setting =
                    new GroupSetting(name.left(plus), &host, name.mid(plus + 1).toInt(), 1, hidden);
            else
                setting = new PlainSetting(name, &host, hidden);
            category.appendSetting(setting);
        }
    }
    Setting* find(const char* codeName) const {
        return category.findSetting(QString::fromLatin1(codeName));
    }

    FakeSettingHost host;
    Category category;
};

QString positionText(const sf::CategoryPosition& position) {
    return QStringLiteral("%1:%2").arg(position.row).arg(position.column);
}

} // namespace

class TestCategory : public QObject {
    Q_OBJECT

private slots:
    void placement_data();
    void placement();
    void presetSizeOfMissingColumns();
    void presetEnabledByCounter_data();
    void presetEnabledByCounter();
    void appendRefusesMissingAndRepeatedSettings();
    void forcedSubIndicesGetRowsOfTheirOwn();
    void settingsTakeTheCategoryLabel();
    void categoryReleasesItsSettings();
    void findByWsi();
    void virtualRowsFollowFolding();
    void expansionSignals_data();
    void expansionSignals();
    void expansionRefusals();
    void rowTakesTheLargestGroup();
    void hiddenRows_data();
    void hiddenRows();
    void foldingAHiddenRowIsSilent();
    void settingAtGivesSubIndices();
    void insertAndAbortRoundTrip();
    void removeLeavesFillersAndDropsEmptyRows();
    void replaceNearestAndMove();
    void moveDown_data();
    void moveDown();
    void removedPresetCanReturnToItsRow();
    void realignRepairsManualSizes();
};

void TestCategory::placement_data() {
    QTest::addColumn<QString>("names");
    QTest::addColumn<int>("presets");
    QTest::addColumn<int>("rows");
    QTest::addColumn<QString>("codeName");
    QTest::addColumn<QString>("position");
    QTest::newRow("final 1 and 2 share a row") << "SPEED1,SPEED2" << 2 << 1 << "SPEED2"
                                               << "0:1";
    QTest::newRow("final A and B share a row") << "CAPA,CAPB" << 2 << 1 << "CAPB"
                                               << "0:1";
    QTest::newRow("different names take rows") << "AMPS1,VOLTS1,AMPS2" << 2 << 2 << "AMPS2"
                                               << "0:1";
    QTest::newRow("gap in presets gets a filler") << "X1,X3" << 3 << 1 << "X3"
                                                  << "0:2";
    QTest::newRow("first setting in preset 2") << "Y3" << 3 << 1 << "Y3"
                                               << "0:2";
    QTest::newRow("final 0 goes to column 0") << "Z0" << 1 << 1 << "Z0"
                                              << "0:0";
    QTest::newRow("C is no preset letter") << "MODEC,MODE1" << 1 << 2 << "MODE1"
                                           << "1:0";
    QTest::newRow("lower-case b is no preset letter") << "tab,ta1" << 1 << 2 << "ta1"
                                                      << "1:0";
    QTest::newRow("same preset twice gets a row below") << "P1,PA,Q1" << 1 << 3 << "Q1"
                                                        << "2:0";
    QTest::newRow("third preset fills the first free row") << "P1,PA,P2" << 2 << 2 << "P2"
                                                           << "0:1";
    QTest::newRow("collision row stays beside its name") << "P1,Q1,PA" << 1 << 3 << "PA"
                                                         << "1:0";
    QTest::newRow("unfolded size counts for later rows") << "G1+4,H1" << 1 << 2 << "H1"
                                                         << "1:0";
}

void TestCategory::placement() {
    QFETCH(QString, names);
    QFETCH(int, presets);
    QFETCH(int, rows);
    QFETCH(QString, codeName);
    QFETCH(QString, position);
    Grid grid(names);
    QCOMPARE(grid.category.numberOfPresets(), presets);
    QCOMPARE(grid.category.getLiteralSize(), rows);
    QCOMPARE(positionText(grid.category.indexOf(codeName)), position);
    QCOMPARE(layoutFault(grid.category), QString());
    QVERIFY(grid.category.isAligned());
}

void TestCategory::presetSizeOfMissingColumns() {
    Grid grid(QStringLiteral("A1,A2,B1"));
    QCOMPARE(grid.category.getPresetSize(-1), -1);
    QCOMPARE(grid.category.getPresetSize(2), -1);
    QCOMPARE(grid.category.getPresetSize(1), 2);

    Category empty(QStringLiteral("Empty"), QStringLiteral("E"), QString(), true);
    QCOMPARE(empty.getPresetSize(0), -1);
    QCOMPARE(empty.getSize(), 0);

    // Columns stay when their rows go: an emptied column has size 0.
    QVERIFY(grid.category.removeChain(grid.category.getAtLiteral(0, 0)));
    QVERIFY(grid.category.removeChain(grid.category.getAtLiteral(0, 0)));
    QCOMPARE(grid.category.numberOfPresets(), 2);
    QCOMPARE(grid.category.getPresetSize(1), 0);
    QCOMPARE(grid.category.getSettings().size(), 0);
}

void TestCategory::presetEnabledByCounter_data() {
    QTest::addColumn<int>("counter");
    QTest::addColumn<int>("preset");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("counter 2 enables preset 0") << 2 << 0 << true;
    QTest::newRow("counter 2 enables preset 2") << 2 << 2 << true;
    QTest::newRow("counter 2 disables preset 3") << 2 << 3 << false;
    QTest::newRow("counter 0 enables preset 0 only") << 0 << 0 << true;
    QTest::newRow("counter 0 disables preset 1") << 0 << 1 << false;
    QTest::newRow("raw byte 255 is unsigned") << 255 << 7 << true;
    QTest::newRow("no counter enables everything") << -1 << 40 << true;
}

void TestCategory::presetEnabledByCounter() {
    QFETCH(int, counter);
    QFETCH(int, preset);
    QFETCH(bool, enabled);
    FakeSettingHost host;
    Grid grid(QStringLiteral("A1,A2"));
    PlainSetting count(QStringLiteral("PRESETS"), &host);
    if (counter >= 0) {
        count.setRawByte(static_cast<quint8>(counter));
        grid.category.setPresetCount(&count);
        QCOMPARE(grid.category.getPresetCount(), &count);
    }
    QCOMPARE(grid.category.isPresetEnabled(preset), enabled);
}

void TestCategory::appendRefusesMissingAndRepeatedSettings() {
    Grid grid(QStringLiteral("A1"));
    QSignalSpy problems(&grid.category, &Category::problem);
    QVERIFY(!grid.category.appendSetting(nullptr));
    QVERIFY(!grid.category.appendSetting(grid.find("A1")));
    QVERIFY(!grid.category.appendSetting(grid.find("A1"), -9)); // same as -1
    QCOMPARE(problems.count(), 3);
    QCOMPARE(grid.find("A1")->getReferenceCount(), 1);
    QCOMPARE(grid.category.getLiteralSize(), 1);
}

void TestCategory::forcedSubIndicesGetRowsOfTheirOwn() {
    Grid grid(QStringLiteral("BITS1,BITS2"));
    Setting* bits = grid.find("BITS1");
    Setting* bits2 = grid.find("BITS2");
    QVERIFY(grid.category.appendSetting(bits, 0));
    QVERIFY(grid.category.appendSetting(bits, 1));
    QVERIFY(grid.category.appendSetting(bits2, 1));
    QCOMPARE(bits->getReferenceCount(), 3);
    QCOMPARE(grid.category.getSettings().size(), 2);
    QCOMPARE(grid.category.getLiteralSize(), 3);
    int subIndex = -9;
    QCOMPARE(grid.category.getSettingAt(2, 1, &subIndex), bits2);
    QCOMPARE(subIndex, 1);
    QCOMPARE(grid.category.getSettingAt(1, 1, &subIndex), nullptr); // filler beside bit 0
    QCOMPARE(positionText(grid.category.indexOf(bits)), QStringLiteral("0:0"));
    QCOMPARE(layoutFault(grid.category), QString());
}

void TestCategory::settingsTakeTheCategoryLabel() {
    Grid grid(QStringLiteral("A1,B1"));
    for (Setting* setting : grid.category.getSettings())
        QCOMPARE(setting->getCategory(), QStringLiteral("BAT"));
    QCOMPARE(grid.category.getSettings().first(), grid.find("A1"));
    QVERIFY(grid.category.contains(QStringLiteral("B1")));
    QVERIFY(!grid.category.contains(QStringLiteral("B2")));
    QCOMPARE(grid.category.indexOf(QStringLiteral("B2")).isValid(), false);
}

void TestCategory::categoryReleasesItsSettings() {
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

void TestCategory::findByWsi() {
    FakeSettingHost host;
    Category category(QStringLiteral("Help"), QStringLiteral("H"), QString(), true);
    auto* first = new WsiSetting(QStringLiteral("W1"), QStringLiteral("wsi.one"), &host);
    auto* twin = new WsiSetting(QStringLiteral("W2"), QStringLiteral("wsi.one"), &host);
    auto* other = new WsiSetting(QStringLiteral("V1"), QStringLiteral("wsi.two"), &host);
    category.appendSetting(first);
    QCOMPARE(category.findSettingByWsi(QStringLiteral("wsi.one")), first);
    category.appendSetting(twin);
    category.appendSetting(other);
    category.appendSetting(new PlainSetting(QStringLiteral("P1"), &host));
    QCOMPARE(category.findSettingByWsi(QStringLiteral("wsi.one")), first); // first added wins
    QCOMPARE(category.findSettingByWsi(QStringLiteral("wsi.two")), other);
    QCOMPARE(category.findSettingByWsi(QStringLiteral("wsi.three")), nullptr);
    QCOMPARE(category.findSettingByWsi(QString()), nullptr);

    // Removing the first holder hands the identifier to the next one.
    QVERIFY(category.remove(category.findIndex(first)));
    QCOMPARE(category.findSettingByWsi(QStringLiteral("wsi.one")), twin);
    // A WSI changed after joining no longer answers for the old identifier.
    other->setWsi(QStringLiteral("wsi.renamed"));
    QCOMPARE(category.findSettingByWsi(QStringLiteral("wsi.two")), nullptr);
}

void TestCategory::virtualRowsFollowFolding() {
    Grid grid(QStringLiteral("A1,G1+4,G2+4,B1,B2"));
    Category& category = grid.category;
    QCOMPARE(category.getSize(), 3);
    QVERIFY(category.expandSetting(1, 1));
    QCOMPARE(category.getSize(), 6);
    QCOMPARE(category.getLiteralSize(), 3);
    QCOMPARE(positionText(category.indexOf(QStringLiteral("B2"))), QStringLiteral("5:1"));
    CategoryIndex* group = category.findIndex(grid.find("G1"));
    for (int row = 1; row <= 4; ++row)
        QCOMPARE(category.getAt(row, 0), group);
    QCOMPARE(category.getAtLiteral(1, 0), group);
    QCOMPARE(category.getIndexLiteral(category.getAt(5, 0)), 2);
    QVERIFY(category.isExpanded(3, 0));
    QVERIFY(category.isExpanded(1, 1)); // the row unfolds in every preset
    QVERIFY(!category.isExpanded(0, 0));
    QCOMPARE(category.getAt(6, 0), nullptr);
    QCOMPARE(category.getAt(-1, 0), nullptr);
    QCOMPARE(category.getAt(0, 2), nullptr);
    QCOMPARE(layoutFault(category), QString());

    QVERIFY(category.isExpanded(group));
    QVERIFY(!category.isExpanded(category.getAtLiteral(0, 0)));
    QVERIFY(category.unexpandSetting(group));
    QVERIFY(!category.isExpanded(group));
    QCOMPARE(category.getSize(), 3);
    QCOMPARE(positionText(category.indexOf(QStringLiteral("B2"))), QStringLiteral("2:1"));
}

void TestCategory::expansionSignals_data() {
    QTest::addColumn<QString>("names");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("oldSize");
    QTest::addColumn<int>("newSize");
    QTest::newRow("group in the middle") << "A1,G1+4,B1" << 1 << 0 << 1 << 4;
    QTest::newRow("group below an unfolded one") << "F1+3,G1+5" << 3 << 0 << 1 << 5;
    QTest::newRow("group in the second preset") << "A1,A2,G2+2" << 1 << 1 << 1 << 2;
    QTest::newRow("group after a hidden row") << "~H1,G1+3" << 0 << 0 << 1 << 3;
}

void TestCategory::expansionSignals() {
    QFETCH(QString, names);
    QFETCH(int, row);
    QFETCH(int, column);
    QFETCH(int, oldSize);
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

    QVERIFY(category.expandSetting(row, column));
    QCOMPARE(before.count(), 1);
    QCOMPARE(before.first(), (QList<QVariant>{row, oldSize, newSize}));
    QCOMPARE(after.count(), 1);
    QCOMPARE(after.first(), (QList<QVariant>{oldSize, newSize}));
    QCOMPARE(sizeSeenBefore, sizeBefore); // announced before the change
    QCOMPARE(category.getSize(), sizeBefore + newSize - oldSize);

    QVERIFY(category.unexpandSetting(row + newSize - 1, column)); // from its last row
    QCOMPARE(before.last(), (QList<QVariant>{row, newSize, oldSize}));
    QCOMPARE(after.last(), (QList<QVariant>{newSize, oldSize}));
    QCOMPARE(category.getSize(), sizeBefore);
    QCOMPARE(layoutFault(category), QString());
}

void TestCategory::expansionRefusals() {
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

void TestCategory::rowTakesTheLargestGroup() {
    Grid grid(QStringLiteral("G1+3,G2+6,G3"));
    Category& category = grid.category;
    QSignalSpy before(&category, &Category::settingAboutToBeExpanded);
    QVERIFY(category.expandSetting(0, 0));
    QCOMPARE(before.first(), (QList<QVariant>{0, 1, 6}));
    for (int column = 0; column < 3; ++column)
        QCOMPARE(category.getAtLiteral(0, column)->getSize(), 6);
    int subIndex = 0;
    QCOMPARE(category.getSettingAt(4, 0, &subIndex), grid.find("G1")); // beyond G1's own rows
    QCOMPARE(subIndex, 3);
    QCOMPARE(layoutFault(category), QString());

    // A group joining an unfolded row unfolds with it and may widen the row.
    QVERIFY(category.appendSetting(new GroupSetting(QStringLiteral("G4"), &grid.host, 9)));
    QCOMPARE(category.getSize(), 9);
    QVERIFY(category.isExpanded(0, 3));
    QCOMPARE(layoutFault(category), QString());
}

void TestCategory::hiddenRows_data() {
    QTest::addColumn<QString>("names");
    QTest::addColumn<int>("hiddenSize");
    QTest::addColumn<int>("visibleSize");
    QTest::addColumn<QString>("probe");
    QTest::addColumn<QString>("hiddenPosition");
    QTest::addColumn<QString>("visiblePosition");
    QTest::newRow("hidden row between shown ones") << "A1,~H1,B1" << 2 << 3 << "B1"
                                                   << "1:0"
                                                   << "2:0";
    QTest::newRow("hidden setting itself has no row") << "A1,~H1,B1" << 2 << 3 << "H1"
                                                      << "-1:-1"
                                                      << "1:0";
    QTest::newRow("row shown while one preset is not hidden") << "~H1,H2,B1" << 2 << 2 << "B1"
                                                              << "1:0"
                                                              << "1:0";
    QTest::newRow("hidden unfolded-size group") << "~G1+4,B1" << 1 << 2 << "B1"
                                                << "0:0"
                                                << "1:0";
    QTest::newRow("everything hidden") << "~X1,~Y1" << 0 << 2 << "Y1"
                                       << "-1:-1"
                                       << "1:0";
}

void TestCategory::hiddenRows() {
    QFETCH(QString, names);
    QFETCH(int, hiddenSize);
    QFETCH(int, visibleSize);
    QFETCH(QString, probe);
    QFETCH(QString, hiddenPosition);
    QFETCH(QString, visiblePosition);
    Grid grid(names);
    Category& category = grid.category;
    QVERIFY(!category.hiddenVisible());
    QCOMPARE(category.getSize(), hiddenSize);
    QCOMPARE(positionText(category.indexOf(probe)), hiddenPosition);
    QCOMPARE(layoutFault(category), QString());
    category.setHiddenVisible(true);
    QCOMPARE(category.getSize(), visibleSize);
    QCOMPARE(positionText(category.indexOf(probe)), visiblePosition);
    QCOMPARE(layoutFault(category), QString());
    category.setHiddenVisible(false);
    QCOMPARE(category.getSize(), hiddenSize);
}

void TestCategory::foldingAHiddenRowIsSilent() {
    Grid grid(QStringLiteral("A1,~G1+4"));
    Category& category = grid.category;
    QSignalSpy before(&category, &Category::settingAboutToBeExpanded);
    QSignalSpy after(&category, &Category::settingExpanded);
    QVERIFY(category.expandSetting(category.findIndex(grid.find("G1"))));
    QCOMPARE(before.count() + after.count(), 0);
    QCOMPARE(category.getSize(), 1);
    category.setHiddenVisible(true);
    QCOMPARE(category.getSize(), 5); // shown unfolded
    QVERIFY(category.unexpandSetting(2, 0));
    QCOMPARE(before.count(), 1);
    QCOMPARE(before.first(), (QList<QVariant>{1, 4, 1}));
}

void TestCategory::settingAtGivesSubIndices() {
    Grid grid(QStringLiteral("G1+4,G3+4"));
    Category& category = grid.category;
    category.expandSetting(0, 0);
    const int expected[] = {-1, 0, 1, 2};
    for (int row = 0; row < 4; ++row) {
        int subIndex = -9;
        QCOMPARE(category.getSettingAt(row, 0, &subIndex), grid.find("G1"));
        QCOMPARE(subIndex, expected[row]);
        QCOMPARE(category.getSettingAt(row, 1, &subIndex), nullptr); // filler in preset 1
        QCOMPARE(subIndex, expected[row]);
    }
    int subIndex = 0;
    QCOMPARE(category.getSettingAt(4, 0, &subIndex), nullptr);
    QCOMPARE(subIndex, -1);
}

void TestCategory::insertAndAbortRoundTrip() {
    Grid grid(QStringLiteral("A1,A2,B1"));
    Category& category = grid.category;
    QPointer<Setting> extra = new PlainSetting(QStringLiteral("C2"), &grid.host);
    auto* cell = new CategoryIndex(1, -1, nullptr, nullptr, extra);
    QVERIFY(!category.insertIndex(cell, 4, 1)); // past the end
    QVERIFY(!category.insertIndex(cell, -1, 1));
    QVERIFY(category.insertIndex(cell, 1, 1));
    QVERIFY(!category.insertIndex(cell, 0, 0)); // already placed
    QCOMPARE(category.getLiteralSize(), 3);
    QCOMPARE(category.getAtLiteral(1, 1), cell);
    QVERIFY(category.getAtLiteral(1, 0)->isFiller());
    QCOMPARE(positionText(category.indexOf(QStringLiteral("B1"))), QStringLiteral("2:0"));
    QVERIFY(category.contains(extra.data()));
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

void TestCategory::removeLeavesFillersAndDropsEmptyRows() {
    Grid grid(QStringLiteral("A1,A2,B1"));
    Category& category = grid.category;
    QPointer<Setting> a2 = grid.find("A2");
    QPointer<Setting> b1 = grid.find("B1");
    QVERIFY(!category.remove(category.getAtLiteral(1, 1))); // a filler beside B1
    QVERIFY(category.remove(category.findIndex(a2)));
    QVERIFY(!a2);
    QVERIFY(category.getAtLiteral(0, 1)->isFiller());
    QCOMPARE(category.getLiteralSize(), 2);
    QVERIFY(category.remove(category.findIndex(b1)));
    QVERIFY(!b1);
    QCOMPARE(category.getLiteralSize(), 1);
    QCOMPARE(category.findSetting(QStringLiteral("B1")), nullptr);
    QCOMPARE(category.getSettings().size(), 1);
    QCOMPARE(layoutFault(category), QString());

    // A2 may come back into the freed place of its row.
    QVERIFY(category.appendSetting(new PlainSetting(QStringLiteral("A2"), &grid.host)));
    QCOMPARE(category.getLiteralSize(), 1);
    QVERIFY(category.insertFiller(0));
    QCOMPARE(category.getSize(), 2);
    QVERIFY(category.remove(category.getAtLiteral(0, 1))); // a row of fillers goes
    QCOMPARE(category.getSize(), 1);
    QCOMPARE(layoutFault(category), QString());
}

void TestCategory::replaceNearestAndMove() {
    Grid grid(QStringLiteral("A1,B1,C1"));
    Category& category = grid.category;
    auto* b2 = new CategoryIndex(1, -1, nullptr, nullptr,
                                 new PlainSetting(QStringLiteral("B2"), &grid.host));
    QVERIFY(category.replaceNearest(b2, 1, 1)); // new column, filler at row 1 taken
    QCOMPARE(category.getLiteralSize(), 3);
    QCOMPARE(positionText(category.indexOf(QStringLiteral("B2"))), QStringLiteral("1:1"));
    auto* bx = new CategoryIndex(1, -1, nullptr, nullptr,
                                 new PlainSetting(QStringLiteral("BX"), &grid.host));
    QVERIFY(category.replaceNearest(bx, 1, 0)); // B1 holds the place: a row right below
    QCOMPARE(category.getIndexLiteral(bx), 2);
    QCOMPARE(category.getLiteralSize(), 4);

    QVERIFY(category.move(bx, 0));
    QCOMPARE(category.getIndexLiteral(bx), 0);
    QCOMPARE(positionText(category.indexOf(QStringLiteral("C1"))), QStringLiteral("3:0"));
    QVERIFY(category.move(category.findIndex(grid.find("A1")), 3));
    QCOMPARE(positionText(category.indexOf(QStringLiteral("A1"))), QStringLiteral("3:0"));
    QCOMPARE(positionText(category.indexOf(QStringLiteral("C1"))), QStringLiteral("2:0"));
    QVERIFY(!category.move(bx, 4));
    QCOMPARE(layoutFault(category), QString());

    // The moved row still receives its other presets.
    QVERIFY(category.appendSetting(new PlainSetting(QStringLiteral("A2"), &grid.host)));
    QCOMPARE(positionText(category.indexOf(QStringLiteral("A2"))), QStringLiteral("3:1"));
}

void TestCategory::moveDown_data() {
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QString>("order");
    QTest::newRow("first to middle") << 0 << 2 << "BCAD";
    QTest::newRow("first to last") << 0 << 3 << "BCDA";
    QTest::newRow("middle up") << 2 << 1 << "ACBD";
    QTest::newRow("last to first") << 3 << 0 << "DABC";
    QTest::newRow("stays") << 1 << 1 << "ABCD";
}

void TestCategory::moveDown() {
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

void TestCategory::removedPresetCanReturnToItsRow() {
    Grid grid(QStringLiteral("G1+3,G2+3,B1"));
    Category& category = grid.category;
    QVERIFY(category.expandSetting(0, 0));
    QVERIFY(category.remove(category.findIndex(grid.find("G1"))));
    QVERIFY(category.remove(category.findIndex(grid.find("G2"))));
    QCOMPARE(category.getLiteralSize(), 1); // the row went with its last setting

    // A row left without a foldable setting folds; a group joining it later comes in
    // folded.
    Grid mixed(QStringLiteral("G1+3,G2,B1"));
    Category& other = mixed.category;
    QVERIFY(other.expandSetting(0, 0));
    QCOMPARE(other.getSize(), 4);
    QVERIFY(other.remove(other.findIndex(mixed.find("G1"))));
    QCOMPARE(other.getSize(), 2);
    QVERIFY(other.appendSetting(new GroupSetting(QStringLiteral("G1"), &mixed.host, 3)));
    QCOMPARE(other.getLiteralSize(), 2);
    QCOMPARE(other.getSize(), 2);
    QVERIFY(!other.isExpanded(0, 0));

    // Removing one preset of a row keeps the row known by its name for the next append.
    Grid pair(QStringLiteral("A1,A2,B1"));
    QVERIFY(pair.category.remove(pair.category.findIndex(pair.find("A1"))));
    QVERIFY(pair.category.appendSetting(new PlainSetting(QStringLiteral("A1"), &pair.host)));
    QCOMPARE(pair.category.getLiteralSize(), 2);
    QCOMPARE(positionText(pair.category.indexOf(QStringLiteral("A1"))), QStringLiteral("0:0"));
}

void TestCategory::realignRepairsManualSizes() {
    Grid grid(QStringLiteral("A1,A2,G1+3"));
    Category& category = grid.category;
    QVERIFY(category.isAligned());
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

QTEST_GUILESS_MAIN(TestCategory)
#include "tst_category.moc"
