#include "sf/SettingsTableModel.h"

#include "sf/Category.h"
#include "sf/NumSetting.h"
#include "sf/Setting.h"
#include "sf/SettingAssignment.h"
#include "sf/SettingManager.h"
#include "sf/SettingText.h"

namespace sf {

const QColor SettingsTableModel::COLOUR_ENABLED = QColor(Qt::white);
const QColor SettingsTableModel::COLOUR_DISABLED = QColor(200, 200, 200);
const QColor SettingsTableModel::COLOUR_NONEXISTANT = QColor(185, 185, 185);
const QColor SettingsTableModel::COLOUR_HEADER = QColor(235, 235, 235);
const QColor SettingsTableModel::COLOUR_HEADER_DISABLED = QColor(170, 170, 170);
const QColor SettingsTableModel::COLOUR_HEADER_DISABLED_TEXT = QColor(Qt::white);
const QColor SettingsTableModel::COLOUR_DISABLED_PRESET = QColor(Qt::darkGray);
const QColor SettingsTableModel::COLOUR_HEADER_GRADIENT_EDGE = QColor(60, 60, 60);
const QColor SettingsTableModel::COLOUR_HEADER_GRADIENT_MID = QColor(110, 110, 110);
const QColor SettingsTableModel::COLOUR_CHANGED = QColor(20, 80, 200);
const QColor SettingsTableModel::COLOUR_OUT_OF_RANGE = QColor(200, 0, 0);

namespace {

using Flag = SettingManager::IndexFlag;

bool has(int flags, int bits) {
    return (flags & bits) == bits;
}

} // namespace

SettingsTableModel::SettingsTableModel(SettingManager* manager, QObject* parent)
    : QAbstractTableModel(parent), m_manager(manager) {
    m_headerFont.setPointSize(11);
    m_headerFont.setItalic(false);
    m_titleFont.setBold(true);
    m_changedFont.setBold(true);
    connect(manager, &SettingManager::settingAboutToBeExpanded, this,
            &SettingsTableModel::settingAboutToBeExpanded);
    connect(manager, &SettingManager::settingExpanded, this, &SettingsTableModel::settingExpanded);
    connect(manager, &SettingManager::rowsChanged, this, &SettingsTableModel::rowsChanged);
    connect(manager, &SettingManager::presetsChanged, this, &SettingsTableModel::refreshAll);
    connect(manager, &SettingManager::layoutReset, this, [this] {
        beginResetModel();
        endResetModel();
        emit sizeChanged();
        emit reloadAllEditors();
    });
}

int SettingsTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_manager->modelSize(this);
}

int SettingsTableModel::columnCount(const QModelIndex& parent) const {
    if (parent.isValid()) {
        return 0;
    }
    return m_manager->maxPresets();
}

QVariant SettingsTableModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return QVariant();
    }
    const int flags = m_manager->getIndexFlags(index);
    switch (role) {
    case Qt::DisplayRole:
        return m_manager->getSettingData(index, RoleDisplay);
    case Qt::EditRole:
        return m_manager->getSettingData(index, RoleEdit);
    case Qt::FontRole:
        return differsFromDefault(index) || !outOfRangeReason(index).isEmpty() ? m_changedFont
                                                                               : m_font;
    case Qt::ToolTipRole: {
        const QString reason = outOfRangeReason(index);
        return reason.isEmpty() ? QVariant() : QVariant(reason);
    }
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::Alignment(Qt::AlignLeft | Qt::AlignVCenter));
    case Qt::BackgroundRole:
        return !has(flags, Flag::FlagPresent)   ? COLOUR_NONEXISTANT
               : !has(flags, Flag::FlagEnabled) ? COLOUR_DISABLED
                                                : COLOUR_ENABLED;
    case Qt::ForegroundRole:
        if (has(flags, Flag::FlagPresent) && flags < Flag::FlagPresetEnabled) {
            return COLOUR_DISABLED_PRESET;
        }
        if (outOfRange(index)) {
            return COLOUR_OUT_OF_RANGE;
        }
        return differsFromDefault(index) ? QVariant(COLOUR_CHANGED) : QVariant();
    default:
        return QVariant();
    }
}

