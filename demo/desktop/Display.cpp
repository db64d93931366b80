#include "desktop/Display.h"

#include <algorithm>
#include <stdexcept>

namespace klova::rig {
namespace {

constexpr std::uint32_t kWholeProperty = 1U << 20;

Owned<xcb_get_property_reply_t> readProperty(xcb_connection_t* connection, xcb_window_t window,
                                             xcb_atom_t property) {
    return owned(
        xcb_get_property_reply(connection,
                               xcb_get_property(connection, 0, window, property,
                                                XCB_GET_PROPERTY_TYPE_ANY, 0, kWholeProperty),
                               nullptr));
}

} // namespace

Display::Display(const std::string& name)
    : name_(name), connection_(xcb_connect(name.c_str(), nullptr)) {
    if (xcb_connection_has_error(get()) != 0)
        throw std::runtime_error("cannot reach the display " + name);
    screen_ = xcb_setup_roots_iterator(xcb_get_setup(get())).data;
}

xcb_atom_t Display::atom(const std::string& name) {
    auto& atom = atoms_[name];
    if (atom == XCB_ATOM_NONE) {
        const auto cookie =
            xcb_intern_atom(get(), 0, static_cast<std::uint16_t>(name.size()), name.c_str());
        if (const auto reply = owned(xcb_intern_atom_reply(get(), cookie, nullptr)))
            atom = reply->atom;
    }
    return atom;
}

std::vector<std::uint32_t> Display::values(xcb_window_t window, const std::string& property) {
    const auto reply = readProperty(get(), window, atom(property));
    if (!reply || reply->format != 32)
        return {};
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

std::string Display::text(xcb_window_t window, const std::string& property) {
    const auto reply = readProperty(get(), window, atom(property));
    if (!reply || reply->format != 8)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())), reply->value_len};
}

void Display::setValues(xcb_window_t window, const std::string& property, const std::string& type,
                        const std::vector<std::uint32_t>& values) {
    xcb_change_property(get(), XCB_PROP_MODE_REPLACE, window, atom(property), atom(type), 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
}

void Display::setText(xcb_window_t window, const std::string& property, const std::string& type,
                      const std::string& text) {
    xcb_change_property(get(), XCB_PROP_MODE_REPLACE, window, atom(property), atom(type), 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
}

void Display::tellManager(xcb_window_t window, const std::string& type,
                          const std::vector<std::uint32_t>& data) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom(type);
    std::copy_n(data.begin(), std::min<std::size_t>(data.size(), 5), message.data.data32);
    xcb_send_event(get(), 0, root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(get());
}

void Display::roundTrip() {
    owned(xcb_get_input_focus_reply(get(), xcb_get_input_focus(get()), nullptr));
}

} // namespace klova::rig
