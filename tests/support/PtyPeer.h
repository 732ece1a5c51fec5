#pragma once

// A pseudo-terminal whose other end a test drives: the code under test opens
// devicePath() as its serial port; the peer answers every enquiry byte (0x05) it reads
// with the next scripted reply, written in pieces with pauses between them.

#include <QByteArray>
#include <QList>
#include <QString>

#include <atomic>
#include <mutex>
#include <thread>

namespace testsupport {

class PtyPeer {
public:
    struct Reply {
        QList<QByteArray> pieces;
        int gapMs = 0; // pause before every piece after the first
    };

    PtyPeer();
    ~PtyPeer();
    PtyPeer(const PtyPeer&) = delete;
    PtyPeer& operator=(const PtyPeer&) = delete;

    bool isOpen() const { return m_master >= 0; }
    QString devicePath() const { return m_path; }

    // Starts answering: the n-th enquiry gets replies[n]; later ones get nothing.
    void answerEnquiries(const QList<Reply>& replies);
    // Enquiry bytes read so far.
    int enquiries() const { return m_enquiries; }

private:
    void run();

    int m_master = -1;
    QString m_path;
    QList<Reply> m_replies;
    std::atomic<int> m_enquiries{0};
    std::atomic<bool> m_stop{false};
    std::thread m_thread;
};

} // namespace testsupport
