// The least that a drag can do: holds the left button with Super and Ctrl, and sends one request
// for each motion of the pointer while it is down.

#include "Request.h"

#include <cstdint>
#include <cstdlib>
#include <xcb/xinput.h>

namespace {

void grab(xcb_connection_t* connection, xcb_window_t root, std::uint32_t modifiers) {
    const std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_BUTTON_PRESS |
                               XCB_INPUT_XI_EVENT_MASK_BUTTON_RELEASE |
                               XCB_INPUT_XI_EVENT_MASK_MOTION;
    auto* reply = xcb_input_xi_passive_grab_device_reply(
        connection,
        xcb_input_xi_passive_grab_device(connection, XCB_CURRENT_TIME, root, XCB_NONE, 1, 2, 1, 1,
                                         XCB_INPUT_GRAB_TYPE_BUTTON, XCB_INPUT_GRAB_MODE_22_ASYNC,
                                         XCB_INPUT_GRAB_MODE_22_ASYNC,
                                         XCB_INPUT_GRAB_OWNER_NO_OWNER, &mask, &modifiers),
        nullptr);
    if (reply == nullptr || reply->num_modifiers != 0)
        std::exit(1);
    std::free(reply);
}

/// Follows the pointer with a window that is at (x, y) at first.
class Follower {
public:
    Follower(std::uint32_t x, std::uint32_t y)
        : x_(static_cast<std::int32_t>(x)), y_(static_cast<std::int32_t>(y)) {}

    void begin(const xcb_input_motion_event_t& at) {
        offsetX_ = x_ - (at.root_x >> 16);
        offsetY_ = y_ - (at.root_y >> 16);
    }
    void follow(const xcb_input_motion_event_t& to, xcb_client_message_event_t& message) {
        x_ = offsetX_ + (to.root_x >> 16);
        y_ = offsetY_ + (to.root_y >> 16);
        message.data.data32[1] = static_cast<std::uint32_t>(x_);
        message.data.data32[2] = static_cast<std::uint32_t>(y_);
    }

private:
    std::int32_t x_, y_;
    std::int32_t offsetX_ = 0, offsetY_ = 0;
};

} // namespace

/// klova-bench-drag <window> <modifiers> <x> <y> <width> <height>
int main(int argc, char** argv) {
    auto* connection = xcb_connect(nullptr, nullptr);
    if (argc != 7 || xcb_connection_has_error(connection) != 0)
        return 2;
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    std::free(xcb_input_xi_query_version_reply(
        connection, xcb_input_xi_query_version(connection, 2, 2), nullptr));
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = number(argv[1]);
    message.type = atom(connection, "_NET_MOVERESIZE_WINDOW");
    constexpr std::uint32_t northWest = 1, allFour = 0xF00, fromPager = 2 << 12;
    message.data.data32[0] = northWest | allFour | fromPager;
    message.data.data32[3] = number(argv[5]);
    message.data.data32[4] = number(argv[6]);
    Follower follower(number(argv[3]), number(argv[4]));
    grab(connection, root, number(argv[2]));
    while (auto* event = xcb_wait_for_event(connection)) {
        // Buttons and motion have one layout.
        const auto& pointer = *reinterpret_cast<xcb_input_motion_event_t*>(event);
        if (pointer.event_type == XCB_INPUT_BUTTON_PRESS) {
            follower.begin(pointer);
        } else if (pointer.event_type == XCB_INPUT_MOTION) {
            follower.follow(pointer, message);
            xcb_send_event(connection, 0, root,
                           XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT |
                               XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                           reinterpret_cast<const char*>(&message));
            xcb_flush(connection);
        }
        std::free(event);
    }
    return 0;
}
