// Tour, preferences and about panel as a person uses them, and as a screen reader tells them.
#include "desktop/AccessibilityBus.h"
#include "desktop/Grabs.h"
#include "desktop/Injector.h"
#include "desktop/Placement.h"
#include "desktop/TestWindow.h"
#include "desktop/Trays.h"
#include "desktop/Wait.h"
#include "desktop/WakeUps.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <regex>

namespace klova::rig {
namespace {

using namespace std::chrono_literals;

using Controls = std::vector<std::pair<std::string, std::string>>; // role and name

class ShellTest : public testing::Test {
protected:
    /// On a first run where there are no settings.
    void start(const std::string& settings = {}) {
        if (!settings.empty())
            writeFile(settings_, settings);
        klova.emplace(desktop.launch({KLOVA_BINARY}));
        require(display, "Klova's icon", [&] { return !announcedBy(desktop).empty(); });
    }

    xcb_window_t awaitPanel() {
        const auto panel = awaitWindow(display, *klova);
        EXPECT_TRUE(awaitActive(display, panel));
        return panel;
    }
    bool panelGoes() {
        return waitUntil(display, "the end of the panel",
                         [&] { return !windowOfProcess(display, klova->id()); });
    }

    xcb_window_t openFromMenu(const std::string& title) {
        choose(desktop, announcedEntry(desktop, title));
        return awaitPanel();
    }
    bool menuShows(const std::string& title, bool enabled) {
        return waitUntil(
            display, title,
            [&] {
                const auto menu = announcedMenu(desktop);
                return std::ranges::find(menu, MenuEntry{title, enabled, ""}) != menu.end();
            },
            [&] { return testing::PrintToString(announcedMenu(desktop)); });
    }

    std::optional<AccessibleObject> find(const std::string& name) const {
        for (const AccessibleObject& object : bus.objects())
            if (object.name == name && object.showing)
                return object;
        return std::nullopt;
    }
    AccessibleObject awaitSeen(const std::string& name) {
        std::optional<AccessibleObject> seen;
        require(display, name, [&] { return (seen = find(name)).has_value(); });
        return seen.value();
    }
    std::string focused() const {
        const auto all = bus.objects();
        const auto found = std::ranges::find_if(all, &AccessibleObject::focused);
        return found == all.end() ? "" : found->name;
    }
    /// The panel, and what the keyboard can reach in it.
    Controls controls() const {
        Controls result;
        for (const auto& object : bus.objects())
            if ((object.focusable || object.role == "dialog") && object.showing)
                result.emplace_back(object.role, object.name);
        return result;
    }

    void clickAt(int x, int y) {
        hands.movePointer(x, y);
        hands.click(1);
    }
    void clickOn(const std::string& name) {
        const Rect area = awaitSeen(name).area;
        clickAt(area.x + area.width / 2, area.y + area.height / 2);
    }
    /// The round mark in the corner of the button, which is as large as the panel.
    void clickClose() {
        const Rect area = awaitSeen("Close").area;
        clickAt(area.x + 19, area.y + 19);
    }
    void tabTo(const std::string& name) {
        auto at = focused();
        for (auto left = controls().size(); left > 1 && at != name; --left) {
            hands.tap(XKB_KEY_Tab);
            const auto before = at;
            waitUntil(display, "the focus to move on", [&] { return (at = focused()) != before; });
        }
        EXPECT_EQ(at, name) << "is out of the keyboard's reach";
    }

    /// As the settings file has it, without spaces.
    std::string setting(const std::string& key) const {
        auto text = readFile(settings_);
        std::erase_if(text, [](char letter) { return letter == ' ' || letter == '\n'; });
        const std::regex entry('"' + key + R"(":(\[[^\]]*\]|\w+))");
        std::smatch found;
        return std::regex_search(text, found, entry) ? found.str(1) : "";
    }
    bool settingBecomes(const std::string& key, const std::string& value) {
        return waitUntil(display, key + " " + value, [&] { return setting(key) == value; });
    }

