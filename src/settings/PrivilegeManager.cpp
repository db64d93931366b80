#include "settings/PrivilegeManager.h"

namespace klova {

bool PrivilegeManager::acquirePrivileges() {
    constexpr int kRecheck = 0; // "OK" and every other way out answer something else
    if (desktop_.accessibility.AXIsProcessTrustedWithOptions(true))
        return true;
    desktop_.application.activateIgnoringOtherApps();
    const int response = desktop_.application.runModalAlert(
        "Enable Klova Using Accessibility feature",
        "Once you have enabled Klova in System Preferences->Security and Privacy -> Privacy, "
        "click OK.");
    if (response == kRecheck) {
        if (desktop_.accessibility.AXIsProcessTrustedWithOptions(true))
            hasPrivileges_ = true;
        else
            desktop_.application.terminate();
    }
    return false;
}

} // namespace klova
