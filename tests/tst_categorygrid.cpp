// A category's grid. Randomised sequences of appends, folding, hidden-row toggles and layout
// edits: after every step each row's cells have one size across all preset columns, the size
// equals every column's length in shown rows, and virtual rows map both ways. One cell:
// construction limits, the reference it holds on its setting, sibling unlinking and the
// destruction of the chain below it. Running offsets of row heights: positions to rows and
// back, against a plain sum.
#include "sf/Category.h"
#include "sf/CategoryIndex.h"
#include "sf/RowSpans.h"
#include "support/CategoryFixtures.h"
#include "support/TableFile.h"

#include <QHash>
#include <QPointer>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>
#include <vector>

using sf::Category;
using sf::CategoryIndex;
using sf::RowSpans;
using sf::Setting;
using testsupport::FakeSettingHost;
using testsupport::GroupSetting;
using testsupport::layoutFault;
using testsupport::PlainSetting;

namespace {

const char* const BASES[] = {"QC", "QD", "QE", "SPEED", "VOLT", "ICON"};
const char* const SUFFIXES[] = {"", "0", "1", "2", "3", "A", "B"};

class Run {
public:
    explicit Run(quint32 seed)
        : rng(seed), category(QStringLiteral("Random"), QStringLiteral("R"), QString(), true) {}

    Setting* makeSetting() {
        const QString name = QString::fromLatin1(BASES[rng.bounded(6)]) +
                             QString::fromLatin1(SUFFIXES[rng.bounded(7)]);
        const bool hidden = rng.bounded(5) == 0;
        Setting* setting = nullptr;
        if (rng.bounded(100) < 35)
            setting = new GroupSetting(name, &host, rng.bounded(7), 1 + rng.bounded(4) / 3, hidden);
        else
            setting = new PlainSetting(name, &host, hidden);
        made.push_back(setting);
        return setting;
    }

    int randomForced() { return rng.bounded(100) < 85 ? -1 : rng.bounded(3); }

    // Folds or unfolds at a random virtual row and checks the announcement.
    QString fold(bool expand) {
        const int size = category.getSize();
        if (size == 0 || category.numberOfPresets() == 0)
            return QString();
        const int row = rng.bounded(size);
        const int column = rng.bounded(category.numberOfPresets());
        const CategoryIndex* cell = category.getAt(row, column);
        const int firstRow = category.getIndexVirtual(cell);
        QSignalSpy before(&category, &Category::settingAboutToBeExpanded);
        QSignalSpy after(&category, &Category::settingExpanded);
        const bool changed =
            expand ? category.expandSetting(row, column) : category.unexpandSetting(row, column);
        if (before.count() != after.count() || before.count() > (changed ? 1 : 0))
            return QStringLiteral("unpaired or unexpected expansion signals");
        if (before.isEmpty())
            return category.getSize() == size ? QString()
                                              : QStringLiteral("size changed without a signal");
        const QList<QVariant> announced = before.first();
        const int oldSize = announced.at(1).toInt();
        const int newSize = announced.at(2).toInt();
        if (announced.at(0).toInt() != firstRow)
            return QStringLiteral("announced row %1, the cell starts at %2")
                .arg(announced.at(0).toInt())
                .arg(firstRow);
        if (after.first() != (QList<QVariant>{oldSize, newSize}))
            return QStringLiteral("settingExpanded arguments differ");
        if (oldSize == newSize || category.getSize() != size + newSize - oldSize)
            return QStringLiteral("size went from %1 to %2, announced %3 to %4")
                .arg(size)
                .arg(category.getSize())
                .arg(oldSize)
                .arg(newSize);
        return QString();
    }

    CategoryIndex* randomLiteralCell() {
        if (category.getLiteralSize() == 0)
            return nullptr;
        return category.getAtLiteral(rng.bounded(category.getLiteralSize()),
                                     rng.bounded(category.numberOfPresets()));
    }

    // One random step; returns what it did (for the failure message) and any fault seen.
    QString step(QString* fault) {
        const int pick = rng.bounded(100);
        if (pick < 45) {
            Setting* setting = makeSetting();
            const int forced = randomForced();
            if (!category.appendSetting(setting, forced))
                *fault = QStringLiteral("append refused");
            return QStringLiteral("append %1 [%2]").arg(setting->getCodeName()).arg(forced);
        }
        if (pick < 50) {
            const QVector<Setting*> settings = category.getSettings();
            if (!settings.isEmpty()) {
                Setting* setting = settings.at(rng.bounded(settings.size()));
                category.appendSetting(setting, rng.bounded(3)); // may repeat: refused
            }
            return QStringLiteral("append again");
        }
        if (pick < 65) {
            *fault = fold(true);
            return QStringLiteral("expand");
        }
        if (pick < 75) {
            *fault = fold(false);
            return QStringLiteral("unexpand");
        }
        if (pick < 83) {
            category.setHiddenVisible(!category.hiddenVisible());
            return QStringLiteral("hidden visible %1").arg(category.hiddenVisible());
        }
        if (pick < 90) {
            category.remove(randomLiteralCell());
            return QStringLiteral("remove");
        }
        if (pick < 93) {
            category.removeChain(randomLiteralCell());
            return QStringLiteral("remove chain");
        }
        if (pick < 98) {
            if (CategoryIndex* cell = randomLiteralCell())
                category.move(cell, rng.bounded(category.getLiteralSize()));
            return QStringLiteral("move");
        }
        category.insertFiller(rng.bounded(category.getLiteralSize() + 1));
        return QStringLiteral("insert filler");
    }