    VirtualDesktop desktop;
    Display& display = desktop.display();
    AccessibilityBus bus{desktop.session()};
    Process tray = startNotifierHost(desktop);
    Injector hands{desktop.server().display()};
    std::optional<Process> klova;

private:
    std::filesystem::path settings_ = desktop.session().preferences();
};

TEST_F(ShellTest, theFirstStartLeadsThroughTheTour) {
    start();
    awaitPanel();
    EXPECT_TRUE(menuShows("Preferences…", false));
    EXPECT_TRUE(menuShows("About Klova", false));
    const char* const pages[] = {"Your activation keys", "Drag and double-click",
                                 "Snap with the arrows", "Minimize and reopen"};
    for (int page = 1; page <= 4; ++page) {
        const std::string title = pages[page - 1];
        const std::string button = page < 4 ? "Next" : "Start";
        awaitSeen(title);
        EXPECT_EQ(controls(), (Controls{{"dialog", "Welcome to Klova"},
                                        {"push button", button},
                                        {"push button", "Close"}}));
        EXPECT_EQ(awaitSeen(button).description, "Page " + std::to_string(page) + " of 4");
        const auto all = bus.objects();
        EXPECT_TRUE(std::ranges::any_of(all, [&](const auto& object) {
            return object.role == "graphic" && object.name == title && !object.description.empty();
        }));
        if (page % 2 == 1)
            hands.tap(XKB_KEY_Return);
        else
            clickOn(button);
    }
    EXPECT_TRUE(panelGoes());
    EXPECT_TRUE(menuShows("Preferences…", true));
    EXPECT_TRUE(menuShows("About Klova", true));
    EXPECT_EQ(setting("activationKeys"), "[55,59]");
    EXPECT_EQ(setting("isNotFirstTime"), "true");
}

TEST_F(ShellTest, theAboutPanelIsReadMovedAndClosed) {
    start(R"({"isNotFirstTime": true, "activationKeys": [55, 59]})");
    const auto panel = openFromMenu("About Klova");
    Process version = desktop.launch({KLOVA_BINARY, "--version"});
    ASSERT_EQ(version.waitExit(kDeadline), 0);
    const auto number = version.output().substr(6, version.output().find('\n') - 6);
    awaitSeen("Version " + number);
    awaitSeen("Free software under the MIT licence");
    EXPECT_EQ(controls(), (Controls{{"dialog", "About Klova"},
                                    {"label", "Version " + number},
                                    {"push button", "Close"}}));
    const Rect before = visibleFrame(display, panel);
    const Rect label = awaitSeen("KLOVA").area;
    hands.movePointer(label.x + 5, label.y + 5);
    hands.pressButton(1);
    // The window manager takes over from the first step on.
    EXPECT_TRUE(waitUntil(display, "the panel to follow", [&, step = 0]() mutable {
        hands.movePointer(label.x + 6 + step++ % 2, label.y + 5);
        return visibleFrame(display, panel) != before;
    }));
    hands.movePointer(label.x + 105, label.y - 75);
    const Rect moved{before.x + 100, before.y - 80, before.width, before.height};
    EXPECT_TRUE(awaitFrame(display, panel, moved, 2));
    hands.releaseButton(1);
    EXPECT_TRUE(awaitKeyboardGrab(display, false)) << "the end of the drag";
    hands.tap(XKB_KEY_Escape);
    EXPECT_TRUE(panelGoes());
    EXPECT_TRUE(menuShows("About Klova", true));
}

/// By pointer, or by keyboard alone.
class PreferencesTest : public ShellTest, public testing::WithParamInterface<const char*> {
protected:
    bool byPointer() const { return std::string(GetParam()) == "Pointer"; }

    void use(const std::string& control) {
        if (byPointer()) {
            clickOn(control);
        } else {
            tabTo(control);
            hands.tap(XKB_KEY_space);
        }
    }
};

TEST_P(PreferencesTest, areSavedAndInForceAtOnce) {
    start(R"({"isNotFirstTime": true, "activationKeys": [55, 59], "LoadsOnStartup": false,
              "maximizingEnabled": true, "centeringEnabled": true, "deminimizeButton": 8})");
    TestWindow window(desktop.server().display());
    const auto panel = openFromMenu("Preferences…");
    const std::string super = "Super is an activation key", alt = "Alt is an activation key",
                      control = "Control is an activation key",
                      q = "Q reopens the minimized window", e = "E reopens the minimized window";
    awaitSeen(super);
    EXPECT_EQ(controls(), (Controls{{"dialog", "Preferences of Klova"},
                                    {"check box", control},
                                    {"check box", super},
                                    {"check box", alt},
                                    {"check box", "Double click maximizes"},
                                    {"check box", "Double click centers"},
                                    {"radio button", q},
                                    {"radio button", e},
                                    {"radio button", "C reopens the minimized window"},
                                    {"check box", "Launch at login"},
                                    {"push button", "Close"}}));
    const std::string few = "Note: Selecting only 1 Key suppresses certain Key Commands.",
                      none = "Select at least one Activation-Key.";
    const struct {
        std::string control, key, value, menu, hint;
        bool checked = true;
    } rows[] = {{alt, "activationKeys", "[55,59,58]", "Activation Keys: ⌘Ctrl⌥", ""},
                {super, "activationKeys", "[59,58]", "Activation Keys: Ctrl⌥", "", false},
                {control, "activationKeys", "[58]", "Activation Keys: ⌥", few, false},
                {alt, "activationKeys", "[58]", "Activation Keys: ⌥", none, true},
                {control, "activationKeys", "[58,59]", "Activation Keys: ⌥Ctrl", ""},
                {"Double click maximizes", "maximizingEnabled", "false",
                 "Centering: ⌥Ctrl + Left Doubleclick", "", false},
                {"Double click centers", "centeringEnabled", "false",
                 "Maximizing/Centering: ⌥Ctrl + Left Doubleclick", "", false},
                {q, "deminimizeButton", "12", "Reopen minimized Window: ⌥Ctrl + Q", ""},
                {e, "deminimizeButton", "14", "Reopen minimized Window: ⌥Ctrl + E", ""},
                {"Launch at login", "LoadsOnStartup", "true", "Preferences…", ""}};
    for (const auto& row : rows) {
        use(row.control);
        EXPECT_TRUE(settingBecomes(row.key, row.value));
        EXPECT_TRUE(menuShows(row.menu, false));
        const auto shown = [&] {
            const auto used = find(row.control);
            return used && used->checked == row.checked &&
                   find(few).has_value() == (row.hint == few) &&
                   find(none).has_value() == (row.hint == none);
        };
        EXPECT_TRUE(waitUntil(display, row.control + ", hint \"" + row.hint + '"', shown));
    }
    EXPECT_FALSE(awaitSeen(q).checked) << "only one of the three";
    EXPECT_NE(readFile(desktop.session().config() / "autostart/klova.desktop").find(KLOVA_BINARY),
              std::string::npos);

