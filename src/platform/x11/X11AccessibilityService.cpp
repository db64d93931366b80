#include "platform/x11/X11AccessibilityService.h"

#include "platform/x11/Trust.h"
#include "platform/x11/X11Screens.h"

#include <cmath>
#include <utility>

namespace klova::x11 {
namespace {

constexpr int kInvalidElement = -25202;
constexpr int kAttributeUnsupported = -25205;
constexpr int kNoValue = -25212;

AXCopyResult failure(int error) { return {error, std::nullopt}; }
AXCopyResult answer(AXAttributeValue value) { return {0, std::move(value)}; }

/// In root pixels: what was written to the window, until it shows in what is seen.
Frame frameOf(const TrackedWindow& window, const WindowSnapshot& seen) {
    return window.placement.written().value_or(frameOf(seen.frame()));
}

} // namespace

X11AccessibilityService::X11AccessibilityService(Connection& connection, WindowManager& manager,
                                                 X11Screens& screens)
    : connection_(connection), manager_(manager), screens_(screens),
      tracked_(connection, manager_, screens), clients_(connection, manager_, tracked_) {}

AXUIElementRef X11AccessibilityService::AXUIElementCreateSystemWide() {
    return std::make_shared<SystemElement>();
}

AXUIElementRef X11AccessibilityService::AXUIElementCreateApplication(ProcessId process) {
    return std::make_shared<ApplicationElement>(process);
}

AXCopyResult X11AccessibilityService::AXUIElementCopyAttributeValue(const AXUIElementRef& element,
                                                                    std::string_view attribute) {
    if (const auto* application = as<ApplicationElement>(element))
        return read(*application, attribute);
    if (const auto* window = as<WindowElement>(element))
        return read(*window, attribute);
    if (const auto* part = as<PartElement>(element))
        return read(*part, attribute);
    return failure(kAttributeUnsupported);
}

AXCopyResult X11AccessibilityService::read(const ApplicationElement& application,
                                           std::string_view attribute) {
    if (attribute == ax::focusedWindow) {
        auto found = clients_.focused();
        if (!found || found->window->process() != application.process)
            return failure(kNoValue);
        return answer(elementOf(*std::move(found)));
    }
    if (attribute == ax::windows) {
        std::vector<AXUIElementRef> windows;
        for (auto& found : clients_.ofProcess(application.process))
            windows.push_back(elementOf(std::move(found)));
        return answer(std::move(windows));
    }
    if (attribute == ax::frontmost)
        return answer(clients_.frontmost().process == application.process);
    return failure(kAttributeUnsupported);
}

/// Position and size are answered even of a window that has closed since it was found, so that
/// whoever has found a window can read both.
AXCopyResult X11AccessibilityService::read(const WindowElement& element,
                                           std::string_view attribute) {
    if (attribute == ax::position)
        return answer(AXValue(frameOfWindow(element).origin));
    if (attribute == ax::size)
        return answer(AXValue(frameOfWindow(element).size));
    const auto& window = *element.found.window;
    if (window.gone())
        return failure(kInvalidElement);
    if (attribute == ax::main || attribute == ax::focusedWindow)
        return answer(isActive(element));
    if (attribute == ax::minimized)
        return answer(isMinimized(element));
    if (attribute == ax::role)
        return answer(std::string(ax::windowRole));
    if (attribute == ax::parent)
        return answer(AXUIElementCreateApplication(window.process()));
    return failure(kAttributeUnsupported);
}

AXCopyResult X11AccessibilityService::read(const PartElement& part, std::string_view attribute) {
    if (attribute == ax::role)
        return answer(std::string("AXUnknown"));
    if (attribute != ax::parent)
        return failure(kAttributeUnsupported);
    const auto enclosing = clients_.enclosing(part.window);
    auto element = enclosing == XCB_NONE ? nullptr : elementFor(enclosing);
    return element ? answer(std::move(element)) : failure(kNoValue);
}

AXUIElementRef X11AccessibilityService::elementOf(FoundWindow found) const {
    const Point shift = screens_.monitorOf(frameOf(*found.window, found.snapshot)).shift;
    return std::make_shared<WindowElement>(std::move(found), moment_, shift);
}

/// Null for a client that is gone.
AXUIElementRef X11AccessibilityService::elementFor(xcb_window_t window) {
    if (!clients_.isClient(window))
        return std::make_shared<PartElement>(window);
    auto found = clients_.find(window);
    return found ? elementOf(*std::move(found)) : nullptr;
}

AXUIElementRef X11AccessibilityService::AXUIElementCopyElementAtPosition(const AXUIElementRef&,
                                                                         float x, float y) {
    const Point place = screens_.inRoot({x, y});
    const auto window = clients_.deepestAt(static_cast<int>(std::floor(place.x)),
                                           static_cast<int>(std::floor(place.y)));
    return window == XCB_NONE ? nullptr : elementFor(window);
}

std::optional<ProcessId> X11AccessibilityService::AXUIElementGetPid(const AXUIElementRef& element) {
    if (const auto* application = as<ApplicationElement>(element))
        return application->process;
    if (const auto* window = as<WindowElement>(element))
        return window->found.window->gone() ? std::nullopt
                                            : std::optional(window->found.window->process());
    if (const auto* part = as<PartElement>(element))
        return processOf(connection_, part->window);
    return std::nullopt;
}

bool X11AccessibilityService::AXIsProcessTrustedWithOptions(bool prompt) {
    const auto lack = lackOfTrust(connection_);
    if (lack && prompt && trustPrompt_ != nullptr)
        trustPrompt_->show(*lack);
    return !lack;
}

/// The window as it is now: the snapshot, where it is of this very dispatch. Absent when gone.
std::optional<WindowSnapshot> X11AccessibilityService::present(const WindowElement& element) {
    if (element.found.window->gone())
        return std::nullopt;
    if (element.moment == moment_)
        return element.found.snapshot;
    return readSnapshot(connection_, manager_, element.found.window->id());
}

Frame X11AccessibilityService::frameOfWindow(const WindowElement& element) {
    const auto seen = present(element).value_or(element.found.snapshot);
    return moved(frameOf(*element.found.window, seen), element.shift);
}

bool X11AccessibilityService::isActive(const WindowElement& element) {
    const auto& window = *element.found.window;
    if (window.minimizing.wanted() == true)
        return false;
    if (element.moment == moment_)
        return element.found.active;
    return clients_.active() == window.id();
}

bool X11AccessibilityService::isMinimized(const WindowElement& element) {
    if (const auto wanted = element.found.window->minimizing.wanted())
        return *wanted;
    const auto current = present(element);
    return current && current->minimized();
}

void X11AccessibilityService::AXUIElementSetAttributeValue(const AXUIElementRef& element,
                                                           std::string_view attribute,
                                                           const AXAttributeValue& value) {
    const auto* target = as<WindowElement>(element);
    if (target == nullptr || target->found.window->gone())
        return;
    auto& window = *target->found.window;
    const auto* flag = std::get_if<bool>(&value);
    if (attribute == ax::minimized && flag != nullptr)
        setMinimized(*target, *flag);
    else if (attribute == ax::main && flag != nullptr && *flag)
        window.minimizing.focus(eventTime_());
    const auto* geometry = std::get_if<AXValue>(&value);
    const auto* point = geometry != nullptr ? std::get_if<Point>(geometry) : nullptr;
    const auto* size = geometry != nullptr ? std::get_if<Size>(geometry) : nullptr;
    if (point == nullptr && size == nullptr)
        return;
    const auto current = present(*target);
    if (!current)
        return;
    if (attribute == ax::position && point != nullptr)
        window.placement.writePosition({point->x - target->shift.x, point->y - target->shift.y},
                                       *current);
    else if (attribute == ax::size && size != nullptr)
        window.placement.writeSize(*size, *current);
}

void X11AccessibilityService::setMinimized(const WindowElement& element, bool minimized) {
    auto& minimizing = element.found.window->minimizing;
    const auto now = Clock::now();
    if (minimized)
        minimizing.minimize(now);
    else if (const auto current = present(element))
        minimizing.restore(*current, eventTime_(), now);
    element.found.window->listen();
}

void X11AccessibilityService::beginMoment() {
    ++moment_;
    clients_.forgetSighting();
}

void X11AccessibilityService::handle(const xcb_generic_event_t& event) {
    beginMoment();
    clients_.handle(event);
    tracked_.handle(event);
}

void X11AccessibilityService::flushWrites() {
    beginMoment();
    tracked_.flush(Clock::now());
    if (!clients_.following())
        tracked_.forgetIdle();
    connection_.flush();
}

void X11AccessibilityService::onDeadline(Clock::time_point now) {
    beginMoment();
    tracked_.onDeadline(now);
    clients_.forget(); // there are managers that announce a move before it happens
    connection_.flush();
}

} // namespace klova::x11
