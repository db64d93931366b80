#include "desktop/Connections.h"

#include "desktop/Owned.h"

#include <stdexcept>
#include <xcb/res.h>

namespace klova::rig {

std::vector<std::uint32_t> clientsOf(Display& display, pid_t process) {
    const xcb_res_client_id_spec_t all{0, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto reply = owned(xcb_res_query_client_ids_reply(
        display.get(), xcb_res_query_client_ids(display.get(), 1, &all), nullptr));
    if (!reply)
        throw std::runtime_error("the X server does not tell whose its clients are");
    std::vector<std::uint32_t> clients;
    auto each = xcb_res_query_client_ids_ids_iterator(reply.get());
    for (; each.rem > 0; xcb_res_client_id_value_next(&each))
        if (each.data->length == sizeof(std::uint32_t) &&
            *xcb_res_client_id_value_value(each.data) == static_cast<std::uint32_t>(process))
            clients.push_back(each.data->spec.client);
    return clients;
}

} // namespace klova::rig
