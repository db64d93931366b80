// What reaches an application while Klova listens, and how exactly a drag follows the pointer.
#include "e2e/KlovaTest.h"

#include <cmath>
#include <map>
#include <numbers>

using namespace klova::rig;

namespace {

class TapTest : public KlovaTest, public testing::WithParamInterface<std::string> {
protected:
    TapTest() : KlovaTest({.windowManager = GetParam()}) {
        // Armed clicks are to change nothing here.
        writeFile(desktop.session().preferences(),
                  R"({"isNotFirstTime": true, "activationKeys": [55, 59], "LoadsOnStartup": false,
 "maximizingEnabled": false, "centeringEnabled": false, "deminimizeButton": 8})");
        start();
    }

    void add(xcb_keysym_t key) {
        hands().tap(key);
        wanted.push_back({XCB_KEY_PRESS, hands().keyCode(key)});
        wanted.push_back({XCB_KEY_RELEASE, hands().keyCode(key)});
    }
    /// Until the click has arrived: a manager that holds back clicks, and is late, lets what comes
    /// after them overtake them.
    void addClick(TestWindow& window) {
        hands().click(1);
        wanted.push_back({XCB_BUTTON_PRESS, 1});
        wanted.push_back({XCB_BUTTON_RELEASE, 1});
        ASSERT_TRUE(awaitWanted(window));
    }
    bool awaitWanted(TestWindow& window) {
        return waitUntil(display, "all that is the window's", [&] {
            for (const auto& record : window.takeInput())
                if (!isModifier(record))
                    seen.push_back({record.type, record.detail});
                else
                    held[record.detail] = record.type == XCB_KEY_PRESS;
            return seen.size() >= wanted.size();
        });
    }

    /// A manager that draws new windows without a graphics card answers nothing for a while, again
    /// and again.
    void awaitRest() {
        using Clock = std::chrono::steady_clock;
        ManagerBarrier barrier(display.name());
        auto restsSince = Clock::now();
        waitUntil(display, "a manager at rest", [&] {
            const auto asked = Clock::now();
            barrier.pass();
            if (Clock::now() - asked > 10ms)
                restsSince = Clock::now();
            return Clock::now() - restsSince > 300ms;
        });
    }

    /// xfwm4 keeps a click back for a while, or loses it, when it has just seen its first ones.
    void warmUp(TestWindow& window) {
        for (int i = 0; i < 40; ++i) {
            hands().click(1);
            hands().tap(XKB_KEY_x);
        }
        std::ptrdiff_t arrived = 0;
        waitUntil(display, "the warm-up", [&] {
            arrived += std::ranges::count(window.takeInput(), XCB_KEY_RELEASE, &InputRecord::type);
            return arrived == 40;
        });
        awaitRest();
    }

    /// A hundred chords, begun and broken in every order, each between events that are nobody's
    /// but the window's.
    void playChords(
        const std::function<void(int)>& armed, const std::function<void()>& after = [] {}) {
        for (int i = 0; i < 100 && !HasFailure(); ++i) {
            const xcb_keysym_t first = i % 2 == 0 ? XKB_KEY_Super_L : XKB_KEY_Control_L;
            const xcb_keysym_t second = i % 2 == 0 ? XKB_KEY_Control_L : XKB_KEY_Super_L;
            add(XKB_KEY_x);
            hands().press(first);
            hands().press(second);
            armed(i);
            hands().release(i / 2 % 2 == 0 ? first : second);
            hands().release(i / 2 % 2 == 0 ? second : first);
            add(XKB_KEY_y);
            after();
        }
    }

    /// Until such a manager has looked at that key clicks overtake the keys behind it, with or
    /// without Klova.
    bool holdsBackSuper() const { return GetParam() == "mutter" || GetParam() == "icewm"; }

    bool isModifier(const InputRecord& record) {
        return record.type <= XCB_KEY_RELEASE &&
               (record.detail == hands().keyCode(XKB_KEY_Super_L) ||
                record.detail == hands().keyCode(XKB_KEY_Control_L));
    }

