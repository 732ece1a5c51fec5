// Edits through the setting manager. Undo and redo: grouping of an edit with the
// dependents it changes, exact byte restoration, discarding redo history, and edits that
// record nothing. Writing values back: copying settings into raw settings, writing and
// merging setup images, and copying raw settings between setup files.
#include "sf/ActionTracker.h"
#include "sf/RawSetting.h"
#include "sf/Setting.h"
#include "sf/SettingManager.h"
#include "sf/parser/HexParser.h"
#include "support/LayoutFixtures.h"
#include "support/ManagerFixtures.h"
#include "support/TableFile.h"

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

// The first `count` bytes of a setup image from address 0; empty when unreadable.
QByteArray imageBytes(const QByteArray& text, int count) {
    sf::parser::HexParser image;
    if (!image.loadHexData(text, sf::parser::PhantomNone)) {
        return QByteArray();
    }
    return image.readData(0, static_cast<quint32>(count)).value_or(QByteArray());
}

// Addresses at which two byte arrays differ.
QList<int> differences(const QByteArray& a, const QByteArray& b) {
    QList<int> at;
    for (int i = 0; i < qMax(a.size(), b.size()); ++i) {
        if (i >= a.size() || i >= b.size() || a.at(i) != b.at(i)) {
            at << i;
        }
    }
    return at;
}

// Layout for the counting rules: a plain number, a hidden one, a disabled one, one whose
// raw size (3) differs from its setting's (2), one whose kind fails, and a hidden one
// whose sizes differ.
QString countingLayout() {
    return QStringLiteral("version \"KX4-T1\"\n"
                          "setting Plain 0 1 = num, W1, u8, 0`255, [], 0, \"P\", \"\"\n"
                          "setting Hidden 1 1 = num, W2, u8, 0`255, [], 0, \"H\", \"\", HID\n"
                          "setting Off 2 1 = num, W3, u8, 0`255, [], 0, \"O\", \"\", DIS\n"
                          "setting Odd 3 3 = num, W4, u16, 0`60000, [], 0, \"D\", \"\"\n"
                          "setting Broken 6 1 = num, W5, q8, 0`1, []\n"
                          "setting HiddenOdd 7 2 = num, W6, u8, 0`255, [], 0, \"HO\", \"\", HID\n");
}

} // namespace

