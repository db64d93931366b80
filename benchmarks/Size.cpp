#include "Benchmarks.h"
#include "ProcessCost.h"
#include "Starter.h"
#include "desktop/Injector.h"
#include "desktop/Trays.h"
#include "desktop/Wait.h"
#include "desktop/Windows.h"

#include <algorithm>
#include <stdexcept>
#include <thread>

namespace klova::bench {
namespace {

constexpr double kGoal = 20; // MiB

/// Klova, its icon on show, and what a person does with its panels.
class Panels {
public:
    explicit Panels(const Run& run)
        : tray_(rig::startNotifierHost(desktop_)), hands_(display().name()),
          starter_(desktop_, run.programs / "klova") {}

    void start() {
        starter_.start();
        awaitIcon();
    }
    void startForTheFirstTime() {
        starter_.end();
        rig::require(display(), "the end of the icon",
                     [&] { return rig::announcedBy(desktop_).empty(); });
        std::filesystem::remove_all(desktop_.session().config() / "klova");
        starter_.start();
        awaitIcon();
    }
    void leadThroughTour() {
        awaitPanel();
        for (int page = 0; page < 4; ++page) {
            std::this_thread::sleep_for(std::chrono::seconds(1)); // the page moves in
            hands_.tap(XKB_KEY_Return);
        }
        awaitNoPanel();
    }
    void openAndClose(const std::string& title) {
        const auto menu = rig::announcedMenu(desktop_);
        const auto entry = std::ranges::find(menu, title, &rig::MenuEntry::title);
        if (entry == menu.end())
            throw std::runtime_error("the menu does not offer " + title);
        rig::choose(desktop_, *entry);
        awaitPanel();
        hands_.tap(XKB_KEY_Escape);
        awaitNoPanel();
    }
    Memory memory() { return memoryOf(familyOf(starter_.process().id())); }

private:
    rig::Display& display() { return desktop_.display(); }
    void awaitIcon() {
        rig::require(display(), "Klova's icon",
                     [&] { return !rig::announcedBy(desktop_).empty(); });
    }
    void awaitPanel() {
        const auto panel = rig::awaitWindow(display(), starter_.process());
        rig::require(display(), "the panel's focus",
                     [&] { return rig::activeWindow(display()) == panel; });
    }
    void awaitNoPanel() {
        rig::require(display(), "the end of the panel",
                     [&] { return !rig::windowOfProcess(display(), starter_.process().id()); });
    }

    rig::VirtualDesktop desktop_;
    rig::Process tray_;
    rig::Injector hands_;
    Starter starter_;
};

void report(Report& report, const std::string& when, const Memory& memory, double goal) {
    report.add({.name = "memory of its own, " + when,
                .unit = "MiB",
                .value = memory.own,
                .goal = goal > 0 ? std::optional(goal) : std::nullopt});
    report.add({.name = "memory written, " + when, .unit = "MiB", .value = memory.written});
    report.add({.name = "memory resident, " + when, .unit = "MiB", .value = memory.resident});
}

double strippedSize(const std::filesystem::path& program) {
    const rig::TemporaryDirectory folder;
    const auto copy = folder.path() / "klova";
    rig::Process strip({"strip", "-o", copy, program}, {.environment = {{"PATH", "/usr/bin"}}});
    if (strip.waitExit(rig::kDeadline) != 0)
        throw std::runtime_error("the program cannot be stripped");
    return static_cast<double>(std::filesystem::file_size(copy)) / 1024;
}

} // namespace

void measureSize(Run& run) {
    if (run.wants("size of the program"))
        run.report.add({.name = "size of the program, stripped",
                        .unit = "KiB",
                        .value = strippedSize(run.programs / "klova")});
    if (!run.wants("memory"))
        return;
    Panels panels(run);
    panels.start();
    report(run.report, "after the start", panels.memory(), kGoal);
    for (const std::string title : {"About Klova", "Preferences…"}) {
        panels.openAndClose(title);
        report(run.report, "and after \"" + title + "\"", panels.memory(), 0);
    }
    panels.startForTheFirstTime();
    panels.leadThroughTour();
    report(run.report, "after a first start and the tour", panels.memory(), 0);
}

} // namespace klova::bench
