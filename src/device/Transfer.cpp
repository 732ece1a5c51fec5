#include "device/Transfer.h"

#include "util/Uploader.h"

namespace device {

namespace {
// The uploader's progress once the instrument was found (connecting 33, connected 66).
constexpr int CONNECTED = 66;
} // namespace

Transfer::Transfer(util::Uploader& uploader) {
    m_watch = QObject::connect(&uploader, &util::Uploader::setProgress, [this](int progress) {
        m_reached = m_reached || progress >= CONNECTED;
    });
}

Transfer::~Transfer() {
    QObject::disconnect(m_watch);
}

} // namespace device
