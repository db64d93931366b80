// klova-stress: plays random streams of input on desktops in unrest, and compares what an
// application hears with what it should.
#include "Guests.h"
#include "Options.h"
#include "Run.h"
#include "desktop/Precedence.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string_view>

int main(int argc, char** argv) {
    using namespace klova;
    if (argc == 3 && std::string_view(argv[1]) == "--guest") {
        stress::beGuest(std::atoi(argv[2]));
        return 0;
    }
    const auto options = stress::parse({argv + 1, argv + argc});
    if (!options) {
        stress::printUsage();
        return 2;
    }
    std::printf("seed %u\n", options->seed);
    std::fflush(stdout);
    rig::takePrecedence();
    try {
        const auto build = std::filesystem::canonical("/proc/self/exe").parent_path();
        const auto faults = std::ranges::count_if(options->managers, [&](const auto& manager) {
            return !stress::run(*options, manager, build / "klova");
        });
        return faults == 0 ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "klova-stress: %s\n", failure.what());
        return 1;
    }
}
