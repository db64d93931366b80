// The least that a key can do: holds the left and the right arrow with Super and Ctrl, and sends
// one request, made up beforehand, at each press.

#include "Request.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <xcb/xinput.h>

namespace {

using Message = xcb_client_message_event_t;

struct Move {
    std::uint32_t key = 0;
    Message message{};
};

void grab(xcb_connection_t* connection, xcb_window_t root, std::uint32_t key,
          std::uint32_t modifiers) {
    const std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS;
    auto* reply = xcb_input_xi_passive_grab_device_reply(
        connection,
        xcb_input_xi_passive_grab_device(connection, XCB_CURRENT_TIME, root, XCB_NONE, key, 3, 1, 1,
                                         XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_ASYNC,
                                         XCB_INPUT_GRAB_MODE_22_ASYNC,
                                         XCB_INPUT_GRAB_OWNER_NO_OWNER, &mask, &modifiers),
        nullptr);
    if (reply == nullptr || reply->num_modifiers != 0)
        std::exit(1);
    std::free(reply);
}

Move moveFrom(xcb_connection_t* connection, const char* const* words) {
    Move move;
    move.key = number(words[0]);
    move.message.response_type = XCB_CLIENT_MESSAGE;
    move.message.format = 32;
    move.message.type = atom(connection, "_NET_MOVERESIZE_WINDOW");
    constexpr std::uint32_t northWest = 1, allFour = 0xF00, fromPager = 2 << 12;
    move.message.data.data32[0] = northWest | allFour | fromPager;
    for (std::size_t i = 1; i < 5; ++i)
        move.message.data.data32[i] = number(words[i]);
    return move;
}

} // namespace

/// klova-bench-key <window> <modifiers> {<key> <x> <y> <width> <height>} twice
int main(int argc, char** argv) {
    auto* connection = xcb_connect(nullptr, nullptr);
    if (argc != 13 || xcb_connection_has_error(connection) != 0)
        return 2;
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    std::free(xcb_input_xi_query_version_reply(
        connection, xcb_input_xi_query_version(connection, 2, 2), nullptr));
    std::array moves{moveFrom(connection, argv + 3), moveFrom(connection, argv + 8)};
    for (auto& move : moves) {
        move.message.window = number(argv[1]);
        grab(connection, root, move.key, number(argv[2]));
    }
    while (auto* event = xcb_wait_for_event(connection)) {
        if ((event->response_type & 0x7F) == XCB_GE_GENERIC) {
            const auto key = reinterpret_cast<xcb_input_key_press_event_t*>(event)->detail;
            xcb_send_event(
                connection, 0, root,
                XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                reinterpret_cast<const char*>(&moves[key == moves[0].key ? 0 : 1].message));
            xcb_flush(connection);
        }
        std::free(event);
    }
    return 0;
}
