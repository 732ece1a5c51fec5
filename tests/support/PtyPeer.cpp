#include "support/PtyPeer.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace testsupport {

namespace {

void pause(int ms) {
    std::this_thread::sleep_for(std::chrono::milliseconds(ms));
}

} // namespace

PtyPeer::PtyPeer() {
    const int fd = posix_openpt(O_RDWR | O_NOCTTY);
    if (fd < 0) {
        return;
    }
    const char* name = (grantpt(fd) == 0 && unlockpt(fd) == 0) ? ptsname(fd) : nullptr;
    if (!name) {
        ::close(fd);
        return;
    }
    // Raw on both sides: no echo, no line editing, bytes as they are.
    termios tio{};
    if (tcgetattr(fd, &tio) == 0) {
        cfmakeraw(&tio);
        tcsetattr(fd, TCSANOW, &tio);
    }
    m_path = QString::fromLocal8Bit(name);
    m_master = fd;
}

PtyPeer::~PtyPeer() {
    m_stop = true;
    if (m_thread.joinable()) {
        m_thread.join();
    }
    if (m_master >= 0) {
        ::close(m_master);
    }
}

void PtyPeer::answerEnquiries(const QList<Reply>& replies) {
    m_replies = replies;
    if (isOpen() && !m_thread.joinable()) {
        m_thread = std::thread(&PtyPeer::run, this);
    }
}

void PtyPeer::run() {
    int next = 0;
    while (!m_stop) {
        pollfd p{m_master, POLLIN, 0};
        if (poll(&p, 1, 10) <= 0 || !(p.revents & POLLIN)) {
            if (p.revents & (POLLHUP | POLLERR)) {
                pause(5); // nobody has the device open
            }
            continue;
        }
        char buffer[256];
        const ssize_t n = ::read(m_master, buffer, sizeof buffer);
        if (n <= 0) {
            pause(5);
            continue;
        }
        for (ssize_t i = 0; i < n && !m_stop; ++i) {
            if (buffer[i] != 0x05) {
                continue;
            }
            ++m_enquiries;
            if (next >= m_replies.size()) {
                continue;
            }
            const Reply& reply = m_replies.at(next++);
            for (int k = 0; k < reply.pieces.size() && !m_stop; ++k) {
                if (k > 0) {
                    pause(reply.gapMs);
                }
                const QByteArray& piece = reply.pieces.at(k);
                if (::write(m_master, piece.constData(), static_cast<size_t>(piece.size())) < 0) {
                    break;
                }
            }
        }
    }
}

} // namespace testsupport
