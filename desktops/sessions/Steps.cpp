#include "sessions/Steps.h"

#include "desktop/Grabs.h"
#include "desktop/Monitors.h"
#include "desktop/Placement.h"
#include "desktop/TrayIcon.h"
#include "desktop/Trays.h"
#include "desktop/Wait.h"
#include "sessions/LoginSession.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <optional>
#include <regex>
#include <sstream>
#include <stdexcept>

namespace klova::desktops {
namespace {

using namespace std::chrono_literals;
using rig::Place;

/// Those lines of a session's own list that name both keys.
std::string withBothKeys(const std::string& list) {
    const std::regex super("Super|Mod4|Meta"), control("Primary|Control|Ctrl");
    std::istringstream lines(list);
    std::string found;
    for (std::string line; std::getline(lines, line);)
        if (std::regex_search(line, super) && std::regex_search(line, control))
            found += (found.empty() ? "" : "; ") + line;
    return found.empty() ? "none" : found;
}

class Play {
public:
    Play(const SessionRecipe& recipe, std::filesystem::path klova, std::filesystem::path pictures)
        : recipe_(recipe), klovaFile_(std::move(klova)), pictures_(std::move(pictures)),
          session_(recipe) {}

    std::vector<StepResult> all();

private:
    using Action = std::function<std::string()>;
    void step(const std::string& name, const Action& action);

    std::string logIn();
    std::string firstStart();
    std::string closeTour();
    std::string icon();
    std::string menu();
    std::string snaps();
    std::string doubleClicks();
    std::string drag();
    std::string minimize();
    std::string superAlone();
    std::string snapBeside(const std::vector<xcb_keysym_t>& keys);
    std::string ownShortcut();
    std::string launchAtLogin();
    std::string notification();
    std::string nextLogin();

    void hold() { session_.hands().press({XKB_KEY_Super_L, XKB_KEY_Control_L}); }
    void letGo() { session_.hands().release({XKB_KEY_Control_L, XKB_KEY_Super_L}); }
    bool holdsKeys() {
        // A session starts it when all that it knows of its own has come up.
        return rig::waitUntil(
            display(), "Klova that holds its keys",
            [&] {
                return rig::keyReserved(display(), session_.hands().keyCode(XKB_KEY_Super_L),
                                        XCB_MOD_MASK_CONTROL);
            },
            {}, 60s);
    }
    std::string misplaced(Place place);
    std::string newWindows(const std::function<void()>& act);
    void openEditor();

    rig::Display& display() { return session_.display(); }
    rig::VirtualDesktop& desktop() { return session_.desktop(); }

