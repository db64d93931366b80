// Klova's desktop on X11: one connection, the services on it, and the events that drive them.
#pragma once

#include "platform/EventSource.h"
#include "platform/x11/Connection.h"
#include "platform/x11/Heartbeat.h"
#include "platform/x11/WindowManager.h"
#include "platform/x11/XSettings.h"

#include <memory>
#include <optional>

namespace klova {
class AccessibilityService;
class EventMonitors;
class EventTapService;
class Keyboard;
class Panels;
class Screens;
class TrayArea;
class TrustPrompt;
class Workspace;
} // namespace klova

namespace klova::x11 {

class InputBridge;
class SingleInstance;
class X11AccessibilityService;
class X11Panels;
class X11Screens;
class X11TrayArea;
class X11Workspace;

class X11Desktop final : public EventSource {
public:
    /// Throws DisplayUnreachable.
    explicit X11Desktop(const char* display = nullptr);
    ~X11Desktop() override;

    Connection& connection() { return connection_; }
    AccessibilityService& accessibility();
    Workspace& workspace();
    Screens& screens();
    EventTapService& taps();
    EventMonitors& monitors();
    Keyboard& keyboard();
    TrayArea& trayArea();
    Panels& panels();

    /// Claims the screen at the first call.
    SingleInstance& instance();

    /// Beats for a guard from now on. Its pipe closes with this.
    void reportTo(UniqueDescriptor guard);

    /// `prompt` is borrowed and outlives this.
    void setTrustPrompt(TrustPrompt& prompt);

    int descriptor() const override { return connection_.descriptor(); }
    bool dispatch() override;
    bool dispatchReceived() override;
    Deadline deadline() const override;

private:
    bool handleAll(UniqueC<xcb_generic_event_t> event);
    void handle(UniqueC<xcb_generic_event_t> event);
    void watchRoot();
    void serve(const xcb_generic_event_t& event);
    void tellAll(const xcb_generic_event_t& event);

    Connection connection_;
    WindowManager manager_;
    XSettings settings_;
    Heartbeat heartbeat_;
    std::unique_ptr<X11Screens> screens_;
    std::unique_ptr<X11AccessibilityService> accessibility_;
    std::unique_ptr<X11Workspace> workspace_;
    std::unique_ptr<InputBridge> input_;
    std::unique_ptr<X11TrayArea> trayArea_;
    std::unique_ptr<X11Panels> panels_;
    std::unique_ptr<SingleInstance> instance_; ///< null until it is asked for
};

} // namespace klova::x11
