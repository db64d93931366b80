// Input events as Klova sees them.
#pragma once

#include "platform/KeyCodes.h"

#include <cstdint>

namespace klova {

enum class EventType : std::uint32_t {
    null = 0,
    leftMouseDown = 1,
    leftMouseUp = 2,
    rightMouseDown = 3,
    rightMouseUp = 4,
    mouseMoved = 5,
    leftMouseDragged = 6,
    keyDown = 10,
    keyUp = 11,
    flagsChanged = 12,
    otherMouseDown = 25,
    tapDisabled = 0xFFFFFFFE,
};

/// The bit that stands for `type` in an event mask; none for types beyond the mask.
constexpr std::uint64_t maskOf(EventType type) {
    const auto bit = static_cast<std::uint32_t>(type);
    return bit < 64 ? std::uint64_t{1} << bit : 0;
}

enum class EventField { clickState = 1, keyCode = 9 };

/// `modifierFlags` of an event after which none of the nine modifier keys is down.
inline constexpr std::uint64_t kNoModifierDown = 256;

struct Event {
    EventType type = EventType::null;
    std::int64_t keyCode = kNoKeyCode;
    std::int64_t clickState = 0;
    std::uint64_t modifierFlags = kNoModifierDown; ///< the state after this event
};

constexpr std::int64_t CGEventGetIntegerValueField(const Event& event, EventField field) {
    return field == EventField::clickState ? event.clickState : event.keyCode;
}

} // namespace klova
