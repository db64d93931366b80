#include "desktop/Grabs.h"
#include "desktop/Klova.h"
#include "desktop/TestWindow.h"
#include "desktop/Wait.h"

#include <algorithm>
#include <csignal>
#include <gtest/gtest.h>
#include <iterator>
#include <sys/ptrace.h>

using namespace klova::rig;
using namespace std::chrono_literals;

namespace {

constexpr int kKilled = 128 + SIGKILL;

class GuardTest : public testing::Test {
protected:
    GuardTest() { klova.hands().setSpacing(2ms); }

    void chordWithArrow() {
        klova.holdActivationKeys();
        klova.hands().press(XKB_KEY_Left);
    }
    void letGo() {
        klova.hands().release(XKB_KEY_Left);
        klova.releaseActivationKeys();
    }

    /// They are held, and soon they are not any more: what a person types and clicks reaches the
    /// window that has the focus.
    void expectFreedInTime() {
        klova.hands().roundTrip();
        EXPECT_TRUE(keyboardGrabbed(display));
        EXPECT_TRUE(waitUntil(
            display, "the keyboard and the pointer to be free",
            [&] { return !keyboardGrabbed(display) && !pointerGrabbed(display); }, {}, 2s));
        letGo();
        window.takeFocus();
        window.takeInput();
        klova.hands().tap(XKB_KEY_n);
        klova.hands().movePointer(200, 200);
        klova.hands().click(1);
        std::vector<InputRecord> heard;
        EXPECT_TRUE(waitUntil(
            display, "a key and a click",
            [&] {
                std::ranges::copy(window.takeInput(), std::back_inserter(heard));
                return heard.size() >= 4;
            },
            [&] { return testing::PrintToString(heard); }));
        EXPECT_EQ(klova.process().waitExit(kDeadline), kKilled);
    }

    VirtualDesktop desktop;
    Display& display = desktop.display();
    Klova klova{desktop, KLOVA_BINARY};
    TestWindow window{desktop.server().display(), {.area = {100, 100, 400, 300}}};
};

TEST_F(GuardTest, freesTheKeyboardOfAProcessThatIsStoppedWhileArmed) {
    klova.holdActivationKeys();
    klova.process().signal(SIGSTOP);
    klova.hands().press(XKB_KEY_Left);
    expectFreedInTime();
    EXPECT_NE(klova.process().output().find("did not answer"), std::string::npos);
}

TEST_F(GuardTest, freesTheKeyboardOfAProcessThatWasStoppedBefore) {
    klova.process().signal(SIGSTOP);
    chordWithArrow();
    expectFreedInTime();
}

TEST_F(GuardTest, freesTheKeyboardOfAThreadThatStalls) {
    klova.holdActivationKeys();
    const pid_t main = klova.process().id(); // the thread of that number; the others go on
    ASSERT_EQ(::ptrace(PTRACE_SEIZE, main, nullptr, nullptr), 0);
    ASSERT_EQ(::ptrace(PTRACE_INTERRUPT, main, nullptr, nullptr), 0);
    klova.hands().press(XKB_KEY_Left);
    expectFreedInTime();
}

TEST_F(GuardTest, leavesAProcessAloneThatAnswers) {
    chordWithArrow();
    const auto ended = [&] { return klova.process().waitExit(2500ms); };
    xcb_grab_server(display.get()); // before Klova has looked at what became of the window
    display.roundTrip();
    EXPECT_EQ(ended(), std::nullopt) << "while the keys are held and the server is another's";
    xcb_ungrab_server(display.get());
    display.roundTrip();
    EXPECT_EQ(ended(), std::nullopt) << "while the keys are held";
    letGo();
    klova.process().signal(SIGSTOP); // unarmed: nobody misses anything
    EXPECT_FALSE(keyboardGrabbed(display)) << "but for a moment, by this question";
    EXPECT_EQ(ended(), std::nullopt) << "while nothing is held";
    klova.process().signal(SIGCONT);

    klova.holdActivationKeys();
    klova.hands().press(XKB_KEY_t); // quits, but keeps the key from the others until it is up
    EXPECT_EQ(ended(), std::nullopt) << "while T is held";
    EXPECT_TRUE(keyboardGrabbed(display));
    klova.hands().release(XKB_KEY_t);
    EXPECT_EQ(klova.process().waitExit(kDeadline), 0);
}

} // namespace
