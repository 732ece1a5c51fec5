// Running offsets of row heights: positions to rows and back, against a plain sum.

#include "sf/RowSpans.h"
#include "support/TableFile.h"

#include <QRandomGenerator>
#include <QtTest>

#include <vector>

using sf::RowSpans;

class TestRowSpans : public QObject {
    Q_OBJECT

private slots:
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

QTEST_GUILESS_MAIN(TestRowSpans)
#include "tst_rowspans.moc"
