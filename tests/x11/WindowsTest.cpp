#include "x11/WindowBridge.h"

#include <csignal>
#include <future>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

namespace klova::x11 {
namespace {

using rig::Place;

/// A window that has the focus.
class Windows : public WindowBridge, public testing::TestWithParam<std::string> {
protected:
    Windows() : WindowBridge(GetParam()) {}

    std::optional<rig::TestWindow> window{name()};
    const AXUIElementRef element = focus(window->id());
};

INSTANTIATE_TEST_SUITE_P(Managers, Windows, testing::Values("openbox", "xfwm4"),
                         [](const auto& tested) { return tested.param; });

TEST_P(Windows, KeepTheirSizeInADragAndLeaveFullscreenForASnapOnly) {
    ASSERT_TRUE(rig::maximize(display(), window->id()) && settle());
    const auto before = visible(window->id());
    write(element, ax::position, Point{10, 20});
    ASSERT_TRUE(settle());
    EXPECT_EQ(visible(window->id()), (rig::Rect{10, 20, before.width, before.height}));

    display().tellManager(window->id(), "_NET_WM_STATE",
                          {1, display().atom("_NET_WM_STATE_FULLSCREEN"), 0, 2});
    ASSERT_TRUE(until("fullscreen window", [&] { return isFullscreen(window->id()); }));
    write(element, ax::position, Point{50, 50});
    ASSERT_TRUE(settle());
    EXPECT_TRUE(isFullscreen(window->id()));
    EXPECT_EQ(frame(focused())->origin, Point{}) << "a refused write stays written";

    const auto half = rig::target(Place::right, screen());
    snap(element, frameOf(half));
    EXPECT_EQ(frame(element), frameOf(half)) << "before the manager's answer";
    ASSERT_TRUE(settle());
    EXPECT_EQ(visible(window->id()), half);
    EXPECT_FALSE(isFullscreen(window->id()));
}

TEST_P(Windows, GetToTheirPlaceUnderAManagerThatIsLate) {
    const auto half = rig::target(Place::right, screen());
    desktop.manager().signal(SIGSTOP);
    snap(element, frameOf(half));
    EXPECT_TRUE(until("end of patience", [&] { return !service.deadline(); }));
    desktop.manager().signal(SIGCONT);
    ASSERT_TRUE(settle());
    EXPECT_EQ(visible(window->id()), half);
}

TEST_P(Windows, AreWholeOrNoneWhenTheyVanish) {
    const auto before = visible(window->id());
    const auto id = window->id();
    window->destroy();
    EXPECT_EQ(rectOf(frame(element).value()), before);
    write(element, ax::position, Point{1, 1});
    ASSERT_TRUE(until("the window's end", [&] { return !service.AXUIElementGetPid(element); }));
    EXPECT_EQ(focused(), nullptr);

    // Closing the connection frees its range of ids: the next one gets the same.
    window.reset();
    rig::TestWindow successor(name());
    ASSERT_EQ(successor.id(), id);
    EXPECT_FALSE(read<bool>(element, ax::minimized));
    write(element, ax::size, Size{700, 700});
    ASSERT_TRUE(settle());
    EXPECT_NE(visible(successor.id()).width, 700);
}

TEST_P(Windows, AreMinimizedAsTheNewestWishHasIt) {
    for (const bool last : {true, false}) {
        write(element, ax::minimized, !last);
        write(element, ax::minimized, last);
        EXPECT_EQ(read<bool>(element, ax::minimized), last) << "before the answer";
        ASSERT_TRUE(settle());
        EXPECT_EQ(rig::isMinimized(display(), window->id()), last);
    }
}

TEST_P(Windows, WithdrawnAreNotBroughtBack) {
    write(element, ax::minimized, true);
    ASSERT_TRUE(settle());
    window->withdraw();
    ASSERT_TRUE(until("withdrawn window", [&] { return rig::managedWindows(display()).empty(); }));
    write(element, ax::minimized, false);
    ASSERT_TRUE(settle());
    EXPECT_TRUE(rig::managedWindows(display()).empty());
}

TEST_P(Windows, BelongToTheProcessThatMadeThem) {
    window.reset();
    ASSERT_TRUE(until("the window's end", [&] { return !focused(); }));
    ASSERT_EQ(workspace.frontmostApplication()->processIdentifier, kDesktopProcess);
    rig::TestWindow liar(name(), {.windowClass = "Liar", .process = 1});
    EXPECT_EQ(service.AXUIElementGetPid(focus(liar.id())), ::getpid());
    const auto applications = workspace.runningApplications();
    ASSERT_EQ(applications.size(), 1U);
    EXPECT_EQ(applications[0].processIdentifier, ::getpid());
    EXPECT_EQ(applications[0].bundleIdentifier, "Liar");
    const auto windows = read<std::vector<AXUIElementRef>>(
        service.AXUIElementCreateApplication(::getpid()), ax::windows);
    ASSERT_EQ(windows.value().size(), 1U);
    EXPECT_EQ(read<bool>(windows->front(), ax::focusedWindow), true);

    display().setValues(liar.id(), "_NET_WM_WINDOW_TYPE", "ATOM",
                        {display().atom("_NET_WM_WINDOW_TYPE_DESKTOP")});
    display().roundTrip();
    EXPECT_EQ(focused(), nullptr) << "the desktop's own window";
}

TEST_P(Windows, AreFoundFromAnyPartOfTheirFrame) {
    const auto wanted = visible(window->id());
    const auto area = rig::clientArea(display(), window->id());
    for (const float y : {float(wanted.y + 4), float(area.y + 50)}) {
        auto found = service.AXUIElementCopyElementAtPosition(service.AXUIElementCreateSystemWide(),
                                                              float(area.x + 50), y);
        while (found && read<std::string>(found, ax::role) != ax::windowRole)
            found = read<AXUIElementRef>(found, ax::parent).value_or(nullptr);
        ASSERT_TRUE(found) << "at y " << y;
        EXPECT_EQ(rectOf(*frame(found)), wanted);
    }
}

class LateManager : public Windows {};

INSTANTIATE_TEST_SUITE_P(Managers, LateManager, testing::Values("openbox", "xfwm4", "marco"),
                         [](const auto& tested) { return tested.param; });

TEST_P(LateManager, AgainAndAgainPutsWindowsToTheirPlace) {
    using namespace std::chrono_literals;
    using Clock = std::chrono::steady_clock;
    for (const auto place : {Place::right, Place::left, Place::right}) {
        // Its decoration comes back with the snap, so that the answer needs corrections.
        ASSERT_TRUE(rig::maximize(display(), window->id()) && settle());
        const auto half = rig::target(place, screen());
        snap(element, frameOf(half));
        for (auto pause = 150ms; service.deadline() && !HasFailure(); pause = 70ms) {
            desktop.manager().signal(SIGSTOP);
            const auto start = Clock::now();
            // From elsewhere: a manager may have stopped with the server in its hands.
            std::jthread end([&] {
                std::promise<void> never;
                never.get_future().wait_for(pause);
                desktop.manager().signal(SIGCONT);
            });
            until("the end of the pause", [&] { return Clock::now() > start + pause; });
            const auto before = visible(window->id());
            EXPECT_TRUE(rig::waitUntil(display(), "a step of the answer", [&] {
                return visible(window->id()) != before || Clock::now() > start + pause + 30ms;
            }));
        }
        ASSERT_TRUE(settle());
        EXPECT_EQ(visible(window->id()), half);
    }
}

TEST(WindowsWithoutManager, MoveAllTheSame) {
    WindowBridge bridge("");
    rig::TestWindow window(bridge.name());
    window.takeFocus();
    bridge.snap(bridge.focused(), {{30, 40}, {500, 600}});
    ASSERT_TRUE(bridge.until("end of all writes", [&] { return !bridge.service.deadline(); }));
    EXPECT_EQ(bridge.visible(window.id()), (rig::Rect{30, 40, 500, 600}));
    EXPECT_TRUE(bridge.service.AXIsProcessTrustedWithOptions(false));
}

TEST(Monitors, AreReadAnewWithTheirScaleAsOneRow) {
    WindowBridge bridge("openbox");
    const std::vector<rig::Rect> monitors{
        {600, 400, 840, 500}, {0, 100, 600, 800}, {600, 0, 700, 400}};
    rig::setMonitors(bridge.display(), monitors); // the primary one, left of it, above it
    std::vector<Screen> screens;
    ASSERT_TRUE(bridge.until("three monitors", [&] {
        screens = *bridge.screens.screens();
        return screens.size() == monitors.size();
    }));
    const std::vector<rig::Rect> row{{600, 0, 840, 500}, {0, 0, 600, 800}, {1440, 0, 700, 400}};
    for (std::size_t i = 0; i < screens.size(); ++i)
        EXPECT_EQ(rectOf(screens[i].frame), row[i]);
    EXPECT_EQ(screens[0].backingScaleFactor, 1);
    bridge.display().setText(bridge.display().root(), "RESOURCE_MANAGER", "STRING",
                             "*Xft.dpi:\t96\nXft.dpi:\t144\n");
    EXPECT_TRUE(bridge.until("the scale", [&] {
        return bridge.screens.mainScreen().value().backingScaleFactor == 1.5;
    }));

    // A window of fixed steps keeps the inner monitor's edges, not those of the whole screen.
    rig::TestWindow window(bridge.name(), {.stepX = 6, .stepY = 13});
    for (const auto& monitor : monitors) {
        ASSERT_TRUE(rig::place(bridge.display(), window.id(), monitor, 13));
        ASSERT_TRUE(rig::maximize(bridge.display(), window.id()));
        const auto inRow = row[static_cast<std::size_t>(&monitor - monitors.data())];
        bridge.snap(bridge.focus(window.id()), frameOf(rig::target(Place::bottomRight, inRow)));
        ASSERT_TRUE(bridge.settle());
        EXPECT_EQ(rig::misplacement(Place::bottomRight, monitor,
                                    rig::sizeLimits(bridge.display(), window.id()),
                                    bridge.visible(window.id())),
                  "");
    }
}

} // namespace
} // namespace klova::x11
