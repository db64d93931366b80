#include "Trays.h"
#include "desktop/Files.h"
#include "desktop/Grabs.h"
#include "desktop/Injector.h"
#include "desktop/Wait.h"
#include "desktop/Windows.h"

#include <csignal>
#include <gtest/gtest.h>
#include <ostream>

namespace klova::rig {

void PrintTo(const MenuEntry& entry, std::ostream* out) {
    *out << (entry.enabled ? "" : "disabled ") << entry.title;
}

namespace {

constexpr std::uint32_t kResting = 0x7D8591;
constexpr std::uint32_t kArmed = 0x0B57D0;

class TrayTest : public testing::Test {
protected:
    /// Starts Klova past its first run, and waits for the last step of its start.
    Process start(const std::string& settings = R"("activationKeys": [55, 59],
                      "deminimizeButton": 8, "maximizingEnabled": true, "centeringEnabled": true)") {
        writeFile(desktop.session().config() / "klova" / "preferences.json",
                  R"({"isNotFirstTime": true, )" + settings + "}");
        Process klova = desktop.launch({KLOVA_BINARY});
        const auto control = hands.keyCode(XKB_KEY_Control_L);
        require(desktop.display(), "Klova to start",
                [&] { return keyReserved(desktop.display(), control, XCB_MOD_MASK_4); });
        return klova;
    }

    /// Where along the top of the screen this colour is seen first.
    std::optional<Rect> find(std::uint32_t colour) {
        constexpr int rows = 64;
        const auto width = desktop.server().screen().width;
        auto* x = desktop.display().get();
        const auto image = owned(xcb_get_image_reply(
            x,
            xcb_get_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, desktop.display().root(), 0, 0,
                          static_cast<std::uint16_t>(width), rows, ~0U),
            nullptr));
        const auto* pixels =
            reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(image.get()));
        for (int i = 0; i < width * rows; ++i)
            if ((pixels[i] & 0xFFFFFFU) == colour)
                return Rect{i % width, i / width, 1, 1};
        return std::nullopt;
    }

    bool awaitIcon(std::uint32_t shown, std::uint32_t gone) {
        return waitUntil(desktop.display(), "the icon to change",
                         [&] { return find(shown) && !find(gone); });
    }

    std::optional<Rect> findMenu() {
        const auto menu = unmanagedWindow(desktop.display(), "klova");
        return menu ? std::optional(clientArea(desktop.display(), *menu)) : std::nullopt;
    }

    /// Waits until the announced menu, which is that of Super and Ctrl, is so.
    bool awaitPanelEntries(bool enabled) {
        const std::vector<MenuEntry> wanted{{"Preferences…", enabled, ""},
                                            {"About Klova", enabled, ""}};
        return waitUntil(desktop.display(), "the entries of panels to change", [&] {
            const auto menu = announcedMenu(desktop);
            return menu.size() == 16 && std::equal(wanted.begin(), wanted.end(), menu.end() - 3);
        });
    }

    VirtualDesktop desktop;
    Injector hands{desktop.server().display()};
};

TEST_F(TrayTest, theIconIsInWhateverTrayThereIsAndShowsWhetherTheGesturesAreArmed) {
    Process klova = start();
    for (const auto startTray :
         {startNotifierHost, startEmbeddingTray, startNotifierHost, startEmbeddingTray}) {
        Process tray = startTray(desktop);
        ASSERT_TRUE(awaitIcon(kResting, kArmed)) << "in a tray that came later";
        EXPECT_EQ(announcedBy(desktop).empty(), startTray == startEmbeddingTray);
        hands.press(XKB_KEY_Super_L);
        hands.press(XKB_KEY_Control_L);
        EXPECT_TRUE(awaitIcon(kArmed, kResting));
        hands.release(XKB_KEY_Super_L);
        EXPECT_TRUE(awaitIcon(kResting, kArmed));
        hands.release(XKB_KEY_Control_L);
        tray.signal(SIGKILL);
        ASSERT_TRUE(
            waitUntil(desktop.display(), "the tray to go", [&] { return !find(kResting); }));
    }
    EXPECT_TRUE(klova.running());
}

