#include "desktop/Trays.h"

#include "desktop/Files.h"
#include "desktop/Owned.h"
#include "desktop/Wait.h"

#include <regex>
#include <stdexcept>

namespace klova::rig {
namespace {

// Reserves no room and stays small: it must not matter to where windows go.
constexpr auto kCornerSettings = R"(panel_items = S
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

constexpr auto kHostSettings = R"(
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="length" type="uint" value="100"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray"/>
  </property>
</channel>)";

} // namespace

Process startCornerTray(VirtualDesktop& desktop) {
    const auto settings = desktop.session().config() / "tint2" / "corner.tint2rc";
    writeFile(settings, kCornerSettings);
    auto tray = desktop.launch({"tint2", "-c", settings});
    awaitOwner(desktop.display(), "_NET_SYSTEM_TRAY_S0");
    return tray;
}

Process startEmbeddingTray(VirtualDesktop& desktop) {
    return desktop.launch({"trayer", "--edge", "top", "--height", "24"});
}

Process startNotifierHost(VirtualDesktop& desktop) {
    writeFile(desktop.session().config() / "xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml",
              kHostSettings);
    return desktop.launch({"xfce4-panel", "--disable-wm-check"});
}

void awaitOwner(Display& display, const std::string& selection) {
    const auto atom = display.atom(selection);
    require(display, "owner of " + selection, [&] {
        const auto owner = owned(xcb_get_selection_owner_reply(
            display.get(), xcb_get_selection_owner(display.get(), atom), nullptr));
        return owner && owner->owner != XCB_NONE;
    });
}

std::string callBus(VirtualDesktop& desktop, const std::string& name, const std::string& object,
                    const std::string& method, const std::vector<std::string>& arguments) {
    std::vector<std::string> command{"gdbus",
                                     "call",
                                     "--session",
                                     "--dest=" + name,
                                     "--object-path=" + object,
                                     "--method=" + method,
                                     "--"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    Process call = desktop.launch(command);
    call.waitExit(std::chrono::seconds(5));
    return call.output();
}

std::string announcedBy(VirtualDesktop& desktop) {
    const std::string watcher = "org.kde.StatusNotifierWatcher";
    const auto answer =
        callBus(desktop, watcher, "/StatusNotifierWatcher", "org.freedesktop.DBus.Properties.Get",
                {watcher, "RegisteredStatusNotifierItems"});
    std::smatch found;
    return std::regex_search(answer, found, std::regex("'(:[^/]+)/")) ? found.str(1) : "";
}

std::ostream& operator<<(std::ostream& stream, const MenuEntry& entry) {
    return stream << (entry.enabled ? "" : "disabled ") << entry.title;
}

std::vector<MenuEntry> announcedMenu(VirtualDesktop& desktop) {
    const auto layout = callBus(desktop, announcedBy(desktop), "/MenuBar",
                                "com.canonical.dbusmenu.GetLayout", {"0", "-1", "[]"});
    const std::regex entry(R"(<\((\d+), \{'enabled': <(true|false)>, 'label': <'([^']*)'>)");
    std::vector<MenuEntry> entries;
    for (std::sregex_iterator found(layout.begin(), layout.end(), entry), end; found != end;
         ++found)
        entries.push_back({found->str(3), found->str(2) == "true", found->str(1)});
    return entries;
}

MenuEntry announcedEntry(VirtualDesktop& desktop, const std::string& title) {
    for (const auto& entry : announcedMenu(desktop))
        if (entry.title == title && entry.enabled)
            return entry;
    throw std::runtime_error("the menu does not offer " + title);
}

void choose(VirtualDesktop& desktop, const MenuEntry& entry) {
    callBus(desktop, announcedBy(desktop), "/MenuBar", "com.canonical.dbusmenu.Event",
            {entry.id, "clicked", "<''>", "0"});
}

} // namespace klova::rig
