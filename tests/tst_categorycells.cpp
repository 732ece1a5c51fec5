// One cell of a category grid: construction limits, the reference it holds on its setting,
// sibling unlinking and the destruction of the chain below it. Running offsets of row
// heights: positions to rows and back, against a plain sum.
#include "sf/CategoryIndex.h"
#include "sf/RowSpans.h"
#include "support/CategoryFixtures.h"
#include "support/TableFile.h"

#include <QPointer>
#include <QRandomGenerator>
#include <QtTest>

#include <vector>

using sf::CategoryIndex;
using sf::RowSpans;
using testsupport::FakeSettingHost;
using testsupport::PlainSetting;

class TestCategoryCells : public QObject {
    Q_OBJECT

private slots:
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

QTEST_GUILESS_MAIN(TestCategoryCells)
#include "tst_categorycells.moc"