    ASSERT_TRUE(activate(display, window.id()));
    hands.roundTrip();
    window.takeInput();
    hands.chord({XKB_KEY_Super_L, XKB_KEY_Control_L}, XKB_KEY_Left); // no more
    hands.chord({XKB_KEY_Alt_L, XKB_KEY_Control_L}, XKB_KEY_Right);
    const Rect right = target(Place::right, desktop.server().screen());
    EXPECT_TRUE(awaitFrame(display, window.id(), right));
    const auto input = window.takeInput();
    const auto came = [&](xcb_keysym_t key) {
        return std::ranges::count(input, hands.keyCode(key), &InputRecord::detail);
    };
    EXPECT_EQ(came(XKB_KEY_Left), 2) << "without its keys an arrow is the window's";
    EXPECT_EQ(came(XKB_KEY_Right), 0);

    ASSERT_TRUE(activate(display, panel));
    if (byPointer())
        clickClose();
    else
        hands.tap(XKB_KEY_Escape);
    EXPECT_TRUE(panelGoes());
    EXPECT_TRUE(menuShows("Preferences…", true));
}

INSTANTIATE_TEST_SUITE_P(By, PreferencesTest, testing::Values("Pointer", "Keyboard"),
                         [](const auto& test) { return std::string(test.param); });

TEST_F(ShellTest, whatManagersNoteWakesTheToolkitOnlyWithAPanelInUse) {
    start(R"({"isNotFirstTime": true, "activationKeys": [59]})");
    hands.setSpacing(10ms); // or the notes would be read in one go
    const auto notesWake = [&] {
        const auto before = wakeUpsOf(klova->id(), "QXcbEventQueue");
        for (int note = 0; note < 3; ++note) {
            display.setText(display.root(), "_NET_WM_NAME", "UTF8_STRING", "a note");
            display.roundTrip();
            hands.movePointer(10 + note, 10);
        }
        return wakeUpsOf(klova->id(), "QXcbEventQueue") != before;
    };
    EXPECT_TRUE(waitUntil(display, "sleep", [&] { return !notesWake(); }));
    openFromMenu("Preferences…");
    EXPECT_TRUE(waitUntil(display, "a wake-up", [&] { return notesWake(); }));
    hands.tap(XKB_KEY_Escape);
    EXPECT_TRUE(panelGoes());
    EXPECT_TRUE(waitUntil(display, "sleep again", [&] { return !notesWake(); }));
}

TEST_F(ShellTest, aNewScaleAndNewLettersShowAtOnce) {
    const auto file = desktop.session().directory() / "xsettings";
    writeFile(file, "Xft/DPI 98304\n");
    Process daemon = desktop.launch({"xsettingsd", "-c", file.string()});
    awaitOwner(display, "_XSETTINGS_S0");
    start(R"({"isNotFirstTime": true, "activationKeys": [59]})");
    EXPECT_EQ(visibleFrame(display, openFromMenu("Preferences…")).width, 310);
    writeFile(file, "Xft/DPI 196608\n");
    daemon.signal(SIGHUP);
    EXPECT_TRUE(waitUntil(display, "a panel of twice the size", [&] {
        const auto panel = windowOfProcess(display, klova->id());
        return panel && visibleFrame(display, *panel).width == 620;
    }));
    hands.tap(XKB_KEY_Escape);
    EXPECT_TRUE(panelGoes());
    EXPECT_EQ(desktop.launch({"setxkbmap", "us", "-variant", "dvorak"}).waitExit(kDeadline), 0);
    EXPECT_TRUE(menuShows("Quit KLOVA: Ctrl + Y", true));
    openFromMenu("Preferences…");
    awaitSeen("J reopens the minimized window");
}

} // namespace
} // namespace klova::rig
