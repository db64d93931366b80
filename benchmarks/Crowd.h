// Many windows that do nothing.
#pragma once

#include "desktop/Display.h"

#include <string>

namespace klova::bench {

/// They belong to one client and live as long as this, minimized: with a thousand on the screen the
/// server's own work at each move would hide that of everybody else.
class Crowd {
public:
    /// Returns once all are under management; throws std::runtime_error where that takes minutes.
    Crowd(const std::string& display, int count);

private:
    void add(int number);

    rig::Display display_;
};

} // namespace klova::bench
