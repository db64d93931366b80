// The trays that Klova is shown in, and what is asked of them over the session bus.
#pragma once

#include "desktop/VirtualDesktop.h"

#include <ostream>
#include <string>
#include <vector>

namespace klova::rig {

/// How far the middle of the cornerTray's only icon is from the right and from the bottom, in
/// pixels.
inline constexpr int kIconFromRight = 36;
inline constexpr int kIconFromBottom = 35;

/// A tray in the lower right corner that embeds icons as windows. Returns once it takes icons;
/// throws std::runtime_error where it does not come up.
Process startCornerTray(VirtualDesktop& desktop);

/// A panel along the top that embeds icons as windows and knows nothing of the session bus.
Process startEmbeddingTray(VirtualDesktop& desktop);

/// A panel along the top that is a status notifier host.
Process startNotifierHost(VirtualDesktop& desktop);

/// Waits until somebody owns this selection; throws std::runtime_error where nobody comes to.
void awaitOwner(Display& display, const std::string& selection);

/// What a call on the session bus answers, as text.
std::string callBus(VirtualDesktop& desktop, const std::string& name, const std::string& object,
                    const std::string& method, const std::vector<std::string>& arguments);

/// The connection whose icon the host knows; empty where it knows none.
std::string announcedBy(VirtualDesktop& desktop);

struct MenuEntry {
    std::string title;
    bool enabled;
    std::string id;
    bool operator==(const MenuEntry& other) const {
        return title == other.title && enabled == other.enabled;
    }
};
std::ostream& operator<<(std::ostream& stream, const MenuEntry& entry);

/// The announced menu's entries from top to bottom, without separators.
std::vector<MenuEntry> announcedMenu(VirtualDesktop& desktop);

/// The entry of this title. Throws std::runtime_error where there is none that can be chosen.
MenuEntry announcedEntry(VirtualDesktop& desktop, const std::string& title);

/// Chooses an entry of the announced menu, as a host does on a click.
void choose(VirtualDesktop& desktop, const MenuEntry& entry);

} // namespace klova::rig
