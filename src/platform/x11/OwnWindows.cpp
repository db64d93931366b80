#include "platform/x11/OwnWindows.h"

#include "platform/x11/Processes.h"

#include <unistd.h>

namespace klova::x11 {

bool focusIsOwn(Connection& connection) {
    const auto focus = own(xcb_get_input_focus_reply(
        connection.get(), xcb_get_input_focus(connection.get()), nullptr));
    return focus && focus->focus > XCB_INPUT_FOCUS_POINTER_ROOT &&
           focus->focus != connection.root() &&
           processKnownToServer(connection, focus->focus) == ::getpid();
}

} // namespace klova::x11
