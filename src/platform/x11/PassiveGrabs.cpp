#include "platform/x11/PassiveGrabs.h"

#include "platform/x11/XInput.h"

#include <algorithm>
#include <utility>

namespace klova::x11 {
namespace {

constexpr std::uint32_t kAnyKey = 0;
constexpr std::uint32_t kKeyMask =
    XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE;
constexpr std::uint32_t kButtonMask = XCB_INPUT_XI_EVENT_MASK_BUTTON_PRESS |
                                      XCB_INPUT_XI_EVENT_MASK_BUTTON_RELEASE |
                                      XCB_INPUT_XI_EVENT_MASK_MOTION;

/// The states that the keyboard can be in with these modifiers down. Only modifiers that have a
/// key count: each further one doubles the grabs, and the server compares every pair of them.
std::vector<std::uint32_t> statesThatContain(std::uint32_t modifiers, const KeyMap& map) {
    std::uint32_t possible = 0;
    for (const std::uint32_t ofKey : map.modifiers)
        possible |= ofKey;
    std::vector<std::uint32_t> states;
    for (std::uint32_t state = 0; state < 256; ++state)
        if ((state & modifiers) == modifiers && (state & ~possible) == 0)
            states.push_back(state);
    return states;
}

/// Only the first pair of masters is ever answered: a device of another pair would stay frozen.
xcb_input_device_id_t masterOf(const PassiveGrab& grab) {
    return grab.kind == PassiveGrab::Kind::key ? kMasterKeyboard : kMasterPointer;
}

xcb_input_xi_passive_grab_device_cookie_t request(Connection& connection, const PassiveGrab& grab) {
    const bool isKey = grab.kind == PassiveGrab::Kind::key;
    // A key holds the pointer back too, so that a click right after it waits for the verdict (and
    // the server replays a key to others only from such a grab). A click must not hold the keys.
    const auto paired = isKey ? XCB_INPUT_GRAB_MODE_22_SYNC : XCB_INPUT_GRAB_MODE_22_ASYNC;
    const std::uint32_t mask = isKey ? kKeyMask : kButtonMask;
    return xcb_input_xi_passive_grab_device(
        connection.get(), XCB_CURRENT_TIME, connection.root(), XCB_CURSOR_NONE, grab.detail,
        masterOf(grab), static_cast<std::uint16_t>(grab.modifierStates.size()), 1,
        static_cast<std::uint8_t>(grab.kind), XCB_INPUT_GRAB_MODE_22_SYNC,
        static_cast<std::uint8_t>(paired), 0, &mask, grab.modifierStates.data());
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

    // Any key comes first: placed again after the single ones the server would not let it take its
    // own old place, and would keep one more grab for each state with every renewal.
    std::vector<PassiveGrab> plan{{PassiveGrab::Kind::key, kAnyKey, statesThatContain(all, map)}};
    for (std::uint32_t keycode = 0; keycode < map.codes.size(); ++keycode) {
        const KeyCode code = map.codes[keycode];
        if (std::ranges::find(activationKeys, code) == activationKeys.end())
            continue;
        std::uint32_t others = 0;
        for (const KeyCode other : activationKeys)
            if (other != code)
                others |= map.modifiersOf(other);
        plan.push_back({PassiveGrab::Kind::key, keycode, statesThatContain(others, map)});
    }
    for (const std::uint32_t button : {1U, 3U})
        plan.push_back({PassiveGrab::Kind::button, button, statesThatContain(all, map)});
    return plan;
}

PassiveGrabs::PassiveGrabs(Connection& connection, std::vector<PassiveGrab> grabs)
    : connection_(connection), grabs_(std::move(grabs)) {
    renew();
}

void PassiveGrabs::renew() {
    refused_ = 0;
    std::vector<xcb_input_xi_passive_grab_device_cookie_t> cookies;
    cookies.reserve(grabs_.size());
    for (const PassiveGrab& grab : grabs_)
        cookies.push_back(request(connection_, grab));
    for (const auto cookie : cookies)
        if (const auto reply =
                own(xcb_input_xi_passive_grab_device_reply(connection_.get(), cookie, nullptr)))
            refused_ += reply->num_modifiers;
}

PassiveGrabs::~PassiveGrabs() {
    for (const PassiveGrab& grab : grabs_)
        xcb_input_xi_passive_ungrab_device(
            connection_.get(), connection_.root(), grab.detail, masterOf(grab),
            static_cast<std::uint16_t>(grab.modifierStates.size()),
            static_cast<std::uint8_t>(grab.kind), grab.modifierStates.data());
}

} // namespace klova::x11
