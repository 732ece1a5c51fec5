#pragma once

namespace sf::parser {

// Kind of processor a setup image belongs to. Some processors keep their settings in
// program memory where every Nth address holds a phantom byte that does not exist on the
// device; the image reader hides those bytes from the rest of the program.
enum PhantomProcessor {
    PhantomEvery4 = 0, // a phantom byte at every fourth address
    PhantomEvery2 = 1, // a phantom byte at every second address
    PhantomNone = 2    // no phantom bytes
};

} // namespace sf::parser
