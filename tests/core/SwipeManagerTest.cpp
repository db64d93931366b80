#include "actions/SwipeManager.h"

#include "core/SimulatedDesktop.h"
#include "settings/DataStorageManager.h"

#include <limits>
#include <tuple>

namespace klova::test {
namespace {

class SwipeManagerTest : public CoreTest {
protected:
    void drag(double x, double y) {
        manager.setCurrentMouseLocation(x, y);
        manager.dragWindow();
    }

    /// What `action` does behind the lookup that it begins with.
    Log logOf(const std::function<void()>& action) {
        sim.takeLog();
        action();
        Log log = sim.takeLog();
        if (!log.empty() && log.front() == "read app7 AXFocusedWindow")
            log.erase(log.begin());
        return log;
    }

    SwipeManager manager{desktop};
};

TEST_F(SwipeManagerTest, startsAtTheWholeMiddleOfTheMainScreen) {
    const std::pair<Size, Point> rows[] = {
        {{1441, 901}, {720, 450}}, {{1443.9, 0.9}, {721, 0}}, {{-3, -3.9}, {-1, -1}}};
    for (const auto& [size, middle] : rows) {
        sim.main->frame.size = size;
        EXPECT_EQ(SwipeManager(desktop).mouseClickedPoint(), middle) << size.width;
    }
    for (const double length : {0x1p63, -0x1.8p63, std::numeric_limits<double>::quiet_NaN(),
                                std::numeric_limits<double>::infinity()}) {
        sim.main->frame.size = {100, length};
        EXPECT_NE(fatalMessage([&] { SwipeManager{desktop}; }), "") << length;
    }
    sim.main.reset();
    EXPECT_NE(fatalMessage([&] { SwipeManager{desktop}; }), "");
}

TEST_F(SwipeManagerTest, dragsByThePointersStepsAndCarriesTheLastOneOver) {
    EXPECT_EQ(logOf([&] { drag(100, 100); }),
              (Log{"read w AXMain", "set w AXMain true", "read w AXPosition",
                   "set w AXPosition (50.0, 60.0)"}));
    EXPECT_EQ(logOf([&] { drag(110, 95); }),
              (Log{"read w AXMain", "read w AXPosition", "set w AXPosition (60.0, 65.0)"}));
    EXPECT_EQ(logOf([&] { drag(130, 95); }).back(), "set w AXPosition (80.0, 65.0)");
    manager.invalidatePreviousMousePosition();
    EXPECT_EQ(logOf([&] { drag(400, 400); }).back(), "set w AXPosition (100.0, 65.0)");
    EXPECT_EQ(logOf([&] { drag(400, 401); }).back(), "set w AXPosition (100.0, 64.0)");
}

TEST_F(SwipeManagerTest, aDragStepWithoutWindowOrPositionWritesNothing) {
    drag(100, 100);
    sim.unfocus();
    EXPECT_EQ(logOf([&] { drag(200, 200); }), Log{});
    EXPECT_EQ(previousMousePosition, (Point{100, 100}));
    sim.focus(window);
    const auto position = std::exchange(window->attributes[ax::position], {-1, {}});
    EXPECT_EQ(logOf([&] { drag(103, 100); }), (Log{"read w AXMain", "read w AXPosition"}));
    window->attributes[ax::position] = position;
    EXPECT_EQ(logOf([&] { drag(104, 100); }).back(), "set w AXPosition (51.0, 60.0)");
}

TEST_F(SwipeManagerTest, reopensTheWindowMinimizedLastAndKeepsIt) {
    EXPECT_EQ(logOf([&] { manager.deminimizeLastWindow(); }), Log{});
    manager.minimizeWindow();
    const auto last = SimulatedDesktop::window("last", 7, {});
    sim.focus(last);
    EXPECT_EQ(logOf([&] { manager.minimizeWindow(); }),
              (Log{"set last AXMinimized true", "set last AXFrontmost false",
                   "set last AXMain false", "set last AXMinimized true"}));
    sim.unfocus();
    EXPECT_EQ(logOf([&] { manager.minimizeWindow(); }), Log{});
    EXPECT_EQ(logOf([&] { manager.deminimizeLastWindow(); }),
              (Log{"set last AXMinimized false", "read last AXMain", "set last AXMain true",
                   "> Optional(AccessibilityElement)"}));
    EXPECT_EQ(logOf([&] { manager.deminimizeLastWindow(); }),
              (Log{"set last AXMinimized false", "read last AXMain",
                   "> Optional(AccessibilityElement)"}));
}

TEST_F(SwipeManagerTest, maximizesAndCentersInTheirOrderOfWrites) {
    sim.screenList->front().frame.origin = {100, 25};
    EXPECT_EQ(logOf([&] { manager.maximizeWindow(); }),
              (Log{"read screens", "read w AXPosition", "read w AXSize",
                   "> oldFrame : (50.0, 60.0, 300.0, 200.0)",
                   "> newFrame : (100.0, 0.0, 1440.0, 900.0)", "set w AXPosition (100.0, 25.0)",
                   "set w AXSize 1440.0 x 900.0", "set w AXSize 1440.0 x 900.0"}));
    EXPECT_EQ(logOf([&] { manager.centerWindow(); }),
              (Log{"read screens", "read w AXPosition", "read w AXSize",
                   "> oldFrame : (100.0, 25.0, 1440.0, 900.0)",
                   "> newFrame : (460.0, 225.0, 720.0, 450.0)", "set w AXPosition (460.0, 225.0)",
                   "set w AXSize 720.0 x 450.0", "set w AXSize 720.0 x 450.0",
                   "set w AXPosition (460.0, 225.0)"}));
}

TEST_F(SwipeManagerTest, snapsBelowTheScreensTopButForTheBottomNames) {
    sim.screenList->front().frame.origin.y = 25;
    EXPECT_EQ(
        logOf([&] { manager.moveTo("TopRight"); }),
        (Log{"read w AXPosition", "> Optional((50.0, 60.0))", "read screens", "read w AXPosition",
             "read w AXSize", "> Screen : (0.0, 25.0, 1440.0, 900.0)  :  1.0   \n", "> 25.0",
             "set w AXSize 720.0 x 450.0", "set w AXPosition (720.0, 25.0)",
             "set w AXSize 720.0 x 450.0"}));
    const std::pair<const char*, Point> rows[] = {{"Top", {0, 25}},
                                                  {"Left", {0, 25}},
                                                  {"Right", {720, 25}},
                                                  {"TopLeft", {0, 25}},
                                                  {"Bottom", {0, 450}},
                                                  {"BottomLeft", {0, 450}},
                                                  {"BottomRight", {720, 450}},
                                                  {"elsewhere", {0, 0}}};
    for (const auto& [name, place] : rows) {
        manager.moveTo(name);
        EXPECT_EQ(AccessibilityElement(sim, window).position(), place) << name;
    }
}

TEST_F(SwipeManagerTest, framesThatCannotBeReadStopTheProcess) {
    window->attributes.erase(ax::size);
    EXPECT_NE(fatalMessage([&] { manager.maximizeWindow(); }), "");
    window->attributes.erase(ax::position);
    EXPECT_NE(fatalMessage([&] { manager.centerWindow(); }), "");
    EXPECT_NE(fatalMessage([&] { manager.moveTo("Left"); }), "");
    sim.unfocus();
    for (const auto action : {&SwipeManager::maximizeWindow, &SwipeManager::centerWindow,
                              &SwipeManager::manageDoubleClick})
        EXPECT_EQ(logOf([&] { (manager.*action)(); }), Log{});
    EXPECT_EQ(logOf([&] { manager.moveTo("Left"); }), Log{});
}

TEST_F(SwipeManagerTest, doubleClicksAlternateForEachApplication) {
    const auto sibling = SimulatedDesktop::window("s", 7, {});
    const auto foreign = SimulatedDesktop::window("f", 8, {});
    // Which halves are on, and the width after it: 1440 maximized, 720 centered, 300 left alone.
    const std::tuple<ElementPtr, bool, bool, double> rows[] = {
        {window, true, true, 1440}, {sibling, true, true, 720},  {foreign, true, true, 1440},
        {window, true, true, 1440}, {window, true, false, 1440}, {window, false, false, 300},
        {window, false, true, 720}, {window, true, true, 720},   {foreign, true, true, 720},
        {window, true, true, 1440},
    };
    for (const auto& [target, maximizing, centering, width] : rows) {
        sim.focus(target);
        target->attributes[ax::size].value = AXValue(Size{300, 200});
        maximizingEnabled = maximizing;
        centeringEnabled = centering;
        manager.manageDoubleClick();
        EXPECT_EQ(AccessibilityElement(sim, target).size()->width, width) << target->name;
    }
    window->process.reset();
    EXPECT_EQ(logOf([&] { manager.manageDoubleClick(); }), Log{});
}

} // namespace
} // namespace klova::test
