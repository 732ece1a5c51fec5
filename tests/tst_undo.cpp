// Undo and redo through the setting manager: grouping of an edit with the dependents it
// changes, exact byte restoration, discarding redo history, and edits that record nothing.

#include "support/LayoutFixtures.h"
#include "support/ManagerFixtures.h"
#include "support/TableFile.h"

#include "sf/ActionTracker.h"
#include "sf/Setting.h"
#include "sf/SettingManager.h"

#include <QSignalSpy>
#include <QtTest>

using namespace testsupport;
using sf::SettingManager;

namespace {

QByteArray bytesOf(const SettingManager& manager, const QString& codeName) {
    const sf::Setting* setting = manager.getSetting(codeName);
    return setting ? setting->getBytes() : QByteArray();
}

// Snapshot of every setting's bytes.
QMap<QString, QByteArray> snapshot(const SettingManager& manager) {
    QMap<QString, QByteArray> all;
    for (const sf::Setting* setting : manager.getSettings()) {
        all.insert(setting->getCodeName(), setting->getBytes());
    }
    return all;
}

} // namespace

class TestUndo : public QObject {
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

    void nothingToUndoOrRedo() {
        QVERIFY(!m_manager->canUndo());
        QVERIFY(!m_manager->canRedo());
        QVERIFY(!m_manager->getPreviousUndoAction());
        QSignalSpy modified(m_manager.get(), &SettingManager::settingModified);
        QVERIFY(!m_manager->undoAction());
        QVERIFY(!m_manager->redoAction());
        QCOMPARE(modified.count(), 0);

        QVERIFY(m_manager->setSettingData(9, QStringLiteral("Early")));
        QVERIFY(!m_manager->redoAction()); // at the end of the list
        QVERIFY(m_manager->undoAction());
        QVERIFY(!m_manager->undoAction()); // at the start
        QCOMPARE(m_manager->undoHistory().position(), -1);
        m_manager->clearUndoList(); // the redo history goes too
        QVERIFY(!m_manager->canRedo());
        QCOMPARE(m_manager->undoHistory().size(), 0);
    }

    void editRecords_data() { testsupport::loadTable(); }
    void editRecords() {
        QFETCH(QString, codeName);
        QFETCH(QVariant, value);
        QFETCH(int, subIndex);
        QFETCH(bool, accepted);
        QFETCH(QStringList, recorded);

        const QMap<QString, QByteArray> before = snapshot(*m_manager);
        QSignalSpy modified(m_manager.get(), &SettingManager::settingModified);
        QCOMPARE(m_manager->setSettingData(value, codeName, subIndex), accepted);

        const sf::UndoHistory& history = m_manager->undoHistory();
        QStringList names;
        for (int i = 0; i < history.size(); ++i) {
            const sf::ActionTracker* action = history.at(i);
            names << action->getSetting()->getCodeName();
            QCOMPARE(action->isChained(), i > 0);
            QVERIFY(action->changesBytes());
            QCOMPARE(action->getBefore(), before.value(names.last()));
            QCOMPARE(action->getAfter(), bytesOf(*m_manager, names.last()));
        }
        QCOMPARE(names, recorded);
        QCOMPARE(modified.count(), recorded.isEmpty() ? 0 : 1);
        QCOMPARE(m_manager->canUndo(), !recorded.isEmpty());
        if (!recorded.isEmpty()) {
            QCOMPARE(history.at(0)->getSubIndex(), subIndex);
        } else {
            QCOMPARE(snapshot(*m_manager), before); // nothing changed at all
        }
    }

    void imageValuesOutOfRange_data() { testsupport::loadTable(); }
    void imageValuesOutOfRange() {
        QFETCH(int, offset);
        QFETCH(QByteArray, value);
        QFETCH(int, cells);
        QFETCH(int, recorded);
        QByteArray bytes = standardImageBytes();
        bytes.replace(offset, value.size(), value);
        SettingManager manager;
        ManagerFiles files;
        QCOMPARE(
            loadStandard(manager, files,
                         hexImage({{0, bytes}}, QStringLiteral("FW1"), QStringLiteral("KX4-T1"))),
            0);
        const QMap<QString, QByteArray> before = snapshot(manager);
        QVERIFY(manager.setSettingData(cells, QStringLiteral("Cells1")));
        QCOMPARE(manager.undoHistory().size(), recorded);
        const QMap<QString, QByteArray> after = snapshot(manager);
        QVERIFY(manager.undoAction());
        QCOMPARE(snapshot(manager), before);
        QVERIFY(manager.redoAction());
        QCOMPARE(snapshot(manager), after);
        // The ranges follow the restored value all the same.
        QVERIFY(manager.undoAction());
        QCOMPARE(manager.getSettingData(QStringLiteral("Low1"), sf::RoleMaximum).toDouble(), 36.0);
    }

