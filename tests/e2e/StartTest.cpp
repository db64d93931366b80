#include "desktop/DisplayKey.h"
#include "desktop/Grabs.h"
#include "desktop/Injector.h"
#include "desktop/VirtualDesktop.h"
#include "desktop/Wait.h"
#include "desktop/Windows.h"

#include <gtest/gtest.h>

using namespace klova::rig;
using namespace std::chrono_literals;

namespace {

TEST(StartTest, whereItIsNotTrustedANotificationSaysWhyAndTheAlertEndsIt) {
    VirtualDesktop desktop;
    Session& session = desktop.session();
    const XServer secure({}, ServerKind::offScreen, {"+extension", "SECURITY"});
    const XServer withoutRandR({}, ServerKind::offScreen, {"-extension", "RANDR"});
    Process weston = session.launch({"weston", "--backend=headless-backend.so", "--socket=w"});
    awaitFile(weston, session.directory() / "run" / "w");
    ::setenv("WAYLAND_DISPLAY", (session.directory() / "run" / "w").c_str(), 1);
    const XServer onWayland({}, ServerKind::onWayland);
    const auto key = (session.directory() / "untrusted").string();
    auto xauth =
        session.launch({"xauth", "-f", key, "generate", secure.display(), ".", "untrusted"});
    ASSERT_EQ(xauth.waitExit(kDeadline), 0) << xauth.output();
    const Process monitor = session.launch({"dbus-monitor", "member=Notify"});
    const Process daemon = session.launch({"dunst"});
    awaitOutput(desktop.display(), monitor, "NameLost");               // which says that it listens
    using Row = std::tuple<const XServer&, std::string, xcb_keysym_t>; // 0: a click on OK
    for (const auto& [server, reason, answer] :
         {Row{secure, "does not trust", 0}, Row{withoutRandR, "RandR 1.5", XKB_KEY_Escape},
          Row{onWayland, "Wayland session", XKB_KEY_Return}, Row{secure, "", XKB_KEY_Return}}) {
        session.setVariable("DISPLAY", server.display());
        session.setVariable("XAUTHORITY", &server == &secure ? key : displayKey().string());
        if (reason.empty())
            session.setVariable("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
        Process klova = session.launch({KLOVA_BINARY});
        Display display(server.display());
        Injector hands(server.display());
        const Rect alert = clientArea(display, awaitUnmanaged(display, "klova"));
        awaitOutput(desktop.display(), monitor, reason);
        awaitUnmanaged(desktop.display(), "Dunst");
        EXPECT_TRUE(klova.running());
        hands.movePointer(alert.right() - 60, alert.bottom() - 35);
        if (answer == 0)
            hands.click(1);
        else
            hands.tap(answer);
        EXPECT_EQ(klova.waitExit(kDeadline), 77) << klova.output();
        EXPECT_NE(klova.output().find(reason), std::string::npos) << klova.output();
    }
}

TEST(StartTest, aSecondStartOpensThePreferencesOfTheFirstUnlessBothAreNew) {
    VirtualDesktop desktop;
    Display& display = desktop.display();
    writeFile(desktop.session().preferences(),
              R"({"isNotFirstTime": true, "activationKeys": [55, 59]})");
    const auto begin = std::chrono::steady_clock::now();
    const auto age = [&] { return std::chrono::steady_clock::now() - begin; };
    Process first = desktop.launch({KLOVA_BINARY});
    require(display, "the first start", [&] { return !first.output().empty(); });
    while (!windowOfProcess(display, first.id()) && age() < kDeadline)
        ASSERT_EQ(desktop.launch({KLOVA_BINARY}).waitExit(kDeadline), 0);
    EXPECT_GE(age(), 5s);
    EXPECT_TRUE(awaitActive(display, awaitWindow(display, first)));
}

TEST(StartTest, withoutActivationKeysANotificationSaysThatTQuits) {
    VirtualDesktop desktop;
    writeFile(desktop.session().preferences(), R"({"isNotFirstTime": true, "activationKeys": []})");
    const Process monitor = desktop.launch({"dbus-monitor", "member=Notify"});
    awaitOutput(desktop.display(), monitor, "NameLost");
    Process klova = desktop.launch({KLOVA_BINARY});
    awaitOutput(desktop.display(), monitor, "The key T quits");
    Injector hands(desktop.server().display());
    hands.tap(XKB_KEY_Shift_L);
    require(desktop.display(), "all keys to be kept",
            [&] { return keyReserved(desktop.display(), hands.keyCode(XKB_KEY_t), 0); });
    hands.tap(XKB_KEY_t);
    EXPECT_EQ(klova.waitExit(kDeadline), 0);
}

} // namespace
