// A whole desktop session as a login starts it: session manager, window manager, panel, settings
// daemon, shortcuts and notifications of its own.
#pragma once

#include "desktop/Injector.h"
#include "desktop/VirtualDesktop.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace klova::desktops {

struct SessionRecipe {
    std::string name;
    std::vector<std::string> command;
    std::vector<std::string> logout;
    std::string panel;         // the class of its window
    std::string listShortcuts; // a shell's command
    /// Binds Super+Ctrl+Left to making the file $MARK, as its settings do.
    std::string bindShortcut;
    /// Has Super alone open the session's menu or, in LXQt, a clock for a while.
    std::string bindSuper;
};

/// Xfce, MATE and LXQt.
const std::vector<SessionRecipe>& sessionRecipes();

class LoginSession {
public:
    explicit LoginSession(const SessionRecipe& recipe);

    rig::VirtualDesktop& desktop() { return desktop_; }
    rig::Display& display() { return desktop_.display(); }
    rig::Injector& hands() { return hands_; }
    rig::Rect screen() { return desktop_.monitors().front(); }
    /// What its panels leave of the screen.
    rig::Rect workArea();

    /// Returns once manager and panel are there and the screen is at rest. Throws
    /// std::runtime_error where that does not happen.
    void logIn();
    /// As a person does it from the menu. Returns once the session has ended.
    void logOut();

    /// What a shell in the session answers.
    std::string ask(const std::string& command);

    /// The file that the session's own shortcut makes.
    std::filesystem::path mark() { return desktop_.session().directory() / "mark"; }

    /// Returns once the screen has looked the same for half a second.
    void settle();
    /// Takes a picture of the screen at rest.
    void picture(const std::filesystem::path& file);

    /// How many windows are on show, menus and notifications among them.
    std::size_t shownWindows();

private:
    const SessionRecipe& recipe_;
    rig::VirtualDesktop desktop_;
    rig::Injector hands_;
    std::optional<rig::Process> leader_;
};

} // namespace klova::desktops
