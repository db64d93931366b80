#include "platform/FatalError.h"

#include "platform/Diagnostics.h"

#include <cstdlib>
#include <string>
#include <sysexits.h>
#include <utility>

namespace klova {
namespace {
FatalErrorHandler theHandler = nullptr;
} // namespace

void fatalError(std::string_view missing) {
    if (theHandler != nullptr)
        theHandler(missing);
    errorLine(std::string(missing) + (missing.ends_with('.') ? "" : "."));
    std::_Exit(EX_SOFTWARE);
}

FatalErrorHandler setFatalErrorHandler(FatalErrorHandler handler) {
    return std::exchange(theHandler, handler);
}

} // namespace klova
