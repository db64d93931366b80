#include "platform/FatalError.h"

#include <cstdlib>
#include <string>
#include <sysexits.h>
#include <unistd.h>
#include <utility>

namespace klova {
namespace {
FatalErrorHandler theHandler = nullptr;
}

void fatalError(std::string_view missing) {
    if (theHandler != nullptr)
        theHandler(missing);
    const std::string line = "klova: " + std::string(missing) + "\n";
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, line.data(), line.size());
    std::_Exit(EX_SOFTWARE);
}

FatalErrorHandler setFatalErrorHandler(FatalErrorHandler handler) {
    return std::exchange(theHandler, handler);
}

} // namespace klova
