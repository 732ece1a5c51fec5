// The helper's line protocol: frames decoded from a stream whatever its noise and splitting
// (a randomized round trip), and which device file lines make a profile. The version query
// over serial: the framing rule, and both query variants against a pseudo-terminal whose
// other end answers each enquiry as scripted (split frames, frames across attempts, noise,
// NUL bytes, empty frames, no answer).
#include "support/PtyPeer.h"
#include "support/TableFile.h"
#include "support/TestSupport.h"
#include "util/KXCommunicator.h"
#include "util/LinkProtocol.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

using namespace util::link;
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

class TestSerialQuery : public QObject {
    Q_OBJECT
private slots:
    // Random frames with random noise between them, fed in random pieces: every frame
    // comes out as it went in, in order, and the noise is counted as skipped.
    void framesSurviveNoiseAndSplitting() {
        for (quint32 seed = 1; seed <= 300; ++seed) {
            QRandomGenerator random(seed);
            QList<Frame> sent;
            QByteArray stream;
            int noise = 0;
            for (int n = random.bounded(1, 6); n > 0; --n) {
                const int junk = random.bounded(4);
                for (int k = 0; k < junk; ++k) {
                    stream += char('a' + random.bounded(20)); // never a lead byte
                }
                noise += junk;
                QByteArray payload;
                for (int k = random.bounded(0, 40); k > 0; --k) {
                    payload += char(random.bounded(256));
                }
                sent << Frame{ACK, char('A' + random.bounded(26)), payload};
                stream += encode(ACK, sent.last().command, payload);
            }
            FrameDecoder decoder(QByteArray(1, ACK));
            QList<Frame> received;
            for (int at = 0; at < stream.size();) {
                const int piece = random.bounded(1, 9);
                decoder.feed(stream.mid(at, piece));
                at += piece;
                Frame frame;
                while (decoder.next(&frame) == FrameDecoder::Complete) {
                    received << frame;
                }
            }
            QCOMPARE(received.size(), sent.size());
            for (int i = 0; i < sent.size(); ++i) {
                QCOMPARE(received.at(i).command, sent.at(i).command);
                QCOMPARE(received.at(i).payload, sent.at(i).payload);
            }
            QCOMPARE(decoder.skipped(), noise);
        }
    }

    void deviceFileLines_data() { testsupport::loadTable(); }

    void deviceFileLines() {
        QFETCH(QString, line);
        QFETCH(bool, accepted);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("device.txt"));
        QVERIFY(testsupport::writeFile(path, line.toLatin1() + '\n'));
        const QList<DeviceProfile> profiles = readProfiles(path);
        QCOMPARE(profiles.size(), accepted ? 1 : 0);
        DeviceProfile p;
        QCOMPARE(findProfile(profiles, QStringLiteral("KX3A"), &p), accepted);
    }

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

QTEST_GUILESS_MAIN(TestSerialQuery)
#include "tst_serialquery.moc"
