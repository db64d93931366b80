#include "input/ProcessState.h"

#include "accessibility/AccessibilityElement.h"
#include "actions/SwipeManager.h"
#include "input/ActivationKeys.h"
#include "input/EventTapDispatcher.h"
#include "input/ShellState.h"
#include "settings/DataStorageManager.h"
#include "settings/LoginController.h"

namespace klova {

void resetProcessState() {
    activationKeys.clear();
    heldModifierKeys.clear();
    activationComplete = false;
    keysDown.clear();
    sharedSwipeManager = nullptr;
    previousMousePosition.reset();
    maximizingEnabled = true;
    centeringEnabled = true;
    deminimizeButton = key::c;
    dataStorageManager = nullptr;
    statusItem = nullptr;
    eventTap = nullptr;
    applicationDelegate = nullptr;
    panelOpen = false;
    loginItems = nullptr;
    LoginController::resetSharedFileList();
    AccessibilityElement::resetSystemWideElement();
}

} // namespace klova
