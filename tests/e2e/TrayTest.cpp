#include "desktop/Files.h"
#include "desktop/Klova.h"
#include "desktop/TrayIcon.h"
#include "desktop/Trays.h"
#include "desktop/Wait.h"
#include "desktop/Windows.h"

#include <csignal>
#include <gtest/gtest.h>

using namespace klova::rig;

namespace {

using enum IconColour;

class TrayTest : public testing::Test {
protected:
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
        ASSERT_TRUE(awaitIcon(display, resting)) << "in a tray that came later";
        klova.holdActivationKeys();
        EXPECT_TRUE(awaitIcon(display, armed));
        klova.releaseActivationKeys();
        EXPECT_TRUE(awaitIcon(display, resting));
        tray.signal(SIGKILL);
        ASSERT_TRUE(
            waitUntil(display, "the tray to go", [&] { return !findIcon(display, resting); }));
    }
    EXPECT_TRUE(klova.process().running());
}

TEST_F(TrayTest, aClickOnTheEmbeddedIconOpensTheMenuWhoseLastEntryQuits) {
    const auto tray = startEmbeddingTray(desktop);
    for (const std::uint8_t button : {std::uint8_t{1}, std::uint8_t{3}}) {
        Klova klova(desktop, KLOVA_BINARY);
        ASSERT_TRUE(awaitIcon(display, resting));
        const Rect icon = findIcon(display, resting).value_or(Rect{});
        klova.hands().movePointer(icon.x, icon.y);
        klova.holdActivationKeys();
        ASSERT_TRUE(awaitIcon(display, armed));
        klova.hands().click(2); // a menu that could not hold the keyboard would stay open
        klova.releaseActivationKeys();
        ASSERT_TRUE(awaitIcon(display, resting));
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
    ASSERT_TRUE(awaitIcon(display, resting));
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
