#include "platform/x11/X11Desktop.h"

#include "platform/Diagnostics.h"
#include "platform/x11/InputBridge.h"
#include "platform/x11/SingleInstance.h"
#include "platform/x11/X11AccessibilityService.h"
#include "platform/x11/X11Panels.h"
#include "platform/x11/X11Screens.h"
#include "platform/x11/X11TrayArea.h"
#include "platform/x11/X11Workspace.h"

#include <utility>

namespace klova::x11 {

X11Desktop::X11Desktop(const char* display)
    : connection_(display), manager_(connection_), settings_(connection_),
      screens_(std::make_unique<X11Screens>(connection_)),
      accessibility_(std::make_unique<X11AccessibilityService>(connection_, manager_, *screens_)),
      workspace_(std::make_unique<X11Workspace>(connection_, *accessibility_)),
      input_(std::make_unique<InputBridge>(connection_, heartbeat_, *screens_, settings_)),
      trayArea_(std::make_unique<X11TrayArea>(connection_)),
      panels_(std::make_unique<X11Panels>(connection_, manager_, settings_)) {
    accessibility_->setEventTime([this] { return input_->lastTime(); });
}

X11Desktop::~X11Desktop() = default;

AccessibilityService& X11Desktop::accessibility() { return *accessibility_; }
Workspace& X11Desktop::workspace() { return *workspace_; }
Screens& X11Desktop::screens() { return *screens_; }
EventTapService& X11Desktop::taps() { return *input_; }
EventMonitors& X11Desktop::monitors() { return *input_; }
Keyboard& X11Desktop::keyboard() { return *input_; }
TrayArea& X11Desktop::trayArea() { return *trayArea_; }
Panels& X11Desktop::panels() { return *panels_; }

SingleInstance& X11Desktop::instance() {
    if (!instance_)
        instance_ = std::make_unique<SingleInstance>(connection_);
    return *instance_;
}

void X11Desktop::reportTo(UniqueDescriptor guard) {
    heartbeat_ = Heartbeat(std::move(guard), instance().window());
}

void X11Desktop::setTrustPrompt(TrustPrompt& prompt) { accessibility_->setTrustPrompt(prompt); }

bool X11Desktop::dispatch() { return handleAll(connection_.poll()); }

bool X11Desktop::dispatchReceived() { return handleAll(connection_.pollReceived()); }

bool X11Desktop::handleAll(UniqueC<xcb_generic_event_t> event) {
    do {
        handle(std::move(event));
        event = connection_.pollReceived(); // handling may have received more
    } while (event);
    return !connection_.lost();
}

void X11Desktop::handle(UniqueC<xcb_generic_event_t> event) {
    const DiagnosticsHold hold; // what a key or a click asked for goes out first
    for (; event; event = connection_.pollReceived())
        serve(*event);
    const auto now = Clock::now();
    if (const auto due = accessibility_->deadline(); due && *due <= now)
        accessibility_->onDeadline(now);
    input_->settle();
    watchRoot();
    accessibility_->flushWrites();
    accessibility_->follow(input_->armed());
    if (input_->awaitsKey() && !accessibility_->deadline())
        accessibility_->lookAhead();
    connection_.flush();
    input_->beat();
}

/// While nothing is armed the program is not woken by what goes on among other windows.
void X11Desktop::watchRoot() {
    const bool closely = input_->armed();
    if (manager_.watch(closely)) {
        input_->renewGrabsSoon();
        input_->settle();
    }
    screens_->watch(closely);
}

void X11Desktop::serve(const xcb_generic_event_t& event) {
    // Keys and clicks are of no concern to anything else, and in a hurry.
    if ((event.response_type & 0x7F) == XCB_GE_GENERIC)
        input_->handle(event);
    else
        tellAll(event);
    accessibility_->flushWrites();
    connection_.flush();
    input_->beat();
}

void X11Desktop::tellAll(const xcb_generic_event_t& event) {
    manager_.handle(event);
    settings_.handle(event);
    screens_->handle(event);
    input_->handle(event);
    accessibility_->handle(event);
    trayArea_->handle(event);
    panels_->handle(event);
    if (instance_)
        instance_->handle(event);
}

Deadline X11Desktop::deadline() const {
    return earlier(input_->deadline(), accessibility_->deadline());
}

} // namespace klova::x11
