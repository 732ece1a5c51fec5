#include "sf/Category.h"

namespace sf {

Category::Category(const QString& name, const QString& label, const QString& presetName,
                   bool enabled)
    : m_name(name), m_label(label), m_presetName(presetName), m_enabled(enabled) {}

Category::~Category() = default;

} // namespace sf
