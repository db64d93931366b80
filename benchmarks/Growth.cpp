#include "Benchmarks.h"
#include "Crowd.h"
#include "ProcessCost.h"
#include "Race.h"
#include "Starter.h"

namespace klova::bench {
namespace {

constexpr int kStarts = 5;

void measureKey(Run& run, const std::string& name, const RacerOptions& options) {
    const auto results = race(run, options, {Answer::klova, Answer::bare});
    run.report.compare("growth, " + name + ": key to window against bare program", "µs",
                       results.at(Answer::klova), results.at(Answer::bare), 1.25);
}

void measureStart(Run& run, const std::string& name, const RacerOptions& options) {
    rig::VirtualDesktop desktop(desktopFor(options));
    const Crowd crowd(desktop.display().name(), options.windows);
    Starter starter(desktop, run.programs / "klova");
    Samples times;
    for (int i = 0; i < kStarts; ++i) {
        starter.end();
        times.push_back(starter.start());
    }
    run.report.add({.name = "growth, " + name + ": memory of its own",
                    .unit = "MiB",
                    .value = memoryOf(familyOf(starter.process().id())).own,
                    .goal = 20});
    run.report.add({.name = "growth, " + name + ": start-up to the first chord",
                    .unit = "ms",
                    .value = median(times),
                    .p99 = percentile(times, 0.99),
                    .goal = 150});
}

void measure(Run& run, const std::string& name, const RacerOptions& options) {
    if (!run.wants("growth, " + name))
        return;
    measureKey(run, name, options);
    measureStart(run, name, options);
}

} // namespace

void measureGrowth(Run& run) {
    for (const int windows : {10, 100, 1000})
        measure(run, std::to_string(windows) + " windows", {.windows = windows});
    for (const int monitors : {1, 2, 4, 8})
        measure(run, std::to_string(monitors) + " monitors",
                {.screen = {5760, 900}, .monitors = monitors});
}

} // namespace klova::bench
