#include "Guests.h"

#include <csignal>
#include <cstdlib>
#include <unistd.h>
#include <utility>

namespace klova::stress {

void Guests::play(const Step& step) {
    const auto index = static_cast<std::size_t>(step.detail);
    const xcb_window_t window = windows_[index] ? windows_[index]->id() : 0;
    switch (step.act) {
    case Act::openGuest:
        return open(index);
    case Act::closeGuest:
        return close(index);
    case Act::stopGuest:
        return programs_[index]->signal(SIGSTOP);
    case Act::resumeGuest:
        return programs_[index]->signal(SIGCONT);
    case Act::stepSizes:
        return changeSizes(window, 17);
    case Act::freeSizes:
        return changeSizes(window, 1);
    case Act::withdraw:
        return windows_[index]->unmap();
    case Act::show:
        return windows_[index]->map();
    case Act::toggleFullscreen:
        return toggle(window, "_NET_WM_STATE_FULLSCREEN", "");
    default:
        return toggle(window, "_NET_WM_STATE_MAXIMIZED_VERT", "_NET_WM_STATE_MAXIMIZED_HORZ");
    }
}

/// Those in other processes are not waited for: what comes next comes while they open.
void Guests::open(std::size_t index) {
    if (index < programs_.size())
        programs_[index] = desktop_.launch({"/proc/self/exe", "--guest", std::to_string(index)});
    else
        windows_[index] = makeGuest(desktop_.server().display(), static_cast<int>(index));
}

std::unique_ptr<rig::TestWindow> makeGuest(const std::string& display, int index) {
    const int shift = 60 * index;
    return std::make_unique<rig::TestWindow>(
        display, rig::TestWindowOptions{.title = "Guest",
                                        .area = {100 + shift, 80 + shift, 300 + shift, 260},
                                        .listens = false});
}

void beGuest(int index) {
    const char* display = std::getenv("DISPLAY");
    const auto window = makeGuest(display != nullptr ? display : "", index);
    ::pause();
}

void Guests::close(std::size_t index) {
    if (windows_[index])
        windows_[index]->destroy();
    closed_[index] = std::move(windows_[index]);
    if (index < programs_.size() && programs_[index]) {
        programs_[index]->signal(SIGKILL);
        programs_[index].reset();
    }
}

void Guests::changeSizes(xcb_window_t window, std::uint32_t step) {
    constexpr std::uint32_t minimum = 1U << 4, steps = 1U << 6;
    auto& display = desktop_.display();
    display.setValues(
        window, "WM_NORMAL_HINTS", "WM_SIZE_HINTS",
        {minimum | steps, 0, 0, 0, 0, 20 * step, 10 * step, 0, 0, step, step, 0, 0, 0, 0, 0, 0, 0});
    display.roundTrip();
}

void Guests::toggle(xcb_window_t window, const std::string& first, const std::string& second) {
    constexpr std::uint32_t doToggle = 2, fromApplication = 1;
    auto& display = desktop_.display();
    display.tellManager(window, "_NET_WM_STATE",
                        {doToggle, display.atom(first), second.empty() ? 0 : display.atom(second),
                         fromApplication});
}

} // namespace klova::stress
