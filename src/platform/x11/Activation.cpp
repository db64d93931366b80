#include "platform/x11/Activation.h"

#include <array>
#include <cstdint>

namespace klova::x11 {

void activate(Connection& connection, WindowManager& manager, xcb_window_t window,
              xcb_timestamp_t time) {
    constexpr std::uint32_t fromPager = 2;
    if (manager.present())
        connection.sendToWindowManager(window, connection.atoms()._NET_ACTIVE_WINDOW,
                                       std::array{fromPager, std::uint32_t{time}, 0U, 0U, 0U});
    else
        xcb_set_input_focus(connection.get(), XCB_INPUT_FOCUS_POINTER_ROOT, window, time);
    connection.flush();
}

} // namespace klova::x11
