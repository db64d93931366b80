// Decisions by chance that come out the same for the same seed, on every machine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

namespace klova::stress {

class Random {
public:
    /// Each stream of a run has numbers of its own, whatever became of the streams before it.
    Random(std::uint32_t seed, std::uint32_t stream) {
        std::seed_seq both{seed, stream};
        engine_.seed(both);
    }

    /// From 0 to `count` - 1. The library's own distributions differ from one to another.
    int below(int count) { return static_cast<int>(engine_() % static_cast<std::uint64_t>(count)); }
    bool oneIn(int count) { return below(count) == 0; }
    template <typename T> const T& pick(const std::vector<T>& from) {
        return from[static_cast<std::size_t>(below(static_cast<int>(from.size())))];
    }
    template <typename T> void shuffle(std::vector<T>& items) {
        for (std::size_t i = items.size(); i > 1; --i)
            std::swap(items[i - 1], items[static_cast<std::size_t>(below(static_cast<int>(i)))]);
    }

private:
    std::mt19937_64 engine_;
};

} // namespace klova::stress