    QRandomGenerator rng;
    FakeSettingHost host;
    Category category;
    std::vector<QPointer<Setting>> made;
};

} // namespace

class TestCategoryGrid : public QObject {
    Q_OBJECT

private slots:
    void randomSequencesKeepRowsAligned() {
        for (quint32 seed = 1; seed <= 200; ++seed) {
            std::vector<QPointer<Setting>> made;
            {
                Run run(seed);
                for (int index = 0; index < 80; ++index) {
                    QString fault;
                    const QString what = run.step(&fault);
                    if (fault.isEmpty())
                        fault = layoutFault(run.category);
                    if (fault.isEmpty() && !run.category.isAligned())
                        fault = QStringLiteral("isAligned() is false");
                    if (!fault.isEmpty())
                        QFAIL(qPrintable(QStringLiteral("seed %1, step %2 (%3): %4")
                                             .arg(seed)
                                             .arg(index)
                                             .arg(what, fault)));
                }
                made = run.made;
            }
            // The category held the only references: every setting went with it.
            for (const QPointer<Setting>& setting : made)
                QVERIFY2(!setting,
                         qPrintable(QStringLiteral("seed %1 leaked a setting").arg(seed)));
        }
    }

    void appendsFillTheFirstFreeRowOfTheirName() {
        for (quint32 seed = 1; seed <= 100; ++seed) {
            Run run(seed);
            for (int index = 0; index < 60; ++index) {
                Setting* setting = run.makeSetting();
                QVERIFY(run.category.appendSetting(setting, run.randomForced()));
                const CategoryIndex* cell = run.category.findIndex(setting);
                QCOMPARE(run.category.getPreset(cell), std::max(0, setting->getPreset()));
            }
            // Per name and column, the rows of that name holding a setting in that column come
            // before the rows where the column is still free.
            QHash<QString, QVector<int>> rowsOfName;
            Category& category = run.category;
            for (int row = 0; row < category.getLiteralSize(); ++row) {
                for (int column = 0; column < category.numberOfPresets(); ++column) {
                    const CategoryIndex* cell = category.getAtLiteral(row, column);
                    if (cell->isFiller())
                        continue;
                    const QString name = cell->getContent()->getBaseCodeName() +
                                         QStringLiteral("#%1").arg(cell->getForcedSubIndex());
                    if (!rowsOfName[name].contains(row))
                        rowsOfName[name].append(row);
                    break;
                }
            }
            for (auto rows = rowsOfName.cbegin(); rows != rowsOfName.cend(); ++rows) {
                for (int column = 0; column < category.numberOfPresets(); ++column) {
                    bool freeSeen = false;
                    for (int row : rows.value()) {
                        const bool taken = !category.getAtLiteral(row, column)->isFiller();
                        QVERIFY2(!(taken && freeSeen),
                                 qPrintable(QStringLiteral("seed %1: %2 skipped a free place in "
                                                           "column %3")
                                                .arg(seed)
                                                .arg(rows.key())
                                                .arg(column)));
                        freeSeen = freeSeen || !taken;
                    }
                }
            }
            QCOMPARE(layoutFault(category), QString());
        }
    }

    void constructionLimits_data() { testsupport::loadTable(); }

    void constructionLimits() {
        QFETCH(int, size);
        QFETCH(int, forced);
        QFETCH(int, expectedSize);
        QFETCH(int, expectedForced);
        CategoryIndex cell(size, forced, nullptr, nullptr, nullptr);
        QCOMPARE(cell.getSize(), expectedSize);
        QCOMPARE(cell.getForcedSubIndex(), expectedForced);
        QVERIFY(cell.isFiller());
        cell.setSize(0);
        QCOMPARE(cell.getSize(), 1);
    }

    void lastReferenceDestroysTheSetting() {
        FakeSettingHost host;
        QPointer<PlainSetting> setting = new PlainSetting(QStringLiteral("SPEED1"), &host);
        setting->addReference(); // another holder besides the cells
        auto* first = new CategoryIndex(1, -1, nullptr, nullptr, setting);
        auto* second = new CategoryIndex(1, 0, nullptr, nullptr, setting);
        QCOMPARE(setting->getReferenceCount(), 3);
        QVERIFY(!first->isFiller());

        delete first;
        QVERIFY(setting);
        QCOMPARE(setting->getReferenceCount(), 2);
        setting->dereference(); // the other holder lets go
        QVERIFY(setting);
        delete second; // the last reference
        QVERIFY(!setting);
    }

    void destructionJoinsSiblings_data() { testsupport::loadTable(); }

