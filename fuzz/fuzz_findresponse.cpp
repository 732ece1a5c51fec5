// Fuzzes the framing rule of the version query: for arbitrary bytes, a found answer lies
// inside the buffer, right after a 0x06 and right before a 0x04, holds no 0x04 and no
// 0x06 itself, and no earlier 0x04 follows a 0x06; a refusal leaves the outputs alone
// unless it saw an empty frame.

#include "util/KXCommunicator.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

void check(bool condition) {
    if (!condition) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const char* bytes = reinterpret_cast<const char*>(data);
    const int length = static_cast<int>(size > 4096 ? 4096 : size);
    int start = -7;
    int count = -7;
    const bool ok = util::KXCommunicator::findResponse(bytes, length, &start, &count);
    if (start == -7) {
        check(!ok && count == -7);
        return 0;
    }
    check(start >= 1 && count >= 0 && start + count < length);
    check(bytes[start - 1] == 0x06 && bytes[start + count] == 0x04);
    check(ok == (count >= 1));
    // The scan stopped at the first 0x04 that follows a 0x06.
    bool ackSeen = false;
    for (int i = 0; i < start + count; ++i) {
        check(!(ackSeen && bytes[i] == 0x04));
        ackSeen = ackSeen || bytes[i] == 0x06;
    }
    for (int i = start; i < start + count; ++i) {
        check(bytes[i] != 0x06);
    }
    return 0;
}
