#include "platform/x11/HeldKeys.h"

#include <algorithm>

namespace klova::x11 {

bool HeldKeys::holdsCode(KeyCode code) const {
    return std::any_of(down_.begin(), down_.end(),
                       [code](const auto& entry) { return entry.second == code; });
}

std::optional<KeyCode> HeldKeys::press(PhysicalKey physical, KeyCode code) {
    const bool wasDown = holdsCode(code);
    if (!down_.emplace(physical, code).second || wasDown)
        return std::nullopt;
    return code;
}

std::optional<KeyCode> HeldKeys::release(PhysicalKey physical) {
    const auto entry = down_.find(physical);
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
