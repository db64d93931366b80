// Other programs and the session's services that are in the way, or fail.
#include "desktop/SmallDisk.h"
#include "desktop/Trays.h"
#include "e2e/KlovaTest.h"

using namespace klova::rig;

namespace {

class SessionFaultsTest : public KlovaTest {};

TEST_F(SessionFaultsTest, AScreenLockerHasKeyboardAndMouseToItself) {
    start();
    TestWindow window(display.name());
    expectGestures(window.id(), "nothing");
    const auto before = visibleFrame(display, window.id());
    for (const bool armed : {false, true}) {
        if (armed) {
            klova->holdActivationKeys();
            ASSERT_TRUE(awaitKeyboardGrab(display));
        }
        Process locker = desktop.launch({"i3lock", "--nofork"});
        awaitUnmanaged(display, "i3lock");
        if (armed)
            klova->releaseActivationKeys(); // for which the locker waits
        ASSERT_TRUE(awaitKeyboardGrab(display));
        hands().pressButton(1);
        klova->holdActivationKeys();
        hands().tap(XKB_KEY_Left);
        hands().movePointer(400 + armed, 400);
        hands().movePointer(500, 400);
        hands().releaseButton(1);
        hands().click(3);
        klova->releaseActivationKeys();
        ASSERT_TRUE(ManagerBarrier(display.name()).pass());
        EXPECT_EQ(visibleFrame(display, window.id()), before);
        EXPECT_FALSE(isMinimized(display, window.id()));
        EXPECT_TRUE(locker.running() && keyboardGrabbed(display));
        locker.signal(SIGTERM);
        locker.waitExit(kDeadline);
        expectGestures(window.id(), "a locker");
    }
}

class ForeignGrabTest
    : public SessionFaultsTest,
      public testing::WithParamInterface<std::tuple<xcb_keysym_t, Protocol, bool>> {};

TEST_P(ForeignGrabTest, OfTheCombinationIsOvercomeOrOutlived) {
    const auto [key, protocol, before] = GetParam();
    const std::uint32_t control = key == XKB_KEY_Left ? XCB_MOD_MASK_CONTROL : 0;
    auto other = std::make_unique<Display>(display.name());
    if (!before)
        start();
    reserveKey(*other, Injector(display.name()).keyCode(key), XCB_MOD_MASK_4 | control, protocol);
    if (before)
        start();
    TestWindow window(display.name());
    klova->holdActivationKeys(); // whoever was beaten is the newest again after that
    klova->releaseActivationKeys();
    expectNothingStuck("the other program's turn");
    if (key == XKB_KEY_Left || protocol == Protocol::core || !before)
        expectGestures(window.id(), "the other program's turn");
    else // which nobody can take from it
        EXPECT_NE(klova->process().output().find("another program holds 1 "), std::string::npos);
    other.reset();
    klova->holdActivationKeys();
    klova->releaseActivationKeys();
    expectGestures(window.id(), "the other program's end");
}

INSTANTIATE_TEST_SUITE_P(Keys, ForeignGrabTest,
                         testing::Combine(testing::Values(XKB_KEY_Left, XKB_KEY_Control_L),
                                          testing::Values(Protocol::core, Protocol::xinput2),
                                          testing::Bool()));

class BusFaultsTest : public SessionFaultsTest, public testing::WithParamInterface<std::string> {};

TEST_P(BusFaultsTest, LeavesTheGesturesAlone) {
    std::optional<Process> tray;
    if (GetParam() == "Absent")
        desktop.session().setVariable("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
    else
        tray.emplace(startNotifierHost(desktop));
    start();
    if (tray)
        require(display, "Klova's icon", [&] { return !announcedBy(desktop).empty(); });
    desktop.session().signalBus(GetParam() == "Killed" ? SIGKILL : SIGSTOP);
    TestWindow window(display.name());
    for (int i = 0; i < 5; ++i) // each tells the tray of another icon, twice
        expectGestures(window.id(), GetParam());
    desktop.session().signalBus(SIGCONT);
    expectGestures(window.id(), "the bus goes on");
    desktop.session().signalBus(SIGSTOP);
    klova->process().signal(SIGTERM);
    EXPECT_EQ(klova->process().waitExit(kDeadline), 0);
    desktop.session().signalBus(SIGKILL);
}

INSTANTIATE_TEST_SUITE_P(Bus, BusFaultsTest, testing::Values("Absent", "Killed", "Stopped"),
                         [](const auto& test) { return test.param; });

TEST_F(SessionFaultsTest, AFullOrReadOnlyDiskKeepsTheSettingsWhole) {
    const auto settings = desktop.session().preferences();
    std::optional<SmallDisk> disk;
    try {
        disk.emplace(settings.parent_path(), 64 << 10);
    } catch (const std::system_error& error) {
        GTEST_SKIP() << "NOT TESTED: this machine permits no disk of one's own: " << error.what();
    }
    const Process monitor = desktop.launch({"dbus-monitor", "member=Notify"});
    const auto tray = startNotifierHost(desktop);
    start();
    require(display, "Klova's icon", [&] { return !announcedBy(desktop).empty(); });
    choose(desktop, announcedEntry(desktop, "Preferences…"));
    ASSERT_TRUE(awaitActive(display, awaitWindow(display, klova->process())));
    hands().tap(XKB_KEY_Tab); // to the first key, which Space takes and gives back
    for (const bool full : {true, false}) {
        const auto before = readFile(settings);
        full ? disk->setFull(true) : disk->setReadOnly(true);
        hands().tap(XKB_KEY_space);
        const std::string reason = full ? "No space left" : "Read-only";
        awaitOutput(display, klova->process(), reason);
        awaitOutput(display, monitor, reason);
        EXPECT_EQ(readFile(settings), before);
        full ? disk->setFull(false) : disk->setReadOnly(false);
        hands().tap(XKB_KEY_space);
        hands().tap(XKB_KEY_space);
        EXPECT_TRUE(waitUntil(display, "the last save", [&] {
            return (readFile(settings).find("55") == std::string::npos) == full;
        }));
        EXPECT_TRUE(readFile(settings).ends_with("}\n")) << readFile(settings);
    }
    hands().tap(XKB_KEY_Escape);
    TestWindow window(display.name());
    expectGestures(window.id(), "saving");
}

} // namespace
