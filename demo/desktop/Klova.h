// The program itself on a virtual desktop, and the hands that use it.
#pragma once

#include "desktop/Injector.h"
#include "desktop/Placement.h"
#include "desktop/Process.h"
#include "desktop/VirtualDesktop.h"

#include <filesystem>
#include <functional>

namespace klova::rig {

class Klova {
public:
    /// Starts `binary` with settings of the session and returns once it holds its keys. The
    /// settings file is written where there is none: past the first run, both halves of the double
    /// click on. Throws std::runtime_error where the program does not come up.
    Klova(VirtualDesktop& desktop, const std::filesystem::path& binary);

    Process& process() { return process_; }
    Injector& hands() { return hands_; }

    /// Presses Super and Ctrl, and lets them go again.
    void holdActivationKeys();
    void releaseActivationKeys();

    /// With the activation keys held; leaves them so.
    void snap(const SnapGesture& gesture);
    /// Returns once the click has been answered: while its press is frozen a second click that
    /// has begun takes the place of the end of the first, and the server drops both.
    void click(std::uint8_t button);
    /// At a place in root pixels, y growing downward. It has to be a few pixels from that of the
    /// last click, or it counts on from there and is no double click.
    void doubleClick(int x, int y);

    /// Presses the left button and makes the first step of a drag, to a place in root pixels;
    /// returns once the pointer is there, and so once nobody keeps the press back any more.
    void beginDrag(int x, int y);

    /// Waits until the visible frame of the window is in its place; returns what is wrong where
    /// it does not get there.
    std::string awaitPlace(xcb_window_t window, Place place, const Rect& screen,
                           std::chrono::milliseconds deadline = std::chrono::seconds(5));

private:
    void wakeKeyboard();
    void awaitPointer(const std::string& what,
                      const std::function<bool(const xcb_query_pointer_reply_t&)>& predicate);

    VirtualDesktop& desktop_;
    Injector hands_;
    Process process_;
};

} // namespace klova::rig
