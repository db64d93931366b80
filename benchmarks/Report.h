// The figures of a run: a table for people, one for documents, and JSON for programs.
#pragma once

#include "Statistics.h"

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace klova::bench {

/// One figure. Where it has a reference, `value` and `reference` are in the same unit and `goal`
/// is the largest ratio allowed; else `goal` is the largest value.
struct Row {
    std::string name;
    std::string unit;
    double value = 0;
    std::optional<double> p99 = {};
    std::optional<double> reference = {};
    std::optional<Ratio> ratio = {};
    std::optional<double> goal = {};

    /// Nothing where there is no goal.
    std::optional<bool> met() const;
};

class Report {
public:
    /// Prints the row at once: a run takes minutes.
    void add(const Row& row);
    /// What the medians of two paired series say.
    void compare(const std::string& name, const std::string& unit, const Samples& value,
                 const Samples& reference, std::optional<double> goal);
    /// The same of their 99th percentiles, and so of the slowest in a hundred.
    void compareSlowest(const std::string& name, const std::string& unit, const Samples& value,
                        const Samples& reference, std::optional<double> goal);

    void writeJson(const std::filesystem::path& file) const;
    void writeMarkdown(const std::filesystem::path& file) const;
    void printSummary() const;

private:
    std::vector<Row> rows_;
};

} // namespace klova::bench
