#include "platform/x11/SingleInstance.h"

#include "platform/x11/SendEvent.h"

namespace klova::x11 {
namespace {

constexpr std::chrono::seconds kLogin{5};

xcb_window_t createWindow(Connection& connection) {
    const xcb_window_t window = xcb_generate_id(connection.get());
    constexpr std::uint32_t overrideRedirect = 1;
    xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, window, connection.root(), -1, -1, 1,
                      1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT,
                      XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);
    return window;
}

} // namespace

SingleInstance::SingleInstance(Connection& connection)
    : connection_(connection), window_(createWindow(connection)),
      selection_(connection.atomOfScreen("_KLOVA_S")) {
    // Between the question and the claim nobody else gets a word in, so that the current time is
    // good enough for the claim.
    xcb_grab_server(connection.get());
    if (owner() == XCB_NONE)
        xcb_set_selection_owner(connection.get(), window_, selection_, XCB_CURRENT_TIME);
    acquired_ = owner() == window_;
    xcb_ungrab_server(connection.get());
    connection.flush();
}

SingleInstance::~SingleInstance() {
    xcb_destroy_window(connection_.get(), window_);
    connection_.flush();
}

xcb_window_t SingleInstance::owner() {
    const auto reply = own(xcb_get_selection_owner_reply(
        connection_.get(), xcb_get_selection_owner(connection_.get(), selection_), nullptr));
    return reply ? reply->owner : static_cast<xcb_window_t>(XCB_NONE);
}

void SingleInstance::callFirst() {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = owner();
    message.type = connection_.atoms()._KLOVA_STARTED_AGAIN;
    sendEvent(connection_.get(), message.window, message);
    connection_.roundTrip();
}

void SingleInstance::handle(const xcb_generic_event_t& event) {
    const auto type = event.response_type & 0x7F;
    if (type == XCB_SELECTION_REQUEST) {
        refuse(reinterpret_cast<const xcb_selection_request_event_t&>(event));
    } else if (type == XCB_CLIENT_MESSAGE) {
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
        const bool asked =
            message.window == window_ && message.type == connection_.atoms()._KLOVA_STARTED_AGAIN;
        if (asked && called_ && Clock::now() - since_ >= kLogin)
            called_();
    }
}

/// The selection has no value, and whoever asks for it should not have to wait to learn that.
void SingleInstance::refuse(const xcb_selection_request_event_t& request) {
    if (request.selection != selection_)
        return;
    xcb_selection_notify_event_t answer{};
    answer.response_type = XCB_SELECTION_NOTIFY;
    answer.time = request.time;
    answer.requestor = request.requestor;
    answer.selection = request.selection;
    answer.target = request.target;
    answer.property = XCB_ATOM_NONE;
    sendEvent(connection_.get(), request.requestor, answer);
}

} // namespace klova::x11
