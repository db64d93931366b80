#include "platform/x11/Trust.h"

#include <set>
#include <string>
#include <string_view>
#include <xcb/randr.h>

namespace klova::x11 {
namespace {

std::set<std::string> extensionsOf(Connection& connection) {
    const auto reply = own(xcb_list_extensions_reply(
        connection.get(), xcb_list_extensions(connection.get()), nullptr));
    std::set<std::string> names;
    if (!reply)
        return names;
    for (auto name = xcb_list_extensions_names_iterator(reply.get()); name.rem > 0;
         xcb_str_next(&name))
        names.emplace(xcb_str_name(name.data),
                      static_cast<std::size_t>(xcb_str_name_length(name.data)));
    return names;
}

/// An untrusted client of the SECURITY extension is shown these few extensions and no other.
bool untrusted(const std::set<std::string>& extensions) {
    for (const auto& name : extensions)
        if (name != "XC-MISC" && name != "BIG-REQUESTS" && name != "XpExtension")
            return false;
    return true;
}

bool hasXwaylandOutput(Connection& connection) {
    if (connection.randrFirstEvent() == 0)
        return false;
    auto* raw = connection.get();
    const auto monitors = own(xcb_randr_get_monitors_reply(
        raw, xcb_randr_get_monitors(raw, connection.root(), 1), nullptr));
    auto monitor = monitors ? xcb_randr_get_monitors_monitors_iterator(monitors.get())
                            : xcb_randr_monitor_info_iterator_t{};
    for (; monitor.rem > 0; xcb_randr_monitor_info_next(&monitor)) {
        const auto name =
            own(xcb_get_atom_name_reply(raw, xcb_get_atom_name(raw, monitor.data->name), nullptr));
        if (!name)
            continue;
        const std::string_view text(
            xcb_get_atom_name_name(name.get()),
            static_cast<std::size_t>(xcb_get_atom_name_name_length(name.get())));
        if (text.starts_with("XWAYLAND"))
            return true;
    }
    return false;
}

} // namespace

std::optional<LackOfTrust> lackOfTrust(Connection& connection) {
    using Reason = LackOfTrust::Reason;
    const auto extensions = extensionsOf(connection);
    if (untrusted(extensions))
        return LackOfTrust{Reason::untrustedConnection, {}};
    if (extensions.contains("XWAYLAND") || hasXwaylandOutput(connection))
        return LackOfTrust{Reason::waylandSession, {}};
    if (!connection.missingExtensions().empty())
        return LackOfTrust{Reason::missingFeatures, connection.missingExtensions()};
    return std::nullopt;
}

} // namespace klova::x11
