// Keeps the processors from going to sleep while latencies are measured.
#pragma once

#include <thread>
#include <vector>

namespace klova::bench {

/// A processor that sleeps takes up to a tenth of a millisecond to wake, at each of the switches
/// between programs that a latency is made of. While this lives each runs an empty loop that gives
/// way to everything else.
class Wakefulness {
public:
    Wakefulness();

private:
    std::vector<std::jthread> loops_;
};

} // namespace klova::bench
