// klova-bench: measures Klova against what stands beside it, on virtual desktops of its own.
#include "Benchmarks.h"
#include "Run.h"

#include <cstdio>
#include <exception>
#include <sched.h>
#include <string_view>

namespace {

using namespace klova::bench;

/// Ahead of the machine's other work where the system permits it, and with it all that is started:
/// Klova and what it is compared with alike.
void takePrecedence() {
    const sched_param lowest{.sched_priority = ::sched_get_priority_min(SCHED_RR)};
    ::sched_setscheduler(0, SCHED_RR, &lowest);
}

void measure(Run& run) {
    measureKeyToWindow(run);
    measureDrag(run);
    measureUnarmedInput(run);
    measureStartUp(run);
    measureSize(run);
    measureIdling(run);
    measureGrowth(run);
}

int usage() {
    std::fprintf(stderr, "usage: klova-bench [--quick] [part of a figure's name]\n");
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    Run run;
    for (int i = 1; i < argc; ++i) {
        const std::string_view word = argv[i];
        if (word == "--quick")
            run.quick = true;
        else if (run.filter.empty() && !word.starts_with("-"))
            run.filter = word;
        else
            return usage();
    }
    takePrecedence();
    try {
        run.programs = std::filesystem::canonical("/proc/self/exe").parent_path();
        measure(run);
        const auto folder = run.programs.parent_path();
        run.report.writeJson(folder / "bench.json");
        run.report.writeMarkdown(folder / "bench.md");
        run.report.printSummary();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "klova-bench: %s\n", failure.what());
        return 1;
    }
    return 0;
}
