#include "platform/x11/XSettings.h"

#include "platform/x11/Connection.h"

#include <optional>
#include <string>
#include <string_view>

namespace klova::x11 {
namespace {

/// Reads the property's bytes in its own byte order; absent past the end.
class Reader {
public:
    explicit Reader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {
        bigEndian_ = !bytes_.empty() && bytes_[0] == XCB_IMAGE_ORDER_MSB_FIRST;
    }

    std::optional<std::uint32_t> number(std::size_t size) {
        const auto bytes = take(size);
        if (!bytes)
            return std::nullopt;
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < size; ++i)
            value = value << 8 | (*bytes)[bigEndian_ ? i : size - 1 - i];
        return value;
    }

    std::optional<std::span<const std::uint8_t>> take(std::size_t size) {
        if (size > bytes_.size() - at_)
            return std::nullopt;
        at_ += size;
        return bytes_.subspan(at_ - size, size);
    }

    /// Texts are padded to four bytes.
    std::optional<std::string_view> text(std::size_t size) {
        const auto bytes = take(size);
        if (!bytes || !take((4 - size % 4) % 4))
            return std::nullopt;
        return std::string_view(reinterpret_cast<const char*>(bytes->data()), size);
    }

private:
    std::span<const std::uint8_t> bytes_;
    std::size_t at_ = 0;
    bool bigEndian_ = false;
};

enum SettingType : std::uint32_t { integer = 0, string = 1, color = 2 };

/// Reads one setting and applies it; false where the bytes end or make no sense.
bool readSetting(Reader& reader, SharedSettings& settings) {
    const auto type = reader.number(1);
    const auto padding = reader.take(1);
    const auto nameSize = reader.number(2);
    if (!type || !padding || !nameSize)
        return false;
    const auto name = reader.text(*nameSize);
    const auto serial = reader.number(4);
    if (!name || !serial)
        return false;
    if (*type == color)
        return reader.take(8).has_value();
    const auto value = reader.number(4);
    if (!value || *type > color)
        return false;
    if (*type == string)
        return reader.text(*value).has_value();
    if (*name == "Net/DoubleClickTime" && *value <= 10'000)
        settings.clicks.milliseconds = *value;
    if (*name == "Net/DoubleClickDistance" && *value <= 1'000)
        settings.clicks.distance = *value;
    if (*name == "Gtk/EnableAnimations")
        settings.animations = *value != 0;
    return true;
}

} // namespace

SharedSettings parseSettings(std::span<const std::uint8_t> property) {
    SharedSettings settings;
    Reader reader(property);
    const auto header = reader.take(8); // byte order, padding, serial
    const auto count = reader.number(4);
    if (header && count)
        for (std::uint32_t i = 0; i < *count && readSetting(reader, settings); ++i) {
        }
    return settings;
}

XSettings::XSettings(Connection& connection)
    : connection_(connection), selection_(connection.atomOfScreen("_XSETTINGS_S")) {
    connection_.selectRootEvents(XCB_EVENT_MASK_STRUCTURE_NOTIFY); // a new manager's announcement
    findManager();
}

void XSettings::findManager() {
    const auto reply = own(xcb_get_selection_owner_reply(
        connection_.get(), xcb_get_selection_owner(connection_.get(), selection_), nullptr));
    manager_ = reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
    if (manager_ != XCB_WINDOW_NONE) {
        const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(connection_.get(), manager_, XCB_CW_EVENT_MASK, &mask);
    }
    read();
}

void XSettings::read() {
    shared_ = SharedSettings{};
    if (manager_ == XCB_WINDOW_NONE)
        return;
    const xcb_atom_t settings = connection_.atoms()._XSETTINGS_SETTINGS;
    const auto reply = own(xcb_get_property_reply(
        connection_.get(),
        xcb_get_property(connection_.get(), 0, manager_, settings, settings, 0, 1U << 16),
        nullptr));
    if (reply && reply->format == 8)
        shared_ =
            parseSettings({static_cast<const std::uint8_t*>(xcb_get_property_value(reply.get())),
                           static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))});
}

void XSettings::handle(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7F) {
    case XCB_PROPERTY_NOTIFY:
        if (reinterpret_cast<const xcb_property_notify_event_t&>(event).window == manager_)
            read();
        break;
    case XCB_DESTROY_NOTIFY:
        if (reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == manager_)
            findManager();
        break;
    case XCB_CLIENT_MESSAGE: {
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
        if (message.type == connection_.atoms().MANAGER && message.data.data32[1] == selection_)
            findManager();
        break;
    }
    default:
        break;
    }
}

} // namespace klova::x11
