#include "platform/x11/X11EventTap.h"

#include "platform/Diagnostics.h"

#include <algorithm>
#include <chrono>
#include <poll.h>
#include <string>

namespace klova::x11 {
namespace {

constexpr std::chrono::seconds kPatience{5};

bool setsModifierWithEachKey(const KeyMap& map, std::span<const KeyCode> codes) {
    for (std::size_t keycode = 0; keycode < map.codes.size(); ++keycode)
        if (map.modifiers[keycode] == 0 &&
            std::ranges::find(codes, map.codes[keycode]) != codes.end())
            return false;
    return true;
}

} // namespace

X11EventTap::X11EventTap(Connection& connection, Heartbeat& heartbeat, std::uint64_t mask,
                         TapClient& client)
    : connection_(connection), heartbeat_(heartbeat), mask_(mask), client_(client),
      passive_(connection) {}

X11EventTap::~X11EventTap() {
    releasePointer();
    passive_.place({});
    waitForSwallowedKeys();
    releaseKeyboard();
    connection_.flush();
}

bool X11EventTap::isActivationKey(KeyCode code) const {
    return std::ranges::find(client_.activationKeys(), code) != client_.activationKeys().end();
}

void X11EventTap::show(const Event& event) {
    if (enabled_ && (mask_ & maskOf(event.type)) != 0)
        client_.tapCallback(event.type, event);
}

void X11EventTap::placeGrabs(const KeyMap& map) {
    std::vector<PassiveGrab> plan;
    // Without activation keys nothing arms but a first modifier, and then everything is taken.
    if (enabled_ && (!client_.activationKeys().empty() || client_.armed()))
        plan = planPassiveGrabs(map, client_.activationKeys());
    foreseesArming_ = !plan.empty() && setsModifierWithEachKey(map, client_.activationKeys());
    passive_.place(std::move(plan));
    if (passive_.refused() > 0 && !saidRefusal_) {
        saidRefusal_ = true;
        errorLine("another program holds " + std::to_string(passive_.refused()) +
                  " combinations of the activation keys; they are watched in another way.");
    }
}

bool X11EventTap::takeFrozenKeyboard() {
    const std::uint32_t mask =
        XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE;
    const auto cookie = xcb_input_xi_grab_device(
        connection_.get(), connection_.root(), XCB_CURRENT_TIME, XCB_CURSOR_NONE, kMasterKeyboard,
        XCB_INPUT_GRAB_MODE_22_SYNC, XCB_INPUT_GRAB_MODE_22_ASYNC, 0, 1, &mask);
    const auto reply = own(xcb_input_xi_grab_device_reply(connection_.get(), cookie, nullptr));
    ownsKeyboard_ = reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
    grabSequence_ = cookie.sequence;
    return ownsKeyboard_;
}

bool X11EventTap::takeKeyboard() {
    if (!takeFrozenKeyboard())
        return false;
    // A grab of this kind begins frozen. Where a passive one was quicker its event is on the way,
    // and its answer is what lets the keyboard go on.
    if (!connection_.isWaiting(
            [this](const auto& event) { return isGrabbedKey(connection_, event); }))
        allowEvents(connection_, kMasterKeyboard, Allow::untilNextEvent);
    return true;
}

void X11EventTap::releaseKeyboard() {
    // An event that waits for its answer ends the grab by that answer.
    if (!ownsKeyboard_ || connection_.isWaiting([this](const auto& event) {
            return isGrabbedKey(connection_, event);
        }))
        return;
    xcb_input_xi_ungrab_device(connection_.get(), XCB_CURRENT_TIME, kMasterKeyboard);
    keyboardGone();
}

void X11EventTap::keyboardGone() {
    ownsKeyboard_ = false;
    swallowedKeys_.clear();
    swallowedModifiers_.clear();
}

void X11EventTap::swallowKey(PhysicalKey physical, bool press) {
    swallow(swallowedKeys_, physical, press);
}

void X11EventTap::swallowModifier(PhysicalKey physical, bool press) {
    swallow(swallowedModifiers_, physical, press);
}

void X11EventTap::dropStaleKeys(const std::function<bool(std::uint8_t)>& isDown) {
    std::erase_if(swallowedKeys_, [&](const auto& key) { return !isDown(key.keycode); });
}

void X11EventTap::swallow(std::set<PhysicalKey>& down, PhysicalKey physical, bool press) {
    if (press)
        down.insert(physical);
    else
        down.erase(physical);
    allowEvents(connection_, kMasterKeyboard, Allow::untilNextEvent);
}

void X11EventTap::replayKey() {
    allowEvents(connection_, kMasterKeyboard, Allow::replay);
    if (armed()) {
        ownsKeyboard_ = false;
        takeKeyboard();
    } else {
        keyboardGone();
    }
}

void X11EventTap::swallowButton(std::uint32_t button, xcb_timestamp_t time) {
    pointerTaken_ = time;
    swallowedButtons_.insert(button);
    allowEvents(connection_, kMasterPointer, Allow::thaw);
}

void X11EventTap::releasePointer() {
    if (swallowedButtons_.empty())
        return;
    swallowedButtons_.clear();
    // A grab that the next press has begun meanwhile is newer, and stays.
    xcb_input_xi_ungrab_device(connection_.get(), pointerTaken_, kMasterPointer);
}

void X11EventTap::waitForSwallowedKeys() {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + kPatience;
    connection_.flush();
    while (ownsKeyboard_ && !swallowedKeys_.empty() && !connection_.lost()) {
        heartbeat_.beat(true);
        const auto event = connection_.poll();
        if (!event) {
            if (Clock::now() >= end)
                return;
            pollfd descriptor{connection_.descriptor(), POLLIN, 0};
            ::poll(&descriptor, 1, static_cast<int>(Heartbeat::kInterval.count()));
            continue;
        }
        if (!isGrabbedKey(connection_, *event)) {
            // A click may have been frozen before the passive grabs went.
            allowEvents(connection_, kMasterPointer, Allow::replay);
            connection_.flush();
            continue;
        }
        const auto& key = reinterpret_cast<const KeyEvent&>(*event);
        const PhysicalKey physical{key.sourceid, static_cast<std::uint8_t>(key.detail)};
        const bool press = key.event_type == XCB_INPUT_KEY_PRESS;
        if (press || swallowedKeys_.contains(physical)) {
            swallowKey(physical, press);
        } else {
            // An activation key: the chord is over.
            allowEvents(connection_, kMasterKeyboard, Allow::replay);
            keyboardGone();
        }
        connection_.flush();
    }
}

} // namespace klova::x11
