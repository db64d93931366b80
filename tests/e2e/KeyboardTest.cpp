#include "desktop/Files.h"
#include "desktop/Grabs.h"
#include "desktop/Injector.h"
#include "desktop/ManagerBarrier.h"
#include "desktop/Placement.h"
#include "desktop/TestWindow.h"
#include "desktop/VirtualDesktop.h"
#include "desktop/Wait.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <gtest/gtest.h>
#include <optional>
#include <set>
#include <utility>

using namespace klova::rig;
using namespace std::chrono_literals;

namespace {

using Keys = std::vector<xcb_keysym_t>;
const Keys kActivation = {XKB_KEY_Super_L, XKB_KEY_Control_L};

class KeyboardTest : public testing::TestWithParam<std::string> {
protected:
    KeyboardTest() { takeFocus(); }

    void takeFocus() {
        require(display, "a window to itself", [&] {
            display.tellManager(window.id(), "_NET_ACTIVE_WINDOW", {2, XCB_CURRENT_TIME, 0});
            const auto focus = owned(xcb_get_input_focus_reply(
                display.get(), xcb_get_input_focus(display.get()), nullptr));
            return focus && focus->focus == window.id();
        });
    }

    /// Returns once `last` is reserved with the others down, which is the last step of the start.
    void start(const std::string& keys = "55, 59", xcb_keysym_t last = XKB_KEY_Control_L,
               std::uint32_t others = XCB_MOD_MASK_4) {
        klova.reset();
        writeFile(settings, R"({"isNotFirstTime": true, "maximizingEnabled": true,
 "centeringEnabled": true, "deminimizeButton": 8, "activationKeys": [)" +
                                keys + "]}");
        klova = desktop.launch({KLOVA_BINARY});
        require(display, "Klova",
                [&] { return keyReserved(display, hands.keyCode(last), others); });
    }

    void press(const Keys& keys) {
        std::ranges::for_each(keys, [&](auto key) { hands.press(key); });
    }
    void release(const Keys& keys) {
        std::ranges::for_each(keys, [&](auto key) { hands.release(key); });
    }
    void chord(const Keys& held, xcb_keysym_t key) {
        press(held);
        hands.tap(key);
        release(held);
    }

    void expectPlace(Place place, const std::string& what) {
        const auto wanted = target(place, desktop.server().screen());
        EXPECT_TRUE(waitUntil(
            display, what, [&] { return visibleFrame(display, window.id()) == wanted; },
            [&] { return toText(visibleFrame(display, window.id())); }, 5s))
            << what;
    }

    /// What the window got since the last call: keycodes and buttons, negative where they go up.
    /// A key that nobody is after comes last, so no event is on its way any more.
    std::vector<int> received() {
        const int probe = hands.keyCode(XKB_KEY_n);
        hands.tap(XKB_KEY_n);
        std::vector<int> record;
        EXPECT_TRUE(waitUntil(display, "the probe", [&] {
            for (const auto& [type, detail, state] : window.takeInput())
                record.push_back(type % 2 == 0 ? detail : -detail);
            return std::ranges::find(record, -probe) != record.end();
        }));
        std::erase_if(record, [&](int code) { return std::abs(code) == probe; });
        return record;
    }

    /// Nothing but modifiers reached the window, and none of them is stuck.
    void expectNoLeak(const std::string& what) {
        const auto record = received();
        const std::set modifiers = {37, 50, 64, 66, 77, 78, 105, 133, 134}; // and lock keys
        std::set<int> down;
        for (const int code : record) {
            EXPECT_TRUE(modifiers.contains(std::abs(code))) << code << " leaked: " << what;
            code > 0 ? void(down.insert(code)) : void(down.erase(-code));
        }
        EXPECT_TRUE(down.empty()) << *down.begin() << " is stuck: " << what;
    }

    /// Klova says before each event which of its keys are down.
    bool actedOnLeft() { return klova->output().find("123") != std::string::npos; }

