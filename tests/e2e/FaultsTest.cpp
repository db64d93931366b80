// What breaks around Klova, and that nobody is left with a stuck key or without gestures.
#include "desktop/Grabs.h"
#include "desktop/Klova.h"
#include "desktop/ManagerBarrier.h"
#include "desktop/Relay.h"
#include "desktop/SmallDisk.h"
#include "desktop/TestWindow.h"
#include "desktop/Trays.h"
#include "desktop/Wait.h"

#include <algorithm>
#include <csignal>
#include <gtest/gtest.h>

using namespace klova::rig;
using namespace std::chrono_literals;

namespace {

class FaultsTest : public testing::Test {
protected:
    void start() {
        klova.emplace(desktop, KLOVA_BINARY);
        klova->hands().setSpacing(2ms);
    }
    Injector& hands() { return klova->hands(); }

    void focus(xcb_window_t window) {
        if (managerWindow(display) != XCB_WINDOW_NONE)
            activate(display, window);
        xcb_set_input_focus(display.get(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
        display.roundTrip();
    }

    bool awaitGrab(bool held = true) {
        return waitUntil(display, held ? "arming" : "disarming",
                         [&] { return keyboardGrabbed(display) == held; });
    }

    void expectPlace(xcb_window_t window, Place place, const std::string& what) {
        EXPECT_EQ(klova->awaitPlace(window, place, desktop.server().screen()), "") << what;
    }

    void expectNothingStuck(const std::string& after) {
        EXPECT_TRUE(waitUntil(
            display, "free input", [&] { return stuckInput(display).empty(); },
            [&] { return stuckInput(display); }))
            << after;
        const auto said = klova->process().output();
        EXPECT_TRUE(klova->process().running()) << after << said;
        EXPECT_EQ(said.find("refused"), std::string::npos) << after << said;
    }

    /// The window is snapped to two sides, and nothing is left behind.
    void expectGestures(xcb_window_t window, const std::string& after) {
        focus(window);
        for (const auto& gesture : {snapGestures()[0], snapGestures()[1]}) {
            klova->holdActivationKeys();
            klova->snap(gesture);
            klova->releaseActivationKeys();
            expectPlace(window, gesture.place, gesture.name + " after " + after);
        }
        expectNothingStuck(after);
    }

    /// The first half of a drag to the right, or of a key's gesture; the fault; and the rest, which
    /// a window that lives obeys.
    void interrupt(xcb_window_t window, bool dragging, bool lives,
                   const std::function<void()>& fault) {
        const auto before = visibleFrame(display, window);
        const auto client = clientArea(display, window);
        hands().movePointer(100, 500);
        klova->holdActivationKeys();
        awaitGrab();
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

    VirtualDesktop desktop;
    Display& display = desktop.display();
    std::optional<Klova> klova;
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
            require(display, "minimizing", [&] { return isMinimized(display, window.id()); });
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

TEST_F(FaultsTest, AScreenLockerHasKeyboardAndMouseToItself) {
    start();
    TestWindow window(display.name());
    expectGestures(window.id(), "nothing");
    const auto before = visibleFrame(display, window.id());
    for (const bool armed : {false, true}) {
        if (armed) {
            klova->holdActivationKeys();
            ASSERT_TRUE(awaitGrab());
        }
        Process locker = desktop.launch({"i3lock", "--nofork"});
        require(display, "the locker",
                [&] { return unmanagedWindow(display, "i3lock").has_value(); });
        if (armed)
            klova->releaseActivationKeys(); // for which the locker waits
        ASSERT_TRUE(awaitGrab());
        hands().pressButton(1);
        klova->holdActivationKeys();
        hands().tap(XKB_KEY_Left);
        hands().movePointer(400 + armed, 400);
        hands().movePointer(500, 400);
        hands().releaseButton(1);
        hands().click(3);
        klova->releaseActivationKeys();
        ASSERT_TRUE(ManagerBarrier(display.name()).pass());
        EXPECT_EQ(visibleFrame(display, window.id()), before);
        EXPECT_FALSE(isMinimized(display, window.id()));
        EXPECT_TRUE(locker.running() && keyboardGrabbed(display));
        locker.signal(SIGTERM);
        locker.waitExit(kDeadline);
        expectGestures(window.id(), "a locker");
    }
}

class ForeignGrabTest
    : public FaultsTest,
      public testing::WithParamInterface<std::tuple<xcb_keysym_t, Protocol, bool>> {};

TEST_P(ForeignGrabTest, OfTheCombinationIsOvercomeOrOutlived) {
    const auto [key, protocol, before] = GetParam();
    const std::uint32_t control = key == XKB_KEY_Left ? XCB_MOD_MASK_CONTROL : 0;
    auto other = std::make_unique<Display>(display.name());
    if (!before)
        start();
    reserveKey(*other, Injector(display.name()).keyCode(key), XCB_MOD_MASK_4 | control, protocol);
    if (before)
        start();
    TestWindow window(display.name());
    klova->holdActivationKeys(); // whoever was beaten is the newest again after that
    klova->releaseActivationKeys();
    expectNothingStuck("the other program's turn");
    if (key == XKB_KEY_Left || protocol == Protocol::core || !before)
        expectGestures(window.id(), "the other program's turn");
    else // which nobody can take from it
        EXPECT_NE(klova->process().output().find("another program holds"), std::string::npos);
    other.reset();
    klova->holdActivationKeys();
    klova->releaseActivationKeys();
    expectGestures(window.id(), "the other program's end");
}

INSTANTIATE_TEST_SUITE_P(Keys, ForeignGrabTest,
                         testing::Combine(testing::Values(XKB_KEY_Left, XKB_KEY_Control_L),
                                          testing::Values(Protocol::core, Protocol::xinput2),
                                          testing::Bool()));

class BusFaultsTest : public FaultsTest, public testing::WithParamInterface<std::string> {};

TEST_P(BusFaultsTest, LeavesTheGesturesAlone) {
    std::optional<Process> tray;
    if (GetParam() == "Absent")
        desktop.session().setVariable("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
    else
        tray.emplace(startNotifierHost(desktop));
    start();
    if (tray)
        require(display, "Klova's icon", [&] { return !announcedBy(desktop).empty(); });
    desktop.session().signalBus(GetParam() == "Killed" ? SIGKILL : SIGSTOP);
    TestWindow window(display.name());
    for (int i = 0; i < 5; ++i) // each tells the tray of another icon, twice
        expectGestures(window.id(), GetParam());
    desktop.session().signalBus(SIGCONT);
    expectGestures(window.id(), "the bus goes on");
    desktop.session().signalBus(SIGSTOP);
    klova->process().signal(SIGTERM);
    EXPECT_EQ(klova->process().waitExit(kDeadline), 0);
    desktop.session().signalBus(SIGKILL);
}

INSTANTIATE_TEST_SUITE_P(Bus, BusFaultsTest, testing::Values("Absent", "Killed", "Stopped"),
                         [](const auto& test) { return test.param; });

TEST_F(FaultsTest, AFullOrReadOnlyDiskKeepsTheSettingsWhole) {
    const auto settings = desktop.session().config() / "klova" / "preferences.json";
    std::optional<SmallDisk> disk;
    try {
        disk.emplace(settings.parent_path(), 64 << 10);
    } catch (const std::system_error& error) {
        GTEST_SKIP() << "NOT TESTED: this machine permits no disk of one's own: " << error.what();
    }
    const Process monitor = desktop.launch({"dbus-monitor", "member=Notify"});
    const auto tray = startNotifierHost(desktop);
    start();
    require(display, "Klova's icon", [&] { return !announcedBy(desktop).empty(); });
    choose(desktop, announcedEntry(desktop, "Preferences…"));
    const auto panel = awaitWindow(display, klova->process());
    require(display, "the panel's focus", [&] { return activeWindow(display) == panel; });
    hands().tap(XKB_KEY_Tab); // to the first key, which Space takes and gives back
    for (const bool full : {true, false}) {
        const auto before = readFile(settings);
        full ? disk->setFull(true) : disk->setReadOnly(true);
        hands().tap(XKB_KEY_space);
        require(display, "the message", [&] {
            const std::string reason = full ? "No space left" : "Read-only";
            return klova->process().output().find(reason) != std::string::npos &&
                   monitor.output().find(reason) != std::string::npos;
        });
        EXPECT_EQ(readFile(settings), before);
        full ? disk->setFull(false) : disk->setReadOnly(false);
        hands().tap(XKB_KEY_space);
        hands().tap(XKB_KEY_space);
        EXPECT_TRUE(waitUntil(display, "the save", [&] { return readFile(settings) != before; }));
        EXPECT_TRUE(readFile(settings).ends_with("}\n")) << readFile(settings);
    }
    hands().tap(XKB_KEY_Escape);
    TestWindow window(display.name());
    expectGestures(window.id(), "saving");
}

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
        std::ranges::for_each(going, [&](auto key) { others.press(key); });
        others.roundTrip();
        std::ranges::for_each(staying, [&](auto key) { hands().press(key); });
        if (&row != rows)
            awaitGrab();
        others.setPlugged(false);
        EXPECT_TRUE(awaitGrab(false)) << "armed without its keys: " << name;
        std::ranges::for_each(staying, [&](auto key) { hands().release(key); });
        expectGestures(window.id(), name);
        others.setPlugged(true);
        const auto& both = rows[1].first;
        std::ranges::for_each(both, [&](auto key) { others.press(key); });
        others.tap(XKB_KEY_Down);
        std::ranges::for_each(both, [&](auto key) { others.release(key); });
        expectPlace(window.id(), Place::bottom, "back again: " + name);
        expectNothingStuck(name);
    }
}

} // namespace
