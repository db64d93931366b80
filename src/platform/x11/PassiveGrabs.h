// The grabs that lie in wait: they freeze a key or click at the very moment it would be armed.
#pragma once

#include "platform/x11/KeyMap.h"

#include <cstdint>
#include <span>
#include <vector>

namespace klova::x11 {

class Connection;

/// A key or button of the root window, with each modifier state in which it is taken.
struct PassiveGrab {
    enum class Kind : std::uint8_t { button = 0, key = 1 }; // XInput2's numbers
    Kind kind = Kind::key;
    std::uint32_t detail = 0; ///< keycode (0: any) or logical button
    std::vector<std::uint32_t> modifierStates;

    bool operator==(const PassiveGrab&) const = default;
};

/// The grabs for a set of activation keys: each of them while all others are held, and any key
/// and the two gesture buttons while all are. Locks and further modifiers make no difference.
/// None where a key is no modifier in this map: what it arms cannot be foreseen by the server.
std::vector<PassiveGrab> planPassiveGrabs(const KeyMap& map,
                                          std::span<const KeyCode> activationKeys);

/// Installed grabs; gone when this is.
class PassiveGrabs {
public:
    PassiveGrabs(Connection& connection, std::vector<PassiveGrab> grabs);
    ~PassiveGrabs();
    PassiveGrabs(const PassiveGrabs&) = delete;
    PassiveGrabs& operator=(const PassiveGrabs&) = delete;

    const std::vector<PassiveGrab>& grabs() const { return grabs_; }

    /// Makes these the newest of all grabs, which is the one that counts among equals. There is
    /// no moment without them.
    void renew();

    /// How many combinations another program already holds.
    std::size_t refused() const { return refused_; }

private:
    Connection& connection_;
    std::vector<PassiveGrab> grabs_;
    std::size_t refused_ = 0;
};

} // namespace klova::x11
