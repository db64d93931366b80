// A moment in which only we are served.
#pragma once

#include "platform/x11/Connection.h"

namespace klova::x11 {

/// Stops every other client's requests while it lives, so that what is asked or changed
/// meanwhile belongs to one moment. To be alive only while requests are sent, never while an answer
/// is awaited.
class ServerGrab {
public:
    explicit ServerGrab(Connection& connection) : connection_(connection) {
        xcb_grab_server(connection_.get());
    }
    ~ServerGrab() { xcb_ungrab_server(connection_.get()); }
    ServerGrab(const ServerGrab&) = delete;
    ServerGrab& operator=(const ServerGrab&) = delete;

private:
    Connection& connection_;
};

} // namespace klova::x11
