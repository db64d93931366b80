#include "Benchmarks.h"
#include "ProcessCost.h"
#include "Starter.h"
#include "desktop/Trays.h"
#include "desktop/Wait.h"

#include <thread>

namespace klova::bench {

using namespace std::chrono_literals;

void measureIdling(Run& run) {
    if (!run.wants("wake-ups while idle"))
        return;
    rig::VirtualDesktop desktop;
    const auto tray = rig::startNotifierHost(desktop);
    Starter starter(desktop, run.programs / "klova");
    starter.start();
    rig::require(desktop.display(), "Klova's icon",
                 [&] { return !rig::announcedBy(desktop).empty(); });
    std::this_thread::sleep_for(3s); // until the start is over
    const auto family = familyOf(starter.process().id());
    const auto before = wakeUps(family);
    const auto time = run.quick ? 6s : 60s;
    std::this_thread::sleep_for(time);
    run.report.add({.name = "wake-ups while idle for " + std::to_string(time.count()) + " s",
                    .unit = "",
                    .value = static_cast<double>(wakeUps(family) - before),
                    .goal = 0});
}

} // namespace klova::bench
