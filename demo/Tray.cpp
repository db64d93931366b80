#include "Tray.h"

#include "desktop/Files.h"
#include "desktop/Wait.h"

namespace klova::demo {
namespace {

// Reserves no room and stays small: it must not matter to where windows go.
constexpr auto kTraySettings = R"(panel_items = S
panel_monitor = primary
panel_position = bottom right horizontal
panel_size = 56 54
panel_margin = 8 8
panel_layer = top
panel_dock = 0
panel_shrink = 0
strut_policy = none
wm_menu = 0
rounded = 4
border_width = 0
background_color = #1d2433 100
panel_background_id = 1
systray_padding = 12 10 4
systray_icon_size = 32
)";

} // namespace

void awaitOwner(rig::Display& display, const std::string& selection) {
    const auto atom = display.atom(selection);
    rig::require(display, "owner of " + selection, [&] {
        const auto owner = rig::owned(xcb_get_selection_owner_reply(
            display.get(), xcb_get_selection_owner(display.get(), atom), nullptr));
        return owner && owner->owner != XCB_NONE;
    });
}

rig::Process startTray(rig::VirtualDesktop& desktop) {
    const auto settings = desktop.session().config() / "tint2" / "demo.tint2rc";
    rig::writeFile(settings, kTraySettings);
    auto tray = desktop.launch({"tint2", "-c", settings});
    awaitOwner(desktop.display(), "_NET_SYSTEM_TRAY_S0");
    return tray;
}

} // namespace klova::demo