    void expectExactlyTheUnarmed(TestWindow& window) {
        awaitWanted(window);
        const auto [at, other] = std::ranges::mismatch(seen, wanted);
        EXPECT_TRUE(at == seen.end() && other == wanted.end())
            << at - seen.begin() << " of " << wanted.size() << " events, and then "
            << testing::PrintToString(std::vector(at, seen.end())) << " instead of "
            << testing::PrintToString(std::vector(other, wanted.end()));
        for (const auto& [key, isHeld] : held)
            EXPECT_FALSE(isHeld) << "the window was not told of the release of key " << key;
        EXPECT_TRUE(klova->process().running());
    }

    using Seen = std::pair<int, int>; // type and detail
    std::vector<Seen> wanted;
    std::vector<Seen> seen;
    std::map<int, bool> held; ///< modifiers, as the window was told
};

TEST_P(TapTest, KeysAndClicksReachTheFocusedWindowOnlyUnarmed) {
    TestWindow window(display.name());
    ASSERT_TRUE(activate(display, window.id()));
    ASSERT_TRUE(place(display, window.id(), {0, 0, 720, 900}));
    hands().movePointer(300, 300);
    warmUp(window);
    playChords(
        [&](int i) {
            if (i % 3 == 0)
                hands().click(1);
            hands().tap(i % 3 == 1 ? XKB_KEY_Left : XKB_KEY_k);
        },
        [&] { addClick(window); });
    expectExactlyTheUnarmed(window);
}

TEST_P(TapTest, BothButtonsAreHeldBackOverAnyWindow) {
    // Where a window can be minimized the right button would do just that.
    TestWindow window(display.name(), {.unmanaged = desktop.manager().minimizes()});
    awaitRest();
    window.takeFocus();
    hands().movePointer(300, 300);
    const auto click = [&](int i) { hands().click(i % 2 == 0 ? 1 : 3); };
    playChords(click, [&] { addClick(window); });
    hands().setSpacing(50us); // a click and the keys before and after it within one millisecond
    if (!holdsBackSuper())
        playChords(click, [&] { EXPECT_TRUE(awaitWanted(window)); });
    expectExactlyTheUnarmed(window);
}

TEST_P(TapTest, FastKeysAreExactToo) {
    if (GetParam() == "mutter")
        return; // it loses keys of its own at such a speed
    TestWindow window(display.name());
    ASSERT_TRUE(activate(display, window.id()));
    awaitRest(); // awesome names a window active before it gives it the focus
    for (const auto spacing : {200us, 50us}) {
        hands().setSpacing(spacing);
        playChords([&](int i) { hands().tap(i % 2 == 0 ? XKB_KEY_Left : XKB_KEY_k); });
    }
    expectExactlyTheUnarmed(window);
}

TEST_P(TapTest, AThousandStepsOfADragMoveTheWindowByThePointersWay) {
    TestWindow window(display.name());
    ASSERT_TRUE(activate(display, window.id()));
    ASSERT_TRUE(place(display, window.id(), {500, 300, 400, 300}));
    awaitRest();
    awaitRest();
    constexpr int steps = 1000;
    const auto pointAt = [](int step) {
        const double angle = 2 * std::numbers::pi * step / steps * 1.3;
        return std::pair(600 + static_cast<int>(std::lround(200 * std::sin(angle))),
                         450 + static_cast<int>(std::lround(150 * (1 - std::cos(angle)) / 2)));
    };
    hands().movePointer(pointAt(0).first, pointAt(0).second);
    hands().setSpacing(1ms);
    klova->holdActivationKeys();
    klova->beginDrag(pointAt(1).first, pointAt(1).second);
    for (int step = 2; step <= steps; ++step)
        hands().movePointer(pointAt(step).first, pointAt(step).second);
    hands().releaseButton(1);
    klova->releaseActivationKeys();
    const Rect end{500 + pointAt(steps).first - pointAt(1).first,
                   300 + pointAt(steps).second - pointAt(1).second, 400, 300};
    EXPECT_TRUE(awaitFrame(display, window.id(), end));
}

INSTANTIATE_TEST_SUITE_P(Desktops, TapTest, testing::ValuesIn(windowManagerNames()),
                         [](const auto& test) { return test.param; });

} // namespace
