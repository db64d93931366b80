// Other programs' windows on X11.
#pragma once

#include "platform/AccessibilityService.h"
#include "platform/TrustPrompt.h"
#include "platform/x11/Clients.h"
#include "platform/x11/Elements.h"

#include <chrono>
#include <functional>
#include <optional>
#include <utility>

namespace klova::x11 {

class X11Screens;

class X11AccessibilityService final : public AccessibilityService {
public:
    using Clock = std::chrono::steady_clock;

    X11AccessibilityService(Connection& connection, WindowManager& manager, X11Screens& screens);

    AXUIElementRef AXUIElementCreateSystemWide() override;
    AXUIElementRef AXUIElementCreateApplication(ProcessId process) override;
    AXCopyResult AXUIElementCopyAttributeValue(const AXUIElementRef& element,
                                               std::string_view attribute) override;
    void AXUIElementSetAttributeValue(const AXUIElementRef& element, std::string_view attribute,
                                      const AXAttributeValue& value) override;
    AXUIElementRef AXUIElementCopyElementAtPosition(const AXUIElementRef& element, float x,
                                                    float y) override;
    std::optional<ProcessId> AXUIElementGetPid(const AXUIElementRef& element) override;
    bool AXIsProcessTrustedWithOptions(bool prompt) override;

    /// To be called with every event of the connection.
    void handle(const xcb_generic_event_t& event);

    /// While armed the active window is followed, so that a gesture need not ask for it.
    void follow(bool armed) { clients_.follow(armed); }

    /// For when a gesture may come next and none is under way, which would change what is seen; to
    /// be called once all events have been handled.
    void lookAhead() { clients_.lookAhead(); }

    /// Ends a gesture: what was written is sent as one request a window.
    void flushWrites();

    Deadline deadline() const { return tracked_.deadline(); }
    void onDeadline(Clock::time_point now);

    /// `time` answers with the time of the input event being dispatched, which requests for the
    /// focus carry.
    void setEventTime(std::function<xcb_timestamp_t()> time) { eventTime_ = std::move(time); }

    /// `prompt` is borrowed and outlives this. Without one nobody is prompted.
    void setTrustPrompt(TrustPrompt& prompt) { trustPrompt_ = &prompt; }

    Clients& clients() { return clients_; }
    WindowManager& windowManager() { return manager_; }

private:
    AXCopyResult read(const ApplicationElement& application, std::string_view attribute);
    AXCopyResult read(const WindowElement& element, std::string_view attribute);
    AXCopyResult read(const PartElement& part, std::string_view attribute);
    AXUIElementRef elementOf(FoundWindow found) const;
    AXUIElementRef elementFor(xcb_window_t window);
    std::optional<WindowSnapshot> present(const WindowElement& element);
    bool isActive(const WindowElement& element);
    bool isMinimized(const WindowElement& element);
    Frame frameOfWindow(const WindowElement& element);
    void setMinimized(const WindowElement& element, bool minimized);
    void beginMoment();

    Connection& connection_;
    WindowManager& manager_;
    X11Screens& screens_;
    TrackedWindows tracked_;
    Clients clients_;
    std::function<xcb_timestamp_t()> eventTime_ = [] { return XCB_CURRENT_TIME; };
    TrustPrompt* trustPrompt_ = nullptr;
    std::uint64_t moment_ = 0;
};

} // namespace klova::x11
