// The one connection to the X server: set-up, atoms, extensions, events, errors.
#pragma once

#include "platform/x11/Atoms.h"
#include "platform/x11/UniqueC.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>
#include <xcb/xcb.h>

namespace klova::x11 {

/// The display cannot be reached. `what()` is one sentence for the person.
class DisplayUnreachable : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class Connection {
public:
    using EventQuestion = std::function<bool(const xcb_generic_event_t&)>;

    /// Connects to `display`, or to $DISPLAY where it is null. Throws DisplayUnreachable.
    explicit Connection(const char* display = nullptr);

    xcb_connection_t* get() const { return connection_.get(); }
    const xcb_screen_t& screen() const { return *screen_; }
    xcb_window_t root() const { return screen_->root; }
    const Atoms& atoms() const { return *atoms_; }

    /// The atom of `<prefix><number of the screen>`, as selections of a screen are named; none
    /// where the server does not answer.
    xcb_atom_t atomOfScreen(const std::string& prefix);

    /// What Klova needs and this server does not offer, as a person would call it; empty when
    /// nothing is missing.
    const std::vector<std::string>& missingExtensions() const { return missing_; }
    bool hasXResource() const { return hasXResource_; }
    std::uint8_t xinputOpcode() const { return xinputOpcode_; }
    std::uint8_t xinputFirstEvent() const { return xinputFirstEvent_; }
    std::uint8_t xkbFirstEvent() const { return xkbFirstEvent_; }
    std::uint8_t randrFirstEvent() const { return randrFirstEvent_; }

    /// The next event, null when none has arrived. Errors of requests whose answer nobody waits
    /// for are dealt with here: those of a window that died are expected, others are logged.
    UniqueC<xcb_generic_event_t> poll();

    /// The same of what has been received already, without asking the system for more.
    UniqueC<xcb_generic_event_t> pollReceived();

    /// Whether an event that has arrived, and is still to be polled, answers the question.
    bool isWaiting(const EventQuestion& question);

    /// Takes the first such event out of turn; null where there is none.
    UniqueC<xcb_generic_event_t> takeWaiting(const EventQuestion& question);

    /// Returns once the server has dealt with everything sent so far; what it sent meanwhile is
    /// waiting then.
    void roundTrip();

    void flush() { xcb_flush(get()); }
    int descriptor() const { return xcb_get_file_descriptor(get()); }
    bool lost() const { return xcb_connection_has_error(get()) != 0; }

    /// Sends a client message about `window` to the window manager.
    void sendToWindowManager(xcb_window_t window, xcb_atom_t type,
                             std::span<const std::uint32_t, 5> data);

    /// Adds to the events that this connection selects on the root window, or takes away from them.
    void selectRootEvents(std::uint32_t mask, bool wanted = true);

private:
    void queryExtensions();
    using Source = xcb_generic_event_t* (*)(xcb_connection_t*);
    UniqueC<xcb_generic_event_t> next(Source source);
    UniqueC<xcb_generic_event_t> receive(Source source);

    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };
    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    int screenNumber_ = 0;
    xcb_screen_t* screen_ = nullptr;
    std::optional<Atoms> atoms_;
    std::vector<std::string> missing_;
    bool hasXResource_ = false;
    std::uint8_t xinputOpcode_ = 0;
    std::uint8_t xinputFirstEvent_ = 0;
    std::uint8_t xkbFirstEvent_ = 0;
    std::uint8_t randrFirstEvent_ = 0;
    std::uint32_t rootMask_ = 0;
    std::deque<UniqueC<xcb_generic_event_t>> waiting_; ///< looked at, not yet polled
};

} // namespace klova::x11
