// One connection to an X server, with atoms and properties by name.
#pragma once

#include "desktop/Owned.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>
#include <xcb/xcb.h>

namespace klova::rig {

class Display {
public:
    /// Throws std::runtime_error where `name` (":99") cannot be reached.
    explicit Display(const std::string& name);

    xcb_connection_t* get() const { return connection_.get(); }
    const std::string& name() const { return name_; }
    const xcb_screen_t& screen() const { return *screen_; }
    xcb_window_t root() const { return screen_->root; }

    xcb_atom_t atom(const std::string& name);

    /// The 32-bit values of a property of any type; empty where window or property is missing.
    std::vector<std::uint32_t> values(xcb_window_t window, const std::string& property);
    std::string text(xcb_window_t window, const std::string& property);
    void setValues(xcb_window_t window, const std::string& property, const std::string& type,
                   const std::vector<std::uint32_t>& values);
    void setText(xcb_window_t window, const std::string& property, const std::string& type,
                 const std::string& text);

    /// Sends a client message about `window` to the window manager.
    void tellManager(xcb_window_t window, const std::string& type,
                     const std::vector<std::uint32_t>& data);

    /// Returns once the server has dealt with everything sent on this connection.
    void roundTrip();

    /// The next event that has arrived, null when there is none.
    Owned<xcb_generic_event_t> nextEvent() { return owned(xcb_poll_for_event(get())); }

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };
    std::string name_;
    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    xcb_screen_t* screen_ = nullptr;
    std::map<std::string, xcb_atom_t> atoms_;
};

} // namespace klova::rig