    const SessionRecipe& recipe_;
    std::filesystem::path klovaFile_;
    std::filesystem::path pictures_;
    LoginSession session_;
    std::optional<rig::Process> klova_;
    std::optional<rig::Process> editor_;
    xcb_window_t window_ = XCB_NONE;
    std::vector<StepResult> results_;
    std::string seen_;
};

void Play::step(const std::string& name, const Action& action) {
    seen_.clear();
    std::string fault;
    try {
        fault = action();
    } catch (const std::exception& failure) {
        fault = failure.what();
    }
    const auto number = std::to_string(results_.size() + 1);
    session_.picture(pictures_ /
                     (recipe_.name + "-" + (number.size() < 2 ? "0" : "") + number + ".png"));
    letGo();
    std::printf("%-5s %s %-36s %s%s%s\n", recipe_.name.c_str(), number.c_str(), name.c_str(),
                fault.empty() ? "works" : ("FAILS: " + fault).c_str(), seen_.empty() ? "" : "; ",
                seen_.c_str());
    std::fflush(stdout);
    results_.push_back({name, fault, seen_});
}

std::vector<StepResult> Play::all() {
    step("log in", [&] { return logIn(); });
    step("first start leads to the tour", [&] { return firstStart(); });
    step("the tour closes", [&] { return closeTour(); });
    step("icon in the panel", [&] { return icon(); });
    step("menu of the icon", [&] { return menu(); });
    step("snap to every side and quarter", [&] { return snaps(); });
    step("double-click: maximize, center", [&] { return doubleClicks(); });
    step("drag", [&] { return drag(); });
    step("minimize and bring back", [&] { return minimize(); });
    step("own shortcut on Super+Ctrl+Left", [&] { return ownShortcut(); });
    step("launch at login, in the preferences", [&] { return launchAtLogin(); });
    step("a menu on Super alone", [&] { return superAlone(); });
    step("notification of what is missing", [&] { return notification(); });
    step("log out, log in: Klova is there", [&] { return nextLogin(); });
    return results_;
}

std::string Play::logIn() {
    session_.logIn();
    seen_ = "shortcuts with both keys: " + withBothKeys(session_.ask(recipe_.listShortcuts));
    return {};
}

std::string Play::firstStart() {
    klova_.emplace(desktop().launch({klovaFile_.string()}));
    const auto tour = rig::awaitWindow(display(), *klova_);
    return rig::awaitActive(display(), tour) ? "" : "the tour has no focus";
}

std::string Play::closeTour() {
    session_.hands().tap(XKB_KEY_Escape);
    const bool gone = rig::waitUntil(display(), "the end of the tour", [&] {
        return !rig::windowOfProcess(display(), klova_->id());
    });
    return gone ? "" : "it stays";
}

std::string Play::icon() {
    const auto resting = rig::awaitIcon(display(), rig::IconColour::resting);
    hold();
    const auto armed = rig::awaitIcon(display(), rig::IconColour::armed);
    letGo();
    seen_ = rig::announcedBy(desktop()).empty() ? "embedded" : "over the session bus";
    return resting && armed && rig::awaitIcon(display(), rig::IconColour::resting)
               ? ""
               : "no icon that changes";
}

std::string Play::menu() {
    const auto place = rig::awaitIcon(display(), rig::IconColour::resting);
    if (!place)
        return "no icon";
    const auto seen = newWindows([&] {
        session_.hands().movePointer(place->x, place->y);
        session_.hands().click(1);
        session_.picture(pictures_ / (recipe_.name + "-menu.png"));
    });
    return seen == "opens it" ? "" : "it does not open";
}

void Play::openEditor() {
    if (editor_)
        return;
    editor_.emplace(desktop().launch({"mousepad", "--disable-server"}));
    window_ = rig::awaitWindow(display(), *editor_);
    rig::activate(display(), window_);
    session_.settle();
}

/// Where a panel keeps the window away from the edge it fills what is left.
std::string Play::misplaced(Place place) {
    const auto whole = rig::target(place, session_.screen());
    const auto area = session_.workArea();
    rig::Rect left{std::max(whole.x, area.x), std::max(whole.y, area.y), 0, 0};
    left.width = std::min(whole.right(), area.right()) - left.x;
    left.height = std::min(whole.bottom(), area.bottom()) - left.y;
    session_.settle();
    const auto frame = rig::visibleFrame(display(), window_);
    if (frame == left && whole != left && seen_.empty())
        seen_ = "up to the panel";
    return frame == whole || frame == left
               ? ""
               : "expected " + toText(whole) + " or " + toText(left) + ", is " + toText(frame);
}

std::string Play::snaps() {
    openEditor();
    std::string faults;
    hold();
    for (const auto& gesture : rig::snapGestures()) {
        session_.hands().press(gesture.keys);
        session_.hands().release(gesture.keys);
        if (const auto fault = misplaced(gesture.place); !fault.empty())
            faults += gesture.name + ": " + fault + "; ";
    }
    return faults;
}

std::string Play::doubleClicks() {
    openEditor();
    std::string faults;
    int x = 300;
    hold();
    for (const auto place : {Place::wholeScreen, Place::centre}) {
        session_.hands().movePointer(x += 40, 300);
        session_.hands().click(1);
        session_.hands().click(1);
        if (const auto fault = misplaced(place); !fault.empty())
            faults += fault + "; ";
    }
    return faults;
}

std::string Play::drag() {
    openEditor();
    const rig::Rect from{300, 200, 600, 400};
    if (!rig::place(display(), window_, from))
        return "the window cannot be put in its first place";
    session_.hands().movePointer(500, 400);
    hold();
    session_.hands().pressButton(1);
    for (int i = 1; i <= 40; ++i)
        session_.hands().movePointer(500 + 3 * i, 400 + 2 * i);
    session_.hands().releaseButton(1);
    const rig::Rect to{from.x + 3 * 39, from.y + 2 * 39, from.width, from.height};
    rig::awaitFrame(display(), window_, to);
    const auto frame = rig::visibleFrame(display(), window_);
    return frame == to ? "" : "expected " + toText(to) + ", is " + toText(frame);
}

std::string Play::minimize() {
    openEditor();
    hold();
    session_.hands().click(3);
    if (!rig::awaitMinimized(display(), window_))
        return "is not minimized";
    session_.hands().tap(XKB_KEY_c);
    return rig::awaitMinimized(display(), window_, false) && rig::awaitActive(display(), window_)
               ? ""
               : "does not come back";
}

std::string Play::newWindows(const std::function<void()>& act) {
    session_.settle();
    const auto before = session_.shownWindows();
    act();
    session_.settle();
    const bool opened = session_.shownWindows() > before;
    session_.hands().tap(XKB_KEY_Escape);
    rig::waitUntil(display(), "what was opened to close",
                   [&] { return session_.shownWindows() <= before; });
    return opened ? "opens it" : "does not";
}

/// What comes of a snap, and of the menu, by the order of the activation keys.
std::string Play::snapBeside(const std::vector<xcb_keysym_t>& keys) {
    rig::activate(display(), window_);
    rig::place(display(), window_, {300, 200, 600, 400});
    bool snapped = false;
    const auto opened = newWindows([&] {
        session_.hands().press(keys);
        session_.hands().tap(XKB_KEY_Left);
        snapped = misplaced(Place::left).empty();
        session_.hands().release({keys.rbegin(), keys.rend()});
    });
    return std::string(snapped ? "snaps" : "does not snap") +
           (opened == "opens it" ? ", and the menu opens" : "");
}

/// Where Super alone opens a menu.
std::string Play::superAlone() {
    openEditor();
    auto& hands = session_.hands();
    seen_ = "as it comes: " + newWindows([&] { hands.tap(XKB_KEY_Super_L); });
    const auto said = session_.ask(recipe_.bindSuper);
    session_.settle();
    const auto alone = newWindows([&] {
        hands.tap(XKB_KEY_Super_L);
        session_.picture(pictures_ / (recipe_.name + "-super.png"));
    });
    seen_ += "; once bound to Super: " + alone;
    seen_ += "; Super, then Ctrl and Left: " + snapBeside({XKB_KEY_Super_L, XKB_KEY_Control_L});
    const auto controlFirst = snapBeside({XKB_KEY_Control_L, XKB_KEY_Super_L});
    seen_ += "; Ctrl, then Super and Left: " + controlFirst;
    if (alone != "opens it")
        return "Super is not bound: " + said;
    return controlFirst == "snaps" ? "" : "with Ctrl first it " + controlFirst;
}

/// With Klova it is Klova's; without it is the session's, or it was never bound.
std::string Play::ownShortcut() {
    openEditor();
    const auto said = session_.ask(recipe_.bindShortcut);
    session_.settle();
    const auto made = [&] { return std::filesystem::exists(session_.mark()); };
    rig::activate(display(), window_);
    hold();
    session_.hands().tap(XKB_KEY_Right);
    session_.hands().tap(XKB_KEY_Left);
    const auto fault = misplaced(Place::left);
    letGo();
    const bool withKlova = made();
    klova_.reset();
    hold();
    session_.hands().tap(XKB_KEY_Left);
    const bool without = rig::waitUntil(display(), "the session's own shortcut", made);
    letGo();
    klova_.emplace(desktop().launch({klovaFile_.string()}));
    if (!without)
        return "the shortcut is none: " + said;
    if (withKlova)
        return "the session's acts as well";
    seen_ = "Klova's comes first, theirs stays silent";
    return holdsKeys() ? fault : "Klova does not come back";
}

std::string Play::launchAtLogin() {
    rig::require(display(), "Klova's icon", [&] { return !rig::announcedBy(desktop()).empty(); });
    rig::choose(desktop(), rig::announcedEntry(desktop(), "Preferences…"));
    const auto panel = rig::awaitWindow(display(), *klova_);
    rig::awaitActive(display(), panel);
    session_.settle();
    const auto frame = rig::visibleFrame(display(), panel);
    constexpr double across = 0.85, down = 0.935; // the switch
    session_.hands().movePointer(frame.x + static_cast<int>(across * frame.width),
                                 frame.y + static_cast<int>(down * frame.height));
    session_.hands().click(1);
    const auto entry = desktop().session().config() / "autostart" / "klova.desktop";
    const bool written = rig::waitUntil(display(), "an autostart entry",
                                        [&] { return std::filesystem::exists(entry); });
    session_.picture(pictures_ / (recipe_.name + "-preferences.png"));
    session_.hands().tap(XKB_KEY_Escape);
    return written ? "" : "no autostart entry";
}

/// As it is where the X server turns out to belong to a Wayland session.
std::string Play::notification() {
    klova_.reset();
    session_.settle();
    rig::setMonitors(display(), {session_.screen()}, "XWAYLAND");
    session_.settle();
    const auto before = session_.shownWindows();
    auto refused = desktop().launch({klovaFile_.string()});
    // An alert in the middle, and the notification.
    const bool shown = rig::waitUntil(display(), "alert and notification",
                                      [&] { return session_.shownWindows() >= before + 2; });
    session_.settle();
    seen_ = "by " + session_.ask("gdbus call --session -d org.freedesktop.Notifications -o "
                                 "/org/freedesktop/Notifications -m "
                                 "org.freedesktop.Notifications.GetServerInformation");
    seen_.erase(std::ranges::find(seen_, '\n'), seen_.end());
    session_.picture(pictures_ / (recipe_.name + "-notification.png"));
    rig::setMonitors(display(), {session_.screen()});
    return shown ? "" : "nothing is shown: " + refused.output();
}

std::string Play::nextLogin() {
    editor_.reset();
    session_.logOut();
    session_.logIn();
    if (!holdsKeys())
        return "Klova does not start";
    return rig::awaitIcon(display(), rig::IconColour::resting) ? "" : "no icon";
}

} // namespace

std::vector<StepResult> playSession(const SessionRecipe& recipe, const std::filesystem::path& klova,
                                    const std::filesystem::path& pictures) {
    return Play(recipe, klova, pictures).all();
}

} // namespace klova::desktops
