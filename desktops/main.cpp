// klova-desktops: tries every gesture under every window manager, and compares what came of it
// with the table in a document.
#include "Table.h"
#include "desktop/Files.h"
#include "desktop/Precedence.h"
#include "desktop/WindowManager.h"

#include <algorithm>
#include <cstdio>
#include <exception>

namespace {

using namespace klova;
using namespace klova::desktops;

Finding play(const Gesture& gesture, const std::filesystem::path& klova,
             const std::string& manager) {
    try {
        return gesture.play(klova, manager);
    } catch (const std::exception& failure) {
        return {Outcome::fails, failure.what()};
    }
}

std::vector<Finding> playAll(const std::filesystem::path& klova, const std::string& manager) {
    std::vector<Finding> findings;
    for (const auto& gesture : gestures()) {
        const auto& finding = findings.emplace_back(play(gesture, klova, manager));
        std::printf("%-9s %-36s %s%s\n", manager.c_str(), gesture.name.c_str(),
                    cellOf(finding).c_str(),
                    finding.seen.empty() ? "" : (" " + finding.seen).c_str());
        std::fflush(stdout);
    }
    return findings;
}

/// Returns how many findings differ from the document, or are failures.
int compare(const std::string& document, const std::string& manager,
            const std::vector<Finding>& findings) {
    const auto cells = cellsOf(document, manager);
    int faults = 0;
    for (std::size_t i = 0; i < findings.size(); ++i) {
        const auto now = cellOf(findings[i]);
        const auto before = i < cells.size() ? cells[i] : "nothing";
        if (now == before && findings[i].outcome != Outcome::fails)
            continue;
        ++faults;
        std::printf("%s, %s: the table says %s, and now it is %s\n", manager.c_str(),
                    gestures()[i].name.c_str(), before.c_str(), now.c_str());
    }
    return faults;
}

int usage() {
    std::fprintf(stderr, "usage: klova-desktops --check <document> [<window manager>...]\n"
                         "       klova-desktops --write <document>\n");
    return 2;
}

int run(bool writing, const std::filesystem::path& file, const std::vector<std::string>& managers) {
    const auto klova = std::filesystem::canonical("/proc/self/exe").parent_path() / "klova";
    Results results;
    for (const auto& manager : managers)
        results[manager] = playAll(klova, manager);
    const bool all = managers == rig::windowManagerNames();
    const auto table = tableOf(managers, results);
    std::printf("\n%s\n", table.c_str());
    const auto document = rig::readFile(file);
    if (writing) {
        rig::writeFile(file, withTable(document, table));
        return 0;
    }
    int faults = 0;
    for (const auto& manager : managers)
        faults += compare(document, manager, results[manager]);
    if (faults == 0 && all && withTable(document, table) != document)
        std::printf("%d The document's table reads otherwise\n", ++faults);
    return faults == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> words(argv + 1, argv + argc);
    const auto& known = rig::windowManagerNames();
    const bool writing = words.size() == 2 && words[0] == "--write";
    if (!writing && (words.size() < 2 || words[0] != "--check"))
        return usage();
    std::vector<std::string> managers(words.begin() + 2, words.end());
    for (const auto& manager : managers)
        if (std::ranges::find(known, manager) == known.end())
            return usage();
    rig::takePrecedence();
    try {
        return run(writing, words[1], managers.empty() ? known : managers);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "klova-desktops: %s\n", failure.what());
        return 1;
    }
}
