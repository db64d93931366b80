#include "desktop/StickyKeys.h"
#include "desktop/WakeUps.h"
#include "e2e/KlovaTest.h"

#include <array>
#include <memory>
#include <set>
#include <xcb/xinput.h>

using namespace klova::rig;

namespace {

using Keys = std::vector<xcb_keysym_t>;
using Stroke = std::pair<xcb_keysym_t, Place>;
const Keys kActivation = {XKB_KEY_Super_L, XKB_KEY_Control_L};

class KeyboardTest : public KlovaTest, public testing::WithParamInterface<std::string> {
protected:
    KeyboardTest() : KlovaTest({.windowManager = GetParam()}) {
        start();
        hands().setSpacing(0ms);
        takeFocus();
        received(); // the modifiers of the start
    }

    void takeFocus() {
        ASSERT_TRUE(activate(display, window.id()));
        window.takeFocus(); // which the manager may have yet to give
    }

    void expectPlace(Place place, const std::string& what) {
        KlovaTest::expectPlace(window.id(), place, what);
    }

    /// What the window got since the last call: keycodes and buttons, negative where they go up.
    /// A key that nobody is after comes last, so no event is on its way any more.
    std::vector<int> received() {
        const int probe = hands().keyCode(XKB_KEY_n);
        hands().tap(XKB_KEY_n);
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
        const std::set modifiers = {37, 50, 64, 66, 77, 78, 105, 108, 133, 134}; // and lock keys
        std::set<int> down;
        for (const int code : received()) {
            EXPECT_TRUE(modifiers.contains(std::abs(code))) << code << " leaked: " << what;
            code > 0 ? void(down.insert(code)) : void(down.erase(-code));
        }
        EXPECT_TRUE(down.empty()) << *down.begin() << " is stuck: " << what;
    }

