// Plays the steps of a stream on a desktop.
#pragma once

#include "Guests.h"
#include "Listener.h"
#include "desktop/Klova.h"

namespace klova::stress {

class Player {
public:
    /// All borrowed.
    Player(rig::VirtualDesktop& desktop, rig::Injector& hands, Listener& listener)
        : desktop_(desktop), hands_(hands), listener_(listener), guests_(desktop) {}

    /// Throws std::runtime_error where a step cannot be taken at all. Returns whether it may have
    /// come to nobody's ears: a key that came while the focus went from one window to another.
    bool play(const Step& step);

    /// Returns once the new map is in force.
    void changeLayout(int layout);

private:
    void act(const Step& step);
    void press(const Step& step);
    void release(const Step& step);
    void grab(const Step& step);
    void free(const Step& step);
    void changeDesktop(const Step& step);

    rig::VirtualDesktop& desktop_;
    rig::Injector& hands_;
    Listener& listener_;
    Guests guests_;
};

} // namespace klova::stress
