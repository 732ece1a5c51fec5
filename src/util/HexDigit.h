#pragma once

namespace util {

// Value of a hexadecimal digit (0-9, a-f, A-F), or -1 for any other character code.
constexpr int hexDigitValue(unsigned int c) {
    if (c >= '0' && c <= '9') {
        return static_cast<int>(c - '0');
    }
    if (c >= 'a' && c <= 'f') {
        return static_cast<int>(c - 'a' + 10);
    }
    if (c >= 'A' && c <= 'F') {
        return static_cast<int>(c - 'A' + 10);
    }
    return -1;
}

} // namespace util
