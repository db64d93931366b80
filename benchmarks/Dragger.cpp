#include "Dragger.h"

#include "ProcessCost.h"
#include "desktop/Grabs.h"
#include "desktop/Wait.h"
#include "desktop/Windows.h"

#include <cmath>
#include <ctime>
#include <future>
#include <stdexcept>

namespace klova::bench {
namespace {

using namespace std::chrono_literals;

constexpr std::uint32_t kChord = XCB_MOD_MASK_4 | XCB_MOD_MASK_CONTROL;
constexpr rig::Rect kPlace{200, 150, 260, 200};
constexpr auto kPatience = 2s; // from the last step to the window's arrival

/// Without the spinning that a short sleep_until ends with in the rig: the processors are needed.
void sleepUntil(Clock::time_point time) {
    const auto since = time.time_since_epoch();
    const auto seconds = std::chrono::floor<std::chrono::seconds>(since);
    const timespec at{seconds.count(), (since - seconds).count()};
    ::clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &at, nullptr);
}

Offset operator-(const Offset& a, const Offset& b) { return {a.x - b.x, a.y - b.y}; }
Offset operator+(const Offset& a, const Offset& b) { return {a.x + b.x, a.y + b.y}; }

double milliseconds(Clock::duration time) { return microseconds(time) / 1000; }

} // namespace

