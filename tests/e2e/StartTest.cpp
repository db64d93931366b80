#include "desktop/Injector.h"
#include "desktop/VirtualDesktop.h"
#include "desktop/Wait.h"
#include "desktop/Windows.h"

#include <gtest/gtest.h>

using namespace klova::rig;
using namespace std::chrono_literals;

namespace {

class StartTest : public testing::Test {
protected:
    /// A window of this class that no manager has put into a frame.
    static std::optional<Rect> unmanagedWindow(Display& display, const std::string& name) {
        const auto tree = owned(xcb_query_tree_reply(
            display.get(), xcb_query_tree(display.get(), display.root()), nullptr));
        for (int i = 0; i < tree->children_len; ++i) {
            const xcb_window_t window = xcb_query_tree_children(tree.get())[i];
            const auto shown = owned(xcb_get_window_attributes_reply(
                display.get(), xcb_get_window_attributes(display.get(), window), nullptr));
            if (shown && shown->map_state == XCB_MAP_STATE_VIEWABLE &&
                display.text(window, "WM_CLASS").find(name) != std::string::npos)
                return clientArea(display, window);
        }
        return std::nullopt;
    }
    static Rect awaitUnmanaged(Display& display, const std::string& name) {
        EXPECT_TRUE(waitUntil(display, "a window of " + name, [&] {
            return unmanagedWindow(display, name).value_or(Rect{}).width > 1;
        }));
        return unmanagedWindow(display, name).value_or(Rect{});
    }

    /// A key to the server that makes whoever uses it an untrusted client.
    std::string untrustedKey(const XServer& server) {
        auto key = (desktop.session().directory() / "untrusted").string();
        auto xauth =
            desktop.launch({"xauth", "-f", key, "generate", server.display(), ".", "untrusted"});
        EXPECT_EQ(xauth.waitExit(kDeadline), 0) << xauth.output();
        return key;
    }

    VirtualDesktop desktop;
};

TEST_F(StartTest, whereItIsNotTrustedANotificationSaysWhyAndTheAlertEndsIt) {
    const XServer secure({}, ServerKind::offScreen, {"+extension", "SECURITY"});
    const XServer withoutRandR({}, ServerKind::offScreen, {"-extension", "RANDR"});
    const Process monitor = desktop.launch({"dbus-monitor", "member=Notify"});
    const Process daemon = desktop.launch({"dunst"});
    const auto awaitWord = [&](const Process& speaker, const std::string& word) {
        return waitUntil(
            desktop.display(), word,
            [&] { return speaker.output().find(word) != std::string::npos; },
            [&] { return speaker.output(); });
    };
    ASSERT_TRUE(awaitWord(monitor, "NameLost"));
    struct Row {
        const XServer& server;
        std::string key, reason;
        xcb_keysym_t answer; // 0: a click on OK
    };
    for (const auto& [server, key, reason, answer] :
         {Row{secure, untrustedKey(secure), "does not trust", 0},
          Row{withoutRandR, "", "RandR 1.5", XKB_KEY_Escape},
          Row{secure, untrustedKey(secure), "", XKB_KEY_Return}}) {
        desktop.session().setVariable("DISPLAY", server.display());
        desktop.session().setVariable("XAUTHORITY", key);
        if (reason.empty())
            desktop.session().setVariable("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
        Process klova = desktop.launch({KLOVA_BINARY});
        Display display(server.display());
        Injector hands(server.display());
        const Rect alert = awaitUnmanaged(display, "klova");
        if (!reason.empty()) {
            EXPECT_TRUE(awaitWord(monitor, reason));
            EXPECT_GT(awaitUnmanaged(desktop.display(), "unst").width, 1);
        }
        EXPECT_NEAR(alert.x + alert.width / 2, server.screen().width / 2, 20);
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

TEST_F(StartTest, aSecondStartOpensThePreferencesOfTheFirstUnlessBothAreNew) {
    writeFile(desktop.session().config() / "klova" / "preferences.json",
              R"({"isNotFirstTime": true, "activationKeys": [55, 59]})");
    const auto begin = std::chrono::steady_clock::now();
    Process first = desktop.launch({KLOVA_BINARY});
    ASSERT_TRUE(
        waitUntil(desktop.display(), "the first start", [&] { return !first.output().empty(); }));
    const auto age = [&] { return std::chrono::steady_clock::now() - begin; };
    while (!windowOfProcess(desktop.display(), first.id()) && age() < kDeadline)
        ASSERT_EQ(desktop.launch({KLOVA_BINARY}).waitExit(kDeadline), 0);
    EXPECT_GE(age(), 5s);
    EXPECT_LT(age(), kDeadline);
    const auto panel = awaitWindow(desktop.display(), first);
    EXPECT_TRUE(waitUntil(desktop.display(), "the focus",
                          [&] { return activeWindow(desktop.display()) == panel; }));
    EXPECT_TRUE(first.running());
}

} // namespace
