// Which button a button counts as, for left-handed people above all.
#pragma once

#include "platform/x11/Connection.h"

#include <cstdint>
#include <map>
#include <optional>
#include <vector>
#include <xcb/xinput.h>

namespace klova::x11 {

/// Asks for a map once and again only when the server says that it has changed.
class ButtonMaps {
public:
    explicit ButtonMaps(Connection& connection) : connection_(connection) {}

    /// The server applies the device's own map first, then that of the pointer it moves.
    std::uint32_t logicalButton(xcb_input_device_id_t device, std::uint32_t button);

    /// To be called with every event that is not an XInput2 one.
    void handle(const xcb_generic_event_t& event);

    /// To be called when devices come or go: ids are given anew.
    void forgetDevices() { ofDevice_.clear(); }

private:
    using Map = std::vector<std::uint8_t>;
    void readDevice(xcb_input_device_id_t device);
    void readPointer();

    Connection& connection_;
    std::map<xcb_input_device_id_t, Map> ofDevice_; ///< those that are known
    std::optional<Map> ofPointer_;
};

} // namespace klova::x11
