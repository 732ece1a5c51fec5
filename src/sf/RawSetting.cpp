#include "sf/RawSetting.h"

#include <cstring>

namespace sf {

RawSetting::RawSetting(const QString& codeName, qint32 size, qint32 address, bool enabled,
                       bool hidden)
    : m_codeName(codeName), m_size(size), m_address(address), m_data(size > 0 ? size : 0, '\0'),
      m_enabled(enabled), m_hidden(hidden) {}

void RawSetting::setData(const char* bytes) {
    if (!bytes || m_size <= 0) {
        return;
    }
    std::memcpy(m_data.data(), bytes, static_cast<size_t>(m_size));
}

} // namespace sf
