// Setting manager: the edit path, undo and redo, dependents and presets.

#include "sf/SettingManager.h"

#include "sf/ActionTracker.h"
#include "sf/Category.h"
#include "sf/CategoryIndex.h"
#include "sf/MultiSetting.h"
#include "sf/Setting.h"
#include "sf/TableMapping.h"

#include <QMap>

namespace sf {

bool SettingManager::setSettingDataHelper(Setting* setting, const QVariant& value, int subIndex) {
    if (!setting || !setting->isInitialized()) {
        return false;
    }
    std::unique_ptr<ActionTracker> tracker = prepTracker(setting);
    bool accepted = false;
    if (setting->isMulti()) {
        auto* multi = qobject_cast<MultiSetting*>(setting);
        if (!multi) {
            emit problem(
                QStringLiteral("Internal error: isMulti() flag is set, but cast to MultiSetting "
                               "fails - ") +
                setting->getCodeName());
            return false;
        }
        if (subIndex >= 0) {
            tracker->setSubIndex(subIndex);
            accepted = multi->setData(subIndex, value);
        } else {
            accepted = multi->setData(value);
        }
    } else {
        accepted = setting->setData(value);
    }
    if (accepted && setting->getBytes() != tracker->getBefore()) {
        completeTracker(std::move(tracker), setting);
    }
    return accepted;
}

std::unique_ptr<ActionTracker> SettingManager::prepTracker(Setting* setting) const {
    if (!setting) {
        return nullptr;
    }
    return std::make_unique<ActionTracker>(setting, -1, setting->getBytes(), false);
}

void SettingManager::completeTracker(std::unique_ptr<ActionTracker> tracker, Setting* setting) {
    if (!tracker || !setting) {
        return;
    }
    tracker->setAfter(setting->getBytes());
    addUndoAction(std::move(tracker));
    reportRows({setting});
    emit settingModified();
    notifyChanges(setting->getType(), setting->getDependents(), true);
    updatePresets();
}

void SettingManager::addUndoAction(std::unique_ptr<ActionTracker> tracker) {
    m_history.add(std::move(tracker));
}

const ActionTracker* SettingManager::undoAction() {
    int first = -1;
    int last = -1;
    if (!m_history.stepBack(&first, &last)) {
        return nullptr;
    }
    applyGroup(true, first, last);
    emit settingModified();
    return m_history.at(first);
}

const ActionTracker* SettingManager::redoAction() {
    int first = -1;
    int last = -1;
    if (!m_history.stepForward(&first, &last)) {
        return nullptr;
    }
    applyGroup(false, first, last);
    emit settingModified();
    return m_history.at(first);
}

// Puts the bytes of a group back (undo: the before bytes, last action first; redo: the
// after bytes, head first), then re-evaluates the group's settings and their dependents
// without recording, so ranges and other derived state follow the restored values.
// Undo and redo change exactly the bytes the group recorded: re-evaluation could move a
// restored value (one the image held outside its range) or a dependent that the edit did
// not change, so afterwards the group's bytes are written once more and every other
// setting keeps the bytes it had.
void SettingManager::applyGroup(bool undo, int first, int last) {
    QList<Setting*> touched;
    const auto write = [&](int index) {
        const ActionTracker* action = m_history.at(index);
        Setting* setting = action->getSetting();
        setting->writeRawData((undo ? action->getBefore() : action->getAfter()).constData());
        if (!touched.contains(setting)) {
            touched.append(setting);
        }
    };
    const auto writeAll = [&]() {
        if (undo) {
            for (int i = last; i >= first; --i) {
                write(i);
            }
        } else {
            for (int i = first; i <= last; ++i) {
                write(i);
            }
        }
    };
    writeAll();
    QSet<Setting*> visited;
    QList<QPair<Setting*, QByteArray>> moved;
    for (Setting* setting : std::as_const(touched)) {
        updateSetting(setting, setting->getType());
        notifyRecursive(setting->getType(), setting->getDependents(), false, visited, moved);
    }
    writeAll();
    // Earliest bytes first win: restore in reverse order of change.
    for (int i = moved.size() - 1; i >= 0; --i) {
        if (!touched.contains(moved.at(i).first)) {
            moved.at(i).first->writeRawData(moved.at(i).second.constData());
        }
    }
    reportRows(touched);
    updatePresets();
}

bool SettingManager::updateSetting(Setting* setting, SettingType changedType) {
    return setting && setting->update(changedType);
}

void SettingManager::notifyChanges(SettingType type, const QList<Setting*>& settings, bool record) {
    QSet<Setting*> visited;
    QList<QPair<Setting*, QByteArray>> changed;
    notifyRecursive(type, settings, record, visited, changed);
    QList<Setting*> rows;
    for (const auto& entry : std::as_const(changed)) {
        rows.append(entry.first);
    }
    reportRows(rows);
}

void SettingManager::notifyRecursive(SettingType type, const QList<Setting*>& settings, bool record,
                                     QSet<Setting*>& visited,
                                     QList<QPair<Setting*, QByteArray>>& changed) {
    for (Setting* dependent : settings) {
        if (!dependent || visited.contains(dependent)) {
            continue;
        }
        visited.insert(dependent);
        const QByteArray before = dependent->getBytes();
        updateSetting(dependent, type);
        const QByteArray after = dependent->getBytes();
        if (before == after) {
            continue;
        }
        changed.append(qMakePair(dependent, before));
        if (record) {
            auto action = std::make_unique<ActionTracker>(dependent, -1, before, true);
            action->setAfter(after);
            addUndoAction(std::move(action));
        }
        // A dependent whose value moved changes what its own dependents see.
        notifyRecursive(dependent->getType(), dependent->getDependents(), record, visited, changed);
    }
}

// Tells every model showing the settings which of its rows changed: one signal per
// model, from the first to the last changed row.
void SettingManager::reportRows(const QList<Setting*>& settings) {
    if (settings.isEmpty()) {
        return;
    }
    QMap<const QAbstractItemModel*, QPair<int, int>> spans;
    for (const Setting* setting : settings) {
        const Category* category = holderOf(setting);
        if (!category) {
            continue;
        }
        const QList<const QAbstractItemModel*> models = m_tables->models(category);
        if (models.isEmpty()) {
            continue;
        }
        const CategoryPosition position = category->indexOf(setting);
        if (!position.isValid()) {
            continue;
        }
        // A setting changes every row it occupies: an unfolded group its cell's rows, a
        // bit field its own row and the rows of its bits below.
        const CategoryIndex* cell = category->findIndex(setting);
        int height = cell ? cell->getSize() : 1;
        if (setting->isMulti() && !setting->isExpandable()) {
            if (auto* multi = qobject_cast<MultiSetting*>(const_cast<Setting*>(setting))) {
                height += multi->subIndices();
            }
        }
        for (const QAbstractItemModel* model : models) {
            const int offset = m_tables->offset(model, category);
            if (offset < 0) {
                continue;
            }
            const int row = offset + position.row;
            const int end = row + height - 1;
            auto it = spans.find(model);
            if (it == spans.end()) {
                spans.insert(model, qMakePair(row, end));
            } else {
                it.value().first = qMin(it.value().first, row);
                it.value().second = qMax(it.value().second, end);
            }
        }
    }
    for (auto it = spans.constBegin(); it != spans.constEnd(); ++it) {
        emit rowsChanged(it.key(), it.value().first, it.value().second);
    }
}

// ---- Presets ----------------------------------------------------------------------------

int SettingManager::setPresetsByName(Setting* counter) {
    if (!counter) {
        return 0;
    }
    const QString name = counter->getCodeName();
    const QString base = counter->getBaseCodeName();
    int count = 0;
    for (Category* category : std::as_const(m_categories)) {
        const QString& presetName = category->getPresetName();
        if (!presetName.isEmpty() && (presetName == name || presetName == base)) {
            category->setPresetCount(counter);
            ++count;
        }
    }
    if (count > 0) {
        counter->setPresetCounter(true);
    }
    return count;
}

void SettingManager::updatePresets() {
    bool changed = false;
    for (const Category* category : std::as_const(m_categories)) {
        Setting* counter = category->getPresetCount();
        if (!counter) {
            continue;
        }
        const int value = counter->getData(RoleRaw).toInt();
        const auto it = m_presetValues.find(category);
        if (it == m_presetValues.end()) {
            m_presetValues.insert(category, value);
        } else if (it.value() != value) {
            it.value() = value;
            changed = true;
        }
    }
    if (changed) {
        emit presetsChanged();
    }
}

} // namespace sf
