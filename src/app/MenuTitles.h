// What the status menu's entries say.
#pragma once

#include <QString>

namespace klova {

struct MenuTitles {
    QString activationKeys;
    QString dragging, minimizing, reopen, maximizing;
    QString left, right, top, bottom;
    QString topLeft, topRight, bottomLeft, bottomRight;
    QString quit;
};

/// The titles for the settings that are in force now.
MenuTitles menuTitles();

} // namespace klova
