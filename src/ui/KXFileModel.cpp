#include "ui/KXFileModel.h"

#include "sf/ActionTracker.h"
#include "sf/Category.h"
#include "sf/Setting.h"
#include "sf/SettingManager.h"
#include "sf/SettingsTableModel.h"
#include "sf/SetupFile.h"
#include "util/VersionContainer.h"

namespace ui {

KXFileModel::KXFileModel(const QString& status, QObject* parent)
    : FileModel(status, parent), m_file(std::make_unique<sf::SetupFile>()) {
    connect(manager(), &sf::SettingManager::settingModified, this, &KXFileModel::onSettingModified);
    connect(manager(), &sf::SettingManager::problem, this, &KXFileModel::problem);
}

KXFileModel::~KXFileModel() {
    m_tables.clear(); // the tables go before the manager they show
}

sf::SettingManager* KXFileModel::manager() const {
    return &m_file->manager();
}

bool KXFileModel::open(const QString& path, const util::VersionContainer& version) {
    const int result = m_file->open(path, version);
    if (result < 0) {
        emit problem(QStringLiteral("Error occurred loading raw settings "));
    }
    if (result != 0) {
        if (manager()->totalSize() < 1) {
            emit problem(QStringLiteral("Less data found than expected in settings! "));
        }
        emit settingsLoadError(result);
    }
    if (!version.mapFilePath.isEmpty()) {
        m_defaults = std::make_unique<sf::SetupFile>();
        if (m_defaults->open(version.mapFilePath, version) < 0) {
            m_defaults.reset();
        }
    }
    while (sf::Category* category = manager()->getFirstUnmappedCategory()) {
        auto table = std::make_unique<sf::SettingsTableModel>(manager());
        table->setDefaults(defaults());
        manager()->mapCategory(table.get(), category);
        m_titles << manager()->getCategoryTitle(category);
        m_tables.push_back(std::move(table));
    }
    return result >= 0;
}

bool KXFileModel::getUndoEnabled() const {
    return manager()->canUndo();
}

bool KXFileModel::getRedoEnabled() const {
    return manager()->canRedo();
}

bool KXFileModel::save(const QString& path, bool a, bool b) {
    QString error;
    const bool saved = m_file->saveTo(path, &error, a, b);
    if (!saved) {
        emit problem(error);
    }
    return saved;
}

bool KXFileModel::appendToFile(const QString& path, bool a, bool b) {
    return manager()->appendRawSettings(path, a, b, 0, 0xFFFFFFFF);
}

void KXFileModel::setShowProtected(bool show) {
    if (show == m_showProtected) {
        return;
    }
    manager()->setHiddenVisible(show);
    m_showProtected = show;
    emit showProtectedChanged(show);
}

void KXFileModel::jumpTo(const sf::Setting* changed) {
    if (changed) {
        for (const auto& table : m_tables) {
            const QModelIndex index = manager()->modelIndex(table.get(), changed);
            if (index.isValid()) {
                emit jumpToIndex(index);
            }
        }
    }
    emit undoEnabledChanged(getUndoEnabled());
    emit redoEnabledChanged(getRedoEnabled());
}

void KXFileModel::undoAction() {
    const sf::ActionTracker* head = manager()->undoAction();
    jumpTo(head ? head->getSetting() : nullptr);
}

void KXFileModel::redoAction() {
    const sf::ActionTracker* head = manager()->redoAction();
    jumpTo(head ? head->getSetting() : nullptr);
}

const sf::SettingManager* KXFileModel::defaults() const {
    return m_defaults ? &m_defaults->manager() : nullptr;
}

bool KXFileModel::resetToDefault(const QModelIndex& index) {
    sf::Setting* setting = manager()->getSetting(index);
    const sf::Setting* standard =
        setting && defaults() ? defaults()->getSetting(setting->getCodeName()) : nullptr;
    if (!standard || standard->getBytes() == setting->getBytes()) {
        return false;
    }
    const QByteArray bytes = standard->getBytes();
    auto tracker = manager()->prepTracker(setting);
    setting->writeRawData(bytes.constData());
    manager()->completeTracker(std::move(tracker), setting);
    for (const auto& table : m_tables) {
        table->refreshAll();
    }
    return true;
}

QString KXFileModel::getFWVersion() const {
    return manager()->getFwVersion();
}

void KXFileModel::onSettingModified() {
    setModified(true);
    emit settingModified();
    emit undoEnabledChanged(getUndoEnabled());
    emit redoEnabledChanged(getRedoEnabled());
}

} // namespace ui
