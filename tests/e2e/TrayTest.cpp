#include "desktop/Files.h"
#include "desktop/Klova.h"
#include "desktop/Trays.h"
#include "desktop/Wait.h"
#include "desktop/Windows.h"

#include <csignal>
#include <gtest/gtest.h>

using namespace klova::rig;

namespace {

constexpr std::uint32_t kResting = 0x7D8591;
constexpr std::uint32_t kArmed = 0x0B57D0;

class TrayTest : public testing::Test {
protected:
    /// Where along the top of the screen this colour is seen first.
    std::optional<Rect> find(std::uint32_t colour) {
        constexpr int rows = 64;
        const auto width = desktop.server().screen().width;
        const auto asked = xcb_get_image(display.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, display.root(),
                                         0, 0, static_cast<std::uint16_t>(width), rows, ~0U);
        const auto image = owned(xcb_get_image_reply(display.get(), asked, nullptr));
        const auto* pixels =
            reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(image.get()));
        for (int i = 0; i < width * rows; ++i)
            if ((pixels[i] & 0xFFFFFFU) == colour)
                return Rect{i % width, i / width, 1, 1};
        return std::nullopt;
    }

    bool awaitIcon(std::uint32_t shown, std::uint32_t gone) {
        return waitUntil(display, "the icon to change", [&] { return find(shown) && !find(gone); });
    }

    VirtualDesktop desktop;
    Display& display = desktop.display();
};

TEST_F(TrayTest, theIconIsInWhateverTrayThereIsAndShowsWhetherTheGesturesAreArmed) {
    Klova klova(desktop, KLOVA_BINARY);
    for (const auto startTray :
         {startNotifierHost, startEmbeddingTray, startNotifierHost, startEmbeddingTray}) {
        Process tray = startTray(desktop);
        // The host of this panel comes a little after its other tray.
        ASSERT_TRUE(waitUntil(display, "the tray's kind of icon", [&] {
            return announcedBy(desktop).empty() == (startTray == startEmbeddingTray);
        }));
        ASSERT_TRUE(awaitIcon(kResting, kArmed)) << "in a tray that came later";
        klova.holdActivationKeys();
        EXPECT_TRUE(awaitIcon(kArmed, kResting));
        klova.releaseActivationKeys();
        EXPECT_TRUE(awaitIcon(kResting, kArmed));
        tray.signal(SIGKILL);
        ASSERT_TRUE(waitUntil(display, "the tray to go", [&] { return !find(kResting); }));
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
        const Rect menu = clientArea(display, awaitUnmanaged(display, "klova"));
        klova.hands().movePointer(menu.x + menu.width / 2, menu.y + menu.height - 16);
        klova.hands().click(1);
        EXPECT_EQ(klova.process().waitExit(kDeadline), 0);
    }
}

TEST_F(TrayTest, theAnnouncedMenuListsEveryGestureWithItsKeys) {
    const auto tray = startNotifierHost(desktop);
    writeFile(desktop.session().preferences(),
              R"({"isNotFirstTime": true, "activationKeys": [59, 55], "deminimizeButton": 8,
                  "maximizingEnabled": true, "centeringEnabled": false})");
    Klova klova(desktop, KLOVA_BINARY);
    ASSERT_TRUE(awaitIcon(kResting, kArmed));
    std::vector<MenuEntry> wanted;
    for (const char* shown :
         {"Activation Keys: Ctrl⌘", "Dragging: Ctrl⌘ + Left Mouse",
          "Minimizing: Ctrl⌘ + Right Mouseclick", "Reopen minimized Window: Ctrl⌘ + C",
          "Maximizing: Ctrl⌘ + Left Doubleclick", "Left: Ctrl⌘ + ←", "Right: Ctrl⌘ + →",
          "Top: Ctrl⌘ + ↑", "Bottom: Ctrl⌘ + ↓", "Top Left: Ctrl⌘ + ←↑", "Top Right: Ctrl⌘ + ↑→",
          "Bottom Left: Ctrl⌘ + ←↓", "Bottom Right: Ctrl⌘ + ↓→"})
        wanted.push_back({shown, false, ""});
    for (const char* offered : {"Preferences…", "About Klova", "Quit KLOVA: Ctrl⌘ + T"})
        wanted.push_back({offered, true, ""});
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
