// klova-sessions: uses Klova in the sessions of whole desktops, and takes a picture of each step.
#include "desktop/Precedence.h"
#include "sessions/LoginSession.h"
#include "sessions/Steps.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <stdexcept>

namespace {

using namespace klova;
using namespace klova::desktops;

/// A row for each step, which all sessions have in common.
void print(const std::vector<std::string>& names,
           const std::vector<std::vector<StepResult>>& sessions) {
    std::string table = "\n| |", rule = "|---|";
    for (const auto& name : names) {
        table += ' ' + name + " |";
        rule += ":-:|";
    }
    table += '\n' + rule + '\n';
    for (std::size_t row = 0; row < sessions.front().size(); ++row) {
        table += "| " + sessions.front()[row].step + " |";
        for (const auto& session : sessions)
            table += session[row].fault.empty() ? " ✓ |" : " **fails** |";
        table += '\n';
    }
    std::printf("%s", table.c_str());
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
    if (sessions.empty())
        throw std::runtime_error("no session of that name");
    print(names, sessions);
    const auto failed = [](const auto& session) {
        return std::ranges::any_of(session, [](const auto& step) { return !step.fault.empty(); });
    };
    return std::ranges::none_of(sessions, failed) ? 0 : 1;
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
