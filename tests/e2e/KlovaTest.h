// A desktop of its own for each test with Klova on it, and what is expected of both.
#pragma once

#include "desktop/Grabs.h"
#include "desktop/Klova.h"
#include "desktop/ManagerBarrier.h"
#include "desktop/TestWindow.h"
#include "desktop/Wait.h"

#include <algorithm>
#include <csignal>
#include <gtest/gtest.h>

namespace klova::rig {

using namespace std::chrono_literals;

class KlovaTest : public testing::Test {
protected:
    explicit KlovaTest(const DesktopOptions& options = {}) : desktop(options) {}

    void start() {
        klova.emplace(desktop, KLOVA_BINARY);
        hands().setSpacing(2ms); // closer together, window managers themselves lose clicks
    }
    Injector& hands() { return klova->hands(); }

    void focus(xcb_window_t window) {
        if (managerWindow(display) != XCB_WINDOW_NONE)
            activate(display, window);
        xcb_set_input_focus(display.get(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
        display.roundTrip();
    }

    void expectPlace(xcb_window_t window, Place place, const std::string& what) {
        EXPECT_EQ(klova->awaitPlace(window, place, desktop.server().screen()), "") << what;
    }

    void expectNothingStuck(const std::string& after) {
        EXPECT_TRUE(waitUntil(
            display, "free input", [&] { return stuckInput(display).empty(); },
            [&] { return stuckInput(display); }))
            << after;
        const auto said = klova->process().output();
        EXPECT_TRUE(klova->process().running()) << after << said;
        EXPECT_EQ(said.find("refused"), std::string::npos) << after << said;
    }

    /// The window is snapped to two sides, and nothing is left behind.
    void expectGestures(xcb_window_t window, const std::string& after) {
        focus(window);
        for (const auto& gesture : {snapGestures()[0], snapGestures()[1]}) {
            klova->holdActivationKeys();
            klova->snap(gesture);
            klova->releaseActivationKeys();
            expectPlace(window, gesture.place, gesture.name + " after " + after);
        }
        expectNothingStuck(after);
    }

    VirtualDesktop desktop;
    Display& display = desktop.display();
    std::optional<Klova> klova;
};

} // namespace klova::rig
