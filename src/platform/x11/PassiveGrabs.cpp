#include "platform/x11/PassiveGrabs.h"

#include "platform/x11/ServerGrab.h"
#include "platform/x11/XInput.h"

#include <algorithm>
#include <array>
#include <utility>

namespace klova::x11 {
namespace {

constexpr std::uint32_t kAny = 0; // key or button
constexpr std::uint32_t kKeyMask =
    XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE;
constexpr std::uint32_t kButtonMask = XCB_INPUT_XI_EVENT_MASK_BUTTON_PRESS |
                                      XCB_INPUT_XI_EVENT_MASK_BUTTON_RELEASE |
                                      XCB_INPUT_XI_EVENT_MASK_MOTION;

constexpr std::array<std::uint32_t, 1> kAnyState = {XCB_INPUT_MODIFIER_MASK_ANY};

/// Those of all the states of a keyboard that contain these modifiers, or those that do not.
std::vector<std::uint32_t> statesThatContain(std::uint32_t modifiers, bool contain) {
    std::vector<std::uint32_t> states;
    for (std::uint32_t state = 0; state < 256; ++state)
        if (((state & modifiers) == modifiers) == contain)
            states.push_back(state);
    return states;
}

/// Only the first pair of masters is ever answered: a device of another pair would stay frozen.
xcb_input_device_id_t masterOf(const PassiveGrab& grab) {
    return grab.kind == PassiveGrab::Kind::key ? kMasterKeyboard : kMasterPointer;
}

} // namespace

std::vector<PassiveGrab> planPassiveGrabs(const KeyMap& map,
                                          std::span<const KeyCode> activationKeys) {
    std::uint32_t all = 0;
    for (const KeyCode code : activationKeys) {
        if (map.modifiersOf(code) == 0)
            return {};
        all |= map.modifiersOf(code);
    }

    // Any key comes first: what is taken away from it would be taken from single ones too.
    std::vector<PassiveGrab> plan{{PassiveGrab::Kind::key, kAny, all}};
    for (std::uint32_t keycode = 0; keycode < map.codes.size(); ++keycode) {
        const KeyCode code = map.codes[keycode];
        if (std::ranges::find(activationKeys, code) == activationKeys.end())
            continue;
        std::uint32_t others = 0;
        for (const KeyCode other : activationKeys)
            if (other != code)
                others |= map.modifiersOf(other);
        plan.push_back({PassiveGrab::Kind::key, keycode, others});
    }
    for (const std::uint32_t button : {1U, 3U})
        plan.push_back({PassiveGrab::Kind::button, button, all});
    return plan;
}

void PassiveGrabs::place(std::vector<PassiveGrab> grabs) {
    if (grabs == grabs_)
        return;
    grabs_ = std::move(grabs);
    renew();
}

/// The server looks through all grabs at every key and click, so there are as few as can be: one
/// for any state, from which those states are taken that nobody asked for. Meanwhile nobody else's
/// request is served.
void PassiveGrabs::renew() {
    std::vector<Cookie> cookies;
    {
        const ServerGrab alone(connection_);
        remove();
        for (const PassiveGrab& grab : grabs_) {
            cookies.push_back(request(grab, kAnyState));
            release(grab, statesThatContain(grab.modifiers, false));
        }
    }
    refused_ = 0;
    for (std::size_t i = 0; i < grabs_.size(); ++i)
        if (refusals(cookies[i]) > 0) // for the sake of some states: the others can be had
            refused_ += refusals(request(grabs_[i], statesThatContain(grabs_[i].modifiers, true)));
}

PassiveGrabs::Cookie PassiveGrabs::request(const PassiveGrab& grab,
                                           std::span<const std::uint32_t> states) {
    const bool isKey = grab.kind == PassiveGrab::Kind::key;
    // A key holds the pointer back too, so that a click right after it waits for the verdict (and
    // the server replays a key to others only from such a grab). A click must not hold the keys.
    const auto paired = isKey ? XCB_INPUT_GRAB_MODE_22_SYNC : XCB_INPUT_GRAB_MODE_22_ASYNC;
    const std::uint32_t mask = isKey ? kKeyMask : kButtonMask;
    return xcb_input_xi_passive_grab_device(
        connection_.get(), XCB_CURRENT_TIME, connection_.root(), XCB_CURSOR_NONE, grab.detail,
        masterOf(grab), static_cast<std::uint16_t>(states.size()), 1,
        static_cast<std::uint8_t>(grab.kind), XCB_INPUT_GRAB_MODE_22_SYNC,
        static_cast<std::uint8_t>(paired), 0, &mask, states.data());
}

void PassiveGrabs::release(const PassiveGrab& grab, std::span<const std::uint32_t> states) {
    if (states.empty())
        return;
    xcb_input_xi_passive_ungrab_device(connection_.get(), connection_.root(), grab.detail,
                                       masterOf(grab), static_cast<std::uint16_t>(states.size()),
                                       static_cast<std::uint8_t>(grab.kind), states.data());
}

std::size_t PassiveGrabs::refusals(Cookie cookie) {
    const auto reply =
        own(xcb_input_xi_passive_grab_device_reply(connection_.get(), cookie, nullptr));
    return reply ? reply->num_modifiers : 0;
}

void PassiveGrabs::remove() {
    for (const auto kind : {PassiveGrab::Kind::key, PassiveGrab::Kind::button})
        release({kind, kAny}, kAnyState);
}

PassiveGrabs::~PassiveGrabs() { remove(); }

} // namespace klova::x11
