// Which modifier keys the rest of Klova believes to be down.
#pragma once

#include "platform/KeyCodes.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <tuple>
#include <vector>

namespace klova::x11 {

/// A key of one particular keyboard; of none where it sticks (latched, locked) without a hand on
/// it; of any where nobody said which.
struct PhysicalKey {
    static constexpr std::uint16_t kNoKeyboard = 0;
    static constexpr std::uint16_t kAnyKeyboard = 0xFFFF;
    std::uint16_t device = kNoKeyboard;
    std::uint8_t keycode = 0;
    bool operator<(const PhysicalKey& other) const {
        return std::tie(device, keycode) < std::tie(other.device, other.keycode);
    }
};

/// Turns several overlapping streams of presses and releases into exact transitions: the same
/// press seen twice is told once, a release is told exactly when its press was, two keys of one
/// code count as one until both are up, and a key keeps the code it had when it went down.
class HeldKeys {
public:
    /// The code that went down with this press, if one did.
    std::optional<KeyCode> press(PhysicalKey physical, KeyCode code);

    /// The code that went up with this release, if one did.
    std::optional<KeyCode> release(PhysicalKey physical);

    /// Drops every key that neither sticks nor is really down; returns the codes that went up by
    /// that.
    std::vector<KeyCode> keepOnly(const std::function<bool(std::uint8_t keycode)>& isDown);

    bool holds(PhysicalKey physical) const { return find(physical) != down_.end(); }
    bool holdsCode(KeyCode code) const;
    bool empty() const { return down_.empty(); }
    const std::map<PhysicalKey, KeyCode>& keys() const { return down_; }

private:
    using Keys = std::map<PhysicalKey, KeyCode>;

    Keys::const_iterator find(PhysicalKey physical) const;

    Keys down_;
};

} // namespace klova::x11
