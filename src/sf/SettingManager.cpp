// Setting manager: ownership, identity, lookups, values, enable state and sizes.

#include "sf/SettingManager.h"

#include "sf/ActionTracker.h"
#include "sf/Category.h"
#include "sf/CategoryIndex.h"
#include "sf/MultiSetting.h"
#include "sf/RawSetting.h"
#include "sf/Setting.h"
#include "sf/SettingFactory.h"
#include "sf/TableMapping.h"
#include "sf/WSISetting.h"
#include "sf/parser/Interpreter.h"
#include "util/VersionContainer.h"

namespace sf {

const QString SettingManager::CATEGORY_WSI_SUFFIX = QStringLiteral("@99999");
const QString SettingManager::UNCATEGORIZED_LABEL = QStringLiteral("UC");
const QString SettingManager::UNCATEGORIZED_TITLE = QStringLiteral("Uncategorized");

SettingManager::SettingManager(QObject* parent)
    : SettingHost(parent), m_factory(std::make_unique<SettingFactory>()),
      m_tables(std::make_unique<TableMapping>()) {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    qRegisterMetaType<const QAbstractItemModel*>();
#endif
}

SettingManager::~SettingManager() {
    clear();
}

void SettingManager::clear() {
    m_history.clear();
    m_tables->clear();
    m_presetValues.clear();
    // Categories first: their cells drop their references, but the manager still holds
    // one on every setting it owns, so no setting dies inside a category.
    const QVector<Category*> categories = m_categories;
    m_categories.clear();
    m_categoryByLabel.clear();
    m_lastCategory = {};
    for (Category* category : categories) {
        delete category;
    }
    const QVector<Setting*> settings = m_settings;
    m_settings.clear();
    m_byName.clear();
    m_byWsi.clear();
    m_wsiValid = false;
    for (Setting* setting : settings) {
        if (setting->dereference() < 1) {
            delete setting;
        }
    }
    qDeleteAll(m_rawSettings);
    m_rawSettings.clear();
    m_rawByName.clear();
    m_tooltips.clear();
    m_stringLists.clear();
    if (m_interpreter) {
        m_interpreter->close();
        m_interpreter.reset();
    }
}

bool SettingManager::addCategory(Category* category) {
    if (!category) {
        return false;
    }
    m_categories.append(category);
    if (!m_categoryByLabel.contains(category->getLabel())) {
        m_categoryByLabel.insert(category->getLabel(), category);
    }
    m_lastCategory = {};
    connect(category, &Category::settingAboutToBeExpanded, this,
            &SettingManager::resolveExpansionIndex);
    connect(category, &Category::settingExpanded, this, &SettingManager::expansionDone);
    connect(category, &Category::problem, this, &SettingHost::problem);
    invalidateWsiIndex();
    return true;
}

Category* SettingManager::uncategorized() {
    Category* category = getCategory(UNCATEGORIZED_LABEL);
    if (category) {
        return category;
    }
    category = new Category(UNCATEGORIZED_TITLE, UNCATEGORIZED_LABEL, QString(), true);
    category->setHiddenVisible(m_hiddenVisible);
    addCategory(category);
    // addCategory appended it; move it to its place in the list.
    m_categories.removeLast();
    const int at = qBound(0, UNCATEGORIZED_OFFSET, static_cast<int>(m_categories.size()));
    m_categories.insert(at, category);
    return category;
}

bool SettingManager::addSetting(Setting* setting) {
    if (!setting) {
        return false;
    }
    setting->addReference(); // the manager's own reference
    m_settings.append(setting);
    const qsizetype before = m_byName.size();
    Setting*& slot = m_byName[setting->getCodeName()];
    if (m_byName.size() != before) {
        slot = setting; // the first setting of a name is the one found by it
    }
    Category* category = categoryOf(setting);
    if (!category) {
        category = uncategorized();
    }
    category->appendSetting(setting);
    // The bits of a bit field that does not fold get a row each, below its own row.
    if (setting->isMulti() && !setting->isExpandable()) {
        if (auto* multi = qobject_cast<MultiSetting*>(setting)) {
            const int count = multi->subIndices();
            for (int subIndex = 0; subIndex < count; ++subIndex) {
                category->appendSetting(setting, subIndex);
            }
        }
    }
    invalidateWsiIndex();
    return true;
}

bool SettingManager::addRawSetting(RawSetting* raw) {
    if (!raw) {
        return false;
    }
    // One lookup: the slot is new exactly when the table grows.
    const qsizetype before = m_rawByName.size();
    RawSetting*& slot = m_rawByName[raw->getCodeName()];
    if (m_rawByName.size() == before) {
        delete raw; // a repeated code name: the first one stays
        return false;
    }
    slot = raw;
    m_rawSettings.append(raw);
    return true;
}

// ---- Identity ---------------------------------------------------------------------------

void SettingManager::setVersion(const util::VersionContainer& version) {
    m_fwVersion = version.fwVersion;
    m_kxsVersion = version.kxsVersion;
    m_enqString = version.enqString;
    m_kxsFormat = version.kxsFormat;
}

int SettingManager::processorTypeFor(const QString& layoutVersion, int current) {
    if (layoutVersion.contains(QLatin1String("KX4"))) {
        return 2;
    }
    if (layoutVersion.contains(QLatin1String("KX3"))) {
        return 1;
    }
    if (layoutVersion.contains(QLatin1String("Dravolin"))) {
        return 0;
    }
    return current;
}

QStringList SettingManager::getStringList(const QString& name, const QString& countName) {
    if (!m_interpreter || !m_interpreter->isOpen()) {
        return QStringList();
    }
    const QPair<QString, QString> key(name, countName);
    const auto it = m_stringLists.constFind(key);
    if (it != m_stringLists.constEnd()) {
        return it.value();
    }
    const QStringList list = m_interpreter->getStringList(name, countName);
    m_stringLists.insert(key, list);
    return list;
}

// ---- Lookup -----------------------------------------------------------------------------

Setting* SettingManager::getSetting(const QString& codeName) const {
    return m_byName.value(codeName, nullptr);
}

Setting* SettingManager::getSettingByWsi(const QString& wsi) const {
    if (wsi.isEmpty()) {
        return nullptr;
    }
    for (int attempt = 0; attempt < 2; ++attempt) {
        if (!m_wsiValid) {
            // The first category in order wins, and within it the first setting.
            m_byWsi.clear();
            for (const Category* category : m_categories) {
                for (Setting* setting : category->getSettings()) {
                    const auto* withWsi = qobject_cast<const WSISetting*>(setting);
                    if (withWsi && !withWsi->getWsi().isEmpty() &&
                        !m_byWsi.contains(withWsi->getWsi())) {
                        m_byWsi.insert(withWsi->getWsi(), setting);
                    }
                }
            }
            m_wsiValid = true;
        }
        Setting* found = m_byWsi.value(wsi, nullptr);
        if (!found) {
            return nullptr;
        }
        const auto* withWsi = qobject_cast<const WSISetting*>(found);
        if (withWsi && withWsi->getWsi() == wsi) {
            return found;
        }
        m_wsiValid = false; // a WSI changed since the index was built
    }
    return nullptr;
}

RawSetting* SettingManager::getRawSetting(const QString& codeName) const {
    return m_rawByName.value(codeName, nullptr);
}

QByteArray SettingManager::getRawSettingData(const QString& codeName) const {
    const RawSetting* raw = getRawSetting(codeName);
    return raw ? raw->bytes() : QByteArray();
}

bool SettingManager::setRawSettingData(const QString& codeName, const QByteArray& bytes) {
    RawSetting* raw = getRawSetting(codeName);
    if (!raw || bytes.size() != raw->getSizeBytes()) {
        return false;
    }
    raw->setData(bytes.constData());
    return true;
}

SettingType SettingManager::getSettingType(const QString& codeName) const {
    const Setting* setting = getSetting(codeName);
    return setting ? setting->getType() : TypeNone;
}

bool SettingManager::isMultiSetting(const QString& codeName) const {
    const Setting* setting = getSetting(codeName);
    return setting && setting->isMulti();
}

Category* SettingManager::getCategory(const QString& label) const {
    return m_categoryByLabel.value(label, nullptr);
}

Category* SettingManager::categoryOf(const Setting* setting) {
    // Settings arrive category by category: the previous answer is usually the answer.
    const QString& label = setting->getCategory();
    if (!m_lastCategory.category || m_lastCategory.label != label) {
        m_lastCategory = {label, getCategory(label)};
    }
    return m_lastCategory.category;
}

QString SettingManager::getCategoryTitle(const QString& label) const {
    return getCategoryTitle(getCategory(label));
}

QString SettingManager::getCategoryTitle(const Category* category) const {
    return category ? category->getName() : QString();
}

bool SettingManager::isCategoryEnabled(const QString& label) const {
    const Category* category = getCategory(label);
    return category && category->isEnabled();
}

QString SettingManager::getCategoryTooltip(const QString& label) const {
    return getTooltip(label + CATEGORY_WSI_SUFFIX);
}

Category* SettingManager::holderOf(const Setting* setting) const {
    if (!setting) {
        return nullptr;
    }
    // A setting lives in the category whose label it carries; look further only when a
    // caller placed it elsewhere by hand.
    Category* category = getCategory(setting->getCategory());
    if (category && category->contains(setting)) {
        return category;
    }
    for (Category* candidate : m_categories) {
        if (candidate->contains(setting)) {
            return candidate;
        }
    }
    return nullptr;
}

// ---- Values -----------------------------------------------------------------------------

bool SettingManager::expandedState(const Setting* setting) const {
    if (!setting || !setting->isExpandable()) {
        return false;
    }
    const Category* category = holderOf(setting);
    const CategoryIndex* cell = category ? category->findIndex(setting) : nullptr;
    return cell && cell->isExpanded();
}

QVariant SettingManager::answer(Setting* setting, DataRole role, int subIndex,
                                bool expanded) const {
    if (!setting) {
        return QVariant();
    }
    if (subIndex >= 0 && setting->isMulti()) {
        auto* multi = qobject_cast<MultiSetting*>(setting);
        return multi ? multi->getData(subIndex, role) : QVariant();
    }
    if (role == RoleDisplay && setting->isExpandable()) {
        role = expanded ? RoleExpandedDisplay : RoleFoldedDisplay;
    }
    return setting->getData(role);
}

QVariant SettingManager::getSettingData(const QString& codeName, DataRole role,
                                        int subIndex) const {
    Setting* setting = getSetting(codeName);
    return answer(setting, role, subIndex, expandedState(setting));
}

QVariant SettingManager::getSettingDataByWsi(const QString& wsi, DataRole role,
                                             int subIndex) const {
    Setting* setting = getSettingByWsi(wsi);
    return answer(setting, role, subIndex, expandedState(setting));
}

QVariant SettingManager::getSettingData(const QModelIndex& index, DataRole role) const {
    int row = -1;
    const Category* category = categoryIndex(index, &row);
    if (!category) {
        return QVariant();
    }
    int subIndex = -1;
    Setting* setting = category->getSettingAt(row, index.column(), &subIndex);
    return answer(setting, role, subIndex, category->isExpanded(row, index.column()));
}

bool SettingManager::setSettingData(const QVariant& value, const QString& codeName, int subIndex) {
    return setSettingDataHelper(getSetting(codeName), value, subIndex);
}

bool SettingManager::setSettingData(const QVariant& value, const QModelIndex& index) {
    int subIndex = -1;
    Setting* setting = getSetting(index, &subIndex);
    return setSettingDataHelper(setting, value, subIndex);
}

bool SettingManager::setSettingDataByWsi(const QVariant& value, const QString& wsi, int subIndex) {
    return setSettingDataHelper(getSettingByWsi(wsi), value, subIndex);
}

// ---- Enable state -----------------------------------------------------------------------

bool SettingManager::isEnabled(const QString& codeName) const {
    const Setting* setting = getSetting(codeName);
    return setting && setting->isEnabled();
}

bool SettingManager::isEnabled(const QModelIndex& index) const {
    const Setting* setting = getSetting(index);
    return setting && setting->isEnabled();
}

bool SettingManager::isEnabledByDefault(const QString& codeName) const {
    const Setting* setting = getSetting(codeName);
    return setting && setting->isEnabledByDefault();
}

bool SettingManager::isEnabledByDefault(const QModelIndex& index) const {
    const Setting* setting = getSetting(index);
    return setting && setting->isEnabledByDefault();
}

bool SettingManager::setEnabled(const QString& codeName, bool enabled) {
    return setEnabled(getSetting(codeName), enabled);
}

bool SettingManager::setEnabled(const QModelIndex& index, bool enabled) {
    return setEnabled(getSetting(index), enabled);
}

bool SettingManager::setEnabled(Setting* setting, bool enabled) {
    if (!setting) {
        return false;
    }
    if (setting->isEnabled() != enabled) {
        setting->setEnabled(enabled);
        reportRows({setting});
        emit settingModified();
    }
    return true;
}

// ---- Sizes ------------------------------------------------------------------------------

int SettingManager::maxPresets() const {
    int most = 0;
    for (const Category* category : m_categories) {
        most = qMax(most, category->numberOfPresets());
    }
    return most;
}

int SettingManager::totalSize() const {
    int total = 0;
    for (const Category* category : m_categories) {
        total += category->getSize();
    }
    return total;
}

void SettingManager::setHiddenVisible(bool visible) {
    m_hiddenVisible = visible;
    for (Category* category : m_categories) {
        category->setHiddenVisible(visible);
    }
    emit layoutReset();
}

// ---- Nominal cell voltages --------------------------------------------------------------

const QVector<QPair<QString, double>>& SettingManager::getNominalCellVoltages() {
    static const QVector<QPair<QString, double>> table = {
        {QStringLiteral("LiMn"), 3.7},  {QStringLiteral("RCLiPo"), 3.7},
        {QStringLiteral("RCLiP"), 3.7}, {QStringLiteral("Li-ion"), 3.7},
        {QStringLiteral("LiPo"), 3.6},  {QStringLiteral("LiFe"), 3.2},
        {QStringLiteral("SLA"), 2.0},   {QStringLiteral("NiMH"), 1.2}};
    return table;
}

double SettingManager::nominalCellVoltage(const QString& chemistry) {
    for (const auto& entry : getNominalCellVoltages()) {
        if (entry.first == chemistry) {
            return entry.second;
        }
    }
    return 0.0;
}

} // namespace sf
