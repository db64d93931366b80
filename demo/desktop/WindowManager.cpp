#include "desktop/WindowManager.h"

#include "desktop/Files.h"
#include "desktop/ManagerBarrier.h"
#include "desktop/Wait.h"
#include "desktop/Windows.h"

#include <algorithm>
#include <stdexcept>

namespace klova::rig {
namespace {

struct SettingsFile {
    std::string name; // below the home directory
    std::string text;
};

struct Recipe {
    std::string name;
    std::vector<std::string> command; // "~" stands for the home directory
    std::vector<SettingsFile> files;
    std::vector<SettingsFile> trayFiles = {}; // instead, for a tray of its own
};

const std::vector<Recipe>& recipes() {
    static const std::vector<Recipe> table = {
        {"openbox", {"openbox", "--sm-disable"}, {}},
        {"xfwm4", {"xfwm4", "--compositor=off"}, {}},
        {"marco", {"marco", "--sm-disable", "--no-composite"}, {}},
        {"metacity", {"metacity", "--sm-disable", "--no-composite"}, {}},
        {"mutter", {"mutter", "--x11", "--sm-disable"}, {}},
        {"kwin",
         {"kwin_x11"},
         {{".config/kwinrc", "[Compositing]\nEnabled=false\n[Windows]\nBorderSnapZone=0\n"}}},
        {"icewm",
         {"icewm"},
         {{".icewm/preferences", "ShowTaskBar=0\nShowSplash=0\nShowProgramsMenu=0\n"},
          {".icewm/theme", "Theme=\"default/default.theme\"\n"}},
         {{".icewm/preferences", "ShowSplash=0\n"}}},
        {"fluxbox",
         {"fluxbox", "-no-slit", "-no-toolbar"},
         {{".fluxbox/init", "session.configVersion: 13\n"
                            "session.screen0.toolbar.visible: false\n"},
          {".fluxbox/overlay", "background: none\n"}},
         {{".fluxbox/init", "session.configVersion: 13\n"
                            "session.screen0.toolbar.tools: iconbar, systemtray\n"},
          {".fluxbox/overlay", "background: none\n"}}},
        {"jwm",
         {"jwm", "-f", "~/.jwmrc"},
         {{".jwmrc", "<?xml version=\"1.0\"?>\n<JWM/>\n"}},
         {{".jwmrc",
           "<?xml version=\"1.0\"?>\n<JWM><Tray y=\"-1\" height=\"28\"><Dock/></Tray></JWM>\n"}}},
        {"i3",
         {"i3", "-c", "~/.config/i3/config"},
         {{".config/i3/config", "# i3 config file (v4)\n"
                                "font pango:monospace 9\n"
                                "for_window [all] floating enable\n"
                                "floating_maximum_size -1 x -1\n"}},
         {{".config/i3/config", "# i3 config file (v4)\n"
                                "font pango:monospace 9\n"
                                "for_window [all] floating enable\n"
                                "bar {\n}\n"}}},
        // As it comes: floating windows, and a tray in its bar.
        {"awesome", {"awesome"}, {}},
    };
    return table;
}

const Recipe& recipeFor(const std::string& name) {
    const auto& table = recipes();
    const auto found = std::find_if(table.begin(), table.end(),
                                    [&](const Recipe& recipe) { return recipe.name == name; });
    if (found == table.end())
        throw std::runtime_error("no window manager is called \"" + name + "\"");
    return *found;
}

Process start(Session& session, const Recipe& recipe, WindowManager::Start way) {
    const bool tray = way == WindowManager::Start::withTray && !recipe.trayFiles.empty();
    for (const auto& file : tray ? recipe.trayFiles : recipe.files)
        writeFile(session.home() / file.name, file.text);
    auto command = recipe.command;
    for (auto& word : command)
        if (word.starts_with('~'))
            word.replace(0, 1, session.home().string());
    if (way == WindowManager::Start::replacing)
        command.emplace_back("--replace");
    return session.launch(command);
}

} // namespace

const std::vector<std::string>& windowManagerNames() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> result;
        for (const auto& recipe : recipes())
            result.push_back(recipe.name);
        return result;
    }();
    return names;
}

bool WindowManager::hasTray() const {
    return name_ == "awesome" || !recipeFor(name_).trayFiles.empty();
}

WindowManager::WindowManager(Session& session, Display& display, const std::string& name, Start way)
    : WindowManager(session, display, name, way, managerWindow(display)) {}

WindowManager::WindowManager(Session& session, Display& display, const std::string& name, Start way,
                             xcb_window_t before)
    : name_(name), process_(start(session, recipeFor(name), way)) {
    require(
        display, "window manager (" + name + ")",
        [&] {
            const auto now = managerWindow(display);
            if (process_.running())
                return now != XCB_WINDOW_NONE && now != before;
            throw std::runtime_error(name + " ended at its start: " + process_.output());
        },
        [&] { return process_.output(); });
    // It may announce itself well before it listens, and lose what it is asked in between.
    if (!ManagerBarrier(display.name()).pass())
        throw std::runtime_error(name + " does not answer: " + process_.output());
}

} // namespace klova::rig