    void chainsOfDependentsAreFollowed() {
        // C's range follows B's value, B's follows A's: lowering A clamps B, which clamps C.
        const QString source =
            QStringLiteral("version \"KX4-T1\"\n"
                           "setting A 0 1 = num, WA, u8, 0`255, [], 0, \"A\", \"\"\n"
                           "setting B 1 1 = num, WB, u8, 0`A, [], 0, \"B\", \"\"\n"
                           "setting C 2 1 = num, WC, u8, 0`B, [], 0, \"C\", \"\"\n"
                           "setting D 3 1 = num, WD, u8, 0`A*2, [], 0, \"D\", \"\"\n");
        QMap<quint32, QByteArray> blocks;
        blocks.insert(0, QByteArray::fromHex("64503C14")); // A 100, B 80, C 60, D 20
        SettingManager manager;
        QCOMPARE(manager.loadRawSettingsData(
                     managerVersion(QStringLiteral("FW1"), QStringLiteral("KX4-T1")),
                     compileLayout(source),
                     hexImage(blocks, QStringLiteral("FW1"), QStringLiteral("KX4-T1")), false),
                 0);
        const QMap<QString, QByteArray> before = snapshot(manager);
        QVERIFY(manager.setSettingData(50, QStringLiteral("A")));
        QCOMPARE(manager.getSettingData(QStringLiteral("B"), sf::RoleEdit).toInt(), 50);
        QCOMPARE(manager.getSettingData(QStringLiteral("C"), sf::RoleEdit).toInt(), 50);
        QCOMPARE(manager.getSettingData(QStringLiteral("D"), sf::RoleEdit).toInt(), 20);
        QCOMPARE(manager.undoHistory().size(), 3); // A, B, C; D did not change
        QVERIFY(manager.undoAction());
        QCOMPARE(snapshot(manager), before);
    }

    // Random edits (numbers that clamp dependents, bits, boxes, list entries, values already
    // there), undos and redos against a model: the list of states the user went through and
    // where in it they are. Every undo and redo puts back exactly the state of the model, a
    // group at a time; an edit after undos discards the states ahead; an edit that changes
    // nothing records nothing.
    void randomEditsUndoAndRedoLikeAStackOfStates() {
        struct Edit {
            const char* name;
            int subIndex;
            int low;
            int high;
        };
        const Edit edits[] = {{"Cells1", -1, 8, 20}, {"Early", -1, 0, 3}, {"Screen", -1, 0, 2},
                              {"Flags", 1, 0, 1},    {"Boxes", 2, 0, 1},  {"Lim1", -1, 30, 50}};
        for (quint32 seed = 1; seed <= 40; ++seed) {
            init();
            QRandomGenerator random(seed);
            QList<QMap<QString, QByteArray>> states{snapshot(*m_manager)};
            QList<const sf::ActionTracker*> heads{nullptr}; // the edit that led to each state
            int at = 0;
            for (int step = 0; step < 30; ++step) {
                const int what = random.bounded(4);
                const QString where = QStringLiteral("seed %1, step %2").arg(seed).arg(step);
                QSignalSpy modified(m_manager.get(), &SettingManager::settingModified);
                if (what == 0) {
                    QCOMPARE(m_manager->undoAction() != nullptr, at > 0);
                    at = qMax(at - 1, 0);
                } else if (what == 1) {
                    QCOMPARE(m_manager->redoAction() != nullptr, at < states.size() - 1);
                    at = qMin(at + 1, int(states.size()) - 1);
                } else {
                    const Edit& e = edits[random.bounded(int(std::size(edits)))];
                    const int value = e.low + random.bounded(e.high - e.low + 1);
                    m_manager->setSettingData(value, QString::fromLatin1(e.name), e.subIndex);
                    const QMap<QString, QByteArray> now = snapshot(*m_manager);
                    if (now != states.at(at)) {
                        states = states.mid(0, at + 1) << now;
                        heads = heads.mid(0, at + 1) << m_manager->getPreviousUndoAction();
                        ++at;
                        QCOMPARE(heads.at(at)->getSetting()->getCodeName(), QString(e.name));
                        QVERIFY(!heads.at(at)->isChained());
                    }
                }
                QVERIFY2(snapshot(*m_manager) == states.at(at), qPrintable(where));
                QVERIFY2(modified.count() <= 1, qPrintable(where));
                QCOMPARE(m_manager->getPreviousUndoAction(), heads.at(at));
                QCOMPARE(m_manager->canUndo(), at > 0);
                QCOMPARE(m_manager->canRedo(), at < states.size() - 1);
            }
            cleanup();
        }
    }

private:
    std::unique_ptr<SettingManager> m_manager;
    std::unique_ptr<ManagerFiles> m_files;
};

QTEST_GUILESS_MAIN(TestUndo)
#include "tst_undo.moc"