Qt::ItemFlags SettingsTableModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) {
        return Qt::NoItemFlags;
    }
    const int flags = m_manager->getIndexFlags(index);
    Qt::ItemFlags out = Qt::NoItemFlags;
    if (has(flags, Flag::FlagPresent | Flag::FlagEditable)) {
        out |= Qt::ItemIsEditable;
    }
    if (has(flags, Flag::FlagPresent | Flag::FlagEnabled)) {
        out |= Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    }
    return out;
}

bool SettingsTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::EditRole) {
        return false;
    }
    int subIndex = -1;
    const Setting* setting = m_manager->getSetting(index, &subIndex);
    if (setting && subIndex < 0 && setting->getType() == TypeNum) {
        return setText(index, value.toString());
    }
    return m_manager->setSettingData(value, index);
}

bool SettingsTableModel::setText(const QModelIndex& index, const QString& text) {
    SettingRef ref;
    ref.setting = index.isValid() ? m_manager->getSetting(index, &ref.subIndex) : nullptr;
    if (!ref.setting || !(flags(index) & Qt::ItemIsEditable)) {
        return false;
    }
    QString error;
    if (assignText(*m_manager, ref, text, &error) == AssignResult::Refused) {
        emit editRefused(error);
        return false;
    }
    return true;
}

QString SettingsTableModel::text(const QModelIndex& index) const {
    SettingRef ref;
    ref.setting = index.isValid() ? m_manager->getSetting(index, &ref.subIndex) : nullptr;
    return ref.setting ? valueText(*m_manager, ref) : QString();
}

bool SettingsTableModel::outOfRange(const QModelIndex& index) const {
    int subIndex = -1;
    const auto* num = qobject_cast<const NumSetting*>(m_manager->getSetting(index, &subIndex));
    return num && subIndex < 0 && !num->isWithinRange();
}

QString SettingsTableModel::outOfRangeReason(const QModelIndex& index) const {
    return outOfRange(index) ? sf::outOfRangeReason(*m_manager, m_manager->getSetting(index))
                             : QString();
}

QString SettingsTableModel::columnTitle(int column) const {
    const QList<Category*> categories = m_manager->mappedCategories(this);
    if (categories.isEmpty() || column >= categories.first()->numberOfPresets()) {
        return QString(); // a column this category has no preset for
    }
    const Category* category = categories.first();
    if (category->numberOfPresets() <= 1 || category->getPresetName().isEmpty()) {
        return column == 0 ? category->getName() : QString();
    }
    // The preset's mark ends its settings' code names: A, B or 1, 2, 3.
    for (const Setting* setting : category->getSettings()) {
        const QString& code = setting->getCodeName();
        const QChar mark = code.isEmpty() ? QChar() : code.back();
        if (setting->getPreset() == column &&
            (mark == QLatin1Char('A') || mark == QLatin1Char('B') || mark.isDigit())) {
            return category->getPresetName() + QLatin1Char(' ') + mark;
        }
    }
    return category->getPresetName() + QLatin1Char(' ') + QString::number(column + 1);
}

