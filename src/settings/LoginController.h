// Klova's own place among what the desktop starts at login.
#pragma once

#include "platform/LoginItems.h"

namespace klova {

/// The desktop's login items; borrowed from the shell, null until start-up set it.
inline LoginItems* loginItems = nullptr;

/// Needs `loginItems`; without them each operation is a fatal error. What the desktop refuses is
/// not reported.
class LoginController {
public:
    LoginController() = delete;

    /// Made by the first call, also where several come at once; the same ever after.
    static LSSharedFileListRef sharedFileList();

    /// True adds this program to the list, as often as it is asked for; false removes every item
    /// that starts it.
    static void setOpensAtLogin(bool opensAtLogin);

    static bool opensAtLogin();

    /// Forgets the shared list, for a test that brings another desktop.
    static void resetSharedFileList();
};

} // namespace klova
