// What the command line asks for.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace klova::stress {

struct Options {
    std::uint32_t seed = 1;
    std::uint32_t first = 0;    // of the streams
    std::optional<int> streams; // a limit for each manager, as are the next two
    std::optional<int> gestures;
    std::optional<double> minutes; // in the words for all managers together
    std::vector<std::string> managers = {"openbox", "xfwm4"};
};

/// Nothing where the words make no sense.
std::optional<Options> parse(const std::vector<std::string>& words);

void printUsage();

} // namespace klova::stress
