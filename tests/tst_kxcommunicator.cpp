// The version query over serial: the framing rule, and both query variants against a
// pseudo-terminal whose other end answers each enquiry as scripted (split frames, frames
// across attempts, noise, NUL bytes, empty frames, no answer).
#include "support/PtyPeer.h"
#include "support/TableFile.h"
#include "util/KXCommunicator.h"

#include <QtTest>

using testsupport::PtyPeer;
using util::KXCommunicator;

namespace {

const QString Null = QStringLiteral("<null>");
const QString Skip = QStringLiteral("<skip>");

// Replies separated by '|', the pieces of one reply by '+' (sent 40 ms apart).
QList<PtyPeer::Reply> script(const QByteArray& text) {
    QList<PtyPeer::Reply> replies;
    for (const QByteArray& reply : text.split('|')) {
        if (!text.isEmpty()) {
            replies.append({reply.split('+'), 40});
        }
    }
    return replies;
}

} // namespace

class TestKXCommunicator : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { KXCommunicator::setAnswerWaitMs(300); }

    void findResponse_data() { testsupport::loadTable(); }

    void findResponse() {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, ok);
        QFETCH(int, start);
        QFETCH(int, count);
        int s = -1;
        int c = -1;
        QCOMPARE(KXCommunicator::findResponse(bytes.constData(), bytes.size(), &s, &c), ok);
        QCOMPARE(s, start);
        QCOMPARE(c, count);
    }

    void query_data() { testsupport::loadTable(); }

    void query() {
        QFETCH(QByteArray, replies);
        QFETCH(int, attempts);
        QFETCH(QString, expected);
        QFETCH(int, enquiries);
        QFETCH(QString, blocking);
        for (const bool eventLoop : {true, false}) {
            const QString want = eventLoop ? expected : blocking;
            if (want == Skip) {
                continue;
            }
            PtyPeer peer;
            QVERIFY(peer.isOpen());
            peer.answerEnquiries(script(replies));
            KXCommunicator communicator;
            const QString got =
                eventLoop ? communicator.getParsedENQVersion(peer.devicePath(), attempts)
                          : communicator.getParsedENQVersionBlocking(peer.devicePath(), attempts);
            QCOMPARE(got.isNull(), want == Null);
            if (want != Null) {
                QCOMPARE(got, want);
            }
            if (eventLoop) {
                QCOMPARE(peer.enquiries(), enquiries);
            }
        }
    }

    void missingPortFailsAtOnce() {
        KXCommunicator communicator;
        QElapsedTimer timer;
        timer.start();
        QVERIFY(
            communicator.getParsedENQVersion(QStringLiteral("/dev/no-such-kx-port"), 3).isNull());
        QVERIFY(communicator.getParsedENQVersionBlocking(QStringLiteral("/dev/no-such-kx-port"), 3)
                    .isNull());
        QVERIFY(timer.elapsed() < 250);
    }
};

QTEST_GUILESS_MAIN(TestKXCommunicator)
#include "tst_kxcommunicator.moc"
