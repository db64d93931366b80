#include "platform/x11/SingleInstance.h"

#include <string>

namespace klova::x11 {
namespace {

xcb_window_t createWindow(Connection& connection) {
    const xcb_window_t window = xcb_generate_id(connection.get());
    constexpr std::uint32_t overrideRedirect = 1;
    xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, window, connection.root(), -1, -1, 1,
                      1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT,
                      XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);
    return window;
}

xcb_atom_t selectionOf(Connection& connection) {
    const std::string name = "_KLOVA_S" + std::to_string(connection.screenNumber());
    const auto reply = own(xcb_intern_atom_reply(
        connection.get(),
        xcb_intern_atom(connection.get(), 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

} // namespace

SingleInstance::SingleInstance(Connection& connection)
    : connection_(connection), window_(createWindow(connection)) {
    const xcb_atom_t selection = selectionOf(connection);
    // Between the question and the claim nobody else gets a word in, so that the current time is
    // good enough for the claim.
    xcb_grab_server(connection.get());
    if (ownerOf(selection) == XCB_NONE)
        xcb_set_selection_owner(connection.get(), window_, selection, XCB_CURRENT_TIME);
    acquired_ = ownerOf(selection) == window_;
    xcb_ungrab_server(connection.get());
    connection.flush();
}

SingleInstance::~SingleInstance() {
    xcb_destroy_window(connection_.get(), window_);
    connection_.flush();
}

xcb_window_t SingleInstance::ownerOf(xcb_atom_t selection) {
    const auto reply = own(xcb_get_selection_owner_reply(
        connection_.get(), xcb_get_selection_owner(connection_.get(), selection), nullptr));
    return reply ? reply->owner : static_cast<xcb_window_t>(XCB_NONE);
}

} // namespace klova::x11