class TestSettingManagerEdits : public QObject {
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
        QCOMPARE(loadStandard(manager, files, hexImage({{0, bytes}}, FW, KXS)), 0);
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
        QCOMPARE(manager.loadRawSettingsData(managerVersion(FW, KXS), compileLayout(source),
                                             hexImage(blocks, FW, KXS), false),
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

    void copyCounts_data() { testsupport::loadTable(); }

    void copyCounts() {
        QFETCH(QString, prepare);
        QFETCH(bool, onlyEnabled);
        QFETCH(int, count);

        SettingManager manager;
        QCOMPARE(manager.loadRawSettingsData(
                     managerVersion(FW, KXS), compileLayout(countingLayout()),
                     hexImage({{0, QByteArray::fromHex("0102030405060708AA")}}, FW, KXS), false),
                 1); // Broken fails to build
        if (!prepare.isEmpty()) {
            const QStringList words = prepare.split(QLatin1Char(' '));
            QVERIFY(manager.setEnabled(words.at(1), words.at(0) == QLatin1String("enable")));
        }
        QCOMPARE(manager.copyDataToRawSettings(onlyEnabled), count);
        QVERIFY(manager.getRawSetting(QStringLiteral("Hidden"))->isEnabled());
        QVERIFY(manager.getRawSetting(QStringLiteral("HiddenOdd"))->isEnabled());
        QVERIFY(!manager.getRawSetting(QStringLiteral("Broken"))->isEnabled());
    }

    void copyMovesBytesAndEnableState() {
        SettingManager manager;
        QCOMPARE(manager.loadRawSettingsData(
                     managerVersion(FW, KXS), compileLayout(countingLayout()),
                     hexImage({{0, QByteArray::fromHex("0102030405060708AA")}}, FW, KXS), false),
                 1);
        QVERIFY(manager.setSettingData(9, QStringLiteral("Plain")));
        QVERIFY(manager.setSettingData(9, QStringLiteral("Off")));
        QVERIFY(manager.setSettingData(9, QStringLiteral("Hidden")));
        QVERIFY(manager.setSettingData(9, QStringLiteral("Odd")));
        QVERIFY(manager.setSettingData(9, QStringLiteral("HiddenOdd")));

        manager.copyDataToRawSettings(true);
        QCOMPARE(manager.getRawSettingData(QStringLiteral("Plain")), QByteArray::fromHex("09"));
        QCOMPARE(manager.getRawSettingData(QStringLiteral("Off")), QByteArray::fromHex("03"));
        QCOMPARE(manager.getRawSettingData(QStringLiteral("Hidden")), QByteArray::fromHex("09"));
        QCOMPARE(manager.getRawSettingData(QStringLiteral("Odd")), QByteArray::fromHex("040506"));
        QCOMPARE(manager.getRawSettingData(QStringLiteral("HiddenOdd")),
                 QByteArray::fromHex("08AA"));

        manager.copyDataToRawSettings(false);
        QCOMPARE(manager.getRawSettingData(QStringLiteral("Off")), QByteArray::fromHex("09"));
        QCOMPARE(manager.getRawSettingData(QStringLiteral("Odd")), QByteArray::fromHex("040506"));

        QVERIFY(manager.setEnabled(QStringLiteral("Plain"), false));
        manager.copyDataToRawSettings(false);
        QVERIFY(!manager.getRawSetting(QStringLiteral("Plain"))->isEnabled());
    }

    void roundTrip_data() { testsupport::loadTable(); }

    void roundTrip() {
        QFETCH(bool, replace);
        QFETCH(bool, reformat);

        const QString path = m_files->path(QStringLiteral("setup.hex"));
        const QByteArray before = imageBytes(ManagerFiles::read(path), 16);
        QCOMPARE(before, standardImageBytes());

        QVERIFY(m_manager->setSettingData(10, QStringLiteral("Cells1"))); // clamps Lim1 and Low1
        QVERIFY(m_manager->setSettingData(2, QStringLiteral("Screen")));
        QVERIFY(m_manager->setSettingData(true, QStringLiteral("Flags"), 1));
        QVERIFY(m_manager->writeAppendRawSettings(path, reformat, true, replace, 0, 0xFFFFFFFFu));

        const QByteArray text = ManagerFiles::read(path);
        // With replace only the enabled settings' records remain: Dis (0x0D, disabled) and
        // the two bytes after it are gone.
        const QByteArray after = imageBytes(text, replace ? 13 : 16);
        QVERIFY(!after.isEmpty());
        if (replace) {
            QVERIFY(imageBytes(text, 14).isEmpty());
        }
        // Changed exactly at the bytes that differ: Cells1 (2), the low bytes of Lim1 (480 to
        // 420) and Low1 (350 to 300), Flags' last byte (bit 1) and Screen (0x0B).
        QCOMPARE(differences(before.left(after.size()), after), (QList<int>{2, 5, 7, 9, 11}));

        SettingManager reloaded;
        QCOMPARE(reloaded.loadRawSettingsData(managerVersion(FW, KXS),
                                              compileLayout(standardLayoutSource()), text, false),
                 replace ? 1 : 0); // replaced: the disabled Dis is no longer in the image
        for (const sf::Setting* setting : m_manager->getSettings()) {
            if (replace && setting->getCodeName() == QLatin1String("Dis")) {
                continue;
            }
            QCOMPARE(reloaded.getSetting(setting->getCodeName())->getBytes(), setting->getBytes());
        }
        QCOMPARE(sf::parser::HexParser::getFwVersion(path), FW);
        QCOMPARE(sf::parser::HexParser::getKxsVersion(path), KXS);
        QCOMPARE(sf::parser::HexParser::getEnqString(path), QStringLiteral("ENQ FW1"));
    }

    void writeRange() {
        const QString path = m_files->path(QStringLiteral("setup.hex"));
        QVERIFY(m_manager->setSettingData(30.0, QStringLiteral("Lim1")));
        QVERIFY(m_manager->setSettingData(3, QStringLiteral("Early")));
        // Only Lim1 and Low1 lie in [4, 8): with replace they are all the file keeps.
        QVERIFY(m_manager->writeAppendRawSettings(path, false, true, true, 4, 8));
        const QByteArray text = ManagerFiles::read(path);
        sf::parser::HexParser image;
        QVERIFY(image.loadHexData(text, sf::parser::PhantomNone));
        QCOMPARE(image.readData(4, 4).value_or(QByteArray()), QByteArray::fromHex("012C015E"));
        QVERIFY(!image.readData(0, 1).has_value());
    }

    void writeFailures() {
        QVERIFY(!m_manager->writeAppendRawSettings(QString(), false, true, true, 0, 0xFFFFFFFFu));
        QVERIFY(!m_manager->writeAppendRawSettings(m_files->path(QStringLiteral("missing.hex")),
                                                   false, true, true, 0, 0xFFFFFFFFu));
        QVERIFY(!QFile::exists(m_files->path(QStringLiteral("missing.hex"))));
        const QString junk = m_files->write(QStringLiteral("junk.hex"), "not a hex file");
        QVERIFY(!m_manager->appendRawSettings(junk, false, true, 0, 0xFFFFFFFFu));
        QCOMPARE(ManagerFiles::read(junk), QByteArray("not a hex file"));

        // Nothing to write: the file stays as it was.
        SettingManager empty;
        const QString path = m_files->path(QStringLiteral("setup.hex"));
        const QByteArray original = ManagerFiles::read(path);
        QVERIFY(!empty.writeAppendRawSettings(path, false, true, true, 0, 0xFFFFFFFFu));
        QCOMPARE(ManagerFiles::read(path), original);
        QByteArray text = original;
        QVERIFY(!empty.writeAppendRawSettingsData(&text, false, true, true, 0, 0xFFFFFFFFu));
        QVERIFY(!m_manager->writeAppendRawSettingsData(nullptr, false, true, true, 0, 0xFFFFFFFFu));
    }

    void memoryWriteMatchesFileWrite() {
        QVERIFY(m_manager->setSettingData(20, QStringLiteral("Cells2")));
        const QString path = m_files->path(QStringLiteral("setup.hex"));
        QByteArray text = ManagerFiles::read(path);
        QVERIFY(m_manager->writeAppendRawSettingsData(&text, false, true, false, 0, 0xFFFFFFFFu));
        QVERIFY(m_manager->appendRawSettings(path, false, true, 0, 0xFFFFFFFFu));
        QCOMPARE(text, ManagerFiles::read(path));
        QCOMPARE(imageBytes(text, 16).at(3), char(20));
        QCOMPARE(imageBytes(text, 16).right(2), QByteArray::fromHex("EEEF")); // merged, kept
    }

    void appendFromAnotherSetupFile() {
        const QString destination = m_files->path(QStringLiteral("setup.hex"));

        // The source holds other values for the settings up to Screen (0x0B); it lacks the
        // bytes of Hid and Dis.
        QByteArray other = QByteArray::fromHex("1102030405060708090A0B0C");
        const QString source =
            m_files->write(QStringLiteral("source.hex"),
                           hexImage({{0, other}}, QStringLiteral("FW9"), QStringLiteral("KX4-T9")));
        QCOMPARE(m_manager->appendRawSettingsFromHexFile(source, destination, false), 9);

        const QByteArray text = ManagerFiles::read(destination);
        QCOMPARE(imageBytes(text, 16), other + QByteArray::fromHex("1122EEEF"));
        QCOMPARE(sf::parser::HexParser::getFwVersion(destination), FW); // destination's own
        // The manager's values are untouched.
        QCOMPARE(m_manager->getSettingData(QStringLiteral("Early"), sf::RoleEdit).toInt(), 7);

        // Only enabled settings: a disabled one is not copied even when the source has it.
        QVERIFY(m_manager->setEnabled(QStringLiteral("Early"), false));
        m_manager->copyDataToRawSettings(false);
        QCOMPARE(m_manager->appendRawSettingsFromHexFile(source, destination, true), 8);
        QCOMPARE(m_manager->appendRawSettingsFromHexFile(m_files->path(QStringLiteral("none.hex")),
                                                         destination, false),
                 -1);
        QCOMPARE(m_manager->appendRawSettingsFromHexFile(
                     source, m_files->path(QStringLiteral("none.hex")), false),
                 -1);
    }

private:
    std::unique_ptr<SettingManager> m_manager;
    std::unique_ptr<ManagerFiles> m_files;
};

QTEST_GUILESS_MAIN(TestSettingManagerEdits)
#include "tst_settingmanager_edits.moc"
