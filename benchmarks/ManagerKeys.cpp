#include "ManagerKeys.h"

#include "desktop/Files.h"

#include <stdexcept>

namespace klova::bench {
namespace {

constexpr auto kOpenbox = R"(<?xml version="1.0"?>
<openbox_config xmlns="http://openbox.org/3.4/rc"><keyboard>
<keybind key="W-C-Left"><action name="MoveResizeTo">
<x>0</x><y>0</y><width>50%</width><height>100%</height></action></keybind>
<keybind key="W-C-Right"><action name="MoveResizeTo">
<x>-0</x><y>0</y><width>50%</width><height>100%</height></action></keybind>
</keyboard></openbox_config>
)";

constexpr auto kXfwm = R"(<?xml version="1.0"?>
<channel name="xfce4-keyboard-shortcuts" version="1.0">
<property name="xfwm4" type="empty"><property name="custom" type="empty">
<property name="&lt;Primary&gt;&lt;Super&gt;Left" type="string" value="tile_left_key"/>
<property name="&lt;Primary&gt;&lt;Super&gt;Right" type="string" value="tile_right_key"/>
<property name="override" type="bool" value="true"/>
</property></property></channel>
)";

constexpr auto kMarco = R"([org/mate/marco/general]
allow-tile-cycling=false
[org/mate/marco/window-keybindings]
tile-to-side-w='<Control><Mod4>Left'
tile-to-side-e='<Control><Mod4>Right'
)";

constexpr auto kKwin = R"([kwin]
Window Quick Tile Left=Meta+Ctrl+Left,Meta+Left,Left
Window Quick Tile Right=Meta+Ctrl+Right,Meta+Right,Right
)";

} // namespace

void bindTilingKeys(rig::Session& session, const std::string& manager) {
    const auto config = session.config();
    if (manager == "openbox") {
        rig::writeFile(config / "openbox/rc.xml", kOpenbox);
    } else if (manager == "xfwm4") {
        rig::writeFile(config / "xfce4/xfconf/xfce-perchannel-xml/xfce4-keyboard-shortcuts.xml",
                       kXfwm);
    } else if (manager == "marco") {
        session.setVariable("GSETTINGS_BACKEND", "keyfile");
        rig::writeFile(config / "glib-2.0/settings/keyfile", kMarco);
    } else if (manager == "kwin") {
        rig::writeFile(config / "kglobalshortcutsrc", kKwin);
    } else {
        throw std::runtime_error(manager + " has no tiling key that is known here");
    }
}

} // namespace klova::bench
