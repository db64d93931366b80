#include "platform/x11/Connection.h"

#include "platform/Diagnostics.h"
#include "platform/x11/SendEvent.h"
#include "platform/x11/XcbXkb.h"

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <xcb/randr.h>
#include <xcb/res.h>
#include <xcb/xinput.h>

namespace klova::x11 {
namespace {

xcb_screen_t* screenOfNumber(xcb_connection_t* connection, int number) {
    auto iterator = xcb_setup_roots_iterator(xcb_get_setup(connection));
    while (number-- > 0 && iterator.rem > 1)
        xcb_screen_next(&iterator);
    return iterator.data;
}

/// A window that closed, or a focus that moved on, between two requests: nothing to tell anybody.
bool isExpected(const xcb_generic_error_t& error) {
    return error.error_code == XCB_WINDOW || error.error_code == XCB_DRAWABLE ||
           error.error_code == XCB_MATCH;
}

void handleError(const xcb_generic_error_t& error) {
    if (isExpected(error))
        return;
    errorLine("the X server refused request " + std::to_string(error.major_code) + "." +
              std::to_string(error.minor_code) + " (error " + std::to_string(error.error_code) +
              ").");
}

} // namespace

Connection::Connection(const char* display) : connection_(xcb_connect(display, &screenNumber_)) {
    if (lost()) {
        const char* environment = std::getenv("DISPLAY");
        const std::string name = display != nullptr       ? display
                                 : environment != nullptr ? environment
                                                          : "";
        throw DisplayUnreachable(name.empty() ? "no display: DISPLAY is not set"
                                              : "cannot reach the display \"" + name + "\"");
    }
    screen_ = screenOfNumber(get(), screenNumber_);
    atoms_.emplace(get());
    queryExtensions();
}

void Connection::queryExtensions() {
    for (xcb_extension_t* extension : {&xcb_input_id, &xcb_randr_id, &xcb_xkb_id, &xcb_res_id})
        xcb_prefetch_extension_data(get(), extension);
    const auto present = [this](xcb_extension_t& extension) -> const xcb_query_extension_reply_t* {
        const auto* data = xcb_get_extension_data(get(), &extension);
        return data != nullptr && data->present != 0 ? data : nullptr;
    };

    bool hasXInput = false;
    if (const auto* xinput = present(xcb_input_id)) {
        const auto version = own(xcb_input_xi_query_version_reply(
            get(), xcb_input_xi_query_version(get(), 2, 2), nullptr));
        hasXInput = version && (version->major_version > 2 ||
                                (version->major_version == 2 && version->minor_version >= 1));
        xinputOpcode_ = xinput->major_opcode;
        xinputFirstEvent_ = xinput->first_event;
    }
    if (!hasXInput)
        missing_.emplace_back("XInput 2.1");

    bool hasRandR = false;
    if (const auto* randr = present(xcb_randr_id)) {
        const auto version = own(
            xcb_randr_query_version_reply(get(), xcb_randr_query_version(get(), 1, 5), nullptr));
        hasRandR = version && (version->major_version > 1 || version->minor_version >= 5);
        randrFirstEvent_ = randr->first_event;
    }
    if (!hasRandR)
        missing_.emplace_back("RandR 1.5");

    bool hasXkb = false;
    if (const auto* xkb = present(xcb_xkb_id)) {
        const auto use = own(xcb_xkb_use_extension_reply(
            get(), xcb_xkb_use_extension(get(), XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION),
            nullptr));
        hasXkb = use && use->supported != 0;
        xkbFirstEvent_ = xkb->first_event;
    }
    if (!hasXkb)
        missing_.emplace_back("XKB");

    hasXResource_ = present(xcb_res_id) != nullptr;
}

xcb_atom_t Connection::atomOfScreen(const std::string& prefix) {
    const std::string name = prefix + std::to_string(screenNumber_);
    const auto reply = own(xcb_intern_atom_reply(
        get(), xcb_intern_atom(get(), 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

UniqueC<xcb_generic_event_t> Connection::poll() { return next(xcb_poll_for_event); }

UniqueC<xcb_generic_event_t> Connection::pollReceived() { return next(xcb_poll_for_queued_event); }

UniqueC<xcb_generic_event_t> Connection::next(Source source) {
    if (waiting_.empty())
        return receive(source);
    auto event = std::move(waiting_.front());
    waiting_.pop_front();
    return event;
}

bool Connection::isWaiting(const EventQuestion& question) {
    while (auto event = receive(xcb_poll_for_event))
        waiting_.push_back(std::move(event));
    return std::ranges::any_of(waiting_, [&](const auto& event) { return question(*event); });
}

UniqueC<xcb_generic_event_t> Connection::takeWaiting(const EventQuestion& question) {
    if (!isWaiting(question))
        return nullptr;
    const auto found =
        std::ranges::find_if(waiting_, [&](const auto& event) { return question(*event); });
    auto event = std::move(*found);
    waiting_.erase(found);
    return event;
}

void Connection::roundTrip() {
    own(xcb_get_input_focus_reply(get(), xcb_get_input_focus(get()), nullptr));
}

UniqueC<xcb_generic_event_t> Connection::receive(Source source) {
    while (auto event = own(source(get()))) {
        if (event->response_type != 0)
            return event;
        handleError(*reinterpret_cast<const xcb_generic_error_t*>(event.get()));
    }
    return nullptr;
}

void Connection::sendToWindowManager(xcb_window_t window, xcb_atom_t type,
                                     std::span<const std::uint32_t, 5> data) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = type;
    std::copy(data.begin(), data.end(), message.data.data32);
    sendEvent(get(), root(), message,
              XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
}

void Connection::selectRootEvents(std::uint32_t mask, bool wanted) {
    rootMask_ = wanted ? rootMask_ | mask : rootMask_ & ~mask;
    xcb_change_window_attributes(get(), root(), XCB_CW_EVENT_MASK, &rootMask_);
}

} // namespace klova::x11
