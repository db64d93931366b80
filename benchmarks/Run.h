// What every benchmark is given, and where its figures go.
#pragma once

#include "Report.h"

#include <filesystem>
#include <random>
#include <string>
#include <string_view>

namespace klova::bench {

struct Run {
    /// Where klova and the reference programs are.
    std::filesystem::path programs;
    /// Fewer rounds, for a first look.
    bool quick = false;
    /// Only what has this in its name is measured.
    std::string filter = {};
    Report report = {};
    std::mt19937 random{1};

    /// Whether a figure, or a group of them by what their names begin with, is to be measured.
    bool wants(std::string_view name) const {
        return name.find(filter) != name.npos || filter.starts_with(name);
    }
    int rounds(int whole) const { return quick ? whole / 10 : whole; }
};

} // namespace klova::bench
