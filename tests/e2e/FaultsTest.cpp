// What breaks in the middle of a gesture, and that nobody is left with a stuck key or without
// gestures.
#include "desktop/Relay.h"
#include "e2e/KlovaTest.h"

using namespace klova::rig;

namespace {

class FaultsTest : public KlovaTest {
protected:
    /// The first half of a drag to the right, or of a key's gesture; the fault; and the rest, which
    /// a window that lives obeys.
    void interrupt(xcb_window_t window, bool dragging, bool lives,
                   const std::function<void()>& fault) {
        const auto before = visibleFrame(display, window);
        const auto client = clientArea(display, window);
        hands().movePointer(100, 500);
        klova->holdActivationKeys();
        awaitKeyboardGrab(display);
        if (dragging)
            klova->beginDrag(101, 500);
        fault();
        dragging ? hands().movePointer(300, 500) : hands().tap(XKB_KEY_Left);
        hands().releaseButton(1);
        klova->releaseActivationKeys();
        expectNothingStuck("the fault");
        desktop.manager().signal(SIGCONT);
        if (lives && !dragging)
            expectPlace(window, Place::left, "the fault");
        if (!lives || !dragging)
            return;
        const auto moved = [&] { return visibleFrame(display, window).x - before.x >= 199; };
        EXPECT_TRUE(waitUntil(display, "the end of the drag", moved));
        const auto now = clientArea(display, window);
        EXPECT_EQ(std::pair(now.width, now.height), std::pair(client.width, client.height));
    }
};

/// A gesture, done with the activation keys held.
struct Gesture {
    std::string name;
    std::function<void(Klova&)> make;
    friend void PrintTo(const Gesture& gesture, std::ostream* out) { *out << gesture.name; }
};

class DestroyedWindowTest : public FaultsTest, public testing::WithParamInterface<Gesture> {};

TEST_P(DestroyedWindowTest, BetweenAnyTwoRequests) {
    Relay relay(display.name());
    desktop.session().setVariable("DISPLAY", relay.display());
    start();
    TestWindow other(display.name());
    int step = 0;
    for (bool ended = false; !ended && !HasFailure(); ++step) {
        TestWindow window(display.name());
        focus(window.id());
        hands().movePointer(200 + step % 2 * 40, 200); // or it would be a double click
        if (GetParam().name == "Reopen") {
            klova->holdActivationKeys();
            klova->click(3);
            klova->releaseActivationKeys();
            ASSERT_TRUE(awaitMinimized(display, window.id()));
        }
        const auto look = [&] { // at what the gesture is to change
            return std::pair(visibleFrame(display, window.id()), isMinimized(display, window.id()));
        };
        const auto before = look();
        relay.interrupt(step, [&] { window.destroy(); });
        klova->holdActivationKeys();
        GetParam().make(*klova);
        waitUntil(display, "end of the window or of the gesture", [&] {
            const bool done = look() != before && relay.silence() > 100ms;
            return !relay.waits() || done;
        });
        ended = relay.waits();
        relay.cancel();
        klova->releaseActivationKeys();
        expectGestures(other.id(), "step " + std::to_string(step));
    }
    EXPECT_GT(step, 10);
}

const Gesture kGestures[] = {
    {"Snap", [](Klova& klova) { klova.hands().tap(XKB_KEY_Right); }},
    {"Drag",
     [](Klova& klova) {
         klova.hands().pressButton(1);
         for (int x = 200; x < 206; ++x)
             klova.hands().movePointer(x, 210);
         klova.hands().releaseButton(1);
     }},
    {"DoubleClick",
     [](Klova& klova) {
         klova.click(1);
         klova.click(1);
     }},
    {"Minimize", [](Klova& klova) { klova.click(3); }},
    {"Reopen", [](Klova& klova) { klova.hands().tap(XKB_KEY_c); }},
};

INSTANTIATE_TEST_SUITE_P(Gestures, DestroyedWindowTest, testing::ValuesIn(kGestures),
                         [](const auto& test) { return test.param.name; });

TEST_F(FaultsTest, TheOwnerOfTheWindowIsStoppedOrKilled) {
    start();
    TestWindow other(display.name());
    for (const int fault : {SIGSTOP, SIGKILL}) {
        for (const bool dragging : {false, true}) {
            Process owner = desktop.launch({"xterm"});
            const auto window = awaitWindow(display, owner);
            focus(window);
            interrupt(window, dragging, fault != SIGKILL, [&] {
                owner.signal(fault);
                if (fault == SIGKILL)
                    owner.waitExit(kDeadline);
            });
            expectGestures(other.id(), "a fault of another program");
            owner.signal(SIGCONT);
        }
    }
}

class ManagerFaultsTest : public FaultsTest,
                          public testing::WithParamInterface<std::tuple<std::string, bool>> {};

TEST_P(ManagerFaultsTest, WhileTheKeysAreHeld) {
    const std::string fault = std::get<0>(GetParam());
    start();
    TestWindow window(display.name());
    expectGestures(window.id(), "nothing");
    std::optional<WindowManager> successor;
    interrupt(window.id(), std::get<1>(GetParam()), true, [&] {
        if (fault == "Replaced") {
            successor.emplace(desktop.session(), display, "xfwm4", WindowManager::Start::replacing);
        } else if (fault == "Stopped") {
            desktop.manager().signal(SIGSTOP);
        } else {
            desktop.manager().signal(SIGKILL);
            require(display, "its end", [&] { return managerWindow(display) == XCB_WINDOW_NONE; });
            focus(window.id()); // which it lost when its frame went
        }
    });
    expectGestures(window.id(), fault);
    if (fault != "Killed")
        return;
    successor.emplace(desktop.session(), display, "openbox");
    expectGestures(window.id(), "the next manager's start");
}

INSTANTIATE_TEST_SUITE_P(Manager, ManagerFaultsTest,
                         testing::Combine(testing::Values("Stopped", "Killed", "Replaced"),
                                          testing::Bool()),
                         [](const auto& test) {
                             return std::get<0>(test.param) +
                                    (std::get<1>(test.param) ? "InADrag" : "BeforeAKey");
                         });

TEST_F(FaultsTest, TheClockIsSetBack) {
    Process terminal = desktop.launch({"xterm"}); // of fixed steps: put right after a while
    const auto window = awaitWindow(display, terminal);
    desktop.session().setClock("+0");
    start();
    focus(window);
    interrupt(window, false, true, [&] {
        desktop.manager().signal(SIGSTOP);
        hands().tap(XKB_KEY_Left);
        desktop.session().setClock("-4000d");
        Process date = desktop.launch({"date", "+%Y"});
        date.waitExit(kDeadline);
        EXPECT_LT(std::stoi(date.output()), 2020);
    });
    klova->holdActivationKeys();
    klova->doubleClick(300, 300);
    expectPlace(window, Place::wholeScreen, "a double click");
    klova->releaseActivationKeys();
    expectGestures(window, "the clock was set back");
}

TEST_F(FaultsTest, AKeyboardIsUnpluggedWhileItsKeysAreHeld) {
    start();
    TestWindow window(display.name());
    Injector others(display.name());
    others.useKeyboard("Xvfb keyboard");
    using Keys = std::vector<xcb_keysym_t>;
    // Keys of the keyboard that is unplugged, and of the one that stays.
    const std::pair<Keys, Keys> rows[] = {{{XKB_KEY_Super_L}, {}},
                                          {{XKB_KEY_Super_L, XKB_KEY_Control_L}, {}},
                                          {{XKB_KEY_Super_L, XKB_KEY_Control_L, XKB_KEY_Left}, {}},
                                          {{XKB_KEY_Super_L}, {XKB_KEY_Control_L}}};
    for (const auto& row : rows) {
        const auto& [going, staying] = row;
        const auto name = "row " + std::to_string(&row - rows);
        others.press(going);
        others.roundTrip();
        hands().press(staying);
        if (&row != rows)
            awaitKeyboardGrab(display);
        others.setPlugged(false);
        EXPECT_TRUE(awaitKeyboardGrab(display, false)) << "armed without its keys: " << name;
        hands().release(staying);
        expectGestures(window.id(), name);
        others.setPlugged(true);
        others.chord(rows[1].first, XKB_KEY_Down);
        expectPlace(window.id(), Place::bottom, "back again: " + name);
        expectNothingStuck(name);
    }
}

} // namespace
