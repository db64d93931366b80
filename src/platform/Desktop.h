// Everything that Klova asks of a desktop, in one hand.
#pragma once

#include "platform/AccessibilityService.h"
#include "platform/Application.h"
#include "platform/EventMonitors.h"
#include "platform/EventTap.h"
#include "platform/LoginItems.h"
#include "platform/PreferencesStore.h"
#include "platform/Screens.h"
#include "platform/StatusBar.h"
#include "platform/Workspace.h"

namespace klova {

/// Borrowed services; whoever builds the desktop keeps them alive until the program ends.
struct Desktop {
    AccessibilityService& accessibility;
    Workspace& workspace;
    Screens& screens;
    EventTapService& taps;
    EventMonitors& monitors;
    StatusItem& statusItem;
    PreferencesStore& preferences;
    Application& application;
    LoginItems& loginItems;
};

} // namespace klova
