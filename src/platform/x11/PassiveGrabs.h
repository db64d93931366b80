// The grabs that lie in wait: they freeze a key or click at the very moment it would be armed.
#pragma once

#include "platform/x11/KeyMap.h"

#include <cstdint>
#include <span>
#include <vector>
#include <xcb/xinput.h>

namespace klova::x11 {

class Connection;

/// A key or button of the root window, taken in each state that contains `modifiers`: locks and
/// further modifiers make no difference.
struct PassiveGrab {
    enum class Kind : std::uint8_t { button = 0, key = 1 }; // XInput2's numbers
    Kind kind = Kind::key;
    std::uint32_t detail = 0;    ///< keycode (0: any) or logical button
    std::uint32_t modifiers = 0; ///< a mask of real ones

    bool operator==(const PassiveGrab&) const = default;
};

/// The grabs for a set of activation keys: each of them while all others are held, and any key
/// and the two gesture buttons while all are. None where a key is no modifier in this map: what it
/// arms cannot be foreseen by the server.
std::vector<PassiveGrab> planPassiveGrabs(const KeyMap& map,
                                          std::span<const KeyCode> activationKeys);

/// Installed grabs; gone when this is.
class PassiveGrabs {
public:
    explicit PassiveGrabs(Connection& connection) : connection_(connection) {}
    ~PassiveGrabs();
    PassiveGrabs(const PassiveGrabs&) = delete;
    PassiveGrabs& operator=(const PassiveGrabs&) = delete;

    /// Has these installed and no others; does nothing where they are already.
    void place(std::vector<PassiveGrab> grabs);

    /// Makes the installed ones the newest of all grabs, which is the one that counts among equals.
    void renew();

    /// How many of their combinations another program already holds.
    std::size_t refused() const { return refused_; }

private:
    using Cookie = xcb_input_xi_passive_grab_device_cookie_t;

    void remove();
    Cookie request(const PassiveGrab& grab, std::span<const std::uint32_t> states);
    void release(const PassiveGrab& grab, std::span<const std::uint32_t> states);
    std::size_t refusals(Cookie cookie);

    Connection& connection_;
    std::vector<PassiveGrab> grabs_;
    std::size_t refused_ = 0;
};

} // namespace klova::x11
