#include "platform/x11/X11Workspace.h"

#include "platform/x11/Properties.h"
#include "platform/x11/X11AccessibilityService.h"

#include <algorithm>
#include <string>

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

/// The names that a window gives its application, asked for and not yet taken.
class NameRequest {
public:
    NameRequest(Connection& connection, xcb_window_t window)
        : connection_(connection.get()),
          gtk_(askProperty(connection_, window, connection.atoms()._GTK_APPLICATION_ID)),
          kde_(askProperty(connection_, window, connection.atoms()._KDE_NET_WM_DESKTOP_FILE)),
          wmClass_(askProperty(connection_, window, XCB_ATOM_WM_CLASS)) {}

    /// To be called once.
    RunningApplication take(ProcessId process) {
        const auto gtk = present(takeText(connection_, gtk_));
        const auto kde = present(takeText(connection_, kde_));
        const auto name = present(classOf(takeText(connection_, wmClass_)));
        return {process, gtk ? gtk : kde ? kde : name, name};
    }

private:
    xcb_connection_t* connection_;
    xcb_get_property_cookie_t gtk_;
    xcb_get_property_cookie_t kde_;
    xcb_get_property_cookie_t wmClass_;
};

} // namespace

/// The window is nearly always that of the last time, whose names then come along with the answer
/// to which one it is.
std::optional<RunningApplication> X11Workspace::frontmostApplication() {
    const auto guess = lastFrontmost_;
    NameRequest early(connection_, guess);
    const auto [process, window] = accessibility_.clients().frontmost();
    lastFrontmost_ = window;
    const auto guessed = early.take(process); // also when wrong: no answer may stay behind
    if (window == XCB_NONE)
        return RunningApplication{};
    return window == guess ? guessed : NameRequest(connection_, window).take(process);
}

std::vector<RunningApplication> X11Workspace::runningApplications() {
    std::vector<RunningApplication> applications;
    for (const auto window : accessibility_.windowManager().clients()) {
        const auto process = processOf(connection_, window);
        const auto known = [&](const auto& one) { return one.processIdentifier == process; };
        if (std::ranges::none_of(applications, known))
            applications.push_back(NameRequest(connection_, window).take(process));
    }
    return applications;
}

} // namespace klova::x11
