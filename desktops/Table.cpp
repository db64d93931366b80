#include "Table.h"

#include <algorithm>
#include <set>
#include <sstream>
#include <stdexcept>

namespace klova::desktops {
namespace {

constexpr std::string_view kBegin = "<!-- by ./test desktops -->\n";
constexpr std::string_view kEnd = "<!-- end -->\n";

std::vector<std::string> split(const std::string& row) {
    std::vector<std::string> cells;
    std::istringstream stream(row);
    for (std::string cell; std::getline(stream, cell, '|');) {
        const auto first = cell.find_first_not_of(' ');
        cells.push_back(first == std::string::npos
                            ? ""
                            : cell.substr(first, cell.find_last_not_of(' ') + 1 - first));
    }
    return cells;
}

struct Span {
    std::size_t begin;
    std::size_t end;
};

Span tableIn(const std::string& document) {
    const auto begin = document.find(kBegin);
    const auto end = document.find(kEnd, begin);
    if (begin == std::string::npos || end == std::string::npos)
        throw std::runtime_error("the document has no place for the table");
    return {begin + kBegin.size(), end};
}

} // namespace

std::string cellOf(const Finding& finding) {
    if (finding.outcome == Outcome::fails)
        return "**fails**";
    const auto number = "<sup>" + std::to_string(static_cast<int>(finding.outcome)) + "</sup>";
    switch (finding.outcome) {
    case Outcome::works:
        return "✓";
    case Outcome::worksInSteps:
    case Outcome::reachesBeneath:
        return "✓" + number;
    default:
        return "–" + number;
    }
}

std::string tableOf(const std::vector<std::string>& managers, const Results& results) {
    std::string header = "| |", rule = "|---|", body, notes;
    std::set<Outcome> outcomes;
    for (const auto& manager : managers) {
        header += ' ' + manager + " |";
        rule += ":-:|";
    }
    for (std::size_t i = 0; i < gestures().size(); ++i) {
        body += "| " + gestures()[i].name + " |";
        for (const auto& manager : managers) {
            const auto& finding = results.at(manager)[i];
            outcomes.insert(finding.outcome);
            body += ' ' + cellOf(finding) + " |";
        }
        body += '\n';
    }
    for (const auto outcome : outcomes)
        if (!note(outcome).empty())
            notes.append(std::to_string(static_cast<int>(outcome)) + ". ")
                .append(note(outcome))
                .append("\n");
    return header + '\n' + rule + '\n' + body + '\n' + notes;
}

std::string withTable(const std::string& document, const std::string& table) {
    const auto [begin, end] = tableIn(document);
    return document.substr(0, begin) + table + document.substr(end);
}

std::vector<std::string> cellsOf(const std::string& document, const std::string& manager) {
    const auto [begin, end] = tableIn(document);
    std::istringstream rows(document.substr(begin, end - begin));
    std::vector<std::string> cells;
    std::string row;
    std::getline(rows, row);
    const auto header = split(row);
    const auto column = std::ranges::find(header, manager) - header.begin();
    std::getline(rows, row);
    while (std::getline(rows, row) && row.starts_with('|'))
        if (const auto all = split(row); column < std::ssize(all))
            cells.push_back(all[static_cast<std::size_t>(column)]);
    return cells;
}

} // namespace klova::desktops
