#include "Racer.h"

#include "ManagerKeys.h"
#include "desktop/Files.h"
#include "desktop/Grabs.h"
#include "desktop/Monitors.h"
#include "desktop/Wait.h"

#include <stdexcept>
#include <thread>

namespace klova::bench {
namespace {

using namespace std::chrono_literals;

constexpr std::uint32_t kChord = XCB_MOD_MASK_4 | XCB_MOD_MASK_CONTROL;
constexpr int kWarmUps = 20;
constexpr auto kPatience = 400ms; // less than until a key that is held begins to repeat

std::string nameOf(Answer answer) {
    const char* const names[] = {"Klova", "the bare program", "the manager", "daemon and tool"};
    return names[static_cast<std::size_t>(answer)];
}

std::string text(int number) { return std::to_string(number); }

rig::Rect firstMonitor(const RacerOptions& options) {
    return {0, 0, options.screen.width / options.monitors, options.screen.height};
}

void splitScreen(rig::Display& display, const RacerOptions& options) {
    std::vector<rig::Rect> monitors;
    const auto first = firstMonitor(options);
    monitors.reserve(static_cast<std::size_t>(options.monitors));
    for (int i = 0; i < options.monitors; ++i)
        monitors.push_back({i * first.width, 0, first.width, first.height});
    if (options.monitors > 1)
        rig::setMonitors(display, monitors);
}

/// What to ask for so that the frame fills a rectangle.
rig::Rect request(rig::Display& display, xcb_window_t window, const rig::Rect& frame) {
    const auto extents = display.values(window, "_NET_FRAME_EXTENTS");
    if (extents.size() != 4)
        return frame;
    const auto side = [&](std::size_t i) { return static_cast<int>(extents[i]); };
    return {frame.x, frame.y, frame.width - side(0) - side(1), frame.height - side(2) - side(3)};
}

std::vector<std::string> words(const rig::Rect& rect) {
    return {text(rect.x), text(rect.y), text(rect.width), text(rect.height)};
}

std::string daemonSettings(const rig::Rect& left, const rig::Rect& right) {
    const auto command = [](const rig::Rect& to) {
        std::string result = "\n\twmctrl -r :ACTIVE: -e 1";
        for (const auto& word : words(to))
            result += "," + word;
        return result + "\n";
    };
    return "super + ctrl + Left" + command(left) + "super + ctrl + Right" + command(right);
}

} // namespace

rig::DesktopOptions desktopFor(const RacerOptions& options) {
    return {.windowManager = options.manager,
            .screen = options.screen,
            .prepare = [&options](rig::Session& session, rig::Display& display) {
                splitScreen(display, options);
                if (options.answer == Answer::manager)
                    bindTilingKeys(session, options.manager);
            }};
}

Racer::Racer(const RacerOptions& options, const std::filesystem::path& programs)
    : options_(options), programs_(programs), monitor_(firstMonitor(options)),
      desktop_(desktopFor(options_)), crowd_(display().name(), options_.windows),
      window_(display().name()), hands_(display().name()), left_(hands_.keyCode(XKB_KEY_Left)),
      right_(hands_.keyCode(XKB_KEY_Right)) {
    // From here on its size stays: a resize may be told by a notice that counts from the frame.
    if (!rig::activate(display(), window_.id()) ||
        !rig::place(display(), window_.id(), half(false)))
        throw std::runtime_error("the window does not take its first half");
    listen(window_.connection(), window_.id(), XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    if (options_.covered)
        curtain_.emplace(
            display().name(),
            rig::TestWindowOptions{.area = desktop_.server().screen(), .unmanaged = true});
    start();
    hold();
    warmUp();
}

rig::Rect Racer::half(bool right) const {
    const int width = monitor_.width / 2;
    return {right ? width : 0, 0, width, monitor_.height};
}

std::vector<std::string> Racer::bareCommand() {
    std::vector<std::string> command{programs_ / "klova-bench-key", std::to_string(window_.id()),
                                     std::to_string(kChord)};
    for (const bool right : {false, true}) {
        command.push_back(text(right ? right_ : left_));
        for (const auto& word : words(request(display(), window_.id(), half(right))))
            command.push_back(word);
    }
    return command;
}

void Racer::start() {
    if (options_.answer == Answer::klova) {
        klova_.emplace(desktop_, programs_ / "klova");
    } else if (options_.answer == Answer::bare) {
        program_.emplace(desktop_.launch(bareCommand()));
        rig::require(display(), "bare program that holds its keys",
                     [&] { return rig::keyReserved(display(), right_, kChord); });
    } else if (options_.answer == Answer::tool) {
        const auto settings = desktop_.session().config() / "sxhkd" / "sxhkdrc";
        rig::writeFile(settings, daemonSettings(request(display(), window_.id(), half(false)),
                                                request(display(), window_.id(), half(true))));
        desktop_.session().setVariable("SXHKD_SHELL", "/bin/sh");
        program_.emplace(desktop_.launch({"sxhkd", "-c", settings}));
    }
}

void Racer::hold() {
    hands_.press(XKB_KEY_Super_L);
    hands_.press(XKB_KEY_Control_L);
    hands_.roundTrip();
    if (klova_)
        rig::require(display(), "arming", [&] { return rig::keyboardGrabbed(display()); });
}

/// A program that has just started may not have its keys yet.
void Racer::warmUp() {
    const auto end = Clock::now() + 20s;
    for (int moved = 0; moved < kWarmUps;) {
        if (tryToRun())
            ++moved;
        else if (Clock::now() > end)
            throw std::runtime_error("no move by " + nameOf(options_.answer) + " under " +
                                     options_.manager);
        std::this_thread::sleep_for(20ms);
    }
}

double Racer::run() {
    const auto time = tryToRun();
    if (!time)
        throw std::runtime_error("a key to " + nameOf(options_.answer) + " moved no window under " +
                                 options_.manager);
    return *time;
}

std::optional<double> Racer::tryToRun() {
    onTheRight_ = !onTheRight_;
    const auto arrived = [&, middle = half(true).x](const xcb_generic_event_t& event) {
        // Made up by the manager, and so in root coordinates.
        if (event.response_type != (XCB_CONFIGURE_NOTIFY | 0x80))
            return false;
        const auto& notice = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
        return (notice.x + notice.border_width >= middle) == onTheRight_;
    };
    const auto arrow = onTheRight_ ? right_ : left_;
    const auto pressed = Clock::now();
    hands_.pressCode(arrow);
    const auto moved = awaitEvent(window_.connection(), arrived, kPatience);
    hands_.releaseCode(arrow);
    return moved ? std::optional(microseconds(*moved - pressed)) : std::nullopt;
}

} // namespace klova::bench
