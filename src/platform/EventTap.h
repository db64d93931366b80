// The event tap: every key and click, before other applications see it.
#pragma once

#include "platform/Events.h"

#include <cstdint>
#include <memory>
#include <span>

namespace klova {

enum class Verdict { pass, swallow };

/// Who decides about each event. Borrowed by the tap, which it outlives.
class TapClient {
public:
    virtual ~TapClient() = default;

    /// Called once for each event of the tap's mask, in order. A desktop that sees only what it
    /// holds back leaves out what comes while `armed` is false. Must not throw.
    virtual Verdict tapCallback(EventType type, const Event& event) = 0;

    /// Whether the next key or click would be swallowed: what a desktop that has to hold events
    /// back beforehand needs to know.
    virtual bool armed() const = 0;

    /// The keys whose press can arm.
    virtual std::span<const KeyCode> activationKeys() const = 0;
};

/// An installed tap; destroying it lets every event pass and frees all that was held.
class EventTapPort {
public:
    virtual ~EventTapPort() = default;
};

class EventTapService {
public:
    virtual ~EventTapService() = default;

    /// Installs a tap, disabled. Null when the desktop refuses it.
    virtual std::unique_ptr<EventTapPort>
    CGEventTapCreate(std::uint32_t location, std::uint32_t placement, std::uint32_t options,
                     std::uint64_t mask, TapClient& client) = 0;

    /// Enables or disables a tap of this service. A disabled tap lets every event pass.
    virtual void CGEventTapEnable(EventTapPort& tap, bool enable) = 0;

    /// To be called after each change of the client's activation keys.
    virtual void activationKeysChanged(EventTapPort& tap) = 0;
};

} // namespace klova
