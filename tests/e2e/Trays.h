// The trays that Klova is shown in, and what is asked of them over the session bus.
#pragma once

#include "desktop/VirtualDesktop.h"

#include <regex>
#include <string>
#include <utility>
#include <vector>

namespace klova::rig {

/// A panel that embeds icons as windows and knows nothing of the session bus.
inline Process startEmbeddingTray(VirtualDesktop& desktop) {
    return desktop.launch({"trayer", "--edge", "top", "--height", "24"});
}

/// A panel that is a status notifier host.
inline Process startNotifierHost(VirtualDesktop& desktop) {
    writeFile(desktop.session().config() / "xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml", R"(
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
</channel>)");
    return desktop.launch({"xfce4-panel", "--disable-wm-check"});
}

/// What a call on the session bus answers, as text.
inline std::string callBus(VirtualDesktop& desktop, const std::string& name,
                           const std::string& object, const std::string& method,
                           const std::vector<std::string>& arguments) {
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

/// The connection whose icon the host knows; empty where it knows none.
inline std::string announcedBy(VirtualDesktop& desktop) {
    const std::string watcher = "org.kde.StatusNotifierWatcher";
    const auto answer =
        callBus(desktop, watcher, "/StatusNotifierWatcher", "org.freedesktop.DBus.Properties.Get",
                {watcher, "RegisteredStatusNotifierItems"});
    std::smatch found;
    return std::regex_search(answer, found, std::regex("'(:[^/]+)/")) ? found.str(1) : "";
}

struct MenuEntry {
    std::string title;
    bool enabled;
    std::string id;
    bool operator==(const MenuEntry& other) const {
        return title == other.title && enabled == other.enabled;
    }
};

/// The announced menu's entries from top to bottom, without separators.
inline std::vector<MenuEntry> announcedMenu(VirtualDesktop& desktop) {
    const auto layout = callBus(desktop, announcedBy(desktop), "/MenuBar",
                                "com.canonical.dbusmenu.GetLayout", {"0", "-1", "[]"});
    const std::regex entry(R"(<\((\d+), \{'enabled': <(true|false)>, 'label': <'([^']*)'>)");
    std::vector<MenuEntry> entries;
    for (std::sregex_iterator found(layout.begin(), layout.end(), entry), end; found != end;
         ++found)
        entries.push_back({found->str(3), found->str(2) == "true", found->str(1)});
    return entries;
}

/// Chooses an entry of the announced menu, as a host does on a click.
inline void choose(VirtualDesktop& desktop, const MenuEntry& entry) {
    callBus(desktop, announcedBy(desktop), "/MenuBar", "com.canonical.dbusmenu.Event",
            {entry.id, "clicked", "<''>", "0"});
}

} // namespace klova::rig
