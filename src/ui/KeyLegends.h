// The letters of the gestures, as the keyboard in use has them.
#pragma once

#include "platform/KeyCodes.h"

#include <QString>
#include <cstdint>

namespace klova {

/// What is printed on the key that has this code; the US keyboard's letter where nobody knows.
QString legendOf(KeyCode code);

/// The same of the key that brings a window back; any other than Q and E counts as C.
QString legendOfReopenKey(std::int64_t reopenKey);

} // namespace klova
