#include "platform/x11/PointerInput.h"

#include <utility>

namespace klova::x11 {
namespace {

constexpr std::uint32_t kLeft = 1;
constexpr std::uint32_t kMiddle = 2;
constexpr std::uint32_t kRight = 3;

/// By then a click has reached its window, which is not to wait for our question.
constexpr std::chrono::milliseconds kPassing{1};

EventType typeOf(std::uint32_t button, bool press) {
    switch (button) {
    case kLeft:
        return press ? EventType::leftMouseDown : EventType::leftMouseUp;
    case kRight:
        return press ? EventType::rightMouseDown : EventType::rightMouseUp;
    default:
        return press ? EventType::otherMouseDown : EventType::null;
    }
}

} // namespace

PointerInput::PointerInput(InputState& state, X11Screens& screens, const XSettings& settings)
    : state_(state), screens_(screens), settings_(settings), maps_(state.connection) {
    readMainScreen();
}

void PointerInput::readMainScreen() { mainScreenBottom_ = screens_.mainMonitor().area.bottom(); }

Point PointerInput::location() {
    const Point place = state_.place ? *state_.place : queryPointer(state_.connection);
    return {place.x, mainScreenBottom_ - place.y};
}

Event PointerInput::buttonEvent(std::uint32_t button, bool press, xcb_timestamp_t time) {
    Event event = state_.event(typeOf(button, press));
    if (press)
        event.clickState = countClick({button, time}, *state_.place);
    if (button == kLeft)
        leftDown_ = press;
    return event;
}

void PointerInput::watched(const RawButtonEvent& event, bool press) {
    countForeignPress();
    const std::uint32_t button = maps_.logicalButton(event.sourceid, event.detail);
    if (button != kLeft && button != kRight)
        return;
    if (press && state_.armed()) {
        // Either a grab of ours holds it back and shows it again at once, or it is not for us.
        undecided_ = Press{button, event.time};
        return;
    }
    if (press)
        passing_ = Passing{{button, event.time}, std::chrono::steady_clock::now() + kPassing};
    else
        show(buttonEvent(button, false, event.time));
}

void PointerInput::locatePress() {
    const auto passing = std::exchange(passing_, std::nullopt);
    if (!passing)
        return;
    observe(passing->press, queryPointer(state_.connection));
    selectMotion();
}

void PointerInput::observe(const Press& press, Point place) {
    readMainScreen();
    state_.place = place;
    show(buttonEvent(press.button, true, press.time));
    state_.place.reset();
}

void PointerInput::show(const Event& click) {
    state_.monitors.deliver(click);
    state_.observe(click);
}

void PointerInput::countForeignPress() {
    if (const auto press = std::exchange(undecided_, std::nullopt))
        countClick(*press, queryPointer(state_.connection));
}

std::int64_t PointerInput::countClick(const Press& press, Point place) {
    ClickLimits limits = settings_.shared().clicks;
    limits.distance *= screens_.scale(); // desktops state it in points
    return clicks_.press(press.button, press.time, place, limits);
}

void PointerInput::frozenPress(const ButtonEvent& event) {
    const bool passed = std::exchange(passing_, std::nullopt).has_value();
    const bool seen = !std::exchange(undecided_, std::nullopt);
    const Point place = pixel(event.root_x, event.root_y);
    if (!state_.armed()) {
        allowEvents(state_.connection, kMasterPointer, Allow::replay);
        if (passed || !seen)
            observe({event.detail, event.time}, place);
        return;
    }
    // Before anything else: while the pointer is frozen the server merges its motions, and each
    // of them is to be a step of the drag that may begin here.
    state_.tap->swallowButton(event.detail, event.time);
    state_.connection.flush();
    readMainScreen();
    state_.place = place;
    state_.tap->show(buttonEvent(event.detail, true, event.time));
}

void PointerInput::ownedRelease(const ButtonEvent& event) {
    if (state_.tap == nullptr)
        return;
    state_.place = pixel(event.root_x, event.root_y);
    state_.tap->show(buttonEvent(event.detail, false, event.time));
    state_.tap->buttonReleased(event.detail);
}

void PointerInput::draggedInGrab(const ButtonEvent& event) {
    if (state_.tap == nullptr || !state_.tap->hasSwallowedButton(kLeft))
        return;
    state_.place = pixel(event.root_x, event.root_y);
    state_.monitors.deliver(state_.event(EventType::leftMouseDragged));
}

void PointerInput::draggedOutside() {
    // Armed, but unable to hold anything back: the drag belongs to whoever holds the keyboard.
    if (state_.armed() && !state_.tap->ownsKeyboard())
        return;
    state_.monitors.deliver(state_.event(EventType::leftMouseDragged));
}

void PointerInput::selectMotion() {
    const bool inGrab = state_.tap != nullptr && state_.tap->hasSwallowedButton(kLeft);
    const bool wanted =
        leftDown_ && !inGrab && state_.monitors.watches(EventType::leftMouseDragged);
    if (wanted == motionSelected_)
        return;
    motionSelected_ = wanted;
    selectXInputEvents(state_.connection, kMasterPointer,
                       wanted ? kWatchedButtons | XCB_INPUT_XI_EVENT_MASK_RAW_MOTION
                              : kWatchedButtons);
}

} // namespace klova::x11
