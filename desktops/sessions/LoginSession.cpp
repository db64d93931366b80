#include "sessions/LoginSession.h"

#include "desktop/Wait.h"
#include "desktop/Windows.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>

namespace klova::desktops {
namespace {

using namespace std::chrono_literals;

rig::DesktopOptions optionsFor(const SessionRecipe& recipe) {
    const auto prepare = [&](rig::Session& session, rig::Display&) {
        auto name = recipe.name;
        std::ranges::transform(name, name.begin(), [](char letter) {
            return static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
        });
        session.setVariable("XDG_CURRENT_DESKTOP", recipe.name == "LXQt" ? recipe.name : name);
        session.setVariable("XDG_SESSION_TYPE", "x11");
        session.setVariable("GSETTINGS_BACKEND", "dconf"); // shared by the session's programs
        session.setVariable("MARK", session.directory() / "mark");
        // LXQt asks at the first login which of the installed managers it is to be.
        rig::writeFile(session.config() / "lxqt" / "session.conf",
                       "[General]\nwindow_manager=openbox\nleave_confirmation=false\n");
    };
    return {.windowManager = "", .screen = {1440, 900}, .prepare = prepare};
}

std::vector<std::uint8_t> pixels(rig::Display& display) {
    const auto& screen = display.screen();
    const auto asked = xcb_get_image(display.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, display.root(), 0, 0,
                                     screen.width_in_pixels, screen.height_in_pixels, ~0U);
    const auto image = rig::owned(xcb_get_image_reply(display.get(), asked, nullptr));
    if (!image)
        return {};
    const auto* begin = xcb_get_image_data(image.get());
    return {begin, begin + xcb_get_image_data_length(image.get())};
}

} // namespace

const std::vector<SessionRecipe>& sessionRecipes() {
    static const std::vector<SessionRecipe> table = {
        {"Xfce",
         {"startxfce4"},
         {"xfce4-session-logout", "--logout", "--fast"},
         "xfce4-panel",
         "xfconf-query -c xfce4-keyboard-shortcuts -lv",
         "xfconf-query -c xfce4-keyboard-shortcuts -p '/commands/custom/<Primary><Super>Left' "
         "-n -t string -s \"touch $MARK\"",
         "xcape -e 'Super_L=Alt_L|F1'"},
        {"MATE",
         {"mate-session"},
         {"mate-session-save", "--force-logout"},
         "mate-panel",
         "gsettings list-recursively | grep -E '^org.mate.(Marco|SettingsDaemon)'",
         "gsettings set org.mate.Marco.keybinding-commands command-1 \"touch $MARK\" && "
         "gsettings set org.mate.Marco.global-keybindings run-command-1 '<Control><Mod4>Left'",
         "gsettings set org.mate.Marco.global-keybindings panel-main-menu Super_L"},
        {"LXQt",
         {"startlxqt"},
         {"lxqt-leave", "--logout"},
         "lxqt-panel",
         "cat ~/.config/lxqt/globalkeyshortcuts.conf",
         "gdbus call --session -d org.lxqt.global_key_shortcuts -o /daemon "
         "-m org.lxqt.global_key_shortcuts.daemon.addCommandAction 'Control+Meta+Left' touch "
         "\"['$MARK']\" mark",
         "gdbus call --session -d org.lxqt.global_key_shortcuts -o /daemon "
         "-m org.lxqt.global_key_shortcuts.daemon.addCommandAction Super_L timeout "
         "\"['3', 'xclock']\" clock"},
    };
    return table;
}

LoginSession::LoginSession(const SessionRecipe& recipe)
    : recipe_(recipe), desktop_(optionsFor(recipe)), hands_(desktop_.server().display()) {
    hands_.setSpacing(20ms);
}

rig::Rect LoginSession::workArea() {
    const auto area = display().values(display().root(), "_NET_WORKAREA");
    const auto number = [&](std::size_t i) { return static_cast<int>(area[i]); };
    return area.size() < 4 ? screen() : rig::Rect{number(0), number(1), number(2), number(3)};
}

void LoginSession::logIn() {
    leader_.emplace(desktop_.launch(recipe_.command));
    rig::require(
        display(), recipe_.name + "'s window manager and panel",
        [&] {
            return rig::managerWindow(display()) != XCB_NONE &&
                   rig::windowOfClass(display(), recipe_.panel);
        },
        [&] { return leader_->output(); }, 60s);
    settle();
}

void LoginSession::logOut() {
    auto leaving = desktop_.launch(recipe_.logout);
    if (!leader_->waitExit(60s))
        throw std::runtime_error("the session does not end: " + leaving.output() +
                                 leader_->output());
    leader_.reset();
}

std::string LoginSession::ask(const std::string& command) {
    auto shell = desktop_.launch({"sh", "-c", command});
    shell.waitExit(10s);
    return shell.output();
}

void LoginSession::settle() {
    rig::awaitStill(
        display(), "a screen", [&] { return pixels(display()); }, 500ms);
}

void LoginSession::picture(const std::filesystem::path& file) {
    settle();
    auto taking = desktop_.launch({"import", "-window", "root", file.string()});
    if (taking.waitExit(10s) != 0)
        throw std::runtime_error("no picture: " + taking.output());
}

std::size_t LoginSession::shownWindows() {
    const auto tree = rig::owned(xcb_query_tree_reply(
        display().get(), xcb_query_tree(display().get(), display().root()), nullptr));
    std::size_t shown = 0;
    for (int i = 0; tree && i < tree->children_len; ++i) {
        const auto window = xcb_query_tree_children(tree.get())[i];
        const auto attributes = rig::owned(xcb_get_window_attributes_reply(
            display().get(), xcb_get_window_attributes(display().get(), window), nullptr));
        if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
            attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT)
            ++shown;
    }
    return shown;
}

} // namespace klova::desktops
