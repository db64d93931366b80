#include "platform/x11/OwnWindows.h"

#include "platform/x11/Connection.h"

#include <cstdint>
#include <unistd.h>
#include <xcb/res.h>

namespace klova::x11 {

bool focusIsOwn(Connection& connection) {
    const auto focus = own(xcb_get_input_focus_reply(
        connection.get(), xcb_get_input_focus(connection.get()), nullptr));
    if (!focus || focus->focus <= XCB_INPUT_FOCUS_POINTER_ROOT ||
        focus->focus == connection.root() || !connection.hasXResource())
        return false;
    const xcb_res_client_id_spec_t query{focus->focus, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto ids = own(xcb_res_query_client_ids_reply(
        connection.get(), xcb_res_query_client_ids(connection.get(), 1, &query), nullptr));
    if (!ids)
        return false;
    const auto own = xcb_res_query_client_ids_ids_iterator(ids.get());
    return own.rem > 0 && xcb_res_client_id_value_value_length(own.data) > 0 &&
           *xcb_res_client_id_value_value(own.data) == static_cast<std::uint32_t>(::getpid());
}

} // namespace klova::x11
