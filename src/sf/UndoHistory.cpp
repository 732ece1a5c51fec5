#include "sf/UndoHistory.h"

namespace sf {

void UndoHistory::add(std::unique_ptr<ActionTracker> action) {
    if (!action) {
        return;
    }
    m_actions.resize(static_cast<size_t>(m_position + 1));
    m_actions.push_back(std::move(action));
    m_position = size() - 1;
}

void UndoHistory::clear() {
    m_actions.clear();
    m_position = -1;
}

const ActionTracker* UndoHistory::at(int index) const {
    if (index < 0 || index >= size()) {
        return nullptr;
    }
    return m_actions[static_cast<size_t>(index)].get();
}

int UndoHistory::groupStart(int last) const {
    if (last < 0 || last >= size()) {
        return -1;
    }
    int first = last;
    while (first > 0 && m_actions[static_cast<size_t>(first)]->isChained()) {
        --first;
    }
    return first;
}

int UndoHistory::groupEnd(int first) const {
    if (first < 0 || first >= size()) {
        return -1;
    }
    int last = first;
    while (last + 1 < size() && m_actions[static_cast<size_t>(last + 1)]->isChained()) {
        ++last;
    }
    return last;
}

const ActionTracker* UndoHistory::groupHead() const {
    return at(groupStart(m_position));
}

bool UndoHistory::stepBack(int* first, int* last) {
    if (!canUndo()) {
        return false;
    }
    const int start = groupStart(m_position);
    if (first) {
        *first = start;
    }
    if (last) {
        *last = m_position;
    }
    m_position = start - 1;
    return true;
}

bool UndoHistory::stepForward(int* first, int* last) {
    if (!canRedo()) {
        return false;
    }
    const int start = m_position + 1;
    const int end = groupEnd(start);
    if (first) {
        *first = start;
    }
    if (last) {
        *last = end;
    }
    m_position = end;
    return true;
}

} // namespace sf
