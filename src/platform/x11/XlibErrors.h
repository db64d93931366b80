// What becomes of the process when a toolkit's connection through Xlib breaks.
#pragma once

namespace klova::x11 {

/// Calls `end`, which does not return, where Xlib would print words of its own and exit with 1.
void setXlibConnectionLost(void (*end)());

} // namespace klova::x11
