#include "platform/x11/SelectionWatch.h"

#include "platform/x11/Connection.h"

#include <xcb/xfixes.h>

namespace klova::x11 {

SelectionWatch::SelectionWatch(Connection& connection, const std::string& prefix) {
    xcb_connection_t* x = connection.get();
    const auto* extension = xcb_get_extension_data(x, &xcb_xfixes_id);
    if (extension == nullptr || extension->present == 0)
        return;
    selection_ = connection.atomOfScreen(prefix);
    firstEvent_ = extension->first_event;
    // The server answers nothing of the extension before it was asked for a version.
    xcb_discard_reply(x, xcb_xfixes_query_version(x, 1, 0).sequence);
    xcb_xfixes_select_selection_input(x, connection.root(), selection_,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    const auto reply =
        own(xcb_get_selection_owner_reply(x, xcb_get_selection_owner(x, selection_), nullptr));
    if (reply)
        owner_ = reply->owner;
}

bool SelectionWatch::handle(const xcb_generic_event_t& event) {
    if (firstEvent_ == 0 ||
        (event.response_type & 0x7F) != firstEvent_ + XCB_XFIXES_SELECTION_NOTIFY)
        return false;
    const auto& change = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
    if (change.selection != selection_ || change.owner == owner_)
        return false;
    owner_ = change.owner;
    return true;
}

} // namespace klova::x11
