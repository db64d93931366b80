// One window manager with Klova on it, and what has to be in order before and after a gesture.
#pragma once

#include "desktop/Klova.h"
#include "desktop/ManagerBarrier.h"
#include "desktop/Wait.h"
#include "desktop/Windows.h"

#include <filesystem>
#include <string>

namespace klova::desktops {

class Trial {
public:
    /// Throws std::runtime_error where the desktop or Klova does not come up.
    Trial(const std::filesystem::path& klova, const std::string& manager,
          bool managersTray = false);

    rig::VirtualDesktop& desktop() { return desktop_; }
    rig::Display& display() { return desktop_.display(); }
    rig::Klova& klova() { return klova_; }
    rig::Injector& hands() { return klova_.hands(); }
    const rig::Rect& screen() { return desktop_.monitors().front(); }

    /// Presses the activation keys and lets them go. They are held on return: where a manager
    /// holds back each press of Super, and is slow, a click would overtake them, also without
    /// Klova.
    void hold();
    void letGo() { klova_.releaseActivationKeys(); }

    /// Gives the window the focus. Throws where it does not keep it.
    void focus(xcb_window_t window);
    /// And puts it into this place. Throws where the manager does not do so.
    void prepare(xcb_window_t window, const rig::Rect& frame = {120, 90, 560, 380});

    /// What is wrong with the place of the window, now and after the manager has done all that it
    /// was asked for; empty where nothing is.
    std::string misplaced(xcb_window_t window, rig::Place place);
    std::string misplaced(xcb_window_t window, const rig::Rect& frame);

    /// Returns once the window has stayed where it is for a third of a second.
    void settle(xcb_window_t window);

    /// Plays these snaps one after the other while the keys are held; returns the first fault.
    std::string snap(xcb_window_t window, const std::vector<rig::SnapGesture>& gestures);

    /// Waits until no key, button or grab is left over; says what is.
    std::string leftBehind();

private:
    void awaitRest();

    rig::VirtualDesktop desktop_;
    rig::Klova klova_;
    rig::ManagerBarrier barrier_;
};

} // namespace klova::desktops
