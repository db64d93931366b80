// Klova's icon in whatever tray it is, by the colours it is drawn in.
#pragma once

#include "desktop/Display.h"
#include "desktop/Rect.h"

#include <optional>

namespace klova::rig {

/// The icon's colour, also in the trays that scale it.
enum class IconColour : std::uint32_t { resting = 0x7D8591, armed = 0x0B57D0 };

/// The first place on the screen that shows this colour, from the top.
std::optional<Rect> findIcon(Display& display, IconColour colour);

/// Waits until the icon is seen in this colour and in no other; nothing where it is not.
std::optional<Rect> awaitIcon(Display& display, IconColour colour);

} // namespace klova::rig
