#include "sf/ActionTracker.h"

namespace sf {

ActionTracker::ActionTracker(Setting* setting, int subIndex, const QByteArray& before, bool chained)
    : m_setting(setting), m_subIndex(subIndex < -1 ? -1 : subIndex), m_before(before),
      m_chained(chained) {}

} // namespace sf
