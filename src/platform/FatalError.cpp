#include "platform/FatalError.h"

#include <cstdlib>
#include <poll.h>
#include <string>
#include <sysexits.h>
#include <unistd.h>
#include <utility>

namespace klova {
namespace {
FatalErrorHandler theHandler = nullptr;

/// Whether standard error takes a line now: a full pipe or a stopped terminal would keep the
/// process, and with it the person's keyboard, for as long as nobody reads.
bool standardErrorIsReady() {
    constexpr int patience = 100; // milliseconds
    pollfd error{.fd = STDERR_FILENO, .events = POLLOUT, .revents = 0};
    return ::poll(&error, 1, patience) > 0 && (error.revents & POLLOUT) != 0;
}

} // namespace

void fatalError(std::string_view missing) {
    if (theHandler != nullptr)
        theHandler(missing);
    const std::string line =
        "klova: " + std::string(missing) + (missing.ends_with('.') ? "\n" : ".\n");
    if (standardErrorIsReady()) {
        [[maybe_unused]] const auto written = ::write(STDERR_FILENO, line.data(), line.size());
    }
    std::_Exit(EX_SOFTWARE);
}

FatalErrorHandler setFatalErrorHandler(FatalErrorHandler handler) {
    return std::exchange(theHandler, handler);
}

} // namespace klova
