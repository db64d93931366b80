// One accessibility element with typed reads that may fail and writes that never report.
#pragma once

#include "geometry/Frame.h"
#include "platform/AccessibilityService.h"

#include <optional>
#include <string>
#include <string_view>

namespace klova {

/// A value that shares its element; copies stand for the same one. Nothing is cached: each
/// operation asks the service. Points and sizes are in points, origin at the top left of the
/// desktop, y growing downward.
class AccessibilityElement {
public:
    /// `service` is borrowed and outlives this; `element` must not be null.
    AccessibilityElement(AccessibilityService& service, AXUIElementRef element);

    /// The element of the whole system: made at the first call, the same ever after.
    static AccessibilityElement systemWideElement(AccessibilityService& service);

    /// Forgets the shared element, for a test that brings another service.
    static void resetSystemWideElement();

    const AXUIElementRef& elementRef() const { return elementRef_; }

    /// Absent where the read fails or gives no wrapped value. A wrapped size under "AXPosition"
    /// reads as a point, and the other way round.
    std::optional<Point> position() const;
    std::optional<Size> size() const;

    /// Writes nothing where the value is absent.
    void setPosition(const std::optional<Point>& position) const;
    void setSize(const std::optional<Size>& size) const;

    std::optional<std::string> role() const;
    std::optional<AccessibilityElement> parent() const;

    /// The nearest element with the role "AXWindow", this one included; absent where the way up
    /// ends before.
    std::optional<AccessibilityElement> enclosingWindow() const;

    /// The deepest element at a point, rounded to 32-bit floats; absent where there is none.
    std::optional<AccessibilityElement> elementAtPosition(const Point& point) const;

    /// The process that owns the element; absent once it has exited.
    std::optional<ProcessId> pid() const;

    /// Makes the window its application's main window unless it reads as that already.
    void becomeMain() const;

    void minimize() const;
    void unminimize() const;

    /// Gives up the front and the main state, then minimizes.
    void resignAndMinimize() const;

private:
    std::optional<AXAttributeValue> read(std::string_view attribute) const;
    void write(std::string_view attribute, const AXAttributeValue& value) const;

    AccessibilityService* service_;
    AXUIElementRef elementRef_;
};

} // namespace klova
