#include "accessibility/WindowLookup.h"
#include "core/SimulatedDesktop.h"

namespace klova::test {
namespace {

class AccessibilityTest : public CoreTest {
protected:
    AccessibilityElement element{sim, window};
};

TEST_F(AccessibilityTest, readsAreAbsentUnlessTheKindFits) {
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
}

TEST_F(AccessibilityTest, writesOnlyWhatIsThere) {
    element.setPosition(std::nullopt);
    element.setSize(std::nullopt);
    element.setPosition(Point{1, 2});
    element.setSize(Size{3, 4});
    EXPECT_EQ(sim.takeLog(), (Log{"set w AXPosition (1.0, 2.0)", "set w AXSize 3.0 x 4.0"}));
}

TEST_F(AccessibilityTest, becomesMainUnlessItReadsTrue) {
    const std::pair<AXCopyResult, bool> rows[] = {{{0, true}, false},
                                                  {{0, false}, true},
                                                  {{0, std::nullopt}, true},
                                                  {{0, std::string("true")}, true},
                                                  {{-1, true}, true}};
    for (const auto& [result, written] : rows) {
        window->attributes[ax::main] = result;
        element.becomeMain();
        EXPECT_EQ(sim.takeLog(),
                  written ? (Log{"read w AXMain", "set w AXMain true"}) : Log{"read w AXMain"});
    }
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
    EXPECT_EQ(sim.takeLog(),
              (Log{"create system-wide", "hit system", "read label AXRole", "read label AXParent",
                   "read button AXRole", "read button AXParent", "read w AXRole"}));
    EXPECT_TRUE(windowUnderPoint(desktop, {5, 5}));
    EXPECT_EQ(sim.takeLog(), (Log{"hit system", "read w AXRole"}));
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

    EXPECT_EQ(windowsOfApplication(desktop, 8), (Windows{other, window}));
    EXPECT_EQ(windowsOfRunningApplication(desktop, "org.a"), Windows{window});
    EXPECT_EQ(windowsOfRunningApplication(desktop, "org"), Windows{});
    sim.frontmost = {8, "org.a", {}};
    EXPECT_EQ(windowsOfFrontmostApplication(desktop), Windows{window});
    sim.frontmost = {8, {}, {}};
    EXPECT_EQ(windowsOfFrontmostApplication(desktop), (Windows{other, window}));
    sim.frontmost = {9, "org.a", {}}; // its own list is read first
    EXPECT_NE(fatalMessage([&] { windowsOfFrontmostApplication(desktop); }), "");
}

TEST_F(AccessibilityTest, findsTheFocusedOneAmongTheWindows) {
    std::vector<ElementPtr> windows;
    for (const char* name : {"a", "b", "c", "d"})
        windows.push_back(SimulatedDesktop::window(name, 7, {}));
    sim.frontmost = {7, {}, {}};
    sim.application(7)->attributes[ax::windows].value =
        std::vector<AXUIElementRef>(windows.begin(), windows.end());
    windows[1]->attributes[ax::focusedWindow] = {0, false};
    windows[2]->attributes[ax::focusedWindow] = {0, true};
    EXPECT_EQ(focusedWindowAmongFrontmostWindows(desktop), windows[2]);
    EXPECT_EQ(sim.takeLog(), (Log{"read app7 AXWindows", "read a AXFocusedWindow", "> no success",
                                  "read b AXFocusedWindow", "read c AXFocusedWindow"}));
    windows[2]->attributes[ax::focusedWindow] = {0, false};
    EXPECT_EQ(focusedWindowAmongFrontmostWindows(desktop), nullptr);
    windows[0]->attributes[ax::focusedWindow] = {0, std::nullopt};
    EXPECT_NE(fatalMessage([&] { focusedWindowAmongFrontmostWindows(desktop); }), "");
}

} // namespace
} // namespace klova::test
