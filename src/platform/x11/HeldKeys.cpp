#include "platform/x11/HeldKeys.h"

#include <algorithm>

namespace klova::x11 {

bool HeldKeys::holdsCode(KeyCode code) const {
    return std::any_of(down_.begin(), down_.end(),
                       [code](const auto& entry) { return entry.second == code; });
}

/// The key itself, else the one that it may be.
HeldKeys::Keys::const_iterator HeldKeys::find(PhysicalKey physical) const {
    const auto itself = down_.find(physical);
    if (itself != down_.end() || physical.device == PhysicalKey::kNoKeyboard)
        return itself;
    return std::ranges::find_if(down_, [physical](const auto& entry) {
        const PhysicalKey& other = entry.first;
        return other.keycode == physical.keycode && other.device != PhysicalKey::kNoKeyboard &&
               (physical.device == PhysicalKey::kAnyKeyboard ||
                other.device == PhysicalKey::kAnyKeyboard);
    });
}

std::optional<KeyCode> HeldKeys::press(PhysicalKey physical, KeyCode code) {
    if (const auto known = find(physical); known != down_.end()) {
        if (known->first.device == PhysicalKey::kAnyKeyboard) { // now it is said on which
            const KeyCode before = known->second;
            down_.erase(known);
            down_.emplace(physical, before);
        }
        return std::nullopt;
    }
    const bool wasDown = holdsCode(code);
    down_.emplace(physical, code);
    return wasDown ? std::nullopt : std::optional(code);
}

std::optional<KeyCode> HeldKeys::release(PhysicalKey physical) {
    const auto entry = find(physical);
    if (entry == down_.end())
        return std::nullopt;
    const KeyCode code = entry->second;
    down_.erase(entry);
    return holdsCode(code) ? std::nullopt : std::optional(code);
}

std::vector<KeyCode> HeldKeys::keepOnly(const std::function<bool(std::uint8_t)>& isDown) {
    std::vector<KeyCode> up;
    const auto keys = down_;
    for (const auto& [physical, code] : keys)
        if (physical.device != PhysicalKey::kNoKeyboard && !isDown(physical.keycode))
            if (const auto told = release(physical))
                up.push_back(*told);
    return up;
}

} // namespace klova::x11
