// The setting manager seen from the tables and the editors: lookups by code name, help
// identifier and raw setting, data roles, enable state and the dependents resolver;
// categories shown by table models (mapping, cell flags, values by table index,
// expansion signals and changed-row reports).
#include "sf/ActionTracker.h"
#include "sf/Category.h"
#include "sf/Setting.h"
#include "sf/SettingManager.h"
#include "support/LayoutFixtures.h"
#include "support/ManagerFixtures.h"
#include "support/TableFile.h"

#include <QSignalSpy>
#include <QtTest>

using namespace testsupport;
using sf::SettingManager;

class TestSettingManagerViews : public QObject {
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

    void lookups_data() { testsupport::loadTable(); }

    void lookups() {
        QFETCH(QString, codeName);
        QFETCH(int, type);
        QFETCH(bool, multi);
        QFETCH(QString, wsi);
        QFETCH(QString, wsiOwner);

        const sf::Setting* setting = m_manager->getSetting(codeName);
        QCOMPARE(setting != nullptr, type != 0);
        QCOMPARE(m_manager->contains(codeName), type != 0);
        QCOMPARE(m_manager->containsRaw(codeName), type != 0);
        QCOMPARE(static_cast<int>(m_manager->getSettingType(codeName)), type);
        QCOMPARE(m_manager->isMultiSetting(codeName), multi);
        if (setting) {
            QCOMPARE(setting->getCodeName(), codeName);
        }
        if (!wsi.isEmpty()) {
            const sf::Setting* owner = m_manager->getSettingByWsi(wsi);
            QCOMPARE(owner ? owner->getCodeName() : QString(), wsiOwner);
            QCOMPARE(m_manager->containsWsi(wsi), !wsiOwner.isEmpty());
        }
        QVERIFY(!m_manager->getSettingByWsi(QString()));
    }

    void wsiLookupFirstCategoryWins() {
        // The uncategorized category comes first, then the headings in layout order.
        const QString source =
            QStringLiteral("version \"KX4-T1\"\n"
                           "category One \"One\" \"\"\n"
                           "setting A 0 1 = num, SAME, u8, 0`255, [], 0, \"A\", \"\"\n"
                           "category Two \"Two\" \"\"\n"
                           "setting B 1 1 = num, SAME, u8, 0`255, [], 0, \"B\", \"\"\n"
                           "setting C 2 1 = num, OTHER, u8, 0`255, [], 0, \"C\", \"\"\n");
        SettingManager manager;
        QCOMPARE(manager.loadRawSettingsData(
                     managerVersion(FW, KXS), compileLayout(source),
                     hexImage({{0, QByteArray::fromHex("010203")}}, FW, KXS), false),
                 0);
        QVERIFY(!manager.getCategory(SettingManager::UNCATEGORIZED_LABEL)); // every setting has one
        QCOMPARE(manager.getSettingByWsi(QStringLiteral("SAME"))->getCodeName(),
                 QStringLiteral("A"));
        QCOMPARE(manager.getSettingDataByWsi(QStringLiteral("SAME"), sf::RoleEdit).toInt(), 1);
        QCOMPARE(manager.getSettingDataByWsi(QStringLiteral("OTHER"), sf::RoleEdit).toInt(), 3);
        QVERIFY(!manager.getSettingDataByWsi(QStringLiteral("NONE"), sf::RoleEdit).isValid());
    }

    void roles_data() { testsupport::loadTable(); }
    void roles() {
        QFETCH(QString, codeName);
        QFETCH(int, subIndex);
        QFETCH(int, role);
        QFETCH(QVariant, expected);

        const QVariant actual =
            m_manager->getSettingData(codeName, static_cast<sf::DataRole>(role), subIndex);
        if (expected.userType() == QMetaType::Double) {
            QVERIFY2(qAbs(actual.toDouble() - expected.toDouble()) < 1e-9,
                     qPrintable(actual.toString()));
        } else if (!expected.isValid()) {
            QVERIFY(!actual.isValid());
        } else {
            QCOMPARE(actual.toString(), expected.toString());
            QCOMPARE(actual.toStringList(), expected.toStringList());
        }
    }

    void setByWsiChangesTheFirstHolder() {
        QVERIFY(m_manager->setSettingDataByWsi(15, QStringLiteral("CELLS")));
        QCOMPARE(m_manager->getSettingData(QStringLiteral("Cells1"), sf::RoleEdit).toInt(), 15);
        QCOMPARE(m_manager->getSettingData(QStringLiteral("Cells2"), sf::RoleEdit).toInt(), 10);
        QVERIFY(!m_manager->setSettingDataByWsi(15, QStringLiteral("NOPE")));
        QVERIFY(!m_manager->setSettingData(1, QStringLiteral("Nope")));
    }

    void rawSettingData() {
        QCOMPARE(m_manager->getRawSettingData(QStringLiteral("Lim1")), QByteArray::fromHex("01E0"));
        QCOMPARE(m_manager->getRawSettingData(QStringLiteral("Nope")), QByteArray());
        QVERIFY(!m_manager->setRawSettingData(QStringLiteral("Lim1"), QByteArray::fromHex("01")));
        QVERIFY(!m_manager->setRawSettingData(QStringLiteral("Nope"), QByteArray::fromHex("01")));
        QVERIFY(m_manager->setRawSettingData(QStringLiteral("Lim1"), QByteArray::fromHex("0102")));
        QCOMPARE(m_manager->getRawSettingData(QStringLiteral("Lim1")), QByteArray::fromHex("0102"));
        // The raw bytes are the image's copy; the setting keeps its own value.
        QCOMPARE(m_manager->getSettingData(QStringLiteral("Lim1"), sf::RoleEdit).toDouble(), 48.0);
        // An edit does not reach the raw bytes before they are copied back.
        QVERIFY(m_manager->setSettingData(40.0, QStringLiteral("Lim1")));
        QCOMPARE(m_manager->getRawSettingData(QStringLiteral("Lim1")), QByteArray::fromHex("0102"));
    }

    void enableState() {
        QSignalSpy modified(m_manager.get(), &SettingManager::settingModified);
        QVERIFY(m_manager->setEnabled(QStringLiteral("Cells1"), false));
        QVERIFY(!m_manager->isEnabled(QStringLiteral("Cells1")));
        QVERIFY(m_manager->isEnabledByDefault(QStringLiteral("Cells1")));
        QCOMPARE(modified.count(), 1);
        QVERIFY(m_manager->setEnabled(QStringLiteral("Cells1"), false)); // no change, no signal
        QCOMPARE(modified.count(), 1);
        QVERIFY(m_manager->setEnabled(QStringLiteral("Dis"), true));
        QVERIFY(m_manager->isEnabled(QStringLiteral("Dis")));
        QVERIFY(!m_manager->isEnabledByDefault(QStringLiteral("Dis")));
        QVERIFY(!m_manager->setEnabled(QStringLiteral("Nope"), true));
        QVERIFY(!m_manager->isEnabled(QStringLiteral("Nope")));
        QVERIFY(!m_manager->canUndo()); // enable state is not recorded

        QVERIFY(m_manager->isCategoryEnabled(QStringLiteral("Batt")));
        m_manager->getCategory(QStringLiteral("Batt"))->setEnabled(false);
        QVERIFY(!m_manager->isCategoryEnabled(QStringLiteral("Batt")));
        QVERIFY(!m_manager->isCategoryEnabled(QStringLiteral("Nope")));
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

QTEST_GUILESS_MAIN(TestSettingManagerViews)
#include "tst_settingmanager_views.moc"
