#include "e2e/KlovaTest.h"

using namespace klova::rig;

namespace {

class GesturesTest : public KlovaTest,
                     public testing::WithParamInterface<std::tuple<std::string, bool>> {
protected:
    GesturesTest()
        : KlovaTest({.windowManager = std::get<0>(GetParam()),
                     .screen = {1440, 900},
                     .twoMonitors = std::get<1>(GetParam())}) {
        start();
    }

    /// The one on the right where there are two.
    Rect screen() { return desktop.monitors().back(); }
    Rect inside(int x, int y, int width, int height) {
        return {screen().x + x, screen().y + y, width, height};
    }

    void focus(xcb_window_t window, const Rect& start, int slack = 0) {
        // Managers may still be busy with the focus of a window that came before.
        ASSERT_TRUE(waitUntil(display, "a focus that stays", [&] {
            return activate(display, window) && barrier.pass() && activeWindow(display) == window;
        }));
        ASSERT_TRUE(place(display, window, start, slack));
    }

    void expectPlace(xcb_window_t window, Place place, const std::string& gesture) {
        EXPECT_EQ(klova->awaitPlace(window, place, screen()), "") << gesture;
        // And it stays there.
        ASSERT_TRUE(barrier.pass());
        EXPECT_EQ(klova->awaitPlace(window, place, screen(), 0ms), "") << gesture << ", a while on";
    }

    void expectEverySnap(xcb_window_t window) {
        klova->holdActivationKeys();
        for (const auto& gesture : snapGestures()) {
            klova->snap(gesture);
            expectPlace(window, gesture.place, gesture.name);
        }
        klova->releaseActivationKeys();
    }

    void expectFrame(xcb_window_t window, const Rect& wanted, const std::string& what) {
        awaitFrame(display, window, wanted);
        ASSERT_TRUE(barrier.pass());
        EXPECT_EQ(visibleFrame(display, window), wanted) << what;
    }

    ManagerBarrier barrier{display.name()};
};

TEST_P(GesturesTest, SnapsPutAPlainWindowToThePixelAlsoWhenItIsMaximized) {
    TestWindow window(display.name());
    focus(window.id(), inside(120, 90, 560, 380));
    expectEverySnap(window.id());
    for (const auto& gesture : {snapGestures()[1], snapGestures()[10]}) {
        ASSERT_TRUE(maximize(display, window.id()));
        klova->holdActivationKeys();
        klova->snap(gesture);
        expectPlace(window.id(), gesture.place, gesture.name);
        klova->releaseActivationKeys();
        EXPECT_FALSE(isMaximized(display, window.id()));
    }
}

TEST_P(GesturesTest, SnapsAnchorATerminalAtTheNamedEdges) {
    auto terminal = desktop.launch({"xterm"});
    const auto window = awaitWindow(display, terminal);
    focus(window, inside(120, 90, 560, 380), sizeLimits(display, window).stepY);
    expectEverySnap(window);
}

TEST_P(GesturesTest, SnapsPlaceWhatIsSeenOfASelfDecoratedWindow) {
    auto editor = desktop.launch({"env", "GTK_CSD=1", "mousepad", "--disable-server"});
    const auto window = awaitWindow(display, editor);
    focus(window, inside(120, 90, 560, 380));
    expectEverySnap(window);
}

TEST_P(GesturesTest, SnapsKeepTheNamedEdgesOfAWindowThatCannotTakeThatSize) {
    hands().setSpacing(10ms); // the second of two keys comes while the first is answered
    for (const bool fixed : {false, true}) {
        TestWindow window(display.name(), {.area = inside(60, 60, 520, 500),
                                           .minWidth = 500,
                                           .minHeight = 480,
                                           .fixedSize = fixed});
        ASSERT_TRUE(activate(display, window.id()));
        expectEverySnap(window.id());
    }
}

TEST_P(GesturesTest, DoubleClicksMaximizeAndCentreInTurn) {
    TestWindow window(display.name());
    focus(window.id(), inside(120, 90, 560, 380));
    klova->holdActivationKeys();
    int x = screen().x + 200;
    for (const auto place : {Place::wholeScreen, Place::centre, Place::wholeScreen}) {
        klova->doubleClick(x += 40, screen().y + 300);
        expectPlace(window.id(), place, "double click");
    }
    display.setText(display.root(), "RESOURCE_MANAGER", "STRING", "Xft.dpi:\t192\n");
    for (const int step : {40, 9}) {
        hands().movePointer(x += step, screen().y + 300);
        klova->click(1);
    }
    expectPlace(window.id(), Place::centre, "9 pixels away, which are 4.5 points now");
    klova->releaseActivationKeys();
}

TEST_P(GesturesTest, RightPressMinimizesAndTheLetterReopens) {
    const auto start = inside(120, 90, 560, 380);
    TestWindow other(display.name());
    focus(other.id(), start); // marco and metacity give it the focus when they find the time
    TestWindow window(display.name());
    focus(window.id(), start);
    klova->holdActivationKeys();
    hands().click(3);
    EXPECT_TRUE(awaitMinimized(display, window.id()));
    EXPECT_FALSE(isMinimized(display, other.id()));
    hands().tap(XKB_KEY_c);
    EXPECT_TRUE(waitUntil(display, "reopening", [&] {
        return !isMinimized(display, window.id()) && activeWindow(display) == window.id();
    }));
    klova->releaseActivationKeys();
    expectFrame(window.id(), start, "reopened window");
}

TEST_P(GesturesTest, DragsMoveByThePointersWay) {
    TestWindow window(display.name());
    const auto start = inside(120, 90, 300, 220);
    focus(window.id(), start);
    hands().setSpacing(1ms);
    const auto drag = [&](int count, int stepX, int stepY) {
        const auto frame = visibleFrame(display, window.id());
        const int x = frame.x + 290, y = frame.y + 100;
        hands().movePointer(x, y);
        klova->holdActivationKeys();
        klova->beginDrag(x + stepX, y + stepY);
        for (int i = 2; i <= count; ++i)
            hands().movePointer(x + i * stepX, y + i * stepY);
        hands().releaseButton(1);
    };
    // The first motion of a drag repeats the last step of the drag before; at first there is none.
    drag(100, 1, 2);
    auto wanted = start;
    wanted.x += 99;
    wanted.y += 198;
    expectFrame(window.id(), wanted, "first drag");
    klova->releaseActivationKeys();
    const bool across = !desktop.manager().keepsWindowsOnScreen() && screen().x == 0;
    drag(across ? 100 : 20, -4, 0);
    wanted.x -= across ? 99 * 4 - 1 : 19 * 4 - 1;
    wanted.y += 2;
    expectFrame(window.id(), wanted, "second drag, across the screen's left edge where it may be");
    klova->snap(snapGestures()[0]);
    expectPlace(window.id(), Place::left, "snapped from there");
    klova->releaseActivationKeys();
}

/// A server in a window of another can turn its screen, as those with a graphics card do.
struct OuterServer {
    OuterServer() { ::setenv("DISPLAY", server.display().c_str(), 1); }
    const XServer server{{1600, 1600}};
};

class TurnedScreenTest : OuterServer, public KlovaTest {
protected:
    TurnedScreenTest() : KlovaTest({.screen = {1200, 800}, .server = ServerKind::nested}) {}
};

TEST_F(TurnedScreenTest, SnapsFillTheHalvesOfTheScreenAsItStands) {
    constexpr Rect upright{0, 0, 800, 1200}, flat{0, 0, 1200, 800};
    start();
    const TestWindow window(display.name());
    for (const auto& [way, screen] : {std::pair{"left", upright}, std::pair{"inverted", flat},
                                      std::pair{"right", upright}, std::pair{"normal", flat}}) {
        ASSERT_EQ(desktop.launch({"xrandr", "-o", way}).waitExit(kDeadline), 0);
        focus(window.id());
        klova->holdActivationKeys();
        for (const auto& gesture : {snapGestures()[1], snapGestures()[3]}) {
            klova->snap(gesture);
            EXPECT_EQ(klova->awaitPlace(window.id(), gesture.place, screen), "") << way;
        }
        klova->releaseActivationKeys();
    }
}

INSTANTIATE_TEST_SUITE_P(Desktops, GesturesTest,
                         testing::Combine(testing::Values("openbox", "xfwm4", "marco", "metacity",
                                                          "icewm", "kwin"),
                                          testing::Bool()),
                         [](const auto& test) {
                             return std::get<0>(test.param) +
                                    (std::get<1>(test.param) ? "OnTheRightOfTwo" : "");
                         });

} // namespace
