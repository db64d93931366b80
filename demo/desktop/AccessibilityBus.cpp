#include "desktop/AccessibilityBus.h"

#include <cstdint>
#include <stdexcept>

namespace klova::rig {
namespace {

constexpr auto kRegistry = "org.a11y.atspi.Registry";
constexpr auto kRoot = "/org/a11y/atspi/accessible/root";
constexpr auto kAccessible = "org.a11y.atspi.Accessible";

struct Free {
    void operator()(GVariant* value) const { g_variant_unref(value); }
};
using Value = std::unique_ptr<GVariant, Free>;

/// An object of a program, by its connection and path.
struct Address {
    std::string connection;
    std::string path;
};

/// Null where there is no answer. `arguments` is consumed.
Value call(GDBusConnection* bus, const Address& object, const char* interface, const char* method,
           GVariant* arguments = nullptr) {
    constexpr int patience = 5000; // milliseconds
    return Value(g_dbus_connection_call_sync(bus, object.connection.c_str(), object.path.c_str(),
                                             interface, method, arguments, nullptr,
                                             G_DBUS_CALL_FLAGS_NONE, patience, nullptr, nullptr));
}

Value child(const Value& tuple) { return Value(g_variant_get_child_value(tuple.get(), 0)); }

std::string textOf(const Value& text) { return g_variant_get_string(text.get(), nullptr); }

std::string property(GDBusConnection* bus, const Address& object, const char* name) {
    const auto answer = call(bus, object, "org.freedesktop.DBus.Properties", "Get",
                             g_variant_new("(ss)", kAccessible, name));
    return answer ? textOf(child(child(answer))) : "";
}

Rect areaOf(GDBusConnection* bus, const Address& object) {
    constexpr std::uint32_t onScreen = 0;
    const auto answer =
        call(bus, object, "org.a11y.atspi.Component", "GetExtents", g_variant_new("(u)", onScreen));
    Rect area;
    if (answer)
        g_variant_get(answer.get(), "((iiii))", &area.x, &area.y, &area.width, &area.height);
    return area;
}

void readState(GDBusConnection* bus, const Address& object, AccessibleObject& into) {
    const auto answer = call(bus, object, kAccessible, "GetState");
    if (!answer)
        return;
    const auto words = child(answer);
    std::uint32_t low = 0;
    g_variant_get_child(words.get(), 0, "u", &low);
    const auto has = [low](unsigned bit) { return (low >> bit & 1U) != 0; };
    into.checked = has(4);
    into.focusable = has(11);
    into.focused = has(12);
    into.showing = has(25);
}

std::vector<Address> childrenOf(GDBusConnection* bus, const Address& object) {
    std::vector<Address> children;
    const auto answer = call(bus, object, kAccessible, "GetChildren");
    if (!answer)
        return children;
    const auto list = child(answer);
    for (std::size_t i = 0; i < g_variant_n_children(list.get()); ++i) {
        const char* connection = nullptr;
        const char* path = nullptr;
        g_variant_get_child(list.get(), i, "(&s&o)", &connection, &path);
        children.push_back({connection, path});
    }
    return children;
}

void read(GDBusConnection* bus, const Address& object, std::vector<AccessibleObject>& into) {
    const auto role = call(bus, object, kAccessible, "GetRoleName");
    if (!role)
        return;
    AccessibleObject seen{textOf(child(role)), property(bus, object, "Name"),
                          property(bus, object, "Description"), areaOf(bus, object)};
    readState(bus, object, seen);
    into.push_back(seen);
    for (const auto& each : childrenOf(bus, object))
        read(bus, each, into);
}

Process launch(Session& session, GDBusConnection* bus) {
    auto launcher =
        session.launch({"/usr/libexec/at-spi-bus-launcher", "--launch-immediately", "--a11y=1"});
    const Address name{"org.freedesktop.DBus", "/org/freedesktop/DBus"};
    for (int attempt = 0; attempt < 1000; ++attempt) {
        const auto owner = call(bus, name, "org.freedesktop.DBus", "GetNameOwner",
                                g_variant_new("(s)", "org.a11y.Bus"));
        if (owner)
            return launcher;
        if (launcher.waitExit(std::chrono::milliseconds(5)))
            break;
    }
    throw std::runtime_error("no accessibility bus: " + launcher.output());
}

std::string addressOf(GDBusConnection* session) {
    const auto answer =
        call(session, {"org.a11y.Bus", "/org/a11y/bus"}, "org.a11y.Bus", "GetAddress");
    return answer ? textOf(child(answer)) : "";
}

} // namespace

AccessibilityBus::AccessibilityBus(Session& session)
    : session_(connect(session.environment().at("DBUS_SESSION_BUS_ADDRESS"))),
      launcher_(launch(session, session_.get())), bus_(connect(addressOf(session_.get()))) {}

AccessibilityBus::Connection AccessibilityBus::connect(const std::string& address) {
    Connection connection(g_dbus_connection_new_for_address_sync(
        address.c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr));
    if (!connection)
        throw std::runtime_error("cannot reach the bus at " + address);
    return connection;
}

std::vector<AccessibleObject> AccessibilityBus::objects() const {
    std::vector<AccessibleObject> all;
    for (const auto& program : childrenOf(bus_.get(), {kRegistry, kRoot}))
        read(bus_.get(), program, all);
    return all;
}

} // namespace klova::rig
