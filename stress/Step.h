// One step of a stream: something that the person or another program does.
#pragma once

#include "Keyboard.h"

#include <iosfwd>

namespace klova::stress {

enum class Act : std::uint8_t {
    pressKey,
    releaseKey,
    pressButton,
    releaseButton,
    movePointer, // to `detail`, `other` in root pixels
    rest,        // for `detail` milliseconds
    repeatKeys,  // from now on (1) or no more (0) those that are held for two thirds of a second
    grabKeyboard,
    freeKeyboard,
    grabPointer,
    freePointer,
    awaitKeyboard, // until Klova holds it, after another program did
    openGuest,     // from here on `detail` is one of a few guests
    closeGuest,
    stopGuest,
    resumeGuest,
    stepSizes,
    freeSizes,
    withdraw,
    show,
    toggleFullscreen,
    toggleMaximized,
    splitMonitors,
    joinMonitors,
    changeLayout, // to `detail` of layouts()
    replaceManager,
};

struct Step {
    Act act = Act::rest;
    int detail = 0;
    int other = 0;
};

std::ostream& operator<<(std::ostream& stream, const Step& step);

} // namespace klova::stress
