#include "Benchmarks.h"
#include "Listener.h"
#include "Wakefulness.h"
#include "desktop/Klova.h"
#include "desktop/TestWindow.h"

#include <algorithm>
#include <array>
#include <memory>
#include <stdexcept>
#include <thread>

namespace klova::bench {
namespace {

using namespace std::chrono_literals;

constexpr int kWarmUps = 50;
constexpr int kHeats = 4; // each on new desktops: no two of them are alike in all
constexpr int kRounds = 400;
constexpr auto kPause = 2ms;
constexpr double kNoise = 1.05;

enum Beside {
    klova,
    nothing,
    nothingAgain,
    watcher, // a program that asks for the same events and does nothing
};

/// A desktop with a window that has the focus and the pointer.
class Typist {
public:
    Typist(const Run& run, Beside beside)
        : window_(desktop_.server().display()), hands_(desktop_.server().display()),
          key_(hands_.keyCode(XKB_KEY_a)) {
        if (beside == watcher)
            watcher_ = std::make_unique<rig::Process>(
                desktop_.launch({run.programs / "klova-bench-watch"}));
        if (beside == klova)
            klova_ = std::make_unique<rig::Klova>(desktop_, run.programs / "klova");
        if (!rig::activate(desktop_.display(), window_.id()))
            throw std::runtime_error("the window does not become the active one");
        const auto area = rig::clientArea(desktop_.display(), window_.id());
        hands_.movePointer(area.x + area.width / 2, area.y + area.height / 2);
        hands_.roundTrip();
    }

    double key() {
        const double time = await(XCB_KEY_PRESS, [&] { hands_.pressCode(key_); });
        hands_.releaseCode(key_);
        return time;
    }
    double click() {
        const double time = await(XCB_BUTTON_PRESS, [&] { hands_.pressButton(1); });
        hands_.releaseButton(1);
        return time;
    }

private:
    template <class Action> double await(std::uint8_t type, const Action& action) {
        const auto before = Clock::now();
        action();
        const auto after = awaitEvent(
            window_.connection(),
            [type](const auto& event) { return (event.response_type & 0x7F) == type; }, 1s);
        if (!after)
            throw std::runtime_error("an unarmed event did not arrive");
        return microseconds(*after - before);
    }

    rig::VirtualDesktop desktop_;
    rig::TestWindow window_;
    rig::Injector hands_;
    xcb_keycode_t key_;
    std::unique_ptr<rig::Klova> klova_;
    std::unique_ptr<rig::Process> watcher_;
};

using Times = std::array<Samples, 4>;

void report(Report& report, const std::string& name, const Times& times) {
    // Two desktops that are the same are never measured the same: no goal can be stricter.
    const auto noise = ratioOf(times[nothingAgain], times[nothing], 0.5);
    report.compare(name + ", with Klova against without", "µs", times[klova], times[nothing],
                   std::max(kNoise, noise.spread.high));
    report.compareSlowest(name + ", with Klova against without", "µs", times[klova], times[nothing],
                          std::nullopt);
    report.compare(name + ", with Klova against a bare watcher", "µs", times[klova], times[watcher],
                   std::nullopt);
    report.compare(name + ", without against without (noise)", "µs", times[nothingAgain],
                   times[nothing], std::nullopt);
}

void measure(Run& run, Times& keys, Times& clicks) {
    std::vector<std::unique_ptr<Typist>> typists;
    for (const auto beside : {klova, nothing, nothingAgain, watcher})
        typists.push_back(std::make_unique<Typist>(run, beside));
    std::array<std::size_t, 4> order{klova, nothing, nothingAgain, watcher};
    const Wakefulness awake;
    for (int round = -kWarmUps; round < run.rounds(kRounds); ++round) {
        std::ranges::shuffle(order, run.random);
        for (const auto who : order) {
            const double key = typists[who]->key();
            std::this_thread::sleep_for(kPause);
            const double click = typists[who]->click();
            std::this_thread::sleep_for(kPause);
            if (round < 0)
                continue;
            keys[who].push_back(key);
            clicks[who].push_back(click);
        }
    }
}

} // namespace

void measureUnarmedInput(Run& run) {
    if (!run.wants("unarmed key, with") && !run.wants("unarmed click, with"))
        return;
    Times keys, clicks;
    for (int heat = 0; heat < kHeats; ++heat)
        measure(run, keys, clicks);
    report(run.report, "unarmed key", keys);
    report(run.report, "unarmed click", clicks);
}

} // namespace klova::bench
