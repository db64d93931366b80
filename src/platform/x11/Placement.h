// Moving one window: paced requests to the window manager, their confirmation and correction.
#pragma once

#include "geometry/Frame.h"
#include "platform/Deadline.h"
#include "platform/x11/WindowSnapshot.h"

#include <chrono>
#include <optional>
#include <xcb/xcb.h>

namespace klova::x11 {

class X11Screens;

/// Collects what is written to a window and sends it as one request at a time, the newest last
/// and always. Frames are those that a person sees, in root pixels, y growing downward.
class Placement {
public:
    using Clock = std::chrono::steady_clock;

    Placement(Connection& connection, WindowManager& manager, X11Screens& screens,
              xcb_window_t window);

    /// Note what is wanted. `now` is the window as the writer found it.
    void writePosition(Point position, const WindowSnapshot& now);
    void writeSize(Size size, const WindowSnapshot& now);

    /// What reads have to answer until the manager has answered; absent when the truth holds.
    std::optional<Frame> written() const;

    /// The client's box where an event says that what was asked for last has come about.
    std::optional<Box> grantedBy(const xcb_configure_notify_event_t& event) const;

    /// Whether the window's property changes matter at the moment.
    bool busy() const { return unsent_ || sent_.has_value(); }

    /// Sends what was written, unless an earlier request is still without its answer.
    void flush(Clock::time_point now);
    void onConfigure(const xcb_configure_notify_event_t& event, Clock::time_point now);
    void onDecorationChanged(Clock::time_point now);

    Deadline deadline() const;
    void onDeadline(Clock::time_point now);

private:
    struct Request {
        Box frame;                ///< what is asked for: what is wanted, or a correction of it
        Box client;               ///< what the client window becomes if all is granted
        Edges extents;            ///< as assumed
        bool exact = false;       ///< a size was written: correct what comes out otherwise
        bool statesTaken = false; ///< maximized or fullscreen was taken off with it
        bool answered = false;    ///< only watched for late changes of the decoration
        bool granted = false;     ///< announced, though it may not have happened yet (i3)
        bool heard = false;       ///< the window has changed since
        int looks = 0;            ///< how often no answer was found
        int corrections = 0;      ///< how often it may still be sent again
        Box refusal; ///< the last answer, given the right decoration, that was not what was asked
        std::optional<Box> room; ///< what it leaves of the wanted frame, where it insists
        xcb_window_t manager = XCB_WINDOW_NONE; ///< that was asked
        Clock::time_point at;
        std::optional<Clock::time_point> settled; ///< when to look at what came out
    };

    bool outstanding() const { return sent_ && !sent_->answered && !sent_->granted; }
    bool outdated() const;
    void note(const WindowSnapshot& now);
    void send(Clock::time_point now);
    void request(const Box& frame, Clock::time_point now);
    void takeStatesOff();
    void place(const Box& frame);
    void judge(Clock::time_point now);
    bool isAnswer(const Box& result) const;
    void lookAgain(Clock::time_point now);
    void putRight(const Box& result, Clock::time_point now);
    void conclude(Clock::time_point now);
    bool confirms(const xcb_configure_notify_event_t& event) const;
    Box target() const;
    Point anchored(const Box& result) const;
    Box goalFor(const Box& result) const;
    bool insistsOn(const Box& result) const;

    Connection& connection_;
    WindowManager& manager_;
    X11Screens& screens_;
    xcb_window_t window_;
    WindowSnapshot known_;
    Frame wanted_;
    bool unsent_ = false;
    bool sizeUnsent_ = false;
    std::optional<Request> sent_;
};

} // namespace klova::x11
