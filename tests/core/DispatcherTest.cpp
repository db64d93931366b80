#include "core/SimulatedDesktop.h"
#include "input/ActivationKeys.h"
#include "input/EventTapDispatcher.h"
#include "input/ShellState.h"
#include "input/SnapKeys.h"
#include "settings/DataStorageManager.h"

#include <set>
#include <sstream>
#include <tuple>

namespace klova::test {
namespace {

using Keys = std::vector<KeyCode>;
using Codes = std::vector<std::int64_t>;

TEST(ActivationKeys, labelTheKeysInListOrder) {
    const std::pair<Keys, const char*> rows[] = {
        {{55, 59}, "⌘Ctrl"},    {{59, 55}, "Ctrl⌘"},           {{55, 59, 55}, "⌘Ctrl⌘"},
        {{56, 58, 63}, "⇧⌥fn"}, {{54, 60, 61, 62, 57, 0}, ""}, {{}, ""}};
    for (const auto& [keys, label] : rows)
        EXPECT_EQ(activationKeyLabel(keys), label);
}

TEST(SnapKeys, choosePositionsFromAllHeldKeys) {
    const std::map<char, std::int64_t> codes{{'<', 123}, {'>', 124}, {'v', 125},
                                             {'^', 126}, {'a', 0},   {'s', 1},
                                             {'d', 2},   {'w', 13},  {'c', 8}};
    std::istringstream rows("<:Left a:Left ^:Top w:Top >:Right d:Right v:Bottom s:Bottom "
                            "^<:TopLeft aw:TopLeft >^:TopRight wd:TopRight <v:BottomLeft "
                            "sa:BottomLeft v>:BottomRight ds:BottomRight <<: <<^:TopLeft <>: "
                            "asd:BottomLeft <>^:TopLeft >v^:TopRight <>v:BottomLeft ^v: <w: "
                            "<wa:TopLeft c: :");
    for (std::string row; rows >> row;) {
        Codes keys;
        for (const char name : row.substr(0, row.find(':')))
            keys.push_back(codes.at(name));
        EXPECT_EQ(positionForKeys(keys).value_or(""), row.substr(row.find(':') + 1)) << row;
    }
}

class DispatcherTest : public CoreTest {
protected:
    DispatcherTest() {
        activationKeys = {55, 59};
        sharedSwipeManager = &manager;
        heldModifierKeys = {59, 56, 55}; // in another order and with a further one
        activationComplete = true;
    }

    Verdict tap(std::uint32_t type, std::int64_t code = kNoKeyCode, std::int64_t clicks = 1) {
        const auto eventType = static_cast<EventType>(type);
        return dispatcher.tapCallback(eventType, {eventType, code, clicks});
    }

    /// What the event did to the window or the application; "" for nothing.
    std::string effectOf(std::uint32_t type, std::int64_t code, std::int64_t clicks = 1) {
        sim.takeLog();
        EXPECT_EQ(tap(type, code, clicks), Verdict::swallow) << type << " " << code;
        std::string effect;
        for (const std::string& entry : sim.takeLog())
            if (entry == "quit" || entry.starts_with("set "))
                effect += (effect.empty() ? "" : "; ") + entry;
        return effect;
    }

