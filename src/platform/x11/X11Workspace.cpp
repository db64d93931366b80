#include "platform/x11/X11Workspace.h"

#include "platform/x11/ApplicationNames.h"
#include "platform/x11/Processes.h"
#include "platform/x11/X11AccessibilityService.h"

#include <algorithm>
#include <utility>

namespace klova::x11 {
namespace {

RunningApplication application(ProcessId process, ApplicationNames names) {
    return {process, std::move(names.bundleIdentifier), std::move(names.className)};
}

} // namespace

std::optional<RunningApplication> X11Workspace::frontmostApplication() {
    auto [process, names] = accessibility_.clients().frontmost();
    return application(process, std::move(names));
}

std::vector<RunningApplication> X11Workspace::runningApplications() {
    std::vector<RunningApplication> applications;
    for (const auto window : accessibility_.windowManager().clients()) {
        const auto process = processOf(connection_, window);
        const auto known = [&](const auto& one) { return one.processIdentifier == process; };
        if (std::ranges::none_of(applications, known))
            applications.push_back(application(process, NamesRequest(connection_, window).take()));
    }
    return applications;
}

} // namespace klova::x11
