#include "desktop/Files.h"
#include "desktop/Klova.h"
#include "desktop/Trays.h"
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

    VirtualDesktop desktop;
};

TEST_F(TrayTest, theIconIsInWhateverTrayThereIsAndShowsWhetherTheGesturesAreArmed) {
    Klova klova(desktop, KLOVA_BINARY);
    for (const auto startTray :
         {startNotifierHost, startEmbeddingTray, startNotifierHost, startEmbeddingTray}) {
        Process tray = startTray(desktop);
        // The host of this panel comes a little after its other tray.
        ASSERT_TRUE(waitUntil(desktop.display(), "the tray's kind of icon", [&] {
            return announcedBy(desktop).empty() == (startTray == startEmbeddingTray);
        }));
        ASSERT_TRUE(awaitIcon(kResting, kArmed)) << "in a tray that came later";
        klova.holdActivationKeys();
        EXPECT_TRUE(awaitIcon(kArmed, kResting));
        klova.releaseActivationKeys();
        EXPECT_TRUE(awaitIcon(kResting, kArmed));
        tray.signal(SIGKILL);
        ASSERT_TRUE(
            waitUntil(desktop.display(), "the tray to go", [&] { return !find(kResting); }));
    }
    EXPECT_TRUE(klova.process().running());
}

TEST_F(TrayTest, aClickOnTheEmbeddedIconOpensTheMenuWhoseLastEntryQuits) {
    const auto tray = startEmbeddingTray(desktop);
    for (const std::uint8_t button : {std::uint8_t{1}, std::uint8_t{3}}) {
        Klova klova(desktop, KLOVA_BINARY);
        ASSERT_TRUE(awaitIcon(kResting, kArmed));
        const Rect icon = find(kResting).value_or(Rect{});
        klova.hands().movePointer(icon.x, icon.y);
        klova.holdActivationKeys();
        ASSERT_TRUE(awaitIcon(kArmed, kResting));
        klova.hands().click(2); // a menu that could not hold the keyboard would stay open
        klova.releaseActivationKeys();
        ASSERT_TRUE(awaitIcon(kResting, kArmed));
        klova.hands().click(button);
        // Not by asking for its grab, which would be in its way.
        ASSERT_TRUE(
            waitUntil(desktop.display(), "the menu", [&] { return findMenu().has_value(); }));
        const Rect menu = findMenu().value_or(Rect{});
        klova.hands().movePointer(menu.x + menu.width / 2, menu.y + menu.height - 16);
        klova.hands().click(1);
        EXPECT_EQ(klova.process().waitExit(kDeadline), 0);
    }
}

TEST_F(TrayTest, theAnnouncedMenuListsEveryGestureWithItsKeys) {
    const auto tray = startNotifierHost(desktop);
    writeFile(desktop.session().config() / "klova" / "preferences.json",
              R"({"isNotFirstTime": true, "activationKeys": [59, 55], "deminimizeButton": 8,
                  "maximizingEnabled": true, "centeringEnabled": false})");
    Klova klova(desktop, KLOVA_BINARY);
    ASSERT_TRUE(awaitIcon(kResting, kArmed));
    const std::vector<MenuEntry> wanted{
        {"Activation Keys: Ctrl⌘", false, ""},
        {"Dragging: Ctrl⌘ + Left Mouse", false, ""},
        {"Minimizing: Ctrl⌘ + Right Mouseclick", false, ""},
        {"Reopen minimized Window: Ctrl⌘ + C", false, ""},
        {"Maximizing: Ctrl⌘ + Left Doubleclick", false, ""},
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
    choose(desktop, announcedMenu(desktop).back());
    EXPECT_EQ(klova.process().waitExit(kDeadline), 0);
}

} // namespace
} // namespace klova::rig
