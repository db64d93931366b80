// Button and motion events, watched and held back.
#pragma once

#include "platform/Deadline.h"
#include "platform/x11/ButtonMaps.h"
#include "platform/x11/ClickCounter.h"
#include "platform/x11/InputState.h"
#include "platform/x11/X11Screens.h"
#include "platform/x11/XSettings.h"

#include <chrono>

namespace klova::x11 {

class PointerInput {
public:
    PointerInput(InputState& state, X11Screens& screens, const XSettings& settings);

    /// A button event on its way to anybody.
    void watched(const RawButtonEvent& event, bool press);

    /// Asks where the press was that passed by last, and tells of it; at the latest before whatever
    /// comes next.
    void locatePress();
    Deadline deadline() const { return passing_ ? Deadline(passing_->locateAt) : std::nullopt; }

    /// A press that a grab of ours has frozen; answered here in every case.
    void frozenPress(const ButtonEvent& event);

    /// The release of a press that was swallowed.
    void ownedRelease(const ButtonEvent& event);

    /// A motion while a swallowed button is down: one step of a drag.
    void draggedInGrab(const ButtonEvent& event);

    /// A motion while somebody else owns the button.
    void draggedOutside();

    /// Selects motions only while somebody watches a drag that is under way: an idle mouse does
    /// not wake the program.
    void selectMotion();

    bool leftIsDown() const { return leftDown_; }

    /// To be called with every event that is not an XInput2 one.
    void handle(const xcb_generic_event_t& event) { maps_.handle(event); }

    /// To be called when devices come or go.
    void forgetDevices() { maps_.forgetDevices(); }

    /// In points, origin at the bottom left of the main screen, y growing upward.
    Point location();

private:
    struct Press {
        std::uint32_t button = 0;
        xcb_timestamp_t time = 0;
    };
    struct Passing {
        Press press;
        std::chrono::steady_clock::time_point locateAt;
    };

    void observe(const Press& press, Point place);
    void show(const Event& click);
    void countForeignPress();
    std::int64_t countClick(const Press& press, Point place);
    Event buttonEvent(std::uint32_t button, bool press, xcb_timestamp_t time);
    void readMainScreen();

    InputState& state_;
    X11Screens& screens_;
    const XSettings& settings_;
    ButtonMaps maps_;
    ClickCounter clicks_;
    double mainScreenBottom_ = 0;    ///< in root pixels, y downward
    std::optional<Passing> passing_; ///< watched while not armed, and not told of yet
    std::optional<Press> undecided_; ///< watched while armed, not yet seen frozen
    bool leftDown_ = false;
    bool motionSelected_ = false;
};

/// What is watched of the pointer at all times.
inline constexpr std::uint32_t kWatchedButtons =
    XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE;

} // namespace klova::x11
