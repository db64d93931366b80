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

} // namespace

RunningApplication X11Workspace::describe(ProcessId process, xcb_window_t window) {
    auto* connection = connection_.get();
    const auto& atoms = connection_.atoms();
    const auto gtk = askProperty(connection, window, atoms._GTK_APPLICATION_ID);
    const auto kde = askProperty(connection, window, atoms._KDE_NET_WM_DESKTOP_FILE);
    const auto wmClass = askProperty(connection, window, XCB_ATOM_WM_CLASS);
    const auto gtkId = present(takeText(connection, gtk));
    const auto kdeId = present(takeText(connection, kde));
    const auto name = present(classOf(takeText(connection, wmClass)));
    return {process, gtkId ? gtkId : kdeId ? kdeId : name, name};
}

std::optional<RunningApplication> X11Workspace::frontmostApplication() {
    const auto [process, window] = accessibility_.clients().frontmost();
    if (window == XCB_NONE)
        return RunningApplication{};
    return describe(process, window);
}

std::vector<RunningApplication> X11Workspace::runningApplications() {
    std::vector<RunningApplication> applications;
    for (const auto window : accessibility_.windowManager().clients()) {
        const auto process = processOf(connection_, window);
        const auto known = [&](const auto& one) { return one.processIdentifier == process; };
        if (std::ranges::none_of(applications, known))
            applications.push_back(describe(process, window));
    }
    return applications;
}

} // namespace klova::x11