    VirtualDesktop desktop{{.windowManager = GetParam()}};
    Display& display = desktop.display();
    Injector hands{desktop.server().display()};
    TestWindow window{desktop.server().display()};
    std::filesystem::path settings = desktop.session().config() / "klova" / "preferences.json";
    std::optional<Process> klova;
};

INSTANTIATE_TEST_SUITE_P(Managers, KeyboardTest, testing::Values("openbox", "xfwm4"),
                         [](const auto& tested) { return tested.param; });

TEST_P(KeyboardTest, LocksFurtherModifiersAndOrderMakeNoDifference) {
    start();
    struct Row {
        std::string name;
        Keys locks;
        std::uint16_t state; // that they set
        Keys held = kActivation;
    };
    constexpr std::uint16_t caps = XCB_MOD_MASK_LOCK, num = XCB_MOD_MASK_2;
    constexpr xcb_keysym_t super = XKB_KEY_Super_L, control = XKB_KEY_Control_L;
    constexpr xcb_keysym_t numKey = XKB_KEY_Num_Lock, capsKey = XKB_KEY_Caps_Lock;
    const Row rows[] = {
        {"NumLock", {numKey}, num},
        {"CapsLock", {capsKey}, caps},
        {"ScrollLock", {XKB_KEY_Scroll_Lock}, 0},
        {"all locks", {numKey, capsKey, XKB_KEY_Scroll_Lock}, num | caps},
        {"Ctrl first", {}, 0, {control, super}},
        {"Shift first", {}, 0, {XKB_KEY_Shift_L, super, control}},
        {"Alt in between", {}, 0, {super, XKB_KEY_Alt_L, control}},
        {"right-hand keys too", {}, 0, {XKB_KEY_Super_R, super, XKB_KEY_Control_R, control}},
        {"Shift last", {}, 0, {control, super, XKB_KEY_Shift_L}}};
    bool left = false;
    for (const auto& [name, locks, state, held] : rows) {
        const auto toggle = [this, &locks = locks] {
            for (const auto lock : locks)
                hands.tap(lock);
        };
        toggle();
        hands.roundTrip();
        const auto pointer = owned(xcb_query_pointer_reply(
            display.get(), xcb_query_pointer(display.get(), display.root()), nullptr));
        EXPECT_EQ(pointer->mask & 0xFF, state) << name;
        left = !left;
        chord(held, left ? XKB_KEY_Left : XKB_KEY_d);
        expectPlace(left ? Place::left : Place::right, name);
        toggle();
        expectNoLeak(name);
    }
}

TEST_P(KeyboardTest, RightHandKeysDoNotArmAndReachTheWindow) {
    start();
    const auto before = visibleFrame(display, window.id());
    for (const Keys& held :
         {Keys{XKB_KEY_Super_R, XKB_KEY_Control_R}, Keys{XKB_KEY_Super_L, XKB_KEY_Control_R},
          Keys{XKB_KEY_Control_L, XKB_KEY_Super_R}}) {
        chord(held, XKB_KEY_Left);
        const int a = hands.keyCode(held[0]), b = hands.keyCode(held[1]),
                  arrow = hands.keyCode(XKB_KEY_Left);
        EXPECT_EQ(received(), (std::vector{a, b, arrow, -arrow, -a, -b}));
    }
    EXPECT_EQ(visibleFrame(display, window.id()), before);
    chord(kActivation, XKB_KEY_Up);
    expectPlace(Place::top, "left-hand keys");
    EXPECT_FALSE(actedOnLeft());
}

TEST_P(KeyboardTest, LayoutsSwapModifiersByMeaningAndKeepLettersByPlace) {
    start();
    const std::uint8_t capsKey = 66, controlKey = 37, superKey = 133;
    ASSERT_EQ(desktop.launch({"setxkbmap", "-option", "ctrl:swapcaps"}).waitExit(kDeadline), 0);
    ASSERT_TRUE(waitUntil(display, "new grabs", [&] {
        return keyReserved(display, capsKey, XCB_MOD_MASK_4) &&
               !keyReserved(display, controlKey, XCB_MOD_MASK_4);
    }));
    for (const auto key : {superKey, capsKey})
        hands.pressCode(key);
    hands.tap(XKB_KEY_Right);
    for (const auto key : {superKey, capsKey})
        hands.releaseCode(key);
    expectPlace(Place::right, "Ctrl on the key of CapsLock");
    expectNoLeak("swapped Ctrl");

    ASSERT_EQ(desktop.launch({"setxkbmap", "-option", "", "-layout", "fr"}).waitExit(kDeadline), 0);
    ASSERT_TRUE(waitUntil(display, "old grabs",
                          [&] { return keyReserved(display, controlKey, XCB_MOD_MASK_4); }));
    for (const auto& [letter, place] : {std::pair{'q', Place::left},
                                        {'s', Place::bottom},
                                        {'d', Place::right},
                                        {'z', Place::top}}) {
        chord(kActivation, static_cast<xcb_keysym_t>(letter)); // a Latin letter is its own keysym
        expectPlace(place, std::string("French ") + letter);
        chord(kActivation, XKB_KEY_w);
        expectNoLeak("French letters");
    }
    expectPlace(Place::top, "no letter but those four");
}

TEST_P(KeyboardTest, LeftHandedPointersHaveTheirButtonsSwapped) {
    start();
    const std::array<std::uint8_t, 10> swapped{3, 2, 1, 4, 5, 6, 7, 8, 9, 10};
    const auto done = owned(xcb_set_pointer_mapping_reply(
        display.get(), xcb_set_pointer_mapping(display.get(), swapped.size(), swapped.data()),
        nullptr));
    ASSERT_TRUE(done && done->status == XCB_MAPPING_STATUS_SUCCESS);
    hands.setSpacing(10ms); // presses within a millisecond count as one
    hands.movePointer(200, 200);
    press(kActivation);
    hands.click(3);
    hands.click(3);
    expectPlace(Place::wholeScreen, "double click with the right-hand button");
    hands.click(1);
    const auto minimized = [&] { return isMinimized(display, window.id()); };
    EXPECT_TRUE(waitUntil(display, "minimizing", minimized));
    hands.tap(XKB_KEY_c);
    EXPECT_TRUE(waitUntil(display, "reopening", [&] { return !minimized(); }));
    release(kActivation);
    takeFocus();
    expectNoLeak("swapped buttons");
}

TEST_P(KeyboardTest, GesturesGoOnUnderAManagerThatReplacesTheFirst) {
    start();
    const auto old = display.values(display.root(), "_NET_SUPPORTING_WM_CHECK");
    writeFile(desktop.session().config() / "openbox" / "rc.xml",
              R"(<openbox_config xmlns="http://openbox.org/3.4/rc"><keyboard>
<keybind key="C-W-Left"><action name="Iconify"/></keybind></keyboard></openbox_config>)");
    const auto successor = desktop.launch({"openbox", "--sm-disable", "--replace"});
    ASSERT_TRUE(waitUntil(display, "the new manager", [&] {
        const auto now = display.values(display.root(), "_NET_SUPPORTING_WM_CHECK");
        return !now.empty() && now != old && display.text(now[0], "_NET_WM_NAME") == "Openbox";
    }));
    ASSERT_TRUE(ManagerBarrier(display.name()).pass());
    takeFocus();
    chord(kActivation, XKB_KEY_Left);
    expectPlace(Place::left, "not the manager's own shortcut");
    expectNoLeak("new manager");
}

TEST_P(KeyboardTest, AnOpenMenuKeepsTheKeysUntilItCloses) {
    start();
    const auto before = visibleFrame(display, window.id());
    Display menu(display.name());
    xcb_grab_keyboard(menu.get(), 0, menu.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                      XCB_GRAB_MODE_ASYNC);
    xcb_grab_pointer(menu.get(), 0, menu.root(), 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                     XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
    menu.roundTrip();
    ASSERT_TRUE(keyboardGrabbed(display) && pointerGrabbed(display));
    press(kActivation);
    hands.tap(XKB_KEY_Left);
    hands.roundTrip();
    EXPECT_EQ(visibleFrame(display, window.id()), before);
    xcb_ungrab_pointer(menu.get(), XCB_CURRENT_TIME);
    xcb_ungrab_keyboard(menu.get(), XCB_CURRENT_TIME);
    menu.roundTrip();
    EXPECT_TRUE(waitUntil(display, "Klova's turn", [&] { return keyboardGrabbed(display); }));
    hands.tap(XKB_KEY_Up);
    expectPlace(Place::top, "after the menu");
    EXPECT_FALSE(actedOnLeft());
    release(kActivation);
    expectNoLeak("menu");
}

TEST_P(KeyboardTest, OtherActivationKeysArmInTheirTurn) {
    start("58", XKB_KEY_Alt_L, 0);
    chord({XKB_KEY_Alt_L}, XKB_KEY_Right);
    expectPlace(Place::right, "Option alone");
    expectNoLeak("Option alone");
    chord({XKB_KEY_Super_L}, XKB_KEY_Left);
    const int arrow = hands.keyCode(XKB_KEY_Left), super = hands.keyCode(XKB_KEY_Super_L);
    EXPECT_EQ(received(), (std::vector{super, arrow, -arrow, -super}));
    start("56, 59", XKB_KEY_Shift_L, XCB_MOD_MASK_CONTROL);
    chord({XKB_KEY_Shift_L, XKB_KEY_Control_L}, XKB_KEY_w);
    expectPlace(Place::top, "Shift and Ctrl");
    expectNoLeak("Shift and Ctrl");
}

TEST_P(KeyboardTest, NothingStaysGrabbed) {
    start();
    const auto free = [&] { return !keyboardGrabbed(display) && !pointerGrabbed(display); };
    press(kActivation);
    hands.pressButton(1);
    hands.press(XKB_KEY_Down);
    expectPlace(Place::bottom, "armed");
    EXPECT_TRUE(keyboardGrabbed(display));
    EXPECT_TRUE(pointerGrabbed(display));
    hands.release(XKB_KEY_Down);
    release(kActivation);
    hands.releaseButton(1);
    EXPECT_TRUE(waitUntil(display, "free devices", free));
    received();

    hands.movePointer(300, 300); // or it would be a double click
    press(kActivation);
    hands.pressButton(1);
    hands.press(XKB_KEY_Right);
    expectPlace(Place::right, "armed again");
    klova->signal(SIGKILL);
    EXPECT_TRUE(waitUntil(display, "free devices", free));
    EXPECT_FALSE(keyReserved(display, hands.keyCode(XKB_KEY_Control_L), XCB_MOD_MASK_4));
    hands.releaseButton(1);
    release({XKB_KEY_Right, XKB_KEY_Control_L, XKB_KEY_Super_L});
    received();
    hands.tap(XKB_KEY_Left);
    const int arrow = hands.keyCode(XKB_KEY_Left);
    EXPECT_EQ(received(), (std::vector{arrow, -arrow}));
}

} // namespace