TEST_F(TrayTest, aClickOnTheEmbeddedIconOpensTheMenuWhoseLastEntryQuits) {
    const auto tray = startEmbeddingTray(desktop);
    for (const std::uint8_t button : {std::uint8_t{1}, std::uint8_t{3}}) {
        Process klova = start();
        ASSERT_TRUE(awaitIcon(kResting, kArmed));
        const Rect icon = find(kResting).value_or(Rect{});
        hands.movePointer(icon.x, icon.y);
        hands.press(XKB_KEY_Super_L);
        hands.press(XKB_KEY_Control_L);
        ASSERT_TRUE(awaitIcon(kArmed, kResting));
        hands.click(2); // a menu that could not hold the keyboard would stay open
        hands.release(XKB_KEY_Super_L);
        hands.release(XKB_KEY_Control_L);
        ASSERT_TRUE(awaitIcon(kResting, kArmed));
        hands.click(button);
        // Not by asking for its grab, which would be in its way.
        ASSERT_TRUE(
            waitUntil(desktop.display(), "the menu", [&] { return findMenu().has_value(); }));
        const Rect menu = findMenu().value_or(Rect{});
        hands.movePointer(menu.x + menu.width / 2, menu.y + menu.height - 16);
        hands.click(1);
        EXPECT_EQ(klova.waitExit(kDeadline), 0);
    }
}

TEST_F(TrayTest, theAnnouncedMenuListsEveryGestureWithItsKeys) {
    const auto tray = startNotifierHost(desktop);
    const auto klova = start(R"("activationKeys": [59, 55], "deminimizeButton": 14,
                                 "maximizingEnabled": false, "centeringEnabled": true)");
    ASSERT_TRUE(awaitIcon(kResting, kArmed));
    const std::vector<MenuEntry> wanted{
        {"Activation Keys: Ctrl⌘", false, ""},
        {"Dragging: Ctrl⌘ + Left Mouse", false, ""},
        {"Minimizing: Ctrl⌘ + Right Mouseclick", false, ""},
        {"Reopen minimized Window: Ctrl⌘ + E", false, ""},
        {"Centering: Ctrl⌘ + Left Doubleclick", false, ""},
        {"Left: Ctrl⌘ + ←", false, ""},
        {"Right: Ctrl⌘ + →", false, ""},
        {"Top: Ctrl⌘ + ↑", false, ""},
        {"Bottom: Ctrl⌘ + ↓", false, ""},
        {"Top Left: Ctrl⌘ + ←↑", false, ""},
        {"Top Right: Ctrl⌘ + ↑→", false, ""},
        {"Bottom Left: Ctrl⌘ + ←↓", false, ""},
        {"Bottom Right: Ctrl⌘ + ↓→", false, ""},
        {"Preferences…", true, ""},
        {"About Klova", true, ""},
        {"Quit KLOVA: Ctrl⌘ + T", true, ""},
    };
    EXPECT_EQ(announcedMenu(desktop), wanted);
    EXPECT_EQ(callBus(desktop, announcedBy(desktop), "/StatusNotifierItem",
                      "org.freedesktop.DBus.Properties.Get",
                      {"org.kde.StatusNotifierItem", "IconName"}),
              "(<''>,)\n")
        << "a name of no theme hides the icon";
}

TEST_F(TrayTest, panelsOpenFromTheAnnouncedMenuOneAtATime) {
    const auto tray = startNotifierHost(desktop);
    Process klova = start();
    ASSERT_TRUE(awaitIcon(kResting, kArmed));
    ASSERT_TRUE(awaitPanelEntries(true));
    for (const std::size_t panel : {13U, 14U}) {
        choose(desktop, announcedMenu(desktop).at(panel));
        EXPECT_TRUE(awaitPanelEntries(false));
        const auto window = awaitWindow(desktop.display(), klova);
        require(desktop.display(), "the panel's focus",
                [&] { return activeWindow(desktop.display()) == window; });
        hands.tap(XKB_KEY_Escape);
        EXPECT_TRUE(awaitPanelEntries(true));
    }
    choose(desktop, announcedMenu(desktop).back());
    EXPECT_EQ(klova.waitExit(kDeadline), 0);
}

} // namespace
} // namespace klova::rig
