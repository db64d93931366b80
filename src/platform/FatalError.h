// The one way in which a programming error stops the process.
#pragma once

#include <string_view>

namespace klova {

/// Says in one sentence on standard error what was missing and ends the process with status 70.
/// Nothing is unwound: the display server frees every grab when the connection closes.
[[noreturn]] void fatalError(std::string_view missing);

/// Called before the process ends; a test's handler throws instead of returning.
using FatalErrorHandler = void (*)(std::string_view missing);
FatalErrorHandler setFatalErrorHandler(FatalErrorHandler handler);

} // namespace klova
