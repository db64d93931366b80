// What the desktop's accessibility bus tells of a program, as a screen reader hears it.
#pragma once

#include "desktop/Process.h"
#include "desktop/Rect.h"
#include "desktop/Session.h"

#include <gio/gio.h>
#include <memory>
#include <string>
#include <vector>

namespace klova::rig {

struct AccessibleObject {
    std::string role; // as in "push button"
    std::string name;
    std::string description;
    Rect area; // in pixels of an unscaled screen
    bool checked = false;
    bool focusable = false;
    bool focused = false;
    bool showing = false;
};

class AccessibilityBus {
public:
    /// Starts the bus of this session, as if a screen reader ran. Programs have to start later.
    /// Throws std::runtime_error where it does not come up.
    explicit AccessibilityBus(Session& session);

    /// Everything that programs tell now, parents before their children. An object that goes
    /// meanwhile is left out.
    std::vector<AccessibleObject> objects() const;

private:
    struct Unref {
        void operator()(GDBusConnection* connection) const { g_object_unref(connection); }
    };
    using Connection = std::unique_ptr<GDBusConnection, Unref>;
    static Connection connect(const std::string& address);

    Connection session_;
    Process launcher_;
    Connection bus_;
};

} // namespace klova::rig
