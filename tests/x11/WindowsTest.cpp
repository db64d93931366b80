#include "x11/WindowBridge.h"

#include <csignal>
#include <gtest/gtest.h>
#include <unistd.h>

namespace klova::x11 {
namespace {

using rig::Place;

class Windows : public testing::TestWithParam<std::string> {
protected:
    WindowBridge bridge{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Managers, Windows, testing::Values("openbox", "xfwm4"),
                         [](const auto& tested) { return tested.param; });

TEST_P(Windows, KeepTheirSizeInADragAndLeaveFullscreenForASnapOnly) {
    rig::TestWindow window(bridge.name());
    ASSERT_TRUE(rig::maximize(bridge.display(), window.id()) && bridge.settle());
    const auto before = bridge.visible(window.id());
    bridge.write(bridge.focus(window.id()), ax::position, Point{10, 20});
    ASSERT_TRUE(bridge.settle());
    EXPECT_EQ(bridge.visible(window.id()), (rig::Rect{10, 20, before.width, before.height}));

    ASSERT_TRUE(bridge.setFullscreen(window.id()));
    const auto element = bridge.focus(window.id());
    bridge.write(element, ax::position, Point{50, 50});
    ASSERT_TRUE(bridge.settle());
    EXPECT_TRUE(bridge.isFullscreen(window.id()));
    EXPECT_EQ(bridge.frame(bridge.focused())->origin, Point{}) << "a refused write stays written";

    const auto half = rig::target(Place::right, bridge.screen());
    bridge.snap(element, frameOf(half));
    EXPECT_EQ(bridge.frame(element), frameOf(half)) << "before the manager's answer";
    ASSERT_TRUE(bridge.settle());
    EXPECT_EQ(bridge.visible(window.id()), half);
    EXPECT_FALSE(bridge.isFullscreen(window.id()));
}

TEST_P(Windows, GetToTheirPlaceUnderAManagerThatIsLate) {
    rig::TestWindow window(bridge.name());
    const auto element = bridge.focus(window.id());
    const auto half = rig::target(Place::right, bridge.screen());
    const pid_t manager = bridge.desktop.manager().processId();
    ::kill(manager, SIGSTOP);
    bridge.snap(element, frameOf(half));
    EXPECT_TRUE(bridge.until("end of patience", [&] { return !bridge.service.deadline(); }));
    ::kill(manager, SIGCONT);
    ASSERT_TRUE(bridge.settle());
    EXPECT_EQ(bridge.visible(window.id()), half);
}

TEST_P(Windows, AreWholeOrNoneWhenTheyVanish) {
    auto window = std::make_unique<rig::TestWindow>(bridge.name());
    const auto element = bridge.focus(window->id());
    const auto before = bridge.visible(window->id());
    const auto id = window->id();
    window->destroy();
    EXPECT_EQ(rectOf(bridge.frame(element).value()), before);
    bridge.write(element, ax::position, Point{1, 1});
    ASSERT_TRUE(bridge.until("the window's end",
                             [&] { return !bridge.service.AXUIElementGetPid(element); }));
    EXPECT_EQ(bridge.focused(), nullptr);

    // Closing the connection frees its range of ids: the next one gets the same.
    window.reset();
    rig::TestWindow successor(bridge.name());
    ASSERT_EQ(successor.id(), id);
    EXPECT_FALSE(bridge.read<bool>(element, ax::minimized));
    bridge.write(element, ax::size, Size{700, 700});
    ASSERT_TRUE(bridge.settle());
    EXPECT_NE(bridge.visible(successor.id()).width, 700);
}

TEST_P(Windows, AreMinimizedAsTheNewestWishHasIt) {
    rig::TestWindow window(bridge.name());
    const auto element = bridge.focus(window.id());
    for (const bool last : {true, false}) {
        bridge.write(element, ax::minimized, !last);
        bridge.write(element, ax::minimized, last);
        EXPECT_EQ(bridge.read<bool>(element, ax::minimized), last) << "before the answer";
        ASSERT_TRUE(bridge.settle());
        EXPECT_EQ(rig::isMinimized(bridge.display(), window.id()), last);
    }
}

TEST_P(Windows, WithdrawnAreNotBroughtBack) {
    rig::TestWindow window(bridge.name());
    const auto element = bridge.focus(window.id());
    bridge.write(element, ax::minimized, true);
    ASSERT_TRUE(bridge.settle());
    window.unmap();
    // An iconic window is withdrawn by the synthetic notification alone.
    xcb_unmap_notify_event_t withdrawal{};
    withdrawal.response_type = XCB_UNMAP_NOTIFY;
    withdrawal.event = bridge.display().root();
    withdrawal.window = window.id();
    xcb_send_event(bridge.display().get(), 0, bridge.display().root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&withdrawal));
    ASSERT_TRUE(bridge.until("withdrawn window",
                             [&] { return rig::managedWindows(bridge.display()).empty(); }));
    bridge.write(element, ax::minimized, false);
    ASSERT_TRUE(bridge.settle());
    EXPECT_TRUE(rig::managedWindows(bridge.display()).empty());
}

TEST_P(Windows, BelongToTheProcessThatMadeThem) {
    ASSERT_EQ(bridge.workspace.frontmostApplication()->processIdentifier, kDesktopProcess);
    EXPECT_EQ(bridge.focused(), nullptr);
    rig::TestWindow window(bridge.name(), {.windowClass = "Liar", .process = 1});
    const auto element = bridge.focus(window.id());
    EXPECT_EQ(bridge.service.AXUIElementGetPid(element), ::getpid());
    const auto applications = bridge.workspace.runningApplications();
    ASSERT_EQ(applications.size(), 1U);
    EXPECT_EQ(applications[0].processIdentifier, ::getpid());
    EXPECT_EQ(applications[0].bundleIdentifier, "Liar");
    const auto windows = bridge.read<std::vector<AXUIElementRef>>(
        bridge.service.AXUIElementCreateApplication(::getpid()), ax::windows);
    ASSERT_EQ(windows.value().size(), 1U);
    EXPECT_EQ(bridge.read<bool>(windows->front(), ax::focusedWindow), true);

    bridge.display().setValues(window.id(), "_NET_WM_WINDOW_TYPE", "ATOM",
                               {bridge.display().atom("_NET_WM_WINDOW_TYPE_DESKTOP")});
    bridge.display().roundTrip();
    EXPECT_EQ(bridge.focused(), nullptr) << "the desktop's own window";
}

TEST_P(Windows, AreFoundFromAnyPartOfTheirFrame) {
    rig::TestWindow window(bridge.name());
    ASSERT_TRUE(bridge.focus(window.id())); // and so on the screen
    const auto frame = bridge.visible(window.id());
    const auto area = rig::clientArea(bridge.display(), window.id());
    for (const float y : {float(frame.y + 4), float(area.y + 50)}) {
        auto element = bridge.service.AXUIElementCopyElementAtPosition(
            bridge.service.AXUIElementCreateSystemWide(), float(area.x + 50), y);
        while (element && bridge.read<std::string>(element, ax::role) != ax::windowRole)
            element = bridge.read<AXUIElementRef>(element, ax::parent).value_or(nullptr);
        ASSERT_TRUE(element) << "at y " << y;
        EXPECT_EQ(rectOf(*bridge.frame(element)), frame);
    }
}

TEST(WindowsWithoutManager, MoveAllTheSame) {
    WindowBridge bridge("");
    rig::TestWindow window(bridge.name());
    xcb_set_input_focus(bridge.display().get(), XCB_INPUT_FOCUS_PARENT, window.id(),
                        XCB_CURRENT_TIME);
    bridge.display().roundTrip();
    bridge.snap(bridge.focused(), {{30, 40}, {500, 600}});
    ASSERT_TRUE(bridge.until("end of all writes", [&] { return !bridge.service.deadline(); }));
    EXPECT_EQ(bridge.visible(window.id()), (rig::Rect{30, 40, 500, 600}));
    EXPECT_TRUE(bridge.service.AXIsProcessTrustedWithOptions(false));
}

TEST(Monitors, AreReadAnewWithTheirScale) {
    WindowBridge bridge("openbox", true);
    const auto& monitors = bridge.desktop.monitors();
    const auto screens = bridge.screens.screens().value();
    ASSERT_EQ(screens.size(), monitors.size());
    for (std::size_t i = 0; i < screens.size(); ++i)
        EXPECT_EQ(rectOf(screens[i].frame), monitors[i]);
    EXPECT_EQ(screens[0].backingScaleFactor, 1);
    bridge.display().setText(bridge.display().root(), "RESOURCE_MANAGER", "STRING",
                             "*Xft.dpi:\t96\nXft.dpi:\t144\n");
    EXPECT_TRUE(bridge.until("the scale", [&] {
        return bridge.screens.mainScreen().value().backingScaleFactor == 1.5;
    }));

    // A window of fixed steps keeps the inner monitor's edges, not those of the whole screen.
    rig::TestWindow window(bridge.name(), {.stepX = 6, .stepY = 13});
    for (const auto& monitor : monitors) {
        ASSERT_TRUE(rig::maximize(bridge.display(), window.id()));
        bridge.snap(bridge.focus(window.id()), frameOf(rig::target(Place::bottomRight, monitor)));
        ASSERT_TRUE(bridge.settle());
        EXPECT_EQ(rig::misplacement(Place::bottomRight, monitor,
                                    rig::sizeLimits(bridge.display(), window.id()),
                                    bridge.visible(window.id())),
                  "");
    }
}

} // namespace
} // namespace klova::x11
