#include "Benchmarks.h"
#include "Starter.h"

namespace klova::bench {
namespace {

constexpr int kStarts = 30;
constexpr double kGoal = 150; // milliseconds

} // namespace

void measureStartUp(Run& run) {
    if (!run.wants("start-up to the first chord"))
        return;
    rig::VirtualDesktop desktop;
    Starter starter(desktop, run.programs / "klova");
    starter.start(); // reads the program and its libraries from the disk
    Samples times;
    for (int i = 0; i < run.rounds(kStarts); ++i) {
        starter.end();
        times.push_back(starter.start());
    }
    run.report.add({.name = "start-up to the first chord",
                    .unit = "ms",
                    .value = median(times),
                    .p99 = percentile(times, 0.99),
                    .goal = kGoal});
}

} // namespace klova::bench
