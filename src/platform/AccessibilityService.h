// What Klova asks of the desktop's accessibility service: other applications' windows.
#pragma once

#include "geometry/Frame.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace klova {

using ProcessId = std::int32_t;

/// One element of the accessibility tree: a window, an application, the whole system. Opaque; the
/// platform derives from it. Holding a reference does not keep the element itself alive: its
/// window may close at any time, and every read then fails and every write does nothing.
class AXUIElement {
public:
    virtual ~AXUIElement() = default;
};
using AXUIElementRef = std::shared_ptr<const AXUIElement>;

/// A wrapped point or size. Points are in the coordinates of the screens (Screens.h), y
/// growing downward.
using AXValue = std::variant<Point, Size>;
using AXAttributeValue =
    std::variant<bool, std::string, AXValue, AXUIElementRef, std::vector<AXUIElementRef>>;

/// The answer to a read. A failed read (error other than 0) and a successful one without a value
/// differ.
struct AXCopyResult {
    int error = 0;
    std::optional<AXAttributeValue> value;
};

namespace ax {
inline constexpr std::string_view position = "AXPosition";
inline constexpr std::string_view size = "AXSize";
inline constexpr std::string_view minimized = "AXMinimized";
inline constexpr std::string_view frontmost = "AXFrontmost";
inline constexpr std::string_view main = "AXMain";
inline constexpr std::string_view focusedWindow = "AXFocusedWindow";
inline constexpr std::string_view windows = "AXWindows";
inline constexpr std::string_view role = "AXRole";
inline constexpr std::string_view parent = "AXParent";
inline constexpr std::string_view windowRole = "AXWindow";
} // namespace ax

class AccessibilityService {
public:
    virtual ~AccessibilityService() = default;

    virtual AXUIElementRef AXUIElementCreateSystemWide() = 0;

    /// The application element of a process. Never null; a process without windows simply has
    /// none to show.
    virtual AXUIElementRef AXUIElementCreateApplication(ProcessId process) = 0;

    /// Reads one attribute (a name of namespace `ax`). A read that follows a write answers with
    /// what was written until the desktop has carried it out or refused it. A window element
    /// answers "AXPosition" and "AXSize" from the moment of the lookup that made it.
    virtual AXCopyResult AXUIElementCopyAttributeValue(const AXUIElementRef& element,
                                                       std::string_view attribute) = 0;

    /// Writes one attribute. Fire and forget: never blocks, and a refusal is not reported.
    virtual void AXUIElementSetAttributeValue(const AXUIElementRef& element,
                                              std::string_view attribute,
                                              const AXAttributeValue& value) = 0;

    /// The deepest element at a point (in the same coordinates); null where there is none.
    virtual AXUIElementRef AXUIElementCopyElementAtPosition(const AXUIElementRef& element, float x,
                                                            float y) = 0;

    /// The process that owns the element; absent when it has none or has exited.
    virtual std::optional<ProcessId> AXUIElementGetPid(const AXUIElementRef& element) = 0;

    /// Whether this process may read and move other applications' windows. With `prompt` the
    /// desktop also tells the person what is missing.
    virtual bool AXIsProcessTrustedWithOptions(bool prompt) = 0;
};

} // namespace klova
