#include "platform/x11/XlibErrors.h"

#include <X11/Xlib.h>

namespace klova::x11 {
namespace {

void (*theEnd)() = nullptr;

int handleLoss(Display* /*display*/) {
    theEnd();
    return 0;
}

} // namespace

void setXlibConnectionLost(void (*end)()) {
    theEnd = end;
    XSetIOErrorHandler(handleLoss);
}

} // namespace klova::x11
