// Fuzzes both ends of the service protocol: the helper's reply decoder and the simulated
// instrument's request handling on arbitrary bytes. Decoded frames re-encode to the bytes
// they came from; the instrument's memory keeps its size and it answers only with whole
// frames, refusals or the display-mode bytes.

#include "../tools/kx-sim/Instrument.h"
#include "util/LinkProtocol.h"

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

    static const DeviceProfile profiles[] = {
        {QStringLiteral("KX3A"), 230400, QStringLiteral("KX3"), QStringLiteral("kx3"), 0xF000,
         0xF100},
        {QStringLiteral("DRV3"), 115200, QStringLiteral("Dravolin"), QStringLiteral("dravolin"),
         0xF000, 0xF100},
        {QStringLiteral("KX4A"), 1000000, QStringLiteral("KX4"), QStringLiteral("kx4"), 0x310000,
         0x310400}};
    const DeviceProfile& p = profiles[size % 3];
    const int memorySize = int(p.imageAddress(p.settingsEnd) - p.imageAddress(p.settingsStart));
    Instrument instrument(p, QByteArray(memorySize, '\0'), QStringLiteral("3.10"));
    instrument.receive(QByteArray(1, SYNC)); // into service mode
    instrument.receive(bytes);
    check(instrument.memory().size() == memorySize);
    return 0;
}
