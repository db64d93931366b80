#include "e2e/KlovaTest.h"

#include <sys/ptrace.h>

using namespace klova::rig;

namespace {

constexpr int kKilled = 128 + SIGKILL;

class GuardTest : public KlovaTest {
protected:
    GuardTest() {
        start();
        window.emplace(display.name());
    }

    void letGo() {
        hands().release(XKB_KEY_Left);
        klova->releaseActivationKeys();
    }

    /// Soon keyboard and mouse are held no more: what a person types and clicks reaches the window
    /// that has the focus.
    void expectFreedInTime() {
        hands().roundTrip();
        EXPECT_TRUE(keyboardGrabbed(display));
        EXPECT_TRUE(waitUntil(
            display, "the keyboard and the pointer to be free",
            [&] { return !keyboardGrabbed(display) && !pointerGrabbed(display); }, {}, 2s));
        letGo();
        window->takeFocus();
        window->takeInput();
        hands().tap(XKB_KEY_n);
        hands().movePointer(200, 200);
        hands().click(1);
        std::size_t heard = 0;
        EXPECT_TRUE(waitUntil(display, "a key and a click",
                              [&] { return (heard += window->takeInput().size()) >= 4; }));
        EXPECT_EQ(klova->process().waitExit(kDeadline), kKilled);
    }

    std::optional<TestWindow> window;
};

TEST_F(GuardTest, freesTheKeyboardOfAProcessThatIsStoppedWhileArmed) {
    klova->holdActivationKeys();
    klova->process().signal(SIGSTOP);
    hands().press(XKB_KEY_Left);
    expectFreedInTime();
    EXPECT_NE(klova->process().output().find("did not answer"), std::string::npos);
}

TEST_F(GuardTest, freesTheKeyboardOfAProcessThatWasStoppedBefore) {
    klova->process().signal(SIGSTOP);
    klova->holdActivationKeys();
    hands().press(XKB_KEY_Left);
    expectFreedInTime();
}

TEST_F(GuardTest, freesTheKeyboardOfAThreadThatStalls) {
    klova->holdActivationKeys();
    const pid_t main = klova->process().id(); // the thread of that number; the others go on
    ASSERT_EQ(::ptrace(PTRACE_SEIZE, main, nullptr, nullptr), 0);
    ASSERT_EQ(::ptrace(PTRACE_INTERRUPT, main, nullptr, nullptr), 0);
    hands().press(XKB_KEY_Left);
    expectFreedInTime();
}

TEST_F(GuardTest, leavesAProcessAloneThatAnswers) {
    klova->holdActivationKeys();
    hands().press(XKB_KEY_Left);
    const auto ended = [&] { return klova->process().waitExit(2500ms); };
    xcb_grab_server(display.get()); // before Klova has looked at what became of the window
    display.roundTrip();
    EXPECT_EQ(ended(), std::nullopt) << "while the keys are held and the server is another's";
    xcb_ungrab_server(display.get());
    display.roundTrip();
    EXPECT_EQ(ended(), std::nullopt) << "while the keys are held";
    letGo();
    klova->process().signal(SIGSTOP); // unarmed: nobody misses anything
    EXPECT_FALSE(keyboardGrabbed(display)) << "but for a moment, by this question";
    EXPECT_EQ(ended(), std::nullopt) << "while nothing is held";
    klova->process().signal(SIGCONT);

    klova->holdActivationKeys();
    hands().press(XKB_KEY_t); // quits, but keeps the key from the others until it is up
    EXPECT_EQ(ended(), std::nullopt) << "while T is held";
    EXPECT_TRUE(keyboardGrabbed(display));
    hands().release(XKB_KEY_t);
    EXPECT_EQ(klova->process().waitExit(kDeadline), 0);
}

} // namespace
