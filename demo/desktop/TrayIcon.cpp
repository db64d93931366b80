#include "desktop/TrayIcon.h"

#include "desktop/Wait.h"

namespace klova::rig {

std::optional<Rect> findIcon(Display& display, IconColour colour) {
    const int width = display.screen().width_in_pixels, height = display.screen().height_in_pixels;
    const auto asked =
        xcb_get_image(display.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, display.root(), 0, 0,
                      static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(height), ~0U);
    const auto image = owned(xcb_get_image_reply(display.get(), asked, nullptr));
    if (!image)
        return std::nullopt;
    const auto* pixels = reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(image.get()));
    for (int i = 0; i < width * height; ++i)
        if ((pixels[i] & 0xFFFFFFU) == static_cast<std::uint32_t>(colour))
            return Rect{i % width, i / width, 1, 1};
    return std::nullopt;
}

std::optional<Rect> awaitIcon(Display& display, IconColour colour) {
    const auto other = colour == IconColour::armed ? IconColour::resting : IconColour::armed;
    std::optional<Rect> seen;
    waitUntil(display, "the icon to change", [&] {
        seen = findIcon(display, colour);
        if (findIcon(display, other))
            seen.reset();
        return seen.has_value();
    });
    return seen;
}

} // namespace klova::rig
