// Running offsets of row heights: positions to rows and back, against a plain sum.

#include "sf/RowSpans.h"

#include <QRandomGenerator>
#include <QtTest>

#include <vector>

using sf::RowSpans;

class TestRowSpans : public QObject {
    Q_OBJECT

private slots:
    void lookups_data();
    void lookups();
    void randomEditsMatchPlainSums();
};

void TestRowSpans::lookups_data() {
    QTest::addColumn<QVector<int>>("spans");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("offset");
    QTest::newRow("first row") << QVector<int>{1, 4, 2} << 0 << 0 << 0;
    QTest::newRow("inside a tall row") << QVector<int>{1, 4, 2} << 3 << 1 << 1;
    QTest::newRow("last position") << QVector<int>{1, 4, 2} << 6 << 2 << 5;
    QTest::newRow("past the end") << QVector<int>{1, 4, 2} << 7 << -1 << 7;
    QTest::newRow("negative") << QVector<int>{1, 4, 2} << -1 << -1 << 0;
    QTest::newRow("empty rows are skipped") << QVector<int>{0, 0, 3, 0, 1} << 3 << 4 << 3;
    QTest::newRow("leading empty rows") << QVector<int>{0, 0, 3} << 0 << 2 << 0;
    QTest::newRow("all empty") << QVector<int>{0, 0} << 0 << -1 << 0;
    QTest::newRow("no rows") << QVector<int>{} << 0 << -1 << 0;
}

void TestRowSpans::lookups() {
    QFETCH(QVector<int>, spans);
    QFETCH(int, position);
    QFETCH(int, row);
    QFETCH(int, offset);
    RowSpans rows;
    for (int span : spans)
        rows.append(span);
    QCOMPARE(rows.rowAt(position), row);
    QCOMPARE(rows.offset(row < 0 ? rows.count() : row), row < 0 ? rows.total() : offset);
}

void TestRowSpans::randomEditsMatchPlainSums() {
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
        if (probe < static_cast<int>(plain.size()) && plain[static_cast<std::size_t>(probe)] > 0)
            QCOMPARE(rows.rowAt(sum + rng.bounded(plain[static_cast<std::size_t>(probe)])), probe);
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

QTEST_GUILESS_MAIN(TestRowSpans)
#include "tst_rowspans.moc"
