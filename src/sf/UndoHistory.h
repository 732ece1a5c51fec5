#pragma once

#include "sf/ActionTracker.h"

#include <memory>
#include <vector>

namespace sf {

// The list of recorded actions, oldest first, and the position of the last action in
// effect (-1 when none). Actions form groups: an unchained head followed by the chained
// actions recorded with it. The list has no length limit.
class UndoHistory {
public:
    // Discards every action after the current position, appends the action and makes it
    // the current one. Null is ignored.
    void add(std::unique_ptr<ActionTracker> action);
    void clear();

    bool canUndo() const { return m_position >= 0; }
    bool canRedo() const { return m_position < size() - 1; }
    int position() const { return m_position; }
    int size() const { return static_cast<int>(m_actions.size()); }
    // The action at an index, or null.
    const ActionTracker* at(int index) const;

    // Index of the unchained head of the group that ends at `last` (-1 for a bad index).
    int groupStart(int last) const;
    // Index of the last action of the group that starts at `first` (-1 for a bad index).
    int groupEnd(int first) const;
    // The head of the group ending at the current position; null when nothing can be undone.
    const ActionTracker* groupHead() const;

    // Moves the position back to just before the group ending at the current position
    // and returns that group's index range; false when nothing can be undone.
    bool stepBack(int* first, int* last);
    // Moves the position to the end of the group after the current position and returns
    // that group's index range; false when nothing can be redone.
    bool stepForward(int* first, int* last);

private:
    std::vector<std::unique_ptr<ActionTracker>> m_actions;
    int m_position = -1;
};

} // namespace sf