    TestWindow window{display.name()};
};

INSTANTIATE_TEST_SUITE_P(Managers, KeyboardTest, testing::Values("openbox", "xfwm4"),
                         [](const auto& tested) { return tested.param; });

TEST_P(KeyboardTest, LocksFurtherModifiersAndOrderMakeNoDifference) {
    constexpr xcb_keysym_t super = XKB_KEY_Super_L, control = XKB_KEY_Control_L;
    // The locks that are on, the modifiers that they set, and the keys held.
    const std::tuple<Keys, int, Keys> rows[] = {
        {{XKB_KEY_Num_Lock}, XCB_MOD_MASK_2, kActivation},
        {{XKB_KEY_Caps_Lock, XKB_KEY_Scroll_Lock}, XCB_MOD_MASK_LOCK, kActivation},
        {{XKB_KEY_Num_Lock, XKB_KEY_Caps_Lock}, XCB_MOD_MASK_2 | XCB_MOD_MASK_LOCK, kActivation},
        {{}, 0, {control, super}},
        {{}, 0, {XKB_KEY_Shift_L, super, control}},
        {{}, 0, {super, XKB_KEY_Alt_L, control}},
        {{}, 0, {XKB_KEY_Super_R, super, XKB_KEY_Control_R, control}},
        {{}, 0, {control, super, XKB_KEY_Shift_L}}};
    for (const auto& row : rows) {
        const auto& [locks, state, held] = row;
        const auto name = "row " + std::to_string(&row - rows);
        std::ranges::for_each(locks, [&](auto lock) { hands().tap(lock); });
        hands().roundTrip();
        const auto pointer = owned(xcb_query_pointer_reply(
            display.get(), xcb_query_pointer(display.get(), display.root()), nullptr));
        EXPECT_EQ(pointer->mask & 0xFF, state) << name;
        const bool left = (&row - rows) % 2 == 0;
        hands().chord(held, left ? XKB_KEY_Left : XKB_KEY_d);
        expectPlace(left ? Place::left : Place::right, name);
        std::ranges::for_each(locks, [&](auto lock) { hands().tap(lock); });
        expectNoLeak(name);
    }
}

TEST_P(KeyboardTest, KeysOfTwoKeyboardsAreHeldTogether) {
    Injector others(display.name());
    others.useKeyboard("Xvfb keyboard");
    hands().press(XKB_KEY_Super_L);
    hands().roundTrip();
    others.press(XKB_KEY_Control_L);
    others.tap(XKB_KEY_Left);
    expectPlace(Place::left, "Super on one keyboard, Ctrl on the other");
    hands().tap(XKB_KEY_Up);
    expectPlace(Place::top, "an arrow of the first keyboard");
    hands().release(XKB_KEY_Super_L);
    hands().roundTrip();
    others.tap(XKB_KEY_Down);
    others.release(XKB_KEY_Control_L);
    others.roundTrip();
    const int control = 37, arrow = hands().keyCode(XKB_KEY_Down);
    const auto seen = received();
    EXPECT_EQ(std::vector(seen.end() - 3, seen.end()), (std::vector{arrow, -arrow, -control}));
}

TEST_P(KeyboardTest, RightHandKeysDoNotArmAndReachTheWindow) {
    const auto before = visibleFrame(display, window.id());
    for (const Keys& held :
         {Keys{XKB_KEY_Super_R, XKB_KEY_Control_R}, Keys{XKB_KEY_Super_L, XKB_KEY_Control_R},
          Keys{XKB_KEY_Control_L, XKB_KEY_Super_R}}) {
        hands().chord(held, XKB_KEY_Left);
        const int a = hands().keyCode(held[0]), b = hands().keyCode(held[1]),
                  arrow = hands().keyCode(XKB_KEY_Left);
        EXPECT_EQ(received(), (std::vector{a, b, arrow, -arrow, -a, -b}));
    }
    EXPECT_EQ(visibleFrame(display, window.id()), before);
}

TEST_P(KeyboardTest, TwoKeysOfOneModifierAreToldApart) {
    const int arrow = hands().keyCode(XKB_KEY_Left);
    hands().press({XKB_KEY_Control_L, XKB_KEY_Control_R});
    hands().release({XKB_KEY_Control_L, XKB_KEY_Control_R});
    received();
    hands().chord({XKB_KEY_Super_L}, XKB_KEY_Left);
    EXPECT_EQ(std::ranges::count(received(), arrow), 1) << "both Ctrl keys are up";
    hands().press({XKB_KEY_Super_R, XKB_KEY_Super_L});
    hands().release(XKB_KEY_Super_R);
    received();
    hands().press(XKB_KEY_Control_L);
    hands().roundTrip();
    EXPECT_TRUE(awaitKeyboardGrab(display)) << "Super_L is down";
    hands().release({XKB_KEY_Control_L, XKB_KEY_Super_L});
    expectNoLeak("Super_L is down");
}

TEST_P(KeyboardTest, LayoutsSwapModifiersByMeaningAndKeepLettersByPlace) {
    const std::uint8_t capsKey = 66, controlKey = 37, scrollKey = 78;
    ASSERT_EQ(desktop.launch({"setxkbmap", "-option", "ctrl:swapcaps"}).waitExit(kDeadline), 0);
    ASSERT_TRUE(waitUntil(display, "new grabs", [&] {
        return keyReserved(display, capsKey, XCB_MOD_MASK_4) &&
               !keyReserved(display, controlKey, XCB_MOD_MASK_4);
    }));
    hands().chord(kActivation, XKB_KEY_Right);
    expectPlace(Place::right, "Ctrl on the key of CapsLock");
    expectNoLeak("swapped Ctrl");

    hands().press(kActivation); // and the map changes under them
    const std::pair<std::vector<std::string>, Keys> rows[] = {
        {{"fr"}, {XKB_KEY_q, XKB_KEY_s, XKB_KEY_d, XKB_KEY_z}},
        {{"us", "-variant", "dvorak"}, {XKB_KEY_a, XKB_KEY_o, XKB_KEY_e, XKB_KEY_comma}},
        {{"us,ru", "-variant", "", "-option", "grp:sclk_toggle"},
         {XKB_KEY_a, XKB_KEY_s, XKB_KEY_d, XKB_KEY_w}}};
    for (const auto& [layout, letters] : rows) {
        std::vector<std::string> command{"setxkbmap", "-option", "", "-layout"};
        command.insert(command.end(), layout.begin(), layout.end());
        ASSERT_EQ(desktop.launch(command).waitExit(kDeadline), 0);
        hands().pressCode(scrollKey); // in the last layout it switches to the second group
        hands().releaseCode(scrollKey);
        const Place places[] = {Place::left, Place::bottom, Place::right, Place::top};
        for (std::size_t i = 0; i < letters.size(); ++i) {
            hands().tap(letters[i]);
            expectPlace(places[i], layout[0]);
        }
        hands().tap(XKB_KEY_v);
        expectPlace(Place::top, "no letter but those four");
    }
    hands().release(kActivation);
    hands().chord(kActivation, XKB_KEY_a);
    expectPlace(Place::left, "in the second group");
    expectNoLeak("letters");
}

constexpr Injector::ButtonMap plain{1, 2, 3, 4, 5, 6, 7, 8, 9, 10},
    swapped{3, 2, 1, 4, 5, 6, 7, 8, 9, 10};

TEST_P(KeyboardTest, AClickBeforeTheKeysCountsAsTheButtonThatItIsByThen) {
    ASSERT_TRUE(place(display, window.id(), {100, 100, 600, 400}));
    hands().setSpacing(2ms);
    hands().movePointer(200, 200);
    klova->click(2); // from here on Klova knows what the buttons were
    received();
    for (const bool everyMouse : {true, false}) {
        hands().mapAllButtons(everyMouse ? swapped : plain);
        hands().mapButtons(everyMouse ? plain : swapped);
        hands().movePointer(everyMouse ? 300 : 400, 300);
        klova->click(3);
        EXPECT_EQ(received(), (std::vector{1, -1}));
        hands().press(kActivation);
        klova->click(3);
        expectPlace(everyMouse ? Place::wholeScreen : Place::centre, "second click");
        hands().release(kActivation);
        received();
    }
}

TEST_P(KeyboardTest, LeftHandedPointersHaveTheirButtonsSwapped) {
    hands().setSpacing(2ms); // presses within a millisecond count as one
    for (const bool everyMouse : {true, false}) {
        hands().mapAllButtons(everyMouse ? swapped : plain);
        hands().mapButtons(everyMouse ? plain : swapped);
        hands().movePointer(200, 200);
        hands().press(kActivation);
        klova->click(3);
        klova->click(3);
        expectPlace(everyMouse ? Place::wholeScreen : Place::centre, "right-hand double click");
        hands().click(1);
        EXPECT_TRUE(awaitMinimized(display, window.id()));
        hands().tap(XKB_KEY_c);
        EXPECT_TRUE(awaitMinimized(display, window.id(), false));
        hands().release(kActivation);
        takeFocus();
        expectNoLeak("swapped buttons");
    }
}

TEST_P(KeyboardTest, AKeyThatSticksArmsUntilItIsLetGo) {
    setStickyKeys(display, true);
    const auto tap = [&](const Keys& keys) {
        std::ranges::for_each(keys, [&](auto key) { hands().tap(key); });
    };
    const auto expectPassing = [&](const std::string& what) {
        EXPECT_TRUE(awaitKeyboardGrab(display, false)) << what;
        const int arrow = hands().keyCode(XKB_KEY_Left);
        received();
        hands().tap(XKB_KEY_Left);
        EXPECT_EQ(received(), (std::vector{arrow, -arrow})) << what;
    };
    const Keys twice = {XKB_KEY_Super_L, XKB_KEY_Super_L, XKB_KEY_Control_L, XKB_KEY_Control_L};
    for (const auto& [arrow, place] :
         {Stroke{XKB_KEY_Right, Place::right}, Stroke{XKB_KEY_Up, Place::top}}) {
        tap(kActivation);
        EXPECT_TRUE(awaitKeyboardGrab(display));
        hands().press(arrow);
        expectPlace(place, "latched");
        hands().tap(XKB_KEY_k); // the stroke has not ended
        hands().release(arrow);
        expectNoLeak("latched");
        expectPassing("a key spends what is latched");
    }
    tap(twice);
    for (const auto& [arrow, place] :
         {Stroke{XKB_KEY_Left, Place::left}, Stroke{XKB_KEY_Down, Place::bottom}}) {
        hands().tap(arrow);
        expectPlace(place, "locked");
    }
    hands().setSpacing(2ms);
    klova->doubleClick(200, 200);
    expectPlace(Place::wholeScreen, "locked");
    tap({XKB_KEY_Super_L});
    expectPassing("the next press lets go");
    tap({XKB_KEY_Control_L, XKB_KEY_Super_R, XKB_KEY_Control_L});
    expectPassing("the right-hand key");
    lockModifiers(display, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_4);
    EXPECT_TRUE(awaitKeyboardGrab(display));
    hands().tap(XKB_KEY_Right);
    expectPlace(Place::right, "locked by no key");
    lockModifiers(display, 0);
    expectPassing("unlocked by no key");
}

TEST_P(KeyboardTest, TypingWakesKlovaOnlyWhileAModifierIsDown) {
    const auto wakeUps = [&] { return wakeUpsOf(klova->process().id(), "klova"); };
    hands().setSpacing(10ms); // or Klova would not fall asleep in between
    const auto typingWakes = [&] {
        const auto before = wakeUps();
        for (int key = 0; key < 3; ++key)
            received();
        return wakeUps() != before;
    };
    EXPECT_TRUE(waitUntil(display, "sleep", [&] { return !typingWakes(); }));
    hands().press(XKB_KEY_Shift_L);
    received();
    EXPECT_TRUE(waitUntil(display, "a wake-up", [&] { return typingWakes(); }));
    hands().release(XKB_KEY_Shift_L);
    EXPECT_TRUE(waitUntil(display, "sleep again", [&] { return !typingWakes(); }));
}

TEST_P(KeyboardTest, EveryChoiceOfKeysArmsAndNoOther) {
    constexpr std::uint32_t shift = XCB_MOD_MASK_SHIFT, control = XCB_MOD_MASK_CONTROL;
    constexpr std::uint32_t alt = XCB_MOD_MASK_1, super = XCB_MOD_MASK_4;
    const std::tuple<std::string, std::uint32_t, Keys> rows[] = {
        {"59, 58", alt | control, {XKB_KEY_Alt_L, XKB_KEY_Control_L}},
        {"56, 59", control | shift, {XKB_KEY_Control_L, XKB_KEY_Shift_L}},
        {"55, 58, 59", super | alt | control, {XKB_KEY_Control_L, XKB_KEY_Super_L, XKB_KEY_Alt_L}},
        {"62, 61", control | alt, {XKB_KEY_Control_R, XKB_KEY_Alt_R}},
        {"58", alt, {XKB_KEY_Alt_L}}};
    const int arrow = hands().keyCode(XKB_KEY_Right);
    for (const auto& [codes, modifiers, keys] : rows) {
        klova->process().signal(SIGTERM);
        klova->process().waitExit(kDeadline);
        writeFile(desktop.session().preferences(),
                  R"({"isNotFirstTime": true, "activationKeys": [)" + codes + "]}");
        klova->process() = desktop.launch({KLOVA_BINARY});
        ASSERT_TRUE(waitUntil(display, "grabs of " + codes, [this, needed = modifiers] {
            return buttonReserved(display, 1, needed);
        }));
        takeFocus();
        hands().chord(keys, XKB_KEY_Left);
        expectPlace(Place::left, codes);
        expectNoLeak(codes);
        hands().chord(Keys(keys.begin() + 1, keys.end()), XKB_KEY_Right);
        EXPECT_TRUE(std::ranges::count(received(), arrow)) << codes << " without the first";
    }
}

TEST_P(KeyboardTest, AnOpenMenuKeepsTheKeysUntilItCloses) {
    const auto before = visibleFrame(display, window.id());
    auto menu = std::make_unique<Display>(display.name());
    xcb_grab_keyboard(menu->get(), 0, menu->root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                      XCB_GRAB_MODE_ASYNC);
    xcb_grab_pointer(menu->get(), 0, menu->root(), 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                     XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
    menu->roundTrip();
    ASSERT_TRUE(keyboardGrabbed(display) && pointerGrabbed(display));
    hands().press(kActivation);
    hands().tap(XKB_KEY_Left);
    hands().roundTrip();
    EXPECT_EQ(visibleFrame(display, window.id()), before);
    menu.reset();
    EXPECT_TRUE(awaitKeyboardGrab(display));
    hands().tap(XKB_KEY_Up);
    expectPlace(Place::top, "after the menu");
    EXPECT_EQ(klova->process().output().find("123"), std::string::npos) << "never told of Left";
    hands().release(kActivation);
    expectNoLeak("menu");
}

TEST_P(KeyboardTest, NothingStaysGrabbed) {
    for (const bool killed : {false, true}) {
        const xcb_keysym_t key = killed ? XKB_KEY_Right : XKB_KEY_Down;
        hands().movePointer(killed ? 300 : 200, 300); // or it would be a double click
        hands().press(kActivation);
        hands().pressButton(1);
        hands().press(key);
        expectPlace(killed ? Place::right : Place::bottom, "armed");
        EXPECT_TRUE(keyboardGrabbed(display) && pointerGrabbed(display));
        const auto letGo = [&] {
            hands().release({key, XKB_KEY_Super_L, XKB_KEY_Control_L});
            hands().releaseButton(1);
        };
        killed ? klova->process().signal(SIGKILL) : letGo();
        EXPECT_TRUE(waitUntil(display, "free devices", [&] {
            return !keyboardGrabbed(display) && !pointerGrabbed(display);
        }));
        if (killed)
            letGo();
        received();
    }
    EXPECT_FALSE(keyReserved(display, hands().keyCode(XKB_KEY_Control_L), XCB_MOD_MASK_4));
    hands().tap(XKB_KEY_Left);
    const int arrow = hands().keyCode(XKB_KEY_Left);
    EXPECT_EQ(received(), (std::vector{arrow, -arrow}));
}

} // namespace
