#include "input/KeyInputController.h"

#include "core/SimulatedDesktop.h"
#include "input/ActivationKeys.h"
#include "input/ShellState.h"

#include <tuple>

namespace klova::test {
namespace {

using Keys = std::vector<KeyCode>;
const Log kArmed{"image Menulet_activated", "redisplay"};
const Log kDisarmed{"image Menulet_deactivated", "redisplay"};

class KeyInputControllerTest : public CoreTest {
protected:
    KeyInputControllerTest() {
        activationKeys = {55, 59};
        sim.takeLog();
    }

    /// A modifier's way down or up; what it does to icon and monitors.
    Log toggle(KeyCode code, std::uint64_t flags = 0) {
        sim.takeLog();
        sim.send({EventType::flagsChanged, code, 0, flags});
        return sim.takeLog();
    }

    Point dragTo(double x, double y) {
        sim.pointer = {x, y};
        sim.send({EventType::leftMouseDragged});
        return *AccessibilityElement(sim, window).position();
    }

    KeyInputController controller{desktop};
};

TEST_F(KeyInputControllerTest, armsAndDisarms) {
    EXPECT_EQ(toggle(59), Log{});
    EXPECT_EQ(toggle(55), (Log{"add monitor 3 64", kArmed[0], kArmed[1]}));
    EXPECT_TRUE(activationComplete);
    EXPECT_EQ(toggle(56), (Log{"add monitor 4 64", kArmed[0], kArmed[1]}));
    EXPECT_EQ(heldModifierKeys, (Keys{59, 55, 56}));
    EXPECT_EQ(toggle(56), Log{"remove monitor 4"}) << "still armed, the first monitor stays";
    EXPECT_TRUE(activationComplete);
    EXPECT_EQ(toggle(55), kDisarmed) << "no drag monitor is known any more";
    EXPECT_FALSE(activationComplete);
    EXPECT_EQ(toggle(55), (Log{"add monitor 5 64", kArmed[0], kArmed[1]}));
    EXPECT_EQ(toggle(59), (Log{kDisarmed[0], kDisarmed[1], "remove monitor 5"}));
    EXPECT_EQ(toggle(55, kNoModifierDown), kDisarmed);
    EXPECT_EQ(heldModifierKeys, Keys{});
}

TEST_F(KeyInputControllerTest, withoutChosenKeysTheFirstModifierArmsForGood) {
    activationKeys.clear();
    toggle(54);
    EXPECT_EQ(toggle(54, kNoModifierDown), Log{"remove monitor 3"});
    EXPECT_TRUE(activationComplete);
}

TEST_F(KeyInputControllerTest, aPressThatLeavesNoModifierDownIsNotHeld) {
    heldModifierKeys = {55};
    EXPECT_EQ(toggle(59, kNoModifierDown).size(), 3U);
    EXPECT_EQ(heldModifierKeys, Keys{55});
    EXPECT_TRUE(activationComplete);
}

TEST_F(KeyInputControllerTest, theStatusButtonIsNeededOnlyToShowAChange) {
    sim.buttonHasImage = false;
    toggle(55);
    EXPECT_EQ(toggle(59), (Log{"add monitor 3 64", "redisplay"}));
    sim.buttonExists = false;
    EXPECT_NE(fatalMessage([&] { toggle(59); }), "");
    EXPECT_EQ(fatalMessage([&] { toggle(56); }), "") << "a press that completes nothing";
}

TEST_F(KeyInputControllerTest, dragsWhileArmedAndNoPanelIsOpen) {
    toggle(55);
    toggle(59);
    dragTo(10, 10);
    EXPECT_EQ(dragTo(15, 10), (Point{55, 60}));
    panelOpen = true;
    EXPECT_EQ(dragTo(20, 10), (Point{55, 60}));
    EXPECT_FALSE(previousMousePosition);
    panelOpen = false;
    dragTo(30, 10);
    activationComplete = false;
    dragTo(40, 10);
    EXPECT_FALSE(previousMousePosition);
    activationComplete = true;
    EXPECT_EQ(dragTo(50, 10), (Point{65, 60})) << "the leftover step only";
    toggle(59);
    EXPECT_EQ(dragTo(90, 90), (Point{65, 60})) << "no monitor";
}

TEST_F(KeyInputControllerTest, everyWatchedEventEnablesTheTapAgain) {
    sim.send({EventType::keyDown, 40});
    EXPECT_EQ(sim.takeLog(), Log{}) << "there is no tap yet";
    eventTap = &sim;
    sim.send({EventType::keyDown, 40});
    EXPECT_EQ(sim.takeLog(), Log{"tap on"});
}

TEST_F(CoreTest, theControllerStartsOnlyWithPermission) {
    // The answers that the service gives, the last one first, and the button of the alert.
    const std::tuple<std::vector<bool>, int, bool, Log> rows[] = {
        {{true}, 1000, true, {"add monitor 1 4096", "add monitor 2 7210"}},
        {{true, false}, 1000, true, {"prompt", "add monitor 3 4096", "add monitor 4 7210"}},
        {{true, false, false}, 1000, false, {"prompt", "activate", "alert", "terminate"}},
        {{true, false, false}, 0, false, {"prompt", "activate", "alert", "prompt", "terminate"}},
        {{false, false, false},
         0,
         false,
         {"prompt", "activate", "alert", "prompt", "terminate", "terminate"}}};
    for (const auto& [answers, alertAnswer, enabled, log] : rows) {
        sim.trusted = answers;
        sim.alertAnswer = alertAnswer;
        {
            KeyInputController controller(desktop);
            EXPECT_EQ(controller.accessEnabled(), enabled);
            EXPECT_EQ(controller.swipeManager() != nullptr, enabled);
            Log expected{"> AXTrustedCheckOptionPrompt", "trusted?"};
            expected.insert(expected.end(), log.begin(), log.end());
            EXPECT_EQ(sim.takeLog(), expected);
        }
        EXPECT_EQ(sim.takeLog().size(), enabled ? 2U : 0U) << "monitors removed";
    }
    EXPECT_EQ(sim.alertText, "Enable Klova Using Accessibility feature\n"
                             "Once you have enabled Klova in System Preferences->Security and "
                             "Privacy -> Privacy, click OK.");
}

TEST_F(CoreTest, refusedMonitorsStopTheProcess) {
    for (sim.monitorsGranted = 0; sim.monitorsGranted < 2; ++sim.monitorsGranted)
        EXPECT_NE(fatalMessage([&] { KeyInputController{desktop}; }), "");
}

} // namespace
} // namespace klova::test
