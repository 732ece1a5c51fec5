#pragma once

#include <QByteArray>

namespace sf {

class Setting;

// One recorded change of a setting's bytes: which setting, which sub-index (-1 for the
// whole value), the bytes before and after, and whether the change belongs to the group
// of the action before it (a dependent re-evaluated because of that action).
class ActionTracker {
public:
    ActionTracker(Setting* setting, int subIndex, const QByteArray& before, bool chained = false);

    Setting* getSetting() const { return m_setting; }
    int getSubIndex() const { return m_subIndex; }
    void setSubIndex(int subIndex) { m_subIndex = subIndex; }
    const QByteArray& getBefore() const { return m_before; }
    const QByteArray& getAfter() const { return m_after; }
    void setAfter(const QByteArray& after) { m_after = after; }
    bool isChained() const { return m_chained; }
    void setChained(bool chained) { m_chained = chained; }
    // Whether before and after differ.
    bool changesBytes() const { return m_before != m_after; }

private:
    Setting* m_setting; // not owned
    int m_subIndex;
    QByteArray m_before;
    QByteArray m_after;
    bool m_chained;
};

} // namespace sf
