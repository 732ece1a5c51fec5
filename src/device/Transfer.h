#pragma once
// Watches one helper run: whether the helper reached the instrument (it found it and put
// it in its service mode), so that a failure after that point ends with a reset.
#include <QMetaObject>

namespace util {
class Uploader;
}

namespace device {

class Transfer {
public:
    explicit Transfer(util::Uploader& uploader);
    ~Transfer();
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

    bool reachedInstrument() const { return m_reached; }

private:
    QMetaObject::Connection m_watch;
    bool m_reached = false;
};

} // namespace device
