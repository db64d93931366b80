#include "Report.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace klova::bench {
namespace {

/// Three significant digits, never an exponent.
std::string number(double value) {
    const double size = std::abs(value);
    const int decimals = size >= 100 || value == 0 ? 0 : size >= 10 ? 1 : size >= 1 ? 2 : 3;
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

std::string number(const std::optional<double>& value) { return value ? number(*value) : ""; }

std::string spread(const Row& row) {
    return row.ratio ? number(row.ratio->spread.low) + " to " + number(row.ratio->spread.high) : "";
}

std::vector<std::string> cells(const Row& row) {
    const auto met = row.met();
    return {row.name,
            row.unit,
            number(row.value),
            number(row.p99),
            number(row.reference),
            row.ratio ? number(row.ratio->ratio) : "",
            spread(row),
            number(row.goal),
            !met   ? ""
            : *met ? "yes"
                   : "no"};
}

const std::vector<std::string> kHeads = {"figure", "unit",   "value", "p99", "reference",
                                         "ratio",  "spread", "goal",  "met"};
constexpr int kWidths[] = {84, 4, 7, 7, 9, 6, 14, 5, 4};

/// With blanks to fill `width` letters of the screen, of which UTF-8 may take several bytes each.
std::string padded(const std::string& text, int width, bool left) {
    const auto letters = std::ranges::count_if(
        text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; });
    const std::string blanks(static_cast<std::size_t>(std::max(width - letters, std::ptrdiff_t{0})),
                             ' ');
    return left ? text + blanks : blanks + text;
}

void print(const std::vector<std::string>& texts) {
    std::string line = padded(texts[0], kWidths[0], true);
    for (std::size_t i = 1; i < texts.size(); ++i)
        line += ' ' + padded(texts[i], kWidths[i], false);
    std::puts(line.c_str());
    std::fflush(stdout);
}

std::string json(const std::optional<double>& value) {
    if (!value || !std::isfinite(*value))
        return "null";
    std::ostringstream text;
    text << *value;
    return text.str();
}

std::string json(const Row& row) {
    std::ostringstream text;
    text << R"({"name": ")" << row.name << R"(", "unit": ")" << row.unit << R"(", "value": )"
         << json(row.value) << R"(, "p99": )" << json(row.p99) << R"(, "reference": )"
         << json(row.reference) << R"(, "ratio": )";
    if (row.ratio)
        text << json(row.ratio->ratio) << R"(, "spread": [)" << json(row.ratio->spread.low) << ", "
             << json(row.ratio->spread.high) << ']';
    else
        text << R"(null, "spread": null)";
    text << R"(, "goal": )" << json(row.goal) << '}';
    return text.str();
}

std::ofstream open(const std::filesystem::path& file) {
    std::ofstream stream(file);
    if (!stream)
        throw std::runtime_error("cannot write " + file.string());
    return stream;
}

} // namespace

std::optional<bool> Row::met() const {
    if (!goal)
        return std::nullopt;
    return (ratio ? ratio->ratio : value) <= *goal;
}

void Report::add(const Row& row) {
    if (rows_.empty())
        print(kHeads);
    rows_.push_back(row);
    print(cells(row));
}

void Report::compare(const std::string& name, const std::string& unit, const Samples& value,
                     const Samples& reference, std::optional<double> goal) {
    add({name, unit, median(value), percentile(value, 0.99), median(reference),
         ratioOf(value, reference, 0.5), goal});
}

void Report::compareSlowest(const std::string& name, const std::string& unit, const Samples& value,
                            const Samples& reference, std::optional<double> goal) {
    const double slowest = percentile(value, 0.99);
    add({name + ", p99", unit, slowest, slowest, percentile(reference, 0.99),
         ratioOf(value, reference, 0.99), goal});
}

void Report::writeJson(const std::filesystem::path& file) const {
    auto stream = open(file);
    stream << "[\n";
    for (std::size_t i = 0; i < rows_.size(); ++i)
        stream << "  " << json(rows_[i]) << (i + 1 < rows_.size() ? ",\n" : "\n");
    stream << "]\n";
}

void Report::writeMarkdown(const std::filesystem::path& file) const {
    auto stream = open(file);
    const auto line = [&stream](const std::vector<std::string>& texts) {
        for (const auto& text : texts)
            stream << "| " << text << ' ';
        stream << "|\n";
    };
    for (const bool withGoal : {true, false}) {
        stream << (withGoal ? "### Figures with a goal\n\n" : "\n### Further figures\n\n");
        line(kHeads);
        stream << "|---|---|--:|--:|--:|--:|--:|--:|---|\n";
        for (const auto& row : rows_)
            if (row.goal.has_value() == withGoal)
                line(cells(row));
    }
}

void Report::printSummary() const {
    const auto goals =
        std::ranges::count_if(rows_, [](const Row& row) { return row.goal.has_value(); });
    const auto met =
        std::ranges::count_if(rows_, [](const Row& row) { return row.met().value_or(false); });
    std::printf("\n%td figures, %td of %td goals met\n", std::ssize(rows_), met, goals);
}

} // namespace klova::bench
