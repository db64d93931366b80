// What tests of the panels share: Qt without a display, and a shell that notes what it is asked.
#pragma once

#include "core/SimulatedDesktop.h"
#include "ui/PanelDelegate.h"

#include <QApplication>

namespace klova::test {

inline QApplication& application() {
    static int count = 1;
    static char name[] = "ui_tests";
    static char* arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication instance(count, arguments);
    return instance;
}

/// Its notes stand between those of the simulated desktop.
struct NotingShell final : PanelDelegate {
    explicit NotingShell(SimulatedDesktop& desktop) : sim(desktop) {}
    void quitApplication() override {}
    void updateActivationKeyLabel() override { note("activation label"); }
    void updateShortCutLabels() override { note("shortcut labels"); }
    void toggleShowMenuItems(bool enabled) override { note(enabled ? "menu on" : "menu off"); }
    void openPreferences() override {}
    void closeWelcome() override {}
    void closeAbout() override {}

    void note(std::string entry) {
        for (std::string& earlier : sim.takeLog())
            if (!earlier.starts_with("load "))
                log.push_back(std::move(earlier));
        log.push_back(std::move(entry));
    }

    SimulatedDesktop& sim;
    Log log;
};

} // namespace klova::test
