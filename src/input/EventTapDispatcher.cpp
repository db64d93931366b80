#include "input/EventTapDispatcher.h"

#include "input/ActivationKeys.h"
#include "input/KeyList.h"
#include "input/ShellState.h"
#include "input/SnapKeys.h"
#include "platform/Diagnostics.h"
#include "platform/FatalError.h"
#include "settings/DataStorageManager.h"

#include <algorithm>
#include <array>

namespace klova {
namespace {

/// The keys beside the direction keys that may serve as the reopen key.
constexpr std::array<std::int64_t, 9> kOtherAcceptedKeys{
    key::c, key::q, key::e, key::t, key::command, key::shift, key::option, key::control, key::fn};

constexpr std::int64_t kDoubleClick = 2;

bool isAccepted(std::int64_t code) {
    return isDirectionKey(code) ||
           std::ranges::find(kOtherAcceptedKeys, code) != kOtherAcceptedKeys.end();
}

void quit() {
    if (applicationDelegate == nullptr)
        fatalError("there is no application delegate to quit");
    applicationDelegate->quitApplication();
}

/// What a key's way down and its way up have in common. Whether it is left to a direction key's
/// own handling.
bool isLeftToDirections(std::int64_t code) {
    if (!isAccepted(code))
        return false;
    if (code == key::t)
        quit();
    if (code != deminimizeButton)
        return isDirectionKey(code);
    if (sharedSwipeManager != nullptr)
        sharedSwipeManager->deminimizeLastWindow();
    return false;
}

std::int64_t codeOf(const Event& event) {
    return CGEventGetIntegerValueField(event, EventField::keyCode);
}

} // namespace

/// What is done with an armed event before it is swallowed; every other type passes.
const std::array<EventTapDispatcher::Decision, 8> EventTapDispatcher::kDecisions{{
    {EventType::leftMouseDown, &EventTapDispatcher::leftMouseDown},
    {EventType::leftMouseUp, &EventTapDispatcher::ignore},
    {EventType::rightMouseDown, &EventTapDispatcher::rightMouseDown},
    {EventType::rightMouseUp, &EventTapDispatcher::ignore},
    {EventType::leftMouseDragged, &EventTapDispatcher::ignore},
    {EventType::keyDown, &EventTapDispatcher::keyDown},
    {EventType::keyUp, &EventTapDispatcher::keyUp},
    {EventType::otherMouseDown, &EventTapDispatcher::ignore},
}};

Verdict EventTapDispatcher::tapCallback(EventType type, const Event& event) {
    diagnosticLine([keys = keysDown] { return description(keys); });
    if (type == EventType::leftMouseDown && sharedSwipeManager != nullptr)
        sharedSwipeManager->setMouseClickedPoint(desktop_.monitors.mouseLocation());
    const auto* decision = std::ranges::find(kDecisions, type, &Decision::type);
    if (!armed() || decision == kDecisions.end()) {
        previousMousePosition.reset();
        return Verdict::pass;
    }
    (this->*decision->action)(event);
    return Verdict::swallow;
}

bool EventTapDispatcher::armed() const { return activationComplete && activationKeysHeld(); }

std::span<const KeyCode> EventTapDispatcher::activationKeys() const {
    return klova::activationKeys;
}

void EventTapDispatcher::leftMouseDown(const Event& event) {
    if (sharedSwipeManager == nullptr)
        return;
    sharedSwipeManager->invalidatePreviousMousePosition();
    sharedSwipeManager->setMouseClickedPoint(desktop_.monitors.mouseLocation());
    if (CGEventGetIntegerValueField(event, EventField::clickState) == kDoubleClick)
        sharedSwipeManager->manageDoubleClick();
}

void EventTapDispatcher::rightMouseDown(const Event& /*event*/) {
    if (sharedSwipeManager == nullptr)
        return;
    const Point pointer = desktop_.monitors.mouseLocation();
    sharedSwipeManager->setCurrentMouseLocation(pointer.x, pointer.y);
    sharedSwipeManager->minimizeWindow();
}

void EventTapDispatcher::keyDown(const Event& event) {
    const auto code = codeOf(event);
    if (!isLeftToDirections(code))
        return;
    keysDown.push_back(code);
    const auto position = positionForKeys(keysDown);
    if (position && sharedSwipeManager != nullptr)
        sharedSwipeManager->moveTo(*position);
}

void EventTapDispatcher::keyUp(const Event& event) {
    const auto code = codeOf(event);
    if (isLeftToDirections(code))
        std::erase(keysDown, code);
}

} // namespace klova