Dragger::Dragger(const DraggerOptions& options, const std::filesystem::path& programs)
    : options_(options), programs_(programs), desktop_({.windowManager = options.manager}),
      client_(desktop_.launch({programs_ / "klova-bench-client", options.slowClient ? "20" : "0"})),
      window_(rig::awaitWindow(display(), client_)), frame_(frameOf(window_)),
      hands_(display().name()), onlooker_(display().name()) {
    if (!rig::activate(display(), window_) || !rig::place(display(), window_, kPlace))
        throw std::runtime_error("the window does not take its place");
    listen(onlooker_, onlooker_.root(), XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    pointer_ = {kPlace.x + kPlace.width / 2, kPlace.y + kPlace.height / 2};
    hands_.movePointer(pointer_.x, pointer_.y);
    start();
    hold();
    drag(DragPath(2, 20), 1000); // Klova's first step of all is none
}

/// The window that is moved on the screen: the child of the root that holds the client's.
xcb_window_t Dragger::frameOf(xcb_window_t window) {
    while (true) {
        const auto tree = rig::owned(xcb_query_tree_reply(
            display().get(), xcb_query_tree(display().get(), window), nullptr));
        if (!tree)
            throw std::runtime_error("the window to be dragged is gone");
        if (tree->parent == tree->root)
            return window;
        window = tree->parent;
    }
}

Offset Dragger::placeOf(xcb_window_t window) {
    const auto place = rig::owned(xcb_get_geometry_reply(
        display().get(), xcb_get_geometry(display().get(), window), nullptr));
    if (!place)
        throw std::runtime_error("the window to be dragged is gone");
    return {place->x, place->y};
}

std::vector<std::string> Dragger::bareCommand() {
    const rig::Rect frame = rig::visibleFrame(display(), window_);
    const rig::Rect client = rig::clientArea(display(), window_);
    std::vector<std::string> command{programs_ / "klova-bench-drag", std::to_string(window_),
                                     std::to_string(kChord)};
    for (const int number : {frame.x, frame.y, client.width, client.height})
        command.push_back(std::to_string(number));
    return command;
}

void Dragger::start() {
    if (options_.mover == Mover::klova)
        klova_.emplace(desktop_, programs_ / "klova");
    if (options_.mover != Mover::bare)
        return;
    bare_.emplace(desktop_.launch(bareCommand()));
    rig::require(display(), "bare program that holds its button",
                 [&] { return rig::buttonReserved(display(), 1, kChord); });
}

void Dragger::hold() {
    if (options_.mover == Mover::manager) {
        hands_.press(XKB_KEY_Alt_L);
    } else {
        hands_.press(XKB_KEY_Super_L);
        hands_.press(XKB_KEY_Control_L);
    }
    hands_.roundTrip();
    if (klova_)
        rig::require(display(), "arming", [&] { return rig::keyboardGrabbed(display()); });
}

pid_t Dragger::moverId() {
    return klova_ ? klova_->process().id() : bare_ ? bare_->id() : desktop_.manager().processId();
}

/// Returns when each step was made, the press of the button being the first.
std::vector<Clock::time_point> Dragger::move(const DragPath& path, int stepsPerSecond) {
    std::vector<Clock::time_point> steps;
    steps.reserve(path.steps() + 1);
    const auto pace = Clock::duration(1s) / stepsPerSecond;
    hands_.pressButton(1);
    steps.push_back(Clock::now());
    auto next = Clock::now() + 20ms;
    for (std::size_t step = 1; step <= path.steps(); ++step, next += pace) {
        sleepUntil(next);
        const Offset to = pointer_ + path.after(step);
        steps.push_back(Clock::now());
        hands_.movePointer(to.x, to.y);
    }
    return steps;
}

/// All moves of the frame, until it is back where it began or until told to stop.
std::vector<Dragger::Seen> Dragger::watch(const std::stop_token& stop, const Offset& start) {
    std::vector<Seen> seen;
    const auto note = [&](const xcb_generic_event_t& event) {
        const auto& notice = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
        if ((event.response_type & 0x7F) != XCB_CONFIGURE_NOTIFY || notice.window != frame_)
            return false;
        seen.push_back({Clock::now(), {notice.x, notice.y}});
        return seen.size() > 1 && seen.back().place == start;
    };
    while (!stop.stop_requested())
        if (awaitEvent(onlooker_, note, 20ms))
            return seen;
    return seen;
}

DragResult Dragger::drag(const DragPath& path, int stepsPerSecond, bool countRequests) {
    const Offset start = placeOf(frame_);
    const auto mover = familyOf(moverId());
    const std::vector<pid_t> manager{desktop_.manager().processId()};
    const double moverBefore = processorMicroseconds(mover);
    const double managerBefore = processorMicroseconds(manager);
    std::optional<RequestCount> requests;
    if (countRequests)
        requests.emplace(display().name(), moverId());
    std::stop_source stop;
    auto watching = std::async(std::launch::async, [&] { return watch(stop.get_token(), start); });
    const auto steps = move(path, stepsPerSecond);
    if (watching.wait_for(kPatience) != std::future_status::ready)
        stop.request_stop();
    auto result = judge(path, start, steps, watching.get());
    hands_.releaseButton(1);
    hands_.roundTrip();
    sleepUntil(Clock::now() + 30ms); // what follows a move is done by then
    const Offset off = placeOf(frame_) - start;
    result.offAtEnd = std::abs(off.x) + std::abs(off.y);
    const auto count = static_cast<double>(path.steps());
    if (requests)
        result.requests = static_cast<double>(requests->stop()) / count;
    result.managerTime = (processorMicroseconds(manager) - managerBefore) / count;
    if (options_.mover != Mover::manager)
        result.moverTime = (processorMicroseconds(mover) - moverBefore) / count;
    return result;
}

DragResult Dragger::judge(const DragPath& path, const Offset& start,
                          const std::vector<Clock::time_point>& steps,
                          const std::vector<Seen>& seen) {
    DragResult result;
    std::size_t reached = 0;
    for (const auto& move : seen) {
        const auto now = path.stepNear(move.place - start, reached);
        for (; reached < now; ++reached)
            result.delays.push_back(milliseconds(move.at - steps[reached + 1]));
    }
    // A step that was never followed was waited for until the end.
    const auto end = Clock::now();
    result.behindAtEnd = milliseconds(
        (seen.empty() || reached < path.steps() ? end : seen.back().at) - steps.back());
    for (; reached < path.steps(); ++reached)
        result.delays.push_back(milliseconds(end - steps[reached + 1]));
    result.moves = static_cast<double>(seen.size()) / static_cast<double>(path.steps());
    return result;
}

} // namespace klova::bench
