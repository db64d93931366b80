#include "accessibility/WindowLookup.h"
#include "core/SimulatedDesktop.h"

namespace klova::test {
namespace {

class AccessibilityTest : public CoreTest {};

TEST_F(AccessibilityTest, readsAreAbsentUnlessTheKindFitsAndNothingIsWrittenForThem) {
    AccessibilityElement element(sim, window);
    EXPECT_EQ(element.position(), (Point{50, 60}));
    EXPECT_EQ(element.size(), (Size{300, 200}));
    EXPECT_EQ(element.pid(), 7);
    std::swap(window->attributes[ax::position], window->attributes[ax::size]);
    EXPECT_EQ(element.position(), (Point{300, 200})) << "the wrapped kind is not compared";
    EXPECT_EQ(element.size(), (Size{50, 60}));

    const AXCopyResult unusable[] = {{-1, AXValue(Point{1, 2})},
                                     {0, std::nullopt},
                                     {0, true},
                                     {0, std::vector<AXUIElementRef>{}},
                                     {0, AXUIElementRef()}};
    for (const auto& result : unusable) {
        window->attributes[ax::position] = window->attributes[ax::size] = result;
        window->attributes[ax::role] = window->attributes[ax::parent] = result;
        EXPECT_FALSE(element.position() || element.size() || element.role() || element.parent());
    }
    window->process.reset();
    EXPECT_FALSE(element.pid());
    sim.takeLog();
    element.setPosition(std::nullopt);
    element.setSize(std::nullopt);
    EXPECT_EQ(sim.takeLog(), Log{});
}

TEST_F(AccessibilityTest, findsTheWindowUnderAPoint) {
    const auto label = std::make_shared<SimulatedElement>("label"); // its role cannot be read
    const auto button = std::make_shared<SimulatedElement>("button");
    button->attributes[ax::role].value = std::string("AXWindowButton");
    button->attributes[ax::parent].value = AXUIElementRef(window);
    label->attributes[ax::parent].value = AXUIElementRef(button);
    sim.elementsAt = {{{0.1F, 2}, label}, {{5, 5}, window}};

    const auto found = windowUnderPoint(desktop, {0.1, 2});
    ASSERT_TRUE(found);
    EXPECT_EQ(found->elementRef(), window);
    sim.takeLog();
    EXPECT_TRUE(windowUnderPoint(desktop, {5, 5}));
    EXPECT_EQ(sim.takeLog(), (Log{"hit system", "read w AXRole"})) << "one element for all";
    EXPECT_FALSE(windowUnderPoint(desktop, {6, 6}));
    button->attributes.erase(ax::parent);
    EXPECT_FALSE(windowUnderPoint(desktop, {0.1, 2}));
}

TEST_F(AccessibilityTest, theFocusedWindowMayBeAbsentButNotTheApplication) {
    sim.frontmost.reset();
    EXPECT_NE(fatalMessage([&] { focusedWindowOfFrontmostApplication(desktop); }), "");
    EXPECT_NE(fatalMessage([&] { windowsOfFrontmostApplication(desktop); }), "");
    sim.focus(window);
    EXPECT_EQ(focusedWindowOfFrontmostApplication(desktop), window);
    auto& answer = sim.application(7)->attributes[ax::focusedWindow];
    for (const AXCopyResult& result : {AXCopyResult{-1, {}}, {0, {}}, {0, true}}) {
        answer = result;
        EXPECT_EQ(focusedWindowOfFrontmostApplication(desktop), nullptr);
    }
}

TEST_F(AccessibilityTest, listsTheWindowsOfTheFirstApplicationWithAnIdentifier) {
    using Windows = std::vector<AXUIElementRef>;
    const auto other = SimulatedDesktop::window("o", 8, {});
    sim.application(7)->attributes[ax::windows].value = Windows{window};
    sim.application(8)->attributes[ax::windows].value = Windows{other, window};
    sim.running = {{6, {}, {}}, {7, "org.a", {}}, {8, "org.a", {}}};
    EXPECT_EQ(windowsOfRunningApplication(desktop, "org"), Windows{});
    sim.frontmost = {8, "org.a", {}};
    EXPECT_EQ(windowsOfFrontmostApplication(desktop), Windows{window});
    sim.frontmost = {9, "org.a", {}}; // its own list is read first
    EXPECT_NE(fatalMessage([&] { windowsOfFrontmostApplication(desktop); }), "");

    sim.frontmost = {8, {}, {}};
    EXPECT_EQ(windowsOfFrontmostApplication(desktop), (Windows{other, window}));
    sim.takeLog();
    window->attributes[ax::focusedWindow] = {0, true};
    EXPECT_EQ(focusedWindowAmongFrontmostWindows(desktop), window);
    EXPECT_EQ(sim.takeLog(), (Log{"read app8 AXWindows", "read o AXFocusedWindow", "> no success",
                                  "read w AXFocusedWindow"}));
    window->attributes[ax::focusedWindow] = {0, false};
    EXPECT_EQ(focusedWindowAmongFrontmostWindows(desktop), nullptr);
    other->attributes[ax::focusedWindow] = {0, std::nullopt};
    EXPECT_NE(fatalMessage([&] { focusedWindowAmongFrontmostWindows(desktop); }), "");
}

} // namespace
} // namespace klova::test
