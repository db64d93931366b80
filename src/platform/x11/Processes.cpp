#include "platform/x11/Processes.h"

#include "platform/x11/Properties.h"

#include <xcb/res.h>

namespace klova::x11 {

std::optional<ProcessId> processKnownToServer(Connection& connection, xcb_window_t window) {
    if (!connection.hasXResource())
        return std::nullopt;
    const xcb_res_client_id_spec_t query{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto reply = own(xcb_res_query_client_ids_reply(
        connection.get(), xcb_res_query_client_ids(connection.get(), 1, &query), nullptr));
    if (!reply)
        return std::nullopt;
    for (auto ids = xcb_res_query_client_ids_ids_iterator(reply.get()); ids.rem > 0;
         xcb_res_client_id_value_next(&ids))
        if ((ids.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0 &&
            xcb_res_client_id_value_value_length(ids.data) > 0)
            return static_cast<ProcessId>(*xcb_res_client_id_value_value(ids.data));
    return std::nullopt;
}

ProcessId processOf(Connection& connection, xcb_window_t window) {
    if (const auto process = processKnownToServer(connection, window))
        return *process;
    const auto said = takeItems(
        connection.get(), askProperty(connection.get(), window, connection.atoms()._NET_WM_PID));
    if (!said.empty() && static_cast<ProcessId>(said[0]) > 0)
        return static_cast<ProcessId>(said[0]);
    const auto base = window & ~xcb_get_setup(connection.get())->resource_id_mask;
    return -static_cast<ProcessId>(base);
}

} // namespace klova::x11