    void destructionJoinsSiblings() {
        QFETCH(int, victim);
        std::vector<CategoryIndex*> row;
        for (int i = 0; i < 3; ++i)
            row.push_back(new CategoryIndex(1, -1, nullptr, nullptr, nullptr));
        for (int i = 0; i < 3; ++i) {
            row[i]->setLeft(i > 0 ? row[i - 1] : nullptr);
            row[i]->setRight(i < 2 ? row[i + 1] : nullptr);
        }
        delete row[victim];
        row.erase(row.begin() + victim);
        QCOMPARE(row[0]->getLeft(), nullptr);
        QCOMPARE(row[0]->getRight(), row[1]);
        QCOMPARE(row[1]->getLeft(), row[0]);
        QCOMPARE(row[1]->getRight(), nullptr);
        for (CategoryIndex* cell : row)
            delete cell;
    }

    void destructionTakesTheChainBelow() {
        FakeSettingHost host;
        QPointer<PlainSetting> kept = new PlainSetting(QStringLiteral("KEPT1"), &host);
        QPointer<PlainSetting> lost = new PlainSetting(QStringLiteral("LOST1"), &host);
        auto* top = new CategoryIndex(1, -1, nullptr, nullptr, kept);
        auto* middle = new CategoryIndex(2, -1, top, nullptr, nullptr);
        auto* bottom = new CategoryIndex(1, -1, middle, nullptr, lost);
        top->setNext(middle);
        middle->setNext(bottom);

        delete middle; // takes bottom along and detaches from top
        QCOMPARE(top->getNext(), nullptr);
        QVERIFY(kept);
        QVERIFY(!lost);
        delete top;
        QVERIFY(!kept);
    }

    void longColumnIsDestroyedWithoutRecursion() {
        FakeSettingHost host;
        const int cells = 200000;
        QPointer<PlainSetting> setting = new PlainSetting(QStringLiteral("DEEP1"), &host);
        auto* head = new CategoryIndex(1, -1, nullptr, nullptr, nullptr);
        CategoryIndex* tail = head;
        for (int i = 1; i < cells; ++i) {
            auto* cell = new CategoryIndex(1, i - 1, tail, nullptr, setting);
            tail->setNext(cell);
            tail = cell;
        }
        QCOMPARE(setting->getReferenceCount(), cells - 1);
        delete head;
        QVERIFY(!setting);
    }

    void virtualOffsetSumsCellsAbove() {
        const int sizes[] = {1, 4, 2, 1};
        std::vector<CategoryIndex*> column;
        for (int size : sizes) {
            auto* cell = new CategoryIndex(size, -1, column.empty() ? nullptr : column.back(),
                                           nullptr, nullptr);
            if (!column.empty())
                column.back()->setNext(cell);
            column.push_back(cell);
        }
        QCOMPARE(column[0]->getVirtualOffset(), 0);
        QCOMPARE(column[1]->getVirtualOffset(), 1);
        QCOMPARE(column[2]->getVirtualOffset(), 5);
        QCOMPARE(column[3]->getVirtualOffset(), 7);
        delete column[0];
    }

    void lookups_data() { testsupport::loadTable(); }

    void lookups() {
        QFETCH(QString, spans);
        QFETCH(int, position);
        QFETCH(int, row);
        QFETCH(int, offset);
        RowSpans rows;
        for (const QString& span : spans.split(QLatin1Char(' '), Qt::SkipEmptyParts))
            rows.append(span.toInt());
        QCOMPARE(rows.rowAt(position), row);
        QCOMPARE(rows.offset(row < 0 ? rows.count() : row), row < 0 ? rows.total() : offset);
    }

    void randomEditsMatchPlainSums() {
        QRandomGenerator rng(7);
        RowSpans rows;
        std::vector<int> plain;
        for (int round = 0; round < 3000; ++round) {
            if (plain.empty() || rng.bounded(3) == 0) {
                const int span = rng.bounded(4);
                rows.append(span);
                plain.push_back(span);
            } else {
                const int row = rng.bounded(static_cast<int>(plain.size()));
                const int span = rng.bounded(6);
                rows.set(row, span);
                plain[static_cast<std::size_t>(row)] = span;
            }
            const int probe = rng.bounded(static_cast<int>(plain.size()) + 1);
            int sum = 0;
            for (int row = 0; row < probe; ++row)
                sum += plain[static_cast<std::size_t>(row)];
            QCOMPARE(rows.offset(probe), sum);
            if (probe < static_cast<int>(plain.size()) &&
                plain[static_cast<std::size_t>(probe)] > 0)
                QCOMPARE(rows.rowAt(sum + rng.bounded(plain[static_cast<std::size_t>(probe)])),
                         probe);
        }
        int total = 0;
        for (int span : plain)
            total += span;
        QCOMPARE(rows.total(), total);
        QCOMPARE(rows.rowAt(total), -1);
        rows.set(-1, 5); // ignored
        rows.set(rows.count(), 5);
        QCOMPARE(rows.total(), total);
    }
};

QTEST_GUILESS_MAIN(TestCategoryGrid)
#include "tst_categorygrid.moc"
