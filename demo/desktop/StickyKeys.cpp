#include "desktop/StickyKeys.h"

#include <array>
#define explicit explicit_ // a name in the library's header
#include <xcb/xkb.h>
#undef explicit

namespace klova::rig {
namespace {

constexpr std::uint16_t kKeyboard = XCB_XKB_ID_USE_CORE_KBD;

void beginXkb(Display& display) {
    owned(xcb_xkb_use_extension_reply(display.get(), xcb_xkb_use_extension(display.get(), 1, 0),
                                      nullptr));
}

} // namespace

void setStickyKeys(Display& display, bool on) {
    beginXkb(display);
    constexpr std::uint32_t sticky = XCB_XKB_BOOL_CTRL_STICKY_KEYS;
    const std::array<std::uint8_t, 32> repeats{};
    // Without the option that two keys at once switch sticky keys off.
    xcb_xkb_set_controls(display.get(), kKeyboard, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                         XCB_XKB_AX_OPTION_LATCH_TO_LOCK, sticky, on ? sticky : 0,
                         sticky | XCB_XKB_CONTROL_CONTROLS_ENABLED, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                         0, 0, 0, repeats.data());
    display.roundTrip();
}

void lockModifiers(Display& display, std::uint8_t modifiers) {
    beginXkb(display);
    xcb_xkb_latch_lock_state(display.get(), kKeyboard, 0xFF, modifiers, 0, 0, 0, 0, 0);
    display.roundTrip();
}

} // namespace klova::rig
