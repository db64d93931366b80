// The tap itself: what it has grabbed, and whom it asks.
#pragma once

#include "platform/EventTap.h"
#include "platform/x11/Heartbeat.h"
#include "platform/x11/HeldKeys.h"
#include "platform/x11/PassiveGrabs.h"
#include "platform/x11/XInput.h"

#include <functional>
#include <set>

namespace klova::x11 {

/// X11 has no tap. It is made of grabs that the server itself applies at the moment of an event:
/// passive ones that lie in wait for the press that completes the set, and the whole keyboard from
/// that press on. Each event taken this way arrives frozen and is answered before the next.
class X11EventTap {
public:
    X11EventTap(Connection& connection, Heartbeat& heartbeat, std::uint64_t mask,
                TapClient& client);

    /// Keys whose press was swallowed are kept from the other applications until they are let go,
    /// so that their auto-repeat does not reach anybody; then everything is free.
    ~X11EventTap();
    X11EventTap(const X11EventTap&) = delete;
    X11EventTap& operator=(const X11EventTap&) = delete;

    bool enabled() const { return enabled_; }
    void enable(bool enabled) { enabled_ = enabled; }
    bool armed() const { return enabled_ && client_.armed(); }
    bool isActivationKey(KeyCode code) const;

    /// Without activation keys the gestures, once armed, stay so for good.
    bool armedForGood() const { return armed() && client_.activationKeys().empty(); }

    /// Shows the client an event of the mask. Its verdict is known beforehand: while armed it
    /// swallows, and what it would let pass cannot be held back anyway.
    void show(const Event& event);

    /// Sets the passive grabs for this map and the client's keys, unless they are in place.
    void placeGrabs(const KeyMap& map);

    /// Whether each activation key sets a modifier, so that none needs to be watched for.
    bool foreseesArming() const { return foreseesArming_; }

    /// Puts the passive grabs before those that other programs have placed since.
    void renewGrabs() { passive_.renew(); }

    bool ownsKeyboard() const { return ownsKeyboard_; }

    /// Grabs the keyboard, which then freezes at each key event; for when one is frozen already
    /// and will be answered. False while another program holds it.
    bool takeFrozenKeyboard();

    /// The same for when no event waits for an answer.
    bool takeKeyboard();

    /// To be called when a key passed by unheld: no grab of ours was in force, whatever became of
    /// it. `sequence` is that of the event, which may be older than the grab.
    void keyboardEscaped(std::uint32_t sequence) {
        if (static_cast<std::int32_t>(sequence - grabSequence_) >= 0)
            ownsKeyboard_ = false;
    }

    /// Gives the keyboard back; for when no event of it waits for an answer.
    void releaseKeyboard();

    /// Answer a frozen key event: the application never sees it.
    void swallowKey(PhysicalKey physical, bool press);
    void swallowModifier(PhysicalKey physical, bool press);

    /// Answers a frozen key event: it goes where it would have gone without us, and the grab that
    /// froze it ends on exactly this event. While armed the keyboard is taken again at once; what
    /// came in between is caught by the passive grabs.
    void replayKey();

    /// Forgets the swallowed keys that are up though nobody said so.
    void dropStaleKeys(const std::function<bool(std::uint8_t keycode)>& isDown);

    /// Whether a key or button whose press was swallowed, other than a modifier, is still down.
    bool hasSwallowedAnything() const {
        return !swallowedKeys_.empty() || !swallowedButtons_.empty();
    }

    bool hasSwallowedKey(PhysicalKey physical) const { return swallowedKeys_.contains(physical); }
    bool hasSwallowedModifier(PhysicalKey physical) const {
        return swallowedModifiers_.contains(physical);
    }

    /// Answers a frozen press of a button, of the server's `time`: the application never sees it.
    void swallowButton(std::uint32_t button, xcb_timestamp_t time);

    void buttonReleased(std::uint32_t button) { swallowedButtons_.erase(button); }
    bool hasSwallowedButtons() const { return !swallowedButtons_.empty(); }
    bool hasSwallowedButton(std::uint32_t button) const {
        return swallowedButtons_.contains(button);
    }

    /// Lets the release of a button go to the application, though its press was swallowed: the
    /// person let go of the activation keys first.
    void releasePointer();

private:
    void swallow(std::set<PhysicalKey>& down, PhysicalKey physical, bool press);
    void keyboardGone();
    void waitForSwallowedKeys();

    Connection& connection_;
    Heartbeat& heartbeat_;
    std::uint64_t mask_;
    TapClient& client_;
    bool enabled_ = false;
    bool ownsKeyboard_ = false;
    std::uint32_t grabSequence_ = 0; ///< of the request that last grabbed the keyboard
    bool saidRefusal_ = false;
    bool foreseesArming_ = false;
    PassiveGrabs passive_;
    std::set<PhysicalKey> swallowedKeys_; ///< pressed under the grab and still down
    std::set<PhysicalKey> swallowedModifiers_;
    std::set<std::uint32_t> swallowedButtons_;
    xcb_timestamp_t pointerTaken_ = XCB_CURRENT_TIME; ///< when the newest of them was pressed
};

} // namespace klova::x11
