// The helper's line protocol: frames decoded from a stream whatever its noise and
// splitting (a randomized round trip), and which device file lines make a profile.
#include "util/LinkProtocol.h"

#include "support/TableFile.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

using namespace util::link;

class TestLinkProtocol : public QObject {
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
        QFile file(dir.filePath(QStringLiteral("device.txt")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(line.toLatin1() + '\n');
        file.close();
        const QList<DeviceProfile> profiles = readProfiles(file.fileName());
        QCOMPARE(profiles.size(), accepted ? 1 : 0);
        DeviceProfile p;
        QCOMPARE(findProfile(profiles, QStringLiteral("KX3A"), &p), accepted);
    }
};

QTEST_GUILESS_MAIN(TestLinkProtocol)
#include "tst_linkprotocol.moc"
