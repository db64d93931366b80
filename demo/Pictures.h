// Pictures of everything that Klova shows of itself, on a desktop of a given look.
#pragma once

#include "QuitRequest.h"
#include "desktop/Injector.h"
#include "desktop/VirtualDesktop.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>

namespace klova::demo {

struct Look {
    double scale = 1;
    bool composited = true;
};

class Pictures {
public:
    /// `binary` is Klova; `folder`, which has to be there, gets the files.
    Pictures(const Look& look, std::filesystem::path binary, std::filesystem::path folder);

    /// Leads through the first start, the menu, each panel and the alert, by keys and clicks.
    /// Returns how many files it wrote; throws std::runtime_error where something does not appear.
    int take();

private:
    void takeTour();
    void takeMenu();
    void takePreferences();
    void takeAbout();
    void takeAlert();

    void openMenu();
    /// By the arrows; `fromBottom` is 1 for the last entry.
    void chooseFromMenu(int fromBottom);
    void awaitPanel(rig::Process& klova);
    void awaitNoPanel();
    void pause(std::chrono::milliseconds time);
    void save(const rig::Rect& area, const std::string& name);

    Look look_;
    std::filesystem::path binary_;
    std::filesystem::path folder_;
    rig::VirtualDesktop desktop_;
    rig::Injector hands_;
    rig::Process tray_;
    std::optional<rig::Process> compositor_;
    std::optional<rig::Process> klova_;
    xcb_window_t panel_ = XCB_NONE;
    int saved_ = 0;
    QuitRequest quit_;
};

} // namespace klova::demo