QVariant SettingsTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal) {
        switch (role) {
        case Qt::DisplayRole:
            return section >= 0 && section < columnCount() ? columnTitle(section) : QVariant();
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(Qt::Alignment(Qt::AlignCenter));
        case Qt::FontRole:
            return m_titleFont;
        default:
            return QVariant();
        }
    }
    if (section < 0 || section >= rowCount()) {
        return QVariant();
    }
    const QModelIndex first = index(section, 0);
    const int flags = m_manager->getIndexFlags(first);
    switch (role) {
    case Qt::DisplayRole:
        return m_manager->getSettingData(first, RoleName);
    case Qt::ToolTipRole:
        return m_manager->getSettingData(first, RoleToolTip);
    case Qt::BackgroundRole:
        return m_manager->isEnabled(first) ? COLOUR_HEADER : COLOUR_HEADER_DISABLED;
    case Qt::ForegroundRole:
        return m_manager->isEnabled(first) ? QVariant() : QVariant(COLOUR_HEADER_DISABLED_TEXT);
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter));
    case Qt::FontRole:
        return has(flags, Flag::FlagSubIndex | Flag::FlagExpandable) ? m_headerFont : m_font;
    default:
        return QVariant();
    }
}

void SettingsTableModel::setDefaults(const SettingManager* defaults) {
    m_defaults = defaults;
    refreshAll();
}

bool SettingsTableModel::differsFromDefault(const QModelIndex& index) const {
    const Setting* setting = m_defaults ? m_manager->getSetting(index) : nullptr;
    const Setting* standard = setting ? m_defaults->getSetting(setting->getCodeName()) : nullptr;
    return standard && standard->getBytes() != setting->getBytes();
}

bool SettingsTableModel::rowNeedsCheckBox(int row) const {
    const int flags = m_manager->getIndexFlags(index(row, 0));
    return !(flags & Flag::FlagSubIndex) && !(flags & Flag::FlagEnabledByDefault);
}

void SettingsTableModel::toggleRowEnabled(int row) {
    const bool enable = !m_manager->isEnabled(index(row, 0));
    for (int column = 0; column < columnCount(); ++column) {
        m_manager->setEnabled(index(row, column), enable);
    }
    emit dataChanged(index(row, 0), index(row, columnCount() - 1));
    emit headerDataChanged(Qt::Vertical, row, row);
}

void SettingsTableModel::setFontSize(int points) {
    for (QFont* font : {&m_font, &m_headerFont, &m_titleFont, &m_changedFont}) {
        font->setPointSize(points);
    }
    refreshAll();
    emit sizeChanged();
}

void SettingsTableModel::refreshAll() {
    if (rowCount() > 0 && columnCount() > 0) {
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
        emit headerDataChanged(Qt::Vertical, 0, rowCount() - 1);
    }
    emit headerDataChanged(Qt::Horizontal, 0, qMax(0, columnCount() - 1));
    emit updateEditorData();
    emit updateAllVisible();
}

void SettingsTableModel::rowsChanged(const QAbstractItemModel* model, int firstRow, int lastRow) {
    if (model != this || firstRow < 0 || lastRow < firstRow || columnCount() == 0) {
        return;
    }
    lastRow = qMin(lastRow, rowCount() - 1);
    const QModelIndex from = index(firstRow, 0);
    const QModelIndex to = index(lastRow, columnCount() - 1);
    emit dataChanged(from, to);
    emit headerDataChanged(Qt::Vertical, firstRow, lastRow);
    emit updateData(from, to);
    emit updateEditorData();
}

void SettingsTableModel::settingAboutToBeExpanded(const QAbstractItemModel* model, int row,
                                                  int oldSize, int newSize) {
    if (model != this || row < 0 || oldSize == newSize || row > rowCount()) {
        return;
    }
    if (newSize > oldSize) {
        beginInsertRows(QModelIndex(), row + oldSize, row + newSize - 1);
        m_pendingExpansion = 1;
    } else {
        beginRemoveRows(QModelIndex(), row + newSize, row + oldSize - 1);
        m_pendingExpansion = -1;
    }
}

void SettingsTableModel::settingExpanded(const QAbstractItemModel* model, int, int) {
    if (model != this || m_pendingExpansion == 0) {
        return;
    }
    if (m_pendingExpansion > 0) {
        endInsertRows();
    } else {
        endRemoveRows();
    }
    m_pendingExpansion = 0;
    emit sizeChanged();
    emit reloadAllEditors();
}

} // namespace sf
