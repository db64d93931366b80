#include "platform/x11/ButtonMaps.h"

namespace klova::x11 {
namespace {

std::uint32_t through(const std::vector<std::uint8_t>& map, std::uint32_t button) {
    return button >= 1 && button <= map.size() ? map[button - 1] : button;
}

/// XInput2 has no such event. An error means a device that is gone already.
void selectMapChanges(Connection& connection, xcb_input_device_id_t device) {
    const xcb_input_event_class_t change =
        static_cast<std::uint32_t>(device) << 8U |
        static_cast<std::uint32_t>(connection.xinputFirstEvent() + XCB_INPUT_DEVICE_MAPPING_NOTIFY);
    const auto cookie =
        xcb_input_select_extension_event_checked(connection.get(), connection.root(), 1, &change);
    xcb_discard_reply(connection.get(), cookie.sequence);
}

} // namespace

std::uint32_t ButtonMaps::logicalButton(xcb_input_device_id_t device, std::uint32_t button) {
    if (!ofDevice_.contains(device))
        readDevice(device);
    if (!ofPointer_)
        readPointer();
    const auto own = ofDevice_.find(device);
    const auto first = own != ofDevice_.end() ? through(own->second, button) : button;
    return ofPointer_ ? through(*ofPointer_, first) : first;
}

void ButtonMaps::readDevice(xcb_input_device_id_t device) {
    selectMapChanges(connection_, device);
    const auto reply = own(xcb_input_get_device_button_mapping_reply(
        connection_.get(),
        xcb_input_get_device_button_mapping(connection_.get(), static_cast<std::uint8_t>(device)),
        nullptr));
    if (!reply)
        return;
    const auto* first = xcb_input_get_device_button_mapping_map(reply.get());
    ofDevice_.insert_or_assign(device, Map(first, first + reply->map_size));
}

void ButtonMaps::readPointer() {
    const auto reply = own(xcb_get_pointer_mapping_reply(
        connection_.get(), xcb_get_pointer_mapping(connection_.get()), nullptr));
    if (!reply)
        return;
    const auto* first = xcb_get_pointer_mapping_map(reply.get());
    ofPointer_.emplace(first, first + reply->map_len);
}

void ButtonMaps::handle(const xcb_generic_event_t& event) {
    const int type = event.response_type & 0x7F;
    if (type == XCB_MAPPING_NOTIFY) {
        if (reinterpret_cast<const xcb_mapping_notify_event_t&>(event).request ==
            XCB_MAPPING_POINTER)
            ofPointer_.reset();
    } else if (type == connection_.xinputFirstEvent() + XCB_INPUT_DEVICE_MAPPING_NOTIFY) {
        ofDevice_.erase(
            reinterpret_cast<const xcb_input_device_mapping_notify_event_t&>(event).device_id);
    }
}

} // namespace klova::x11
