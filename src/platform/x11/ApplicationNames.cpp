#include "platform/x11/ApplicationNames.h"

#include "platform/x11/Properties.h"

#include <utility>

namespace klova::x11 {
namespace {

/// WM_CLASS is two texts, each ended by a zero: the instance and the class.
std::string classOf(const std::string& property) {
    const auto second = property.find('\0');
    if (second == std::string::npos)
        return {};
    return property.substr(second + 1, property.find('\0', second + 1) - second - 1);
}

std::optional<std::string> present(std::string text) {
    while (!text.empty() && text.back() == '\0')
        text.pop_back();
    return text.empty() ? std::nullopt : std::optional(std::move(text));
}

} // namespace

NamesRequest::NamesRequest(Connection& connection, xcb_window_t window)
    : connection_(connection.get()),
      gtk_(askProperty(connection_, window, connection.atoms()._GTK_APPLICATION_ID)),
      kde_(askProperty(connection_, window, connection.atoms()._KDE_NET_WM_DESKTOP_FILE)),
      wmClass_(askProperty(connection_, window, XCB_ATOM_WM_CLASS)) {}

ApplicationNames NamesRequest::take() {
    const auto gtk = present(takeText(connection_, gtk_));
    const auto kde = present(takeText(connection_, kde_));
    const auto name = present(classOf(takeText(connection_, wmClass_)));
    return {gtk ? gtk : kde ? kde : name, name};
}

void NamesRequest::discard() {
    for (const auto& cookie : {gtk_, kde_, wmClass_})
        xcb_discard_reply(connection_, cookie.sequence);
}

} // namespace klova::x11
