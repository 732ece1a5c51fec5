// Reading and writing values through the setting manager: lookups by code name, help
// identifier and raw setting, data roles, enable state and the dependents resolver.

#include "support/LayoutFixtures.h"
#include "support/ManagerFixtures.h"
#include "support/TableFile.h"

#include "sf/Category.h"
#include "sf/Setting.h"
#include "sf/SettingManager.h"

#include <QSignalSpy>
#include <QtTest>

using namespace testsupport;
using sf::SettingManager;

class TestSettingManagerValues : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_manager = std::make_unique<SettingManager>();
        m_files = std::make_unique<ManagerFiles>();
        QCOMPARE(loadStandard(*m_manager, *m_files), 0);
    }

    void cleanup() {
        m_manager.reset();
        m_files.reset();
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
                     managerVersion(QStringLiteral("FW1"), QStringLiteral("KX4-T1")),
                     compileLayout(source),
                     hexImage({{0, QByteArray::fromHex("010203")}}, QStringLiteral("FW1"),
                              QStringLiteral("KX4-T1")),
                     false),
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
    std::unique_ptr<SettingManager> m_manager;
    std::unique_ptr<ManagerFiles> m_files;
};

QTEST_GUILESS_MAIN(TestSettingManagerValues)
#include "tst_settingmanager_values.moc"
