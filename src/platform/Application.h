// Klova as an application of the desktop: its run loop, its end, its alerts.
#pragma once

#include <string_view>

namespace klova {

/// What a modal alert answers to "OK" and to every other way of closing it.
inline constexpr int kAlertFirstButton = 1000;

class Application {
public:
    virtual ~Application() = default;

    virtual void activateIgnoringOtherApps() = 0;

    /// Shows an alert with the single button "OK" and waits for it.
    virtual int runModalAlert(std::string_view message, std::string_view informative) = 0;

    /// Inside `run`: returns, then the loop ends. Before it: ends the process.
    virtual void terminate() = 0;

    /// Runs the event loop until `terminate`.
    virtual void run() = 0;
};

} // namespace klova
