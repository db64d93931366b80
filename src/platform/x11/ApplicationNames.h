// The names that a window gives the application it belongs to.
#pragma once

#include "platform/x11/Connection.h"

#include <optional>
#include <string>

namespace klova::x11 {

struct ApplicationNames {
    std::optional<std::string> bundleIdentifier; ///< id of its desktop file, else its class
    std::optional<std::string> className;
};

/// Asked for and not yet answered.
class NamesRequest {
public:
    NamesRequest(Connection& connection, xcb_window_t window);

    /// To be called once, unless the answer is discarded.
    ApplicationNames take();
    void discard();

private:
    xcb_connection_t* connection_;
    xcb_get_property_cookie_t gtk_;
    xcb_get_property_cookie_t kde_;
    xcb_get_property_cookie_t wmClass_;
};

} // namespace klova::x11
