// One way to drag a window with the pointer, on a desktop of its own.
#pragma once

#include "DragPath.h"
#include "Listener.h"
#include "RequestCount.h"
#include "Statistics.h"
#include "desktop/Klova.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace klova::bench {

/// Who moves the window.
enum class Mover {
    klova,
    bare,    // a program that sends one request for each motion
    manager, // the window manager's own drag
};

struct DraggerOptions {
    Mover mover = Mover::klova;
    std::string manager = "openbox";
    bool slowClient = false; // takes 20 ms over each ConfigureNotify
};

struct DragResult {
    /// For each step of the pointer how long until the window was there, or beyond.
    Samples delays;         // milliseconds
    double behindAtEnd = 0; // milliseconds from the last step to the last move
    double offAtEnd = 0;    // pixels
    double moves = 0;       // of the window, for each step of the pointer
    double moverTime = 0;   // of a processor, in µs for each step; 0 for the manager's drag
    double managerTime = 0;
    double requests = 0; // of who moves the window, for each step; where counted
};

class Dragger {
public:
    /// `programs` is the folder of klova and the reference programs. Throws std::runtime_error
    /// where something does not come up.
    Dragger(const DraggerOptions& options, const std::filesystem::path& programs);

    const DraggerOptions& options() const { return options_; }

    /// Drags the window along the path, so many steps in a second. Counting the requests slows the
    /// server down: it leaves the times out.
    DragResult drag(const DragPath& path, int stepsPerSecond, bool countRequests = false);

private:
    struct Seen {
        Clock::time_point at;
        Offset place; // of the frame on the screen
    };
    rig::Display& display() { return desktop_.display(); }
    xcb_window_t frameOf(xcb_window_t window);
    Offset placeOf(xcb_window_t window);
    std::vector<std::string> bareCommand();
    void start();
    void hold();
    pid_t moverId();
    std::vector<Clock::time_point> move(const DragPath& path, int stepsPerSecond);
    std::vector<Seen> watch(const std::stop_token& stop, const Offset& start);
    static DragResult judge(const DragPath& path, const Offset& start,
                            const std::vector<Clock::time_point>& steps,
                            const std::vector<Seen>& seen);

    DraggerOptions options_;
    std::filesystem::path programs_;
    rig::VirtualDesktop desktop_;
    rig::Process client_;
    xcb_window_t window_;
    xcb_window_t frame_;
    rig::Injector hands_;
    rig::Display onlooker_;
    std::optional<rig::Klova> klova_;
    std::optional<rig::Process> bare_;
    Offset pointer_;
};

} // namespace klova::bench
