// klova-sessions: uses Klova in the sessions of whole desktops, and takes a picture of each step.
#include "desktop/Precedence.h"
#include "sessions/LoginSession.h"
#include "sessions/Steps.h"

#include <algorithm>
#include <cstdio>
#include <exception>

namespace {

using namespace klova;
using namespace klova::desktops;

/// A row for each step; a session that ended early has empty cells.
void print(const std::vector<std::string>& names,
           const std::vector<std::vector<StepResult>>& sessions) {
    std::string header = "| |", rule = "|---|";
    std::size_t rows = 0;
    for (std::size_t i = 0; i < names.size(); ++i) {
        header += ' ' + names[i] + " |";
        rule += ":-:|";
        rows = std::max(rows, sessions[i].size());
    }
    std::printf("\n%s\n%s\n", header.c_str(), rule.c_str());
    for (std::size_t row = 0; row < rows; ++row) {
        std::string line = "|";
        for (const auto& session : sessions) {
            if (line == "|" && row < session.size())
                line += ' ' + session[row].step + " |";
            line +=
                row < session.size() ? session[row].fault.empty() ? " ✓ |" : " **fails** |" : " |";
        }
        std::printf("%s\n", line.c_str());
    }
}

int run(const std::filesystem::path& pictures, const std::vector<std::string>& wanted) {
    const auto klova = std::filesystem::canonical("/proc/self/exe").parent_path() / "klova";
    std::filesystem::create_directories(pictures);
    std::vector<std::string> names;
    std::vector<std::vector<StepResult>> sessions;
    for (const auto& recipe : sessionRecipes()) {
        if (!wanted.empty() && std::ranges::find(wanted, recipe.name) == wanted.end())
            continue;
        names.push_back(recipe.name);
        sessions.push_back(playSession(recipe, klova, std::filesystem::absolute(pictures)));
    }
    print(names, sessions);
    const auto failed = [](const auto& session) {
        return std::ranges::any_of(session, [](const auto& step) { return !step.fault.empty(); });
    };
    return !sessions.empty() && std::ranges::none_of(sessions, failed) ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: klova-sessions <folder for pictures> [Xfce] [MATE] [LXQt]\n");
        return 2;
    }
    rig::takePrecedence();
    try {
        return run(argv[1], {argv + 2, argv + argc});
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "klova-sessions: %s\n", failure.what());
        return 1;
    }
}
