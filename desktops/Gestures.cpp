#include "Gestures.h"

#include "Trial.h"
#include "desktop/TestWindow.h"
#include "desktop/TrayIcon.h"
#include "desktop/Trays.h"

#include <algorithm>
#include <array>

namespace klova::desktops {
namespace {

using namespace std::chrono_literals;
using Path = std::filesystem::path;
using rig::Place;

/// No fault is a gesture that works and leaves nothing behind.
Finding judged(Trial& trial, std::string fault) {
    if (fault.empty())
        fault = trial.leftBehind();
    if (fault.empty() && !trial.klova().process().running())
        fault = "Klova ended: " + trial.klova().process().output();
    return fault.empty() ? Finding{} : Finding{Outcome::fails, fault};
}

/// A gesture that the manager limits, with Klova or without. It may leave nothing behind either.
Finding limited(Trial& trial, Outcome outcome) {
    auto finding = judged(trial, "");
    return finding.outcome == Outcome::works ? Finding{outcome, ""} : finding;
}

/// Puts a window of 300x220 at `from` and drags it by `stepX` and `stepY`, 100 times.
Finding drag(Trial& trial, xcb_window_t window, rig::Rect from, int stepX, int stepY) {
    constexpr int steps = 100;
    trial.prepare(window, from);
    const int x = from.x + 290, y = from.y + 100;
    trial.hands().movePointer(x, y);
    trial.hold();
    trial.klova().beginDrag(x + stepX, y + stepY);
    for (int i = 2; i <= steps; ++i)
        trial.hands().movePointer(x + i * stepX, y + i * stepY);
    trial.hands().releaseButton(1);
    // The first motion only says where the pointer is.
    from.x += (steps - 1) * stepX;
    from.y += (steps - 1) * stepY;
    const auto fault = trial.misplaced(window, from);
    trial.letGo();
    if (!fault.empty() && !rig::place(trial.display(), window, from))
        return limited(trial, Outcome::staysOnScreen);
    return judged(trial, fault);
}

Finding dragWithinScreen(const Path& klova, const std::string& manager) {
    Trial trial(klova, manager);
    const rig::TestWindow window(trial.display().name());
    return drag(trial, window.id(), {120, 90, 300, 220}, 3, 2);
}

Finding dragOverTheEdge(const Path& klova, const std::string& manager) {
    Trial trial(klova, manager);
    const rig::TestWindow window(trial.display().name());
    return drag(trial, window.id(), {120, 90, 300, 220}, -3, 0);
}

Finding doubleClicks(const Path& klova, const std::string& manager) {
    Trial trial(klova, manager);
    const rig::TestWindow window(trial.display().name());
    trial.prepare(window.id());
    std::string fault;
    trial.hold();
    int x = 200;
    for (const auto place : {Place::wholeScreen, Place::centre, Place::wholeScreen}) {
        trial.klova().doubleClick(x += 40, 300);
        if (fault.empty())
            fault = trial.misplaced(window.id(), place);
    }
    trial.letGo();
    return judged(trial, fault);
}

/// By a right click; where the manager does not do it, it is asked without Klova.
Finding minimized(Trial& trial, xcb_window_t window) {
    trial.hold();
    trial.klova().click(3);
    const bool done = rig::awaitMinimized(trial.display(), window);
    trial.letGo();
    if (!done && !rig::minimize(trial.display(), window))
        return limited(trial, Outcome::noMinimizing);
    return judged(trial, done ? "" : "is not minimized");
}

Finding rightClick(const Path& klova, const std::string& manager) {
    Trial trial(klova, manager);
    const rig::TestWindow other(trial.display().name());
    trial.focus(other.id()); // some managers give it the focus when they find the time
    const rig::TestWindow window(trial.display().name());
    trial.prepare(window.id());
    auto finding = minimized(trial, window.id());
    return rig::isMinimized(trial.display(), other.id())
               ? Finding{Outcome::fails, "another window is minimized"}
               : finding;
}

Finding letter(const Path& klova, const std::string& manager) {
    Trial trial(klova, manager);
    auto& display = trial.display();
    const rig::TestWindow other(display.name());
    trial.focus(other.id());
    const rig::TestWindow window(display.name());
    trial.prepare(window.id());
    const auto before = rig::visibleFrame(display, window.id());
    if (auto finding = minimized(trial, window.id()); finding.outcome != Outcome::works)
        return finding;
    trial.hold();
    trial.hands().tap(XKB_KEY_c);
    const bool back = rig::awaitMinimized(display, window.id(), false);
    const bool focused = rig::awaitActive(display, window.id());
    trial.letGo();
    return judged(trial, !back      ? "is still minimized"
                         : !focused ? "comes back without the focus"
                                    : trial.misplaced(window.id(), before));
}

std::vector<rig::SnapGesture> snaps(bool quarters) {
    auto result = rig::snapGestures();
    std::erase_if(result,
                  [&](const auto& gesture) { return (gesture.keys.size() > 1) != quarters; });
    return result;
}

Finding snapPlain(const Path& klova, const std::string& manager, bool quarters) {
    Trial trial(klova, manager);
    const rig::TestWindow window(trial.display().name());
    trial.prepare(window.id());
    return judged(trial, trial.snap(window.id(), snaps(quarters)));
}

Finding halves(const Path& klova, const std::string& manager) {
    return snapPlain(klova, manager, false);
}

Finding quarters(const Path& klova, const std::string& manager) {
    return snapPlain(klova, manager, true);
}

/// Under a panel along the top a window fills what is left of its part, or all of it.
Finding besidePanel(const Path& klova, const std::string& manager) {
    constexpr int height = 30;
    Trial trial(klova, manager);
    auto& display = trial.display();
    const auto panel = trial.desktop().launch(
        {"trayer", "--edge", "top", "--widthtype", "percent", "--width", "100", "--height",
         std::to_string(height), "--SetDockType", "true", "--SetPartialStrut", "true"});
    rig::awaitOwner(display, "_NET_SYSTEM_TRAY_S0");
    const rig::TestWindow window(display.name());
    trial.prepare(window.id());
    std::string fault;
    bool beneath = false;
    trial.hold();
    for (const auto& gesture : rig::snapGestures()) {
        const auto whole = rig::target(gesture.place, trial.screen());
        auto left = whole;
        left.y = std::max(whole.y, height);
        left.height = whole.bottom() - left.y;
        trial.klova().snap(gesture);
        trial.settle(window.id());
        const auto frame = rig::visibleFrame(display, window.id());
        beneath = beneath || (frame == whole && whole != left);
        if (frame != whole && frame != left)
            fault += gesture.name + ": " + toText(frame) + "; ";
    }
    trial.letGo();
    return fault.empty() && beneath ? limited(trial, Outcome::reachesBeneath)
                                    : judged(trial, fault);
}

Finding maximized(const Path& klova, const std::string& manager) {
    Trial trial(klova, manager);
    const rig::TestWindow window(trial.display().name());
    trial.prepare(window.id());
    for (const auto& gesture : {rig::snapGestures()[1], rig::snapGestures()[10]}) {
        if (!rig::maximize(trial.display(), window.id()))
            return limited(trial, Outcome::noMaximizing);
        const auto fault = trial.snap(window.id(), {gesture});
        if (!fault.empty() && !rig::unmaximize(trial.display(), window.id()))
            return limited(trial, Outcome::staysMaximized);
        if (!fault.empty())
            return judged(trial, fault);
    }
    return judged(trial, rig::isMaximized(trial.display(), window.id()) ? "stays maximized" : "");
}

Finding fullscreen(const Path& klova, const std::string& manager) {
    Trial trial(klova, manager);
    auto& display = trial.display();
    const rig::TestWindow window(display.name());
    trial.prepare(window.id());
    const std::string state = "_NET_WM_STATE_FULLSCREEN";
    display.tellManager(window.id(), "_NET_WM_STATE", {1, display.atom(state), 0, 2});
    rig::require(display, "fullscreen window", [&] {
        return rig::hasState(display, window.id(), state) &&
               rig::clientArea(display, window.id()) == trial.screen();
    });
    return judged(trial, trial.snap(window.id(), {rig::snapGestures()[1]}));
}

/// Of a window that takes whole steps only.
bool takesAnySize(Trial& trial, xcb_window_t window) {
    const auto frame = rig::visibleFrame(trial.display(), window);
    const auto wanted = rig::target(rig::snapGestures().back().place, trial.screen());
    return frame.width == wanted.width && frame.height == wanted.height;
}

Finding terminal(const Path& klova, const std::string& manager) {
    Trial trial(klova, manager);
    auto program = trial.desktop().launch({"xterm"});
    const auto window = rig::awaitWindow(trial.display(), program);
    trial.prepare(window);
    const auto fault = trial.snap(window, rig::snapGestures());
    return fault.empty() && !takesAnySize(trial, window) ? limited(trial, Outcome::worksInSteps)
                                                         : judged(trial, fault);
}

Finding fixedSize(const Path& klova, const std::string& manager) {
    Trial trial(klova, manager);
    const rig::TestWindow window(trial.display().name(), {.fixedSize = true});
    trial.focus(window.id());
    const auto before = rig::visibleFrame(trial.display(), window.id());
    trial.prepare(window.id(), {150, 120, before.width, before.height});
    return judged(trial, trial.snap(window.id(), rig::snapGestures()));
}

Finding selfDecorated(const Path& klova, const std::string& manager) {
    Trial trial(klova, manager);
    auto program = trial.desktop().launch({"env", "GTK_CSD=1", "mousepad", "--disable-server"});
    const auto window = rig::awaitWindow(trial.display(), program);
    trial.prepare(window);
    return judged(trial, trial.snap(window, rig::snapGestures()));
}

using Input = std::vector<std::pair<int, int>>; // type and detail

Input heard(rig::TestWindow& window) {
    Input result;
    for (const auto& record : window.takeInput())
        result.emplace_back(record.type, record.detail);
    return result;
}

Finding unarmed(const Path& klova, const std::string& manager) {
    Trial trial(klova, manager);
    rig::TestWindow window(trial.display().name());
    trial.prepare(window.id());
    trial.hands().movePointer(300, 300);
    heard(window);
    Input wanted;
    for (const auto key : std::initializer_list<xcb_keysym_t>{XKB_KEY_a, XKB_KEY_Left, XKB_KEY_c,
                                                              XKB_KEY_t, XKB_KEY_Control_L}) {
        const auto code = trial.hands().keyCode(key);
        wanted.insert(wanted.end(), {{XCB_KEY_PRESS, code}, {XCB_KEY_RELEASE, code}});
        trial.hands().tap(key);
    }
    for (const std::uint8_t button : std::array<std::uint8_t, 6>{1, 1, 2, 3, 4, 5}) {
        wanted.insert(wanted.end(), {{XCB_BUTTON_PRESS, button}, {XCB_BUTTON_RELEASE, button}});
        trial.klova().click(button);
    }
    Input all;
    rig::waitUntil(trial.display(), "all input", [&] {
        const auto more = heard(window);
        all.insert(all.end(), more.begin(), more.end());
        return all.size() >= wanted.size();
    });
    return judged(trial, all == wanted ? ""
                                       : "heard " + std::to_string(all.size()) + " of " +
                                             std::to_string(wanted.size()) + " events");
}

Finding armed(const Path& klova, const std::string& manager) {
    Trial trial(klova, manager);
    rig::TestWindow window(trial.display().name());
    trial.prepare(window.id());
    trial.hands().movePointer(300, 300);
    heard(window);
    trial.hold();
    for (const auto key : std::initializer_list<xcb_keysym_t>{XKB_KEY_Left, XKB_KEY_x, XKB_KEY_F1,
                                                              XKB_KEY_Return, XKB_KEY_Right})
        trial.hands().tap(key);
    trial.klova().click(1);
    trial.letGo();
    const auto fault = trial.misplaced(window.id(), Place::right);
    const auto keys = {trial.hands().keyCode(XKB_KEY_Super_L),
                       trial.hands().keyCode(XKB_KEY_Control_L)};
    const auto input = heard(window);
    const auto leaked = std::ranges::count_if(
        input, [&](const auto& event) { return std::ranges::count(keys, event.second) == 0; });
    return judged(trial,
                  leaked != 0 ? "the window heard " + std::to_string(leaked) + " events" : fault);
}

Finding trayIcon(const Path& klova, const std::string& manager) {
    Trial trial(klova, manager, true);
    std::optional<rig::Process> tray;
    if (!trial.desktop().manager().hasTray())
        tray.emplace(rig::startEmbeddingTray(trial.desktop()));
    auto& display = trial.display();
    if (!rig::awaitIcon(display, rig::IconColour::resting))
        return {Outcome::fails, "no icon"};
    trial.hold();
    const auto turned = rig::awaitIcon(display, rig::IconColour::armed);
    trial.letGo();
    const auto icon = rig::awaitIcon(display, rig::IconColour::resting);
    if (!turned || !icon)
        return {Outcome::fails, "the icon does not change"};
    trial.hands().movePointer(icon->x, icon->y);
    trial.hands().click(1);
    // Not by asking for its grab, which would be in its way.
    const auto menu = rig::clientArea(display, rig::awaitUnmanaged(display, "klova"));
    trial.hands().movePointer(menu.x + menu.width / 2, menu.y + menu.height - 16);
    trial.hands().click(1);
    return trial.klova().process().waitExit(rig::kDeadline) == 0
               ? Finding{}
               : Finding{Outcome::fails, "the menu does not quit"};
}

Finding quit(const Path& klova, const std::string& manager) {
    Trial trial(klova, manager);
    rig::TestWindow window(trial.display().name());
    trial.prepare(window.id());
    trial.hold();
    trial.hands().tap(XKB_KEY_t);
    const auto status = trial.klova().process().waitExit(rig::kDeadline);
    trial.letGo();
    const auto left = trial.leftBehind();
    return status == 0 && left.empty() ? Finding{}
                                       : Finding{Outcome::fails, "does not end " + left};
}

} // namespace

std::string_view note(Outcome outcome) {
    switch (outcome) {
    case Outcome::worksInSteps:
        return "A terminal takes whole rows and columns only, so it may stay a little smaller; it "
               "keeps to the edges that the gesture names.";
    case Outcome::reachesBeneath:
        return "The window reaches beneath a panel, which covers its edge; elsewhere it ends at "
               "the "
               "panel.";
    case Outcome::staysOnScreen:
        return "The window stops at the screen's edge: this manager lets no program put one beyond "
               "it.";
    case Outcome::noMaximizing:
        return "This manager has no maximized windows. A double-click lets the window fill the "
               "screen all the same.";
    case Outcome::staysMaximized:
        return "This manager lets no program end a maximized window; its own keys and buttons do.";
    case Outcome::noMinimizing:
        return "This manager minimizes no window, whoever asks.";
    case Outcome::works:
    case Outcome::fails:
        break;
    }
    return {};
}

const std::vector<Gesture>& gestures() {
    static const std::vector<Gesture> table = {
        {"drag", dragWithinScreen},
        {"drag beyond the screen's edge", dragOverTheEdge},
        {"double-click: maximize, center", doubleClicks},
        {"right click: minimize", rightClick},
        {"C: bring back", letter},
        {"halves, by arrows and letters", halves},
        {"quarters, by two keys", quarters},
        {"snap beside a panel", besidePanel},
        {"snap a maximized window", maximized},
        {"snap a fullscreen window", fullscreen},
        {"snap a terminal", terminal},
        {"snap a window of fixed size", fixedSize},
        {"snap a window with its own title bar", selfDecorated},
        {"keys not held: all input passes", unarmed},
        {"keys held: programs hear nothing", armed},
        {"tray icon and its menu", trayIcon},
        {"T: quit", quit},
    };
    return table;
}

} // namespace klova::desktops
