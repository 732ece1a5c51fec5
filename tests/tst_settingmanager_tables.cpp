// Categories shown by table models through the setting manager: mapping, cell flags,
// values by table index, expansion signals and changed-row reports.

#include "support/ManagerFixtures.h"
#include "support/TableFile.h"

#include "sf/ActionTracker.h"
#include "sf/Category.h"
#include "sf/Setting.h"
#include "sf/SettingManager.h"

#include <QSignalSpy>
#include <QtTest>

using namespace testsupport;
using sf::SettingManager;

class TestSettingManagerTables : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_manager = std::make_unique<SettingManager>();
        m_files = std::make_unique<ManagerFiles>();
        QCOMPARE(loadStandard(*m_manager, *m_files), 0);
    }

    void cleanup() {
        qDeleteAll(m_models);
        m_models.clear();
        m_manager.reset();
        m_files.reset();
    }

    void oneTablePerCategory() {
        mapAll();
        QCOMPARE(m_models.size(), 3);
        QStringList titles;
        QList<int> sizes;
        for (ManagerTableModel* model : m_models) {
            titles << m_manager->getCategoryTitle(m_manager->mappedCategories(model).first());
            sizes << model->rowCount();
            QCOMPARE(model->columnCount(), 2);
        }
        QCOMPARE(titles, (QStringList{"Uncategorized", "Battery", "Display"}));
        QCOMPARE(sizes, (QList<int>{1, 4, 7}));
        QVERIFY(!m_manager->getFirstUnmappedCategory());
    }

    void severalCategoriesOnOneModel() {
        ManagerTableModel model(m_manager.get());
        QVERIFY(!m_manager->mapCategory(&model, QStringLiteral("Nope")));
        QVERIFY(!m_manager->mapCategory(nullptr, QStringLiteral("Batt")));
        sf::Category foreign(QStringLiteral("F"), QStringLiteral("F"), QString(), true);
        QVERIFY(!m_manager->mapCategory(&model, &foreign));
        QVERIFY(m_manager->mapCategory(&model, QStringLiteral("Batt")));
        QVERIFY(!m_manager->mapCategory(&model, QStringLiteral("Batt"))); // already shown
        QCOMPARE(m_manager->modelSize(nullptr), 0);
        QVERIFY(m_manager->mapCategory(&model, QStringLiteral("Disp")));
        QCOMPARE(model.rowCount(), 11);
        QCOMPARE(m_manager->getFirstUnmappedCategory(),
                 m_manager->getCategory(QStringLiteral("UC")));

        int row = -1;
        QCOMPARE(m_manager->categoryIndex(model.index(3, 0), &row)->getLabel(),
                 QStringLiteral("Batt"));
        QCOMPARE(row, 3);
        QCOMPARE(m_manager->categoryIndex(model.index(4, 0), &row)->getLabel(),
                 QStringLiteral("Disp"));
        QCOMPARE(row, 0);
        QVERIFY(!m_manager->categoryIndex(&model, 11));
        QVERIFY(!m_manager->categoryIndex(&model, -1));

        const QModelIndex screen = m_manager->modelIndex(&model, QStringLiteral("Screen"));
        QCOMPARE(screen.row(), 4 + 5);
        QCOMPARE(screen.column(), 0);
        QCOMPARE(m_manager->getSetting(screen)->getCodeName(), QStringLiteral("Screen"));
        const QModelIndex cells2 = m_manager->modelIndex(&model, QStringLiteral("Cells2"));
        QCOMPARE(cells2.row(), 1);
        QCOMPARE(cells2.column(), 1);
        QVERIFY(!m_manager->modelIndex(&model, QStringLiteral("Early")).isValid()); // not shown
        QVERIFY(!m_manager->modelIndex(&model, QStringLiteral("Hid")).isValid());   // hidden row
        QVERIFY(!m_manager->modelIndex(&model, QStringLiteral("Nope")).isValid());
    }

    void unmapAndDestroyedModels() {
        auto* model = new ManagerTableModel(m_manager.get());
        QVERIFY(m_manager->mapCategory(model, QStringLiteral("UC")));
        QVERIFY(m_manager->mapCategory(model, QStringLiteral("Batt")));
        m_manager->unmap(model, m_manager->getCategory(QStringLiteral("UC")));
        QCOMPARE(m_manager->modelSize(model), 4);
        QCOMPARE(m_manager->getFirstUnmappedCategory()->getLabel(), QStringLiteral("UC"));
        m_manager->unmap(model);
        QCOMPARE(m_manager->modelSize(model), 0);

        QVERIFY(m_manager->mapCategory(model, QStringLiteral("UC")));
        QVERIFY(m_manager->mapCategory(model, QStringLiteral("Batt")));
        QVERIFY(m_manager->mapCategory(model, QStringLiteral("Disp")));
        QVERIFY(!m_manager->getFirstUnmappedCategory());
        delete model;
        QCOMPARE(m_manager->getFirstUnmappedCategory()->getLabel(), QStringLiteral("UC"));
        QVERIFY(m_manager->mappedCategories(model).isEmpty());
    }

    void indexFlags_data() { testsupport::loadTable(); }

    void indexFlags() {
        QFETCH(QString, label);
        QFETCH(int, row);
        QFETCH(int, column);
        QFETCH(QString, prepare);
        QFETCH(QString, flags);
        const QStringList names{"present", "enabled", "sub-index", "expandable",
                                "multi",   "default", "preset"};
        const int values[] = {1, 6, 8, 16, 32, 64, 128};
        int expected = 0;
        for (const QString& name : flags.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
            QVERIFY2(names.contains(name), qPrintable(name));
            expected |= values[names.indexOf(name)];
        }

        if (prepare == QLatin1String("packs 0")) {
            QVERIFY(m_manager->setSettingData(0, QStringLiteral("Packs")));
        } else if (prepare == QLatin1String("category off")) {
            m_manager->getCategory(label)->setEnabled(false);
        } else if (prepare == QLatin1String("setting off")) {
            QVERIFY(m_manager->setEnabled(QStringLiteral("Cells1"), false));
        } else if (prepare == QLatin1String("unfold")) {
            QVERIFY(m_manager->expandSetting(QStringLiteral("Boxes")));
        }
        ManagerTableModel model(m_manager.get());
        QVERIFY(m_manager->mapCategory(&model, label));
        QCOMPARE(m_manager->getIndexFlags(model.cell(row, column)), expected);
        QCOMPARE(m_manager->getIndexFlags(QModelIndex()), 0);
    }

    void valuesByTableIndex() {
        mapAll();
        ManagerTableModel* disp = modelOf(QStringLiteral("Disp"));
        int subIndex = -5;
        QCOMPARE(m_manager->getSetting(disp->index(2, 0), &subIndex)->getCodeName(),
                 QStringLiteral("Flags"));
        QCOMPARE(subIndex, 1);
        QCOMPARE(disp->data(disp->index(1, 0), Qt::EditRole).toBool(), true); // bit 0 of 0x0005
        QCOMPARE(disp->data(disp->index(2, 0), Qt::EditRole).toBool(), false);
        QVERIFY(!m_manager->getSetting(disp->index(2, 1), &subIndex));
        QVERIFY(!m_manager->getSettingData(disp->index(2, 1), sf::RoleDisplay).isValid());

        QVERIFY(m_manager->setSettingData(true, disp->index(2, 0)));
        QCOMPARE(m_manager->getSettingData(QStringLiteral("Flags"), sf::RoleEdit).toInt(), 7);
        QCOMPARE(m_manager->getPreviousUndoAction()->getSubIndex(), 1);
        QVERIFY(!m_manager->setSettingData(true, disp->index(2, 1))); // filler

        ManagerTableModel* batt = modelOf(QStringLiteral("Batt"));
        QVERIFY(m_manager->setSettingData(16, batt->index(1, 1)));
        QCOMPARE(m_manager->getSettingData(QStringLiteral("Cells2"), sf::RoleEdit).toInt(), 16);

        QVERIFY(m_manager->isEnabled(batt->index(1, 1)));
        QVERIFY(m_manager->setEnabled(batt->index(1, 1), false));
        QVERIFY(!m_manager->isEnabled(QStringLiteral("Cells2")));
        QVERIFY(m_manager->isEnabled(QStringLiteral("Cells1")));
        QVERIFY(m_manager->isEnabledByDefault(batt->index(1, 1)));
        QVERIFY(!m_manager->setEnabled(batt->index(0, 1), true)); // filler
    }

    void expansionIsAnnouncedToEveryModel() {
        ManagerTableModel both(m_manager.get());
        ManagerTableModel disp(m_manager.get());
        QVERIFY(m_manager->mapCategory(&both, QStringLiteral("Batt")));
        QVERIFY(m_manager->mapCategory(&both, QStringLiteral("Disp")));
        QVERIFY(m_manager->mapCategory(&disp, QStringLiteral("Disp")));

        QSignalSpy about(m_manager.get(), &SettingManager::settingAboutToBeExpanded);
        QSignalSpy done(m_manager.get(), &SettingManager::settingExpanded);
        const QModelIndex boxes = disp.index(4, 0);
        QCOMPARE(m_manager->getSettingData(boxes, sf::RoleDisplay).toString(),
                 QStringLiteral("Expand"));
        QVERIFY(!m_manager->isExpanded(QStringLiteral("Boxes")));

        QVERIFY(m_manager->expandSetting(QStringLiteral("Boxes")));
        QCOMPARE(about.count(), 2);
        QMap<const QAbstractItemModel*, QList<int>> seen;
        for (const QList<QVariant>& args : about) {
            seen.insert(args.at(0).value<const QAbstractItemModel*>(),
                        {args.at(1).toInt(), args.at(2).toInt(), args.at(3).toInt()});
        }
        QCOMPARE(seen.value(&both), (QList<int>{4 + 4, 1, 4}));
        QCOMPARE(seen.value(&disp), (QList<int>{4, 1, 4}));
        QCOMPARE(done.count(), 2);
        QCOMPARE(done.at(0).at(1).toInt(), 1);
        QCOMPARE(done.at(0).at(2).toInt(), 4);

        QCOMPARE(disp.rowCount(), 10);
        QCOMPARE(both.rowCount(), 14);
        QVERIFY(m_manager->isExpanded(boxes));
        QCOMPARE(m_manager->getSettingData(boxes, sf::RoleDisplay).toString(),
                 QStringLiteral("Hide"));
        QCOMPARE(
            m_manager->getSettingData(QStringLiteral("Boxes"), sf::RoleFoldedDisplay).toString(),
            QStringLiteral("Expand"));

        about.clear();
        QVERIFY(m_manager->unexpandSetting(boxes));
        QCOMPARE(about.count(), 2);
        QCOMPARE(about.at(0).at(2).toInt(), 4);
        QCOMPARE(about.at(0).at(3).toInt(), 1);
        QCOMPARE(disp.rowCount(), 7);
        QVERIFY(!m_manager->isExpanded(boxes));
    }

    void expansionRefusals() {
        mapAll();
        QSignalSpy about(m_manager.get(), &SettingManager::settingAboutToBeExpanded);
        QVERIFY(!m_manager->unexpandSetting(QStringLiteral("Boxes"))); // already folded
        QVERIFY(!m_manager->expandSetting(QStringLiteral("Flags")));   // not foldable
        QVERIFY(!m_manager->expandSetting(QStringLiteral("Nope")));
        QVERIFY(!m_manager->expandSetting(QModelIndex()));
        QVERIFY(m_manager->expandSetting(QStringLiteral("Boxes")));
        QVERIFY(!m_manager->expandSetting(QStringLiteral("Boxes")));
        QCOMPARE(about.count(), 1);
    }

    void changedRowsAreReported_data() { testsupport::loadTable(); }
    void changedRowsAreReported() {
        QFETCH(QString, codeName);
        QFETCH(QVariant, value);
        QFETCH(int, subIndex);
        QFETCH(QString, label);
        QFETCH(int, first);
        QFETCH(int, last);

        mapAll();
        QSignalSpy rows(m_manager.get(), &SettingManager::rowsChanged);
        QVERIFY(m_manager->setSettingData(value, codeName, subIndex));
        int lowest = INT_MAX;
        int highest = -1;
        for (const QList<QVariant>& args : rows) {
            QCOMPARE(args.at(0).value<const QAbstractItemModel*>(), modelOf(label));
            lowest = qMin(lowest, args.at(1).toInt());
            highest = qMax(highest, args.at(2).toInt());
        }
        QCOMPARE(lowest, first);
        QCOMPARE(highest, last);

        rows.clear();
        QVERIFY(m_manager->undoAction());
        QCOMPARE(rows.count(), 1);
        QCOMPARE(rows.at(0).at(1).toInt(), first);
        QCOMPARE(rows.at(0).at(2).toInt(), last);
    }

private:
    // One model per category, in category order, as the file model builds them.
    void mapAll() {
        while (sf::Category* category = m_manager->getFirstUnmappedCategory()) {
            auto* model = new ManagerTableModel(m_manager.get());
            QVERIFY(m_manager->mapCategory(model, category));
            m_models << model;
        }
    }

    ManagerTableModel* modelOf(const QString& label) const {
        for (ManagerTableModel* model : m_models) {
            const QList<sf::Category*> shown = m_manager->mappedCategories(model);
            if (!shown.isEmpty() && shown.first()->getLabel() == label) {
                return model;
            }
        }
        return nullptr;
    }

    std::unique_ptr<SettingManager> m_manager;
    std::unique_ptr<ManagerFiles> m_files;
    QList<ManagerTableModel*> m_models;
};

QTEST_GUILESS_MAIN(TestSettingManagerTables)
#include "tst_settingmanager_tables.moc"
