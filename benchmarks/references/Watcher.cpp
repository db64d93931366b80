// The least that a watcher of all input can do: is told of each key and button, and does nothing.

#include <array>
#include <cstdint>
#include <cstdlib>
#include <xcb/xinput.h>

int main() {
    auto* connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection) != 0)
        return 2;
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    std::free(xcb_input_xi_query_version_reply(
        connection, xcb_input_xi_query_version(connection, 2, 2), nullptr));
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } events{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
             XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE |
                 XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS |
                 XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE};
    xcb_input_xi_select_events(connection, root, 1, &events.head);
    xcb_flush(connection);
    while (auto* event = xcb_wait_for_event(connection))
        std::free(event);
    return 0;
}
