// xcb's XKB header, which uses a C++ keyword as a name.
#pragma once

#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
