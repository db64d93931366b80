#include "platform/x11/InputBridge.h"

#include "platform/x11/XcbXkb.h"

#include <utility>
#include <vector>

namespace klova::x11 {
namespace {

/// How soon to ask again for a keyboard that another program holds. The passive grabs need no
/// such luck; this is for what they do not cover.
constexpr std::chrono::milliseconds kRetry{20};

/// How long other programs may take to place their grabs anew after a change that makes them, and
/// how long no input comes before ours follow: for a moment none of them is in place.
constexpr std::chrono::milliseconds kRenewal{250};

void selectKeyboardEvents(Connection& connection) {
    constexpr std::uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY |
                                     XCB_XKB_EVENT_TYPE_MAP_NOTIFY |
                                     XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
    constexpr std::uint16_t mapParts = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
    xcb_xkb_select_events_details_t details{};
    details.affectNewKeyboard = details.newKeyboardDetails =
        XCB_XKB_NKN_DETAIL_KEYCODES | XCB_XKB_NKN_DETAIL_DEVICE_ID;
    details.affectState = details.stateDetails = XCB_XKB_STATE_PART_MODIFIER_BASE |
                                                 XCB_XKB_STATE_PART_MODIFIER_LATCH |
                                                 XCB_XKB_STATE_PART_MODIFIER_LOCK;
    xcb_xkb_select_events_aux(connection.get(), XCB_XKB_ID_USE_CORE_KBD, events, 0, 0, mapParts,
                              mapParts, &details);
}

} // namespace

/// A tap that is known to the bridge for as long as it lives.
class InputBridge::Registration final : public EventTapPort {
public:
    Registration(InputState& state, std::uint64_t mask, TapClient& client)
        : state_(state), tap_(state.connection, state.heartbeat, mask, client) {
        state_.tap = &tap_;
    }
    ~Registration() override { state_.tap = nullptr; }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;

private:
    InputState& state_;
    X11EventTap tap_;
};

InputBridge::InputBridge(Connection& connection, Heartbeat& heartbeat, X11Screens& screens,
                         const XSettings& settings)
    : state_{connection, heartbeat}, keys_(state_), pointer_(state_, screens, settings),
      usable_(connection.missingExtensions().empty()) {
    if (!usable_)
        return;
    selectKeyboardEvents(connection);
    keys_.selectKeys(false);
    selectXInputEvents(connection, kMasterPointer, kWatchedButtons);
    selectXInputEvents(connection, kAllDevices, XCB_INPUT_XI_EVENT_MASK_HIERARCHY);
    readKeyMap();
    if (const auto state = own(xcb_xkb_get_state_reply(
            connection.get(), xcb_xkb_get_state(connection.get(), XCB_XKB_ID_USE_CORE_KBD),
            nullptr)))
        noteStuck(state->latchedMods, state->lockedMods, 0);
}

std::unique_ptr<EventTapPort> InputBridge::CGEventTapCreate(std::uint32_t, std::uint32_t,
                                                            std::uint32_t, std::uint64_t mask,
                                                            TapClient& client) {
    if (state_.tap != nullptr || !usable_)
        return nullptr;
    grabsOutdated_ = true;
    return std::make_unique<Registration>(state_, mask, client);
}

void InputBridge::CGEventTapEnable(EventTapPort&, bool enable) {
    if (state_.tap == nullptr || state_.tap->enabled() == enable)
        return;
    state_.tap->enable(enable);
    grabsOutdated_ = true;
}

void InputBridge::activationKeysChanged(EventTapPort&) {
    grabsOutdated_ = true;
    settle(); // the next event may be their press
}

std::optional<MonitorId> InputBridge::addGlobalMonitorForEventsMatchingMask(std::uint64_t mask,
                                                                            Handler handler) {
    return state_.monitors.add(mask, std::move(handler));
}

void InputBridge::removeMonitor(MonitorId monitor) { state_.monitors.remove(monitor); }

void InputBridge::handle(const xcb_generic_event_t& event) {
    if (!usable_)
        return;
    const auto type = static_cast<std::uint8_t>(event.response_type & 0x7F);
    if (type == XCB_GE_GENERIC) {
        if (const auto grab = timeOfKeyboardGrab(state_.connection, event))
            state_.heartbeat.noticeGrab(*grab);
        else if (reinterpret_cast<const xcb_ge_generic_event_t&>(event).extension ==
                 state_.connection.xinputOpcode())
            handleXInput(event);
        return;
    }
    pointer_.handle(event);
    if (type == state_.connection.xkbFirstEvent()) {
        const auto& xkb = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event);
        if (xkb.xkbType == XCB_XKB_STATE_NOTIFY)
            handleModifiers(event);
        else
            keyMapChanged_ = true;
    } else if (type == XCB_MAPPING_NOTIFY) {
        if (reinterpret_cast<const xcb_mapping_notify_event_t&>(event).request !=
            XCB_MAPPING_POINTER)
            keyMapChanged_ = true;
    }
}

