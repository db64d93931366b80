// Other people's windows: they open, close, hang and change their minds.
#pragma once

#include "Composer.h"
#include "desktop/TestWindow.h"
#include "desktop/VirtualDesktop.h"

#include <array>
#include <memory>
#include <optional>

namespace klova::stress {

/// A window that takes no notice of keys and clicks.
std::unique_ptr<rig::TestWindow> makeGuest(const std::string& display, int index);

/// What the process of a guest does, until it is killed.
void beGuest(int index);

class Guests {
public:
    explicit Guests(rig::VirtualDesktop& desktop) : desktop_(desktop) {}

    void play(const Step& step);

private:
    void open(std::size_t index);
    void close(std::size_t index);
    void changeSizes(xcb_window_t window, std::uint32_t step);
    void toggle(xcb_window_t window, const std::string& first, const std::string& second);

    rig::VirtualDesktop& desktop_;
    std::array<std::optional<rig::Process>, kGuestPrograms> programs_;
    std::array<std::unique_ptr<rig::TestWindow>, kGuests> windows_;
    /// Their connections stay until the next is closed: marco takes a window for the one before it
    /// where a new client gets the identifier of one that it has only just seen go.
    std::array<std::unique_ptr<rig::TestWindow>, kGuests> closed_;
};

} // namespace klova::stress
