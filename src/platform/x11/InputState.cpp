#include "platform/x11/InputState.h"

namespace klova::x11 {
namespace {

constexpr std::uint64_t kCapsLockFlag = 1U << 16;

constexpr std::uint64_t flagOf(KeyCode code) { return std::uint64_t{1} << (20 + code - 54); }

} // namespace

Event InputState::event(EventType type) const {
    Event event;
    event.type = type;
    if (capsLocked)
        event.modifierFlags |= kCapsLockFlag;
    for (const auto& [physical, code] : held.keys())
        event.modifierFlags |= flagOf(code);
    return event;
}

} // namespace klova::x11
