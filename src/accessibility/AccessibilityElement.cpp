#include "accessibility/AccessibilityElement.h"

#include <mutex>
#include <utility>

namespace klova {
namespace {

std::mutex systemWideGuard;
AXUIElementRef systemWide;

/// Both kinds of wrapped value as the two numbers they hold.
std::optional<std::pair<double, double>> pairOf(const std::optional<AXAttributeValue>& value) {
    const auto* wrapped = value ? std::get_if<AXValue>(&*value) : nullptr;
    if (wrapped == nullptr)
        return std::nullopt;
    if (const auto* point = std::get_if<Point>(wrapped))
        return std::pair(point->x, point->y);
    const auto& size = std::get<Size>(*wrapped);
    return std::pair(size.width, size.height);
}

} // namespace

AccessibilityElement::AccessibilityElement(AccessibilityService& service, AXUIElementRef element)
    : service_(&service), elementRef_(std::move(element)) {}

AccessibilityElement AccessibilityElement::systemWideElement(AccessibilityService& service) {
    const std::lock_guard lock(systemWideGuard);
    if (systemWide == nullptr)
        systemWide = service.AXUIElementCreateSystemWide();
    return {service, systemWide};
}

void AccessibilityElement::resetSystemWideElement() {
    const std::lock_guard lock(systemWideGuard);
    systemWide.reset();
}

std::optional<AXAttributeValue> AccessibilityElement::read(std::string_view attribute) const {
    auto result = service_->AXUIElementCopyAttributeValue(elementRef_, attribute);
    return result.error == 0 ? std::move(result.value) : std::nullopt;
}

void AccessibilityElement::write(std::string_view attribute, const AXAttributeValue& value) const {
    service_->AXUIElementSetAttributeValue(elementRef_, attribute, value);
}

std::optional<Point> AccessibilityElement::position() const {
    const auto numbers = pairOf(read(ax::position));
    return numbers ? std::optional(Point{numbers->first, numbers->second}) : std::nullopt;
}

std::optional<Size> AccessibilityElement::size() const {
    const auto numbers = pairOf(read(ax::size));
    return numbers ? std::optional(Size{numbers->first, numbers->second}) : std::nullopt;
}

void AccessibilityElement::setPosition(const std::optional<Point>& position) const {
    if (position)
        write(ax::position, AXValue(*position));
}

void AccessibilityElement::setSize(const std::optional<Size>& size) const {
    if (size)
        write(ax::size, AXValue(*size));
}

std::optional<std::string> AccessibilityElement::role() const {
    const auto value = read(ax::role);
    const auto* text = value ? std::get_if<std::string>(&*value) : nullptr;
    return text != nullptr ? std::optional(*text) : std::nullopt;
}

std::optional<AccessibilityElement> AccessibilityElement::parent() const {
    const auto value = read(ax::parent);
    const auto* element = value ? std::get_if<AXUIElementRef>(&*value) : nullptr;
    if (element == nullptr || *element == nullptr)
        return std::nullopt;
    return AccessibilityElement(*service_, *element);
}

std::optional<AccessibilityElement> AccessibilityElement::enclosingWindow() const {
    std::optional<AccessibilityElement> current = *this;
    while (current && current->role() != ax::windowRole)
        current = current->parent();
    return current;
}

std::optional<AccessibilityElement>
AccessibilityElement::elementAtPosition(const Point& point) const {
    auto element = service_->AXUIElementCopyElementAtPosition(
        elementRef_, static_cast<float>(point.x), static_cast<float>(point.y));
    if (element == nullptr)
        return std::nullopt;
    return AccessibilityElement(*service_, std::move(element));
}

std::optional<ProcessId> AccessibilityElement::pid() const {
    return service_->AXUIElementGetPid(elementRef_);
}

void AccessibilityElement::becomeMain() const {
    if (read(ax::main) != AXAttributeValue(true))
        write(ax::main, true);
}

void AccessibilityElement::minimize() const { write(ax::minimized, true); }

void AccessibilityElement::unminimize() const { write(ax::minimized, false); }

void AccessibilityElement::resignAndMinimize() const {
    write(ax::frontmost, false);
    write(ax::main, false);
    write(ax::minimized, true);
}

} // namespace klova