    static constexpr std::uint32_t kDown = 10, kUp = 11;
    SwipeManager manager{desktop};
    EventTapDispatcher dispatcher{desktop};
};

TEST_F(DispatcherTest, swallowsArmedInputAndForgetsTheDragWithWhatPasses) {
    keysDown = {123};
    const std::set<std::uint32_t> swallowed{1, 2, 3, 4, 6, 10, 11, 25};
    const std::tuple<Keys, bool, bool> rows[] = {
        {{59, 56, 55}, true, true}, {{59, 55}, false, false}, {{55, 56}, true, false}};
    for (const auto& [held, complete, armed] : rows)
        for (const std::uint32_t type :
             {0U, 1U, 2U, 3U, 4U, 6U, 10U, 11U, 12U, 25U, 26U, 0xFFFFFFFEU}) {
            heldModifierKeys = held;
            activationComplete = complete;
            previousMousePosition = Point{1, 1};
            const bool swallow = armed && swallowed.contains(type);
            EXPECT_EQ(tap(type, armed ? kNoKeyCode : 123, 2),
                      swallow ? Verdict::swallow : Verdict::pass)
                << type;
            EXPECT_EQ(previousMousePosition.has_value(), swallow && type != 1) << type;
            EXPECT_TRUE(sim.takeLog() == Log{"> [123]"} || armed) << type;
        }
    EXPECT_EQ(keysDown, Codes{123});
}

TEST_F(DispatcherTest, clicksActOnTheWindow) {
    centeringEnabled = false;
    sim.pointer = {8, 9};
    activationComplete = false;
    tap(1);
    EXPECT_EQ(manager.mouseClickedPoint(), (Point{8, 9})) << "unarmed too";
    activationComplete = true;
    sim.pointer = {3, 4};
    EXPECT_EQ(effectOf(1, 0, 1), "");
    EXPECT_EQ(effectOf(1, 0, 3), "");
    EXPECT_EQ(effectOf(1, 0, 2), "set w AXPosition (0.0, 0.0); set w AXSize 1440.0 x 900.0; "
                                 "set w AXSize 1440.0 x 900.0");
    EXPECT_EQ(manager.mouseClickedPoint(), (Point{3, 4}));
    EXPECT_EQ(effectOf(3, 0).substr(0, 23), "set w AXMinimized true;");
    EXPECT_EQ((Point{manager.currentMouseX, manager.currentMouseY}), (Point{3, 4}));
}

TEST_F(DispatcherTest, keysSnapReopenQuitOrNothing) {
    manager.minimizeWindow();
    const std::string reopen = "set w AXMinimized false; set w AXMain true";
    const std::string left = "set w AXSize 720.0 x 900.0; set w AXPosition (0.0, 0.0); "
                             "set w AXSize 720.0 x 900.0";
    const std::tuple<std::int64_t, std::int64_t, std::string, std::string> rows[] = {
        {8, 8, reopen, reopen},
        {8, 12, "", ""},
        {14, 14, reopen, reopen},
        {8, 17, "quit", "quit"},
        {17, 17, "quit; " + reopen, "quit; " + reopen},
        {0, 0, reopen, reopen}, // the reopen key goes before the directions
        {8, 0, left, ""},
        {8, 123, left, ""},
        {55, 55, reopen, reopen},
        {40, 40, "", ""}, // K is no accepted key, whatever is stored
        {8, kNoKeyCode, "", ""},
    };
    for (const auto& [reopenKey, code, onDown, onUp] : rows) {
        deminimizeButton = reopenKey;
        window->attributes.erase(ax::main);
        EXPECT_EQ(effectOf(kDown, code), onDown) << code;
        window->attributes.erase(ax::main);
        EXPECT_EQ(effectOf(kUp, code), onUp) << code;
        EXPECT_EQ(keysDown, Codes{}) << code;
    }
}

TEST_F(DispatcherTest, remembersDirectionKeysAcrossRepeatsAndDisarming) {
    EXPECT_NE(effectOf(kDown, 123), "");
    EXPECT_EQ(effectOf(kDown, 123), "") << "a repeat moves nothing";
    EXPECT_NE(effectOf(kDown, 126).find("720.0 x 450.0"), std::string::npos);
    EXPECT_EQ(effectOf(kUp, 123), "");
    sim.takeLog();
    activationComplete = false;
    EXPECT_EQ(tap(kUp, 126), Verdict::pass);
    EXPECT_EQ(sim.takeLog(), Log{"> [126]"}) << "every 123 is gone, 126 stays";
    activationComplete = true;
    EXPECT_NE(effectOf(kDown, 124).find("AXPosition (720.0, 0.0)"), std::string::npos);
    tap(kDown, 2);
    EXPECT_EQ(sim.takeLog().front(), "> [126, 124]") << "the list before this event";
}

TEST_F(DispatcherTest, swallowsWithoutASwipeManagerAndNeedsADelegateToQuit) {
    manager.minimizeWindow();
    sharedSwipeManager = nullptr;
    previousMousePosition = Point{1, 1};
    for (const std::uint32_t type : {1U, 3U, kDown, kUp})
        for (const std::int64_t code : {8, 123})
            EXPECT_EQ(effectOf(type, code, 2), "");
    EXPECT_TRUE(previousMousePosition);
    EXPECT_EQ(effectOf(kDown, 17), "quit");
    applicationDelegate = nullptr;
    EXPECT_NE(fatalMessage([&] { tap(kDown, 17); }), "");
}

} // namespace
} // namespace klova::test