void InputBridge::handleModifiers(const xcb_generic_event_t& event) {
    const auto& state = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event);
    if (state.eventType == XCB_KEY_PRESS || state.eventType == XCB_KEY_RELEASE) {
        beforeInput(state.time);
        pointer_.locatePress();
        keys_.followStuckKeys();
        keys_.modifiersChanged(state.keycode, state.eventType == XCB_KEY_PRESS, state.baseMods);
        pointer_.selectMotion();
    }
    noteStuck(state.latchedMods, state.lockedMods, state.keycode);
}

void InputBridge::noteStuck(std::uint8_t latched, std::uint8_t locked, xcb_keycode_t keycode) {
    state_.capsLocked = (locked & XCB_MOD_MASK_LOCK) != 0;
    keys_.stick(latched | locked, keycode);
}

void InputBridge::handleXInput(const xcb_generic_event_t& event) {
    const auto& key = reinterpret_cast<const KeyEvent&>(event);
    const auto& rawKey = reinterpret_cast<const RawKeyEvent&>(event);
    const auto& button = reinterpret_cast<const ButtonEvent&>(event);
    const auto& rawButton = reinterpret_cast<const RawButtonEvent&>(event);
    beforeInput(key.time);
    if (key.event_type != XCB_INPUT_BUTTON_PRESS) // which says itself where it was
        pointer_.locatePress();
    keys_.followStuckKeys();
    switch (key.event_type) {
    case XCB_INPUT_RAW_KEY_PRESS:
    case XCB_INPUT_RAW_KEY_RELEASE:
        keys_.watched(rawKey, key.event_type == XCB_INPUT_RAW_KEY_PRESS);
        break;
    case XCB_INPUT_KEY_PRESS:
    case XCB_INPUT_KEY_RELEASE:
        keys_.frozen(key, key.event_type == XCB_INPUT_KEY_PRESS);
        break;
    case XCB_INPUT_RAW_BUTTON_PRESS:
    case XCB_INPUT_RAW_BUTTON_RELEASE:
        pointer_.watched(rawButton, key.event_type == XCB_INPUT_RAW_BUTTON_PRESS);
        break;
    case XCB_INPUT_BUTTON_PRESS:
        catchUpWithKeys(button.time);
        pointer_.frozenPress(button);
        break;
    case XCB_INPUT_BUTTON_RELEASE:
        pointer_.ownedRelease(button);
        break;
    case XCB_INPUT_MOTION:
        pointer_.draggedInGrab(button);
        break;
    case XCB_INPUT_RAW_MOTION:
        pointer_.draggedOutside();
        break;
    case XCB_INPUT_HIERARCHY:
        keys_.dropStaleKeys();
        pointer_.forgetDevices();
        break;
    default:
        break;
    }
    state_.place.reset();
    pointer_.selectMotion();
}

void InputBridge::beforeInput(xcb_timestamp_t time) {
    lastTime_ = time;
    if (renewAt_)
        renewAt_ = std::chrono::steady_clock::now() + kRenewal;
    state_.place.reset();
    if (keyMapChanged_)
        readKeyMap();
}

