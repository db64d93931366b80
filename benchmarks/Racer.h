// One way to send a window from one half of the monitor to the other with a key, on a desktop of
// its own.
#pragma once

#include "Crowd.h"
#include "Listener.h"
#include "desktop/Klova.h"
#include "desktop/TestWindow.h"

#include <filesystem>
#include <optional>
#include <string>

namespace klova::bench {

/// Who answers to Super, Ctrl and an arrow.
enum class Answer {
    klova,
    bare,    // a program that holds the keys and knows its requests beforehand
    manager, // the window manager's own keys
    tool,    // a hotkey daemon that starts a command-line tool
};

struct RacerOptions {
    Answer answer = Answer::klova;
    std::string manager = "openbox";
    rig::ScreenSize screen = {};
    int monitors = 1; // side by side; the window is on the first
    int windows = 0;  // beside the one that is moved
    /// The screen lies under a window that covers it all: a server without a graphics card takes
    /// longer to paint a half of the screen than all programs together to move it there.
    bool covered = true;
};

/// The desktop that a racer runs on. The options have to live until it has been made.
rig::DesktopOptions desktopFor(const RacerOptions& options);

class Racer {
public:
    /// `programs` is the folder of klova and the reference programs.
    Racer(const RacerOptions& options, const std::filesystem::path& programs);

    Answer answer() const { return options_.answer; }

    /// Presses the arrow that sends the window to its other half. Returns the microseconds from
    /// the injection to the arrival of the ConfigureNotify that says so. Throws std::runtime_error
    /// where none arrives.
    double run();

private:
    rig::Display& display() { return desktop_.display(); }
    rig::Rect half(bool right) const;
    void start();
    std::vector<std::string> bareCommand();
    void hold();
    void warmUp();
    std::optional<double> tryToRun();

    RacerOptions options_;
    std::filesystem::path programs_;
    rig::Rect monitor_;
    rig::VirtualDesktop desktop_;
    Crowd crowd_; // older than the window, which has the focus
    rig::TestWindow window_;
    std::optional<rig::TestWindow> curtain_;
    rig::Injector hands_;
    std::optional<rig::Klova> klova_;
    std::optional<rig::Process> program_;
    xcb_keycode_t left_;
    xcb_keycode_t right_;
    bool onTheRight_ = false;
};

} // namespace klova::bench
