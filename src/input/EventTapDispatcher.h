// Turns the clicks and keys of the event tap into window actions while the gestures are armed.
#pragma once

#include "actions/SwipeManager.h"
#include "platform/Desktop.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace klova {

/// The direction keys that went down while armed. Key repeat adds a code again, and one that comes
/// up after the modifiers stays and takes part in the next combination.
inline std::vector<std::int64_t> keysDown;

/// Who performs the actions; borrowed from the `KeyInputController`. Null: the actions are skipped,
/// events are swallowed all the same.
inline SwipeManager* sharedSwipeManager = nullptr;

class EventTapDispatcher : public TapClient {
public:
    /// `desktop` is borrowed and outlives this.
    explicit EventTapDispatcher(Desktop& desktop) : desktop_(desktop) {}

    /// Passes every event on while not armed, and else acts on it and swallows it. T without an
    /// application delegate is a fatal error.
    Verdict tapCallback(EventType type, const Event& event) override;

    bool armed() const override;
    std::span<const KeyCode> activationKeys() const override;

private:
    struct Decision {
        EventType type;
        void (EventTapDispatcher::*action)(const Event&);
    };
    static const std::array<Decision, 8> kDecisions;

    void ignore(const Event&) {}
    void leftMouseDown(const Event& event);
    void rightMouseDown(const Event& event);
    void keyDown(const Event& event);
    void keyUp(const Event& event);

    Desktop& desktop_;
};

} // namespace klova
