#include "accessibility/WindowLookup.h"

#include "platform/Diagnostics.h"
#include "platform/FatalError.h"

#include <algorithm>
#include <utility>

namespace klova {
namespace {

RunningApplication requiredFrontmostApplication(Desktop& desktop) {
    auto application = desktop.workspace.frontmostApplication();
    if (!application)
        fatalError("the desktop has no frontmost application");
    return *std::move(application);
}

bool readsAsFocused(AccessibilityService& service, const AXUIElementRef& window) {
    const auto result = service.AXUIElementCopyAttributeValue(window, ax::focusedWindow);
    if (result.error != 0) {
        diagnosticLine("no success");
        return false;
    }
    if (!result.value)
        fatalError("a window's AXFocusedWindow has no value");
    return *result.value == AXAttributeValue(true);
}

} // namespace

AXUIElementRef focusedWindowOfFrontmostApplication(Desktop& desktop) {
    auto& service = desktop.accessibility;
    const auto process = requiredFrontmostApplication(desktop).processIdentifier;
    const auto result = service.AXUIElementCopyAttributeValue(
        service.AXUIElementCreateApplication(process), ax::focusedWindow);
    if (result.error != 0 || !result.value)
        return nullptr;
    const auto* window = std::get_if<AXUIElementRef>(&*result.value);
    return window != nullptr ? *window : nullptr;
}

std::vector<AXUIElementRef> windowsOfApplication(Desktop& desktop, ProcessId process) {
    auto& service = desktop.accessibility;
    auto result = service.AXUIElementCopyAttributeValue(
        service.AXUIElementCreateApplication(process), ax::windows);
    auto* windows = result.error == 0 && result.value
                        ? std::get_if<std::vector<AXUIElementRef>>(&*result.value)
                        : nullptr;
    if (windows == nullptr)
        fatalError("an application's AXWindows cannot be read");
    return std::move(*windows);
}

std::vector<AXUIElementRef> windowsOfRunningApplication(Desktop& desktop,
                                                        std::string_view bundleIdentifier) {
    const auto running = desktop.workspace.runningApplications();
    const auto first = std::ranges::find_if(running, [&](const RunningApplication& application) {
        return application.bundleIdentifier == bundleIdentifier;
    });
    if (first == running.end())
        return {};
    return windowsOfApplication(desktop, first->processIdentifier);
}

std::vector<AXUIElementRef> windowsOfFrontmostApplication(Desktop& desktop) {
    const auto application = requiredFrontmostApplication(desktop);
    auto windows = windowsOfApplication(desktop, application.processIdentifier);
    if (application.bundleIdentifier)
        windows = windowsOfRunningApplication(desktop, *application.bundleIdentifier);
    return windows;
}

AXUIElementRef focusedWindowAmongFrontmostWindows(Desktop& desktop) {
    for (const auto& window : windowsOfFrontmostApplication(desktop))
        if (readsAsFocused(desktop.accessibility, window))
            return window;
    return nullptr;
}

std::optional<AccessibilityElement> windowUnderPoint(Desktop& desktop, const Point& point) {
    const auto element =
        AccessibilityElement::systemWideElement(desktop.accessibility).elementAtPosition(point);
    return element ? element->enclosingWindow() : std::nullopt;
}

} // namespace klova
