// Every atom that Klova speaks, interned in one batch.
#pragma once

#include <xcb/xcb.h>

namespace klova::x11 {

// clang-format off
#define KLOVA_ATOMS(atom)                                                                          \
    atom(MANAGER)                                                                                  \
    atom(UTF8_STRING)                                                                              \
    atom(WM_CHANGE_STATE)                                                                          \
    atom(WM_STATE)                                                                                 \
    atom(_GTK_APPLICATION_ID)                                                                      \
    atom(_GTK_FRAME_EXTENTS)                                                                       \
    atom(_KDE_NET_WM_DESKTOP_FILE)                                                                 \
    atom(_KLOVA_STARTED_AGAIN)                                                                     \
    atom(_NET_ACTIVE_WINDOW)                                                                       \
    atom(_NET_CLIENT_LIST)                                                                         \
    atom(_NET_FRAME_EXTENTS)                                                                       \
    atom(_NET_MOVERESIZE_WINDOW)                                                                   \
    atom(_NET_SUPPORTED)                                                                           \
    atom(_NET_SUPPORTING_WM_CHECK)                                                                 \
    atom(_NET_SYSTEM_TRAY_OPCODE)                                                                  \
    atom(_NET_SYSTEM_TRAY_VISUAL)                                                                  \
    atom(_NET_WM_NAME)                                                                             \
    atom(_NET_WM_PID)                                                                              \
    atom(_NET_WM_STATE)                                                                            \
    atom(_NET_WM_STATE_FULLSCREEN)                                                                 \
    atom(_NET_WM_STATE_HIDDEN)                                                                     \
    atom(_NET_WM_STATE_MAXIMIZED_HORZ)                                                             \
    atom(_NET_WM_STATE_MAXIMIZED_VERT)                                                             \
    atom(_NET_WM_WINDOW_TYPE)                                                                      \
    atom(_NET_WM_WINDOW_TYPE_DESKTOP)                                                              \
    atom(_NET_WM_WINDOW_TYPE_DOCK)                                                                 \
    atom(_NET_WM_WINDOW_TYPE_NOTIFICATION)                                                         \
    atom(_NET_WM_WINDOW_TYPE_SPLASH)                                                               \
    atom(_NET_WORKAREA)                                                                            \
    atom(_XSETTINGS_SETTINGS)
// clang-format on

struct Atoms {
#define KLOVA_ATOM_MEMBER(name) xcb_atom_t name = XCB_ATOM_NONE;
    KLOVA_ATOMS(KLOVA_ATOM_MEMBER)
#undef KLOVA_ATOM_MEMBER

    explicit Atoms(xcb_connection_t* connection);
};

} // namespace klova::x11
