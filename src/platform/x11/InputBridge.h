// Input on X11: the event tap and the global monitors, fed by one stream of events.
#pragma once

#include "platform/EventMonitors.h"
#include "platform/EventTap.h"
#include "platform/Keyboard.h"
#include "platform/x11/KeyInput.h"
#include "platform/x11/PointerInput.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace klova::x11 {

class InputBridge final : public EventTapService, public EventMonitors, public Keyboard {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    InputBridge(Connection& connection, Heartbeat& heartbeat, X11Screens& screens,
                const XSettings& settings);

    std::unique_ptr<EventTapPort> CGEventTapCreate(std::uint32_t location, std::uint32_t placement,
                                                   std::uint32_t options, std::uint64_t mask,
                                                   TapClient& client) override;
    void CGEventTapEnable(EventTapPort& tap, bool enable) override;
    void activationKeysChanged(EventTapPort& tap) override;

    std::optional<MonitorId> addGlobalMonitorForEventsMatchingMask(std::uint64_t mask,
                                                                   Handler handler) override;
    void removeMonitor(MonitorId monitor) override;
    Point mouseLocation() override { return pointer_.location(); }

    std::string legendOf(KeyCode code) const override;
    void setLegendsChanged(std::function<void()> changed) override {
        legendsChanged_ = std::move(changed);
    }

    void handle(const xcb_generic_event_t& event);

    /// To be called after each event, once its answer is on its way.
    void beat() { state_.heartbeat.beat(state_.tap != nullptr && state_.tap->ownsKeyboard()); }

    /// To be called when no more events have been received: what need not be done between two.
    void settle();

    /// A new window manager or keyboard map makes other programs place their grabs again, and the
    /// newest one wins: ours are renewed at once, for whoever was quick, and once more for the
    /// others.
    void renewGrabsSoon();

    bool armed() const { return state_.armed(); }

    /// Whether the next key may be a gesture.
    bool awaitsKey() const {
        return armed() && state_.tap->ownsKeyboard() && !state_.tap->hasSwallowedButtons();
    }

    Deadline deadline() const;

    /// The server's time of the last input event.
    xcb_timestamp_t lastTime() const { return lastTime_; }

private:
    class Registration;

    void noteStuck(std::uint8_t latched, std::uint8_t locked, xcb_keycode_t keycode);
    void beforeInput(xcb_timestamp_t time);
    void handleModifiers(const xcb_generic_event_t& event);
    void handleXInput(const xcb_generic_event_t& event);
    void catchUpWithKeys(xcb_timestamp_t time);
    void readKeyMap();
    void renewGrabs();
    bool eventsWait();
    void holdKeyboardWhileArmed();

    InputState state_;
    KeyInput keys_;
    PointerInput pointer_;
    /// False where an extension is missing: one request of it would end the connection.
    bool usable_;
    bool keyMapChanged_ = true;
    bool legendsOutdated_ = false;
    std::function<void()> legendsChanged_;
    bool grabsOutdated_ = false; ///< the plan of the passive grabs may have changed
    xcb_timestamp_t lastTime_ = XCB_CURRENT_TIME;
    std::optional<TimePoint> retryAt_; ///< to take the keyboard
    std::optional<TimePoint> renewAt_; ///< the passive grabs, once others have placed theirs
    bool beaten_ = false; ///< armed without a frozen press: somebody else's grab came first
};

} // namespace klova::x11
