// Fuzzes both ends of the service protocol: the helper's reply decoder and the simulated
// instrument's request handling (bootloader commands included) and the firmware file
// reader on arbitrary bytes. Decoded frames re-encode to the bytes
// they came from; the instrument's memory keeps its size and it answers only with whole
// frames, refusals or the display-mode bytes.

#include "../tools/kx-sim/Instrument.h"
#include "util/FirmwareImage.h"
#include "util/LinkProtocol.h"

#include <QBuffer>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace util::link;

namespace {

void check(bool condition) {
    if (!condition) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), int(size));

    FrameDecoder decoder(QByteArray() + ACK + NAK + STX);
    decoder.feed(bytes);
    Frame frame;
    for (;;) {
        const QByteArray before = decoder.pending();
        const FrameDecoder::Result r = decoder.next(&frame);
        if (r == FrameDecoder::NeedMore) {
            break;
        }
        if (r == FrameDecoder::Complete && frame.lead != NAK) {
            const QByteArray again = encode(frame.lead, frame.command, frame.payload);
            check(before.endsWith(decoder.pending()));
            check(before.contains(again));
        }
    }

    static const QList<DeviceProfile> profiles = [] {
        const char* const lines[] = {
            "KX3A\t230400\tKX3\tkx3\t0\t0x1E000\t1024\t64\t0x400\t0x1000\t0\t0\t0\t0\t0xF000\t0xF10"
            "0",
            "DRV3\t115200\tDravolin\tdravolin\t0\t0x1E000\t1024\t128\t0x400\t0x1000\t0\t0\t0\t0"
            "\t0xF000\t0xF100",
            "KX4A\t1000000\tKX4\tkx4\t0x300000\t0x310000\t4096\t128\t0x3F0000\t0x3F8000\t0\t0\t0\t0"
            "\t0x310000\t0x310400"};
        QList<DeviceProfile> out;
        for (const char* line : lines) {
            out << parseProfile(QString::fromLatin1(line));
        }
        return out;
    }();
    const DeviceProfile& p = profiles.at(int(size % 3));
    const int memorySize = int(p.imageAddress(p.settingsEnd) - p.imageAddress(p.settingsStart));
    const int programSize = int(p.programEnd - p.programStart);
    // Runs a firmware at start; a flash it is fed is never a firmware it knows.
    Instrument instrument(
        p, QByteArray(memorySize, '\0'), QByteArray(programSize, char(0xFF)),
        Identity{QStringLiteral("3.10"), QStringLiteral("KX3-3.10"), QStringLiteral("3.10")}, true,
        [](const QByteArray&, Identity*) { return false; });
    instrument.receive(QByteArray(1, SYNC)); // into service mode
    instrument.receive(bytes);
    check(instrument.memory().size() == memorySize);
    check(instrument.program().size() == programSize);

    // The same bytes as a firmware file: read without a crash, regions keep their sizes.
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    const FirmwareImage image = readFirmware(&buffer, p);
    check(image.program.size() == programSize && image.settings.size() == memorySize);
    return 0;
}