/// A frozen key holds back the keys after it, but not a click: the release of an activation key
/// may still be queued behind it when a click comes that is later than both. Times are whole
/// milliseconds: of equal ones the click counts as the earlier, since a gesture's click must not
/// reach the program. What a key does to the modifiers is told right behind it, and so before its
/// answer.
void InputBridge::catchUpWithKeys(xcb_timestamp_t time) {
    const auto isEarlierKey = [&](const xcb_generic_event_t& event) {
        return isKey(state_.connection, event) &&
               static_cast<std::int32_t>(reinterpret_cast<const KeyEvent&>(event).time - time) < 0;
    };
    const auto tellsOfModifiers = [&](const xcb_generic_event_t& event) {
        return event.response_type == state_.connection.xkbFirstEvent() &&
               reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event).xkbType ==
                   XCB_XKB_STATE_NOTIFY;
    };
    state_.connection.roundTrip();
    while (const auto key = state_.connection.takeWaiting(isEarlierKey)) {
        std::vector<UniqueC<xcb_generic_event_t>> modifiers;
        while (auto event = state_.connection.takeWaiting(tellsOfModifiers))
            modifiers.push_back(std::move(event));
        handle(*key);
        for (const auto& event : modifiers)
            handle(*event);
        state_.connection.roundTrip();
    }
}

void InputBridge::readKeyMap() {
    keyMapChanged_ = false;
    grabsOutdated_ = true;
    renewGrabsSoon();
    if (auto map = KeyMap::read(state_.connection)) {
        legendsOutdated_ |= map->legends != state_.map.legends;
        state_.map = *std::move(map);
    }
}

std::string InputBridge::legendOf(KeyCode code) const {
    const auto legend = state_.map.legends.find(code);
    return legend != state_.map.legends.end() ? legend->second : std::string();
}

void InputBridge::settle() {
    if (usable_ && keyMapChanged_)
        readKeyMap();
    if (const auto due = pointer_.deadline(); due && *due <= std::chrono::steady_clock::now())
        pointer_.locatePress();
    if (std::exchange(legendsOutdated_, false) && legendsChanged_)
        legendsChanged_();
    keys_.followStuckKeys();
    if (state_.tap == nullptr)
        return;
    if (grabsOutdated_ || state_.tap->armedForGood())
        state_.tap->placeGrabs(state_.map);
    grabsOutdated_ = false;
    keys_.selectKeys(pointer_.leftIsDown());
    renewGrabs();
    holdKeyboardWhileArmed();
}

void InputBridge::renewGrabsSoon() {
    beaten_ = true;
    renewAt_ = std::chrono::steady_clock::now() + kRenewal;
}

void InputBridge::renewGrabs() {
    const bool due = renewAt_ && *renewAt_ <= std::chrono::steady_clock::now();
    if (state_.armed() || (!beaten_ && !due) || eventsWait())
        return;
    if (due)
        renewAt_.reset();
    beaten_ = false;
    state_.tap->renewGrabs();
}

Deadline InputBridge::deadline() const {
    if (state_.tap == nullptr)
        return pointer_.deadline();
    const Deadline ofKeys = state_.armed() ? state_.heartbeat.deadline() : renewAt_;
    return earlier(retryAt_ ? retryAt_ : ofKeys, pointer_.deadline());
}

/// What has arrived and not been looked at may be the very press that a grab of ours holds back.
bool InputBridge::eventsWait() {
    return state_.connection.isWaiting([](const auto&) { return true; });
}

void InputBridge::holdKeyboardWhileArmed() {
    retryAt_.reset();
    X11EventTap& tap = *state_.tap;
    if (!tap.armed()) {
        tap.releaseKeyboard();
    } else if (!tap.ownsKeyboard() && !eventsWait()) {
        beaten_ = true;
        if (!tap.takeKeyboard())
            retryAt_ = std::chrono::steady_clock::now() + kRetry;
    }
}

} // namespace klova::x11
