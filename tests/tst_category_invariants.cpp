// Randomised sequences of appends, folding, hidden-row toggles and layout edits on a
// category: after every step each row's cells have one size across all preset columns,
// the size equals every column's length in shown rows, and virtual rows map both ways.

#include "sf/Category.h"
#include "sf/CategoryIndex.h"
#include "support/CategoryFixtures.h"

#include <QHash>
#include <QPointer>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>
#include <vector>

using sf::Category;
using sf::CategoryIndex;
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

class TestCategoryInvariants : public QObject {
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
};

QTEST_GUILESS_MAIN(TestCategoryInvariants)
#include "tst_category_invariants.moc"
