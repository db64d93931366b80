// Telling Klova's own windows from those of other applications.
#pragma once

namespace klova::x11 {

class Connection;

/// Whether the keyboard focus is on a window of this process, whichever of its connections made
/// it.
bool focusIsOwn(Connection& connection);

} // namespace klova::x11
