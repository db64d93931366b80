#include "platform/x11/PointerInput.h"

#include <utility>

namespace klova::x11 {
namespace {

constexpr std::uint32_t kLeft = 1;
constexpr std::uint32_t kMiddle = 2;
constexpr std::uint32_t kRight = 3;

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
    : state_(state), screens_(screens), settings_(settings) {
    readMainScreen();
}

void PointerInput::readMainScreen() { mainScreenBottom_ = screens_.mainMonitor().area.bottom(); }

Point PointerInput::location() {
    const Point place = state_.place ? *state_.place : queryPointer(state_.connection);
    return {place.x, mainScreenBottom_ - place.y};
}

std::uint32_t PointerInput::logicalButton(const RawButtonEvent& event) const {
    auto* connection = state_.connection.get();
    const auto device = static_cast<std::uint8_t>(event.sourceid);
    const auto ofDevice = xcb_input_get_device_button_mapping(connection, device);
    const auto ofPointer = xcb_get_pointer_mapping(connection);
    const auto deviceReply =
        own(xcb_input_get_device_button_mapping_reply(connection, ofDevice, nullptr));
    const auto pointerReply = own(xcb_get_pointer_mapping_reply(connection, ofPointer, nullptr));

    // The server applies the device's own map first, then that of the pointer it moves.
    std::uint32_t button = event.detail;
    if (deviceReply && button >= 1 && button <= deviceReply->map_size)
        button = xcb_input_get_device_button_mapping_map(deviceReply.get())[button - 1];
    if (pointerReply && button >= 1 && button <= pointerReply->map_len)
        button = xcb_get_pointer_mapping_map(pointerReply.get())[button - 1];
    return button;
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
    const auto pointer = askPointer(state_.connection);
    const std::uint32_t button = logicalButton(event);
    const Point place = takePointer(state_.connection, pointer);
    if (button != kLeft && button != kRight)
        return;
    if (press && state_.armed()) {
        // Either a grab of ours holds it back and shows it again at once, or it is not for us.
        undecided_ = Press{button, event.time};
        return;
    }
    observe(button, press, event.time, place);
}

void PointerInput::observe(std::uint32_t button, bool press, xcb_timestamp_t time, Point place) {
    if (press)
        readMainScreen();
    state_.place = place;
    const Event click = buttonEvent(button, press, time);
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
    const bool seen = !std::exchange(undecided_, std::nullopt);
    const Point place = pixel(event.root_x, event.root_y);
    if (!state_.armed()) {
        allowEvents(state_.connection, kMasterPointer, Allow::replay);
        if (!seen)
            observe(event.detail, true, event.time, place);
        return;
    }
    // Before anything else: while the pointer is frozen the server merges its motions, and each
    // of them is to be a step of the drag that may begin here.
    state_.tap->swallowButton(event.detail);
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
