#include "input/KeyInputController.h"

#include "input/ActivationKeys.h"
#include "input/ShellState.h"
#include "platform/Diagnostics.h"
#include "platform/FatalError.h"
#include "settings/PrivilegeManager.h"

#include <algorithm>

namespace klova {
namespace {

constexpr std::uint64_t kModifierMask = maskOf(EventType::flagsChanged);
constexpr std::uint64_t kDragMask = maskOf(EventType::leftMouseDragged);
constexpr std::uint64_t kReenableMask = maskOf(EventType::leftMouseDown) |
                                        maskOf(EventType::rightMouseDown) |
                                        maskOf(EventType::mouseMoved) | maskOf(EventType::keyDown) |
                                        maskOf(EventType::keyUp) | maskOf(EventType::flagsChanged);

void showIcon(std::string_view name) {
    StatusButton* button = statusItem != nullptr ? statusItem->button() : nullptr;
    if (button == nullptr)
        fatalError("the status item has no button");
    if (button->hasImage())
        button->setImage(name);
    button->setNeedsDisplay();
}

} // namespace

KeyInputController::KeyInputController(Desktop& desktop) : desktop_(desktop) {
    diagnosticLine("AXTrustedCheckOptionPrompt");
    accessEnabled_ = desktop.accessibility.AXIsProcessTrustedWithOptions(false) ||
                     PrivilegeManager(desktop).acquirePrivileges();
    if (accessEnabled_)
        startup();
    else
        desktop.application.terminate();
}

KeyInputController::~KeyInputController() {
    for (const MonitorId monitor : installed_)
        desktop_.monitors.removeMonitor(monitor);
}

void KeyInputController::startup() {
    swipeManager_.emplace(desktop_);
    addKaCMonitors();
}

void KeyInputController::addKaCMonitors() {
    if (!addMonitor(kModifierMask, &KeyInputController::flagsChanged) ||
        !addMonitor(kReenableMask, &KeyInputController::cfRunLoopFix))
        fatalError("the desktop refused a global event monitor");
}

std::optional<MonitorId>
KeyInputController::addMonitor(std::uint64_t mask,
                               void (KeyInputController::*handler)(const Event&)) {
    const auto monitor = desktop_.monitors.addGlobalMonitorForEventsMatchingMask(
        mask, [this, handler](const Event& event) { (this->*handler)(event); });
    if (monitor)
        installed_.push_back(*monitor);
    return monitor;
}

void KeyInputController::flagsChanged(const Event& event) {
    const auto code = static_cast<KeyCode>(CGEventGetIntegerValueField(event, EventField::keyCode));
    if (std::ranges::find(heldModifierKeys, code) != heldModifierKeys.end())
        modifierReleased(code);
    else
        modifierPressed(code);
    if (event.modifierFlags == kNoModifierDown)
        std::erase(heldModifierKeys, code);
}

void KeyInputController::modifierReleased(KeyCode code) {
    std::erase(heldModifierKeys, code);
    if (!activationKeysHeld()) {
        activationComplete = false;
        showIcon("Menulet_deactivated");
    }
    // Also where the set is still complete: dragging then rests until the next press.
    removeDragMonitor();
}

void KeyInputController::modifierPressed(KeyCode code) {
    heldModifierKeys.push_back(code);
    if (!activationKeysHeld())
        return;
    addDragMonitor();
    activationComplete = true;
    showIcon("Menulet_activated");
}

void KeyInputController::cfRunLoopFix(const Event& /*event*/) {
    if (eventTap != nullptr)
        desktop_.taps.CGEventTapEnable(*eventTap, true);
}

void KeyInputController::mouseDraggedHandler(const Event& /*event*/) {
    if (!activationComplete || panelOpen) {
        swipeManager_->invalidatePreviousMousePosition();
        return;
    }
    const Point pointer = desktop_.monitors.mouseLocation();
    swipeManager_->setCurrentMouseLocation(pointer.x, pointer.y);
    swipeManager_->dragWindow();
}

void KeyInputController::addDragMonitor() {
    dragMonitor_ = addMonitor(kDragMask, &KeyInputController::mouseDraggedHandler);
}

void KeyInputController::removeDragMonitor() {
    if (!dragMonitor_)
        return;
    desktop_.monitors.removeMonitor(*dragMonitor_);
    std::erase(installed_, *dragMonitor_);
    dragMonitor_.reset();
}

} // namespace klova
