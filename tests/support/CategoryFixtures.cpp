#include "support/CategoryFixtures.h"

#include "sf/Category.h"
#include "sf/CategoryIndex.h"

#include <algorithm>
#include <memory>

namespace testsupport {

namespace {

std::unique_ptr<sf::parser::TokenList> noTokens() {
    return std::make_unique<sf::parser::TokenList>();
}

// Rows a cell asks for: a whole foldable group asks for its folded or unfolded size.
int wantedRows(const sf::CategoryIndex* cell) {
    auto* group = dynamic_cast<sf::ExpandableSetting*>(cell->getContent());
    if (!group || cell->getForcedSubIndex() >= 0 || !group->isExpandable())
        return 1;
    const int rows = cell->isExpanded() ? group->expandedSize() : group->unexpandedSize();
    return std::max(1, rows);
}

bool rowShown(const sf::Category& category, const sf::CategoryIndex* head) {
    if (category.hiddenVisible())
        return true;
    bool anySetting = false;
    for (const sf::CategoryIndex* cell = head; cell; cell = cell->getRight()) {
        if (cell->isFiller())
            continue;
        anySetting = true;
        if (!cell->getContent()->isHidden())
            return true;
    }
    return !anySetting;
}

QString at(int row, int column) {
    return QStringLiteral(" at literal row %1, column %2").arg(row).arg(column);
}

} // namespace

PlainSetting::PlainSetting(const QString& codeName, sf::SettingHost* host, bool hidden)
    : sf::Setting(codeName, noTokens(), host) {
    setHidden(hidden);
}

void PlainSetting::setRawByte(quint8 value) {
    setSizeBits(8);
    setSizeBytes(1);
    if (!getRawData())
        initializeDataPointer();
    const char byte = static_cast<char>(value);
    writeRawData(&byte);
}

GroupSetting::GroupSetting(const QString& codeName, sf::SettingHost* host, int expandedRows,
                           int foldedRows, bool hidden)
    : sf::ExpandableSetting(codeName, noTokens(), host), m_expandedRows(expandedRows),
      m_foldedRows(foldedRows) {
    setHidden(hidden);
}

WsiSetting::WsiSetting(const QString& codeName, const QString& wsi, sf::SettingHost* host)
    : sf::WSISetting(codeName, noTokens(), host) {
    setWsi(wsi);
}

QString layoutFault(const sf::Category& category) {
    const int columns = category.numberOfPresets();
    const int rows = category.getLiteralSize();

    // Columns: linked both ways, one cell per literal row, ending in getLast.
    for (int column = 0; column < columns; ++column) {
        const sf::CategoryIndex* cell = category.getAtLiteral(0, column);
        const sf::CategoryIndex* previous = nullptr;
        int count = 0;
        for (; cell && count <= rows; cell = cell->getNext(), ++count) {
            if (cell->getPrevious() != previous)
                return QStringLiteral("previous link broken") + at(count, column);
            previous = cell;
        }
        if (count != rows)
            return QStringLiteral("column %1 holds %2 cells for %3 rows")
                .arg(column)
                .arg(count)
                .arg(rows);
        if (category.getLast(column) != previous)
            return QStringLiteral("getLast(%1) is not the column's last cell").arg(column);
    }

    int virtualRow = 0;
    for (int row = 0; row < rows; ++row) {
        const sf::CategoryIndex* head = category.getAtLiteral(row, 0);
        if (!head || head->getLeft())
            return QStringLiteral("no row head") + at(row, 0);
        int size = 1;
        QString key;
        bool haveKey = false;
        for (int column = 0; column < columns; ++column) {
            const sf::CategoryIndex* cell = category.getAtLiteral(row, column);
            if (!cell)
                return QStringLiteral("missing cell") + at(row, column);
            if (column > 0 && cell->getLeft() != category.getAtLiteral(row, column - 1))
                return QStringLiteral("left link broken") + at(row, column);
            if (column + 1 < columns && cell->getRight() != category.getAtLiteral(row, column + 1))
                return QStringLiteral("right link broken") + at(row, column);
            if (column + 1 == columns && cell->getRight())
                return QStringLiteral("cell beyond the last column") + at(row, column);
            if (cell->getSize() != head->getSize())
                return QStringLiteral("size %1 differs from the row's %2")
                           .arg(cell->getSize())
                           .arg(head->getSize()) +
                       at(row, column);
            if (cell->isExpanded() != head->isExpanded())
                return QStringLiteral("folding state differs") + at(row, column);
            if (category.getIndexLiteral(cell) != row || category.getPreset(cell) != column)
                return QStringLiteral("getIndexLiteral/getPreset disagree") + at(row, column);
            size = std::max(size, wantedRows(cell));
            if (!cell->isFiller()) {
                const QString cellKey = cell->getContent()->getBaseCodeName() +
                                        QStringLiteral("#%1").arg(cell->getForcedSubIndex());
                if (haveKey && cellKey != key)
                    return QStringLiteral("row mixes %1 and %2").arg(key, cellKey) +
                           at(row, column);
                key = cellKey;
                haveKey = true;
                if (!category.contains(cell->getContent()))
                    return QStringLiteral("setting not listed") + at(row, column);
            }
        }
        if (columns > 0 && head->getSize() != size)
            return QStringLiteral("row size %1, its settings ask for %2")
                       .arg(head->getSize())
                       .arg(size) +
                   at(row, 0);
        const bool shown = columns > 0 && rowShown(category, head);
        const int expected = shown ? virtualRow : -1;
        if (columns > 0 && category.getIndexVirtual(head) != expected)
            return QStringLiteral("getIndexVirtual %1, expected %2")
                       .arg(category.getIndexVirtual(head))
                       .arg(expected) +
                   at(row, 0);
        if (!shown)
            continue;
        for (int line = 0; line < head->getSize(); ++line) {
            for (int column = 0; column < columns; ++column) {
                int inside = -2;
                if (category.getAt(virtualRow + line, column, &inside) !=
                        category.getAtLiteral(row, column) ||
                    inside != line)
                    return QStringLiteral("getAt(%1, %2) misses its cell")
                        .arg(virtualRow + line)
                        .arg(column);
            }
        }
        virtualRow += head->getSize();
    }
    if (category.getSize() != (columns > 0 ? virtualRow : 0))
        return QStringLiteral("getSize %1, shown rows add up to %2")
            .arg(category.getSize())
            .arg(virtualRow);
    for (int column = 0; column < columns; ++column) {
        if (category.getPresetSize(column) != category.getSize())
            return QStringLiteral("getPresetSize(%1) is %2, getSize %3")
                .arg(column)
                .arg(category.getPresetSize(column))
                .arg(category.getSize());
    }
    if (columns > 0 && category.getAt(category.getSize(), 0))
        return QStringLiteral("a cell past the last row");
    for (sf::Setting* setting : category.getSettings()) {
        const sf::CategoryIndex* cell = category.findIndex(setting);
        if (!cell || cell->getContent() != setting || category.getIndexLiteral(cell) < 0)
            return QStringLiteral("%1 has no cell in the grid").arg(setting->getCodeName());
    }
    return QString();
}

} // namespace testsupport
