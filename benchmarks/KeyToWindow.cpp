#include "Benchmarks.h"
#include "Race.h"

namespace klova::bench {
namespace {

void compare(Run& run, const std::string& manager) {
    const auto results = race(run, {.manager = manager},
                              {Answer::klova, Answer::bare, Answer::manager, Answer::tool});
    const struct {
        Answer reference;
        std::string name;
        double goal;
    } rows[] = {{Answer::bare, "bare program", 1.25},
                {Answer::manager, "the manager's own key", 1},
                {Answer::tool, "daemon and tool", 0.2}};
    const auto& klova = results.at(Answer::klova);
    for (const auto& row : rows) {
        const auto name = "key to window, " + manager + ", against " + row.name;
        run.report.compare(name, "µs", klova, results.at(row.reference), row.goal);
        if (row.reference == Answer::bare)
            run.report.compareSlowest(name, "µs", klova, results.at(row.reference), row.goal);
    }
    const auto& bare = results.at(Answer::bare);
    run.report.compare("bare program, " + manager + ", against the manager's own key", "µs", bare,
                       results.at(Answer::manager), std::nullopt);
}

/// With all the work that the server has where nothing covers the screen.
void comparePainted(Run& run) {
    const std::string name = "key to window, openbox, painted, against bare program";
    if (!run.wants(name))
        return;
    const auto results = race(run, {.covered = false}, {Answer::klova, Answer::bare});
    run.report.compare(name, "µs", results.at(Answer::klova), results.at(Answer::bare),
                       std::nullopt);
}

} // namespace

void measureKeyToWindow(Run& run) {
    for (const std::string manager : {"openbox", "xfwm4", "marco", "kwin"})
        if (run.wants("key to window, " + manager))
            compare(run, manager);
    comparePainted(run);
}

} // namespace klova::bench
