// A program with a window that takes its time over each ConfigureNotify.

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <thread>
#include <unistd.h>
#include <xcb/xcb.h>

namespace {

constexpr std::uint16_t kWidth = 240, kHeight = 160;

xcb_window_t makeWindow(xcb_connection_t* connection, const xcb_screen_t& screen) {
    const auto window = xcb_generate_id(connection);
    const std::uint32_t values[] = {screen.white_pixel, XCB_EVENT_MASK_STRUCTURE_NOTIFY};
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen.root, 0, 0, kWidth, kHeight,
                      0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
    auto* reply = xcb_intern_atom_reply(connection,
                                        xcb_intern_atom(connection, 0, 11, "_NET_WM_PID"), nullptr);
    const auto process = static_cast<std::uint32_t>(::getpid());
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, reply->atom, XCB_ATOM_CARDINAL,
                        32, 1, &process);
    std::free(reply);
    xcb_map_window(connection, window);
    xcb_flush(connection);
    return window;
}

} // namespace

/// klova-bench-client <milliseconds>
int main(int argc, char** argv) {
    auto* connection = xcb_connect(nullptr, nullptr);
    if (argc != 2 || xcb_connection_has_error(connection) != 0)
        return 2;
    const std::chrono::milliseconds pause(std::strtol(argv[1], nullptr, 10));
    makeWindow(connection, *xcb_setup_roots_iterator(xcb_get_setup(connection)).data);
    while (auto* event = xcb_wait_for_event(connection)) {
        if ((event->response_type & 0x7F) == XCB_CONFIGURE_NOTIFY)
            std::this_thread::sleep_for(pause);
        std::free(event);
    }
    return 0;
}
