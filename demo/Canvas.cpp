#include "Canvas.h"

#include "desktop/Wait.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPolygonF>
#include <cstring>

namespace klova::demo {
namespace {

QSize screenSize(rig::Display& display) {
    return {display.screen().width_in_pixels, display.screen().height_in_pixels};
}

void drawPointer(rig::Display& display, QImage& image) {
    const auto pointer = rig::owned(xcb_query_pointer_reply(
        display.get(), xcb_query_pointer(display.get(), display.root()), nullptr));
    if (!pointer)
        return;
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(pointer->root_x, pointer->root_y);
    painter.setPen(QPen(Qt::white, 1.5));
    painter.setBrush(QColor(20, 20, 20));
    painter.drawPolygon(
        QPolygonF({{0, 0}, {0, 20}, {5, 15.5}, {9, 23}, {12, 21.5}, {8.5, 14.5}, {15, 14}}));
}

QImage copyScreen(rig::Display& display) {
    const auto size = screenSize(display);
    const auto reply = rig::owned(
        xcb_get_image_reply(display.get(),
                            xcb_get_image(display.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, display.root(),
                                          0, 0, static_cast<std::uint16_t>(size.width()),
                                          static_cast<std::uint16_t>(size.height()), ~0U),
                            nullptr));
    QImage image(size, QImage::Format_RGB32);
    const auto bytes = static_cast<std::size_t>(image.sizeInBytes());
    if (reply && static_cast<std::size_t>(xcb_get_image_data_length(reply.get())) == bytes)
        std::memcpy(image.bits(), xcb_get_image_data(reply.get()), bytes);
    return image;
}

} // namespace

void putImage(rig::Display& display, xcb_drawable_t drawable, const QImage& image) {
    const auto pixels = image.convertToFormat(QImage::Format_RGB32);
    const auto context = xcb_generate_id(display.get());
    xcb_create_gc(display.get(), context, drawable, 0, nullptr);
    xcb_put_image(display.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, context,
                  static_cast<std::uint16_t>(pixels.width()),
                  static_cast<std::uint16_t>(pixels.height()), 0, 0, 0, display.screen().root_depth,
                  static_cast<std::uint32_t>(pixels.sizeInBytes()), pixels.constBits());
    xcb_free_gc(display.get(), context);
    xcb_flush(display.get());
}

QImage takePicture(rig::Display& display) {
    auto image = copyScreen(display);
    drawPointer(display, image);
    return image;
}

QImage takeSettledPicture(rig::Display& display) {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::milliseconds(330);
    auto next = Clock::now() + std::chrono::milliseconds(60);
    auto picture = takePicture(display);
    rig::waitUntil(display, "picture that stands still", [&] {
        if (Clock::now() < next)
            return false;
        next = Clock::now() + std::chrono::milliseconds(40);
        const auto earlier = std::exchange(picture, takePicture(display));
        return earlier == picture || Clock::now() >= end;
    });
    return picture;
}

void paintBackground(rig::Display& display) {
    QImage image(screenSize(display), QImage::Format_RGB32);
    QLinearGradient gradient(0, 0, image.width(), image.height());
    gradient.setColorAt(0, QColor(0x2c, 0x5d, 0x7c));
    gradient.setColorAt(1, QColor(0x6a, 0x8f, 0x8a));
    QPainter(&image).fillRect(image.rect(), gradient);

    const auto pixmap = xcb_generate_id(display.get());
    xcb_create_pixmap(display.get(), display.screen().root_depth, pixmap, display.root(),
                      static_cast<std::uint16_t>(image.width()),
                      static_cast<std::uint16_t>(image.height()));
    putImage(display, pixmap, image);
    xcb_change_window_attributes(display.get(), display.root(), XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_clear_area(display.get(), 0, display.root(), 0, 0, 0, 0);
    // Where panels and window managers look for it.
    display.setValues(display.root(), "_XROOTPMAP_ID", "PIXMAP", {pixmap});
    display.roundTrip();
}

} // namespace klova::demo
