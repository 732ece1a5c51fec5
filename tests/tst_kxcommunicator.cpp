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

    void findResponse_data() {
        testsupport::loadTable(QStringLiteral("kxcommunicator-findResponse.txt"));
    }

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

    void query_data() {
        QTest::addColumn<QByteArray>("replies");
        QTest::addColumn<int>("attempts");
        QTest::addColumn<QString>("expected"); // event-loop variant
        QTest::addColumn<int>("enquiries");
        QTest::addColumn<QString>("blocking"); // blocking variant
        QTest::newRow("answer in one piece") << QByteArray("\x06"
                                                           "1.2b3\x04")
                                             << 3 << "1.2b3" << 1 << "1.2b3";
        QTest::newRow("echo and noise before the frame") << QByteArray("\x05zz\x04\x06"
                                                                       "3.10\x04")
                                                         << 3 << "3.10" << 1 << "3.10";
        QTest::newRow("answer split over reads")
            << QByteArray("\x06+3.+10\x04") << 3 << "3.10" << 1 << Skip;
        QTest::newRow("frame completed by the next attempt") << QByteArray("\x06"
                                                                           "3.1|0\x04")
                                                             << 3 << "3.10" << 2 << "3.10";
        QTest::newRow("NUL drops the rest of its chunk")
            << QByteArray("\x06"
                          "AB\0CD\x04|\x04",
                          11)
            << 3 << "AB" << 2 << QString::fromLatin1("AB\0CD", 5);
        QTest::newRow("empty frame fails every attempt")
            << QByteArray("\x06\x04|\x06V\x04|\x06V\x04") << 3 << Null << 3 << Null;
        QTest::newRow("no answer") << QByteArray() << 3 << Null << 3 << Null;
        QTest::newRow("zero attempts send nothing")
            << QByteArray("\x06V\x04") << 0 << Null << 0 << Null;
    }

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
