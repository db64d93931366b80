#include "Caption.h"

#include "Canvas.h"

#include <QFont>
#include <QPainter>
#include <xcb/shape.h>

namespace klova::demo {
namespace {

constexpr int kWidth = 620, kHeight = 54, kMargin = 14, kCapHeight = 32, kGap = 8;

int drawCap(QPainter& painter, int x, const QString& text) {
    const int width = std::max(kCapHeight, painter.fontMetrics().horizontalAdvance(text) + 20);
    const QRectF cap(x + 0.5, (kHeight - kCapHeight) / 2.0 + 0.5, width, kCapHeight);
    painter.setPen(QColor(0xb8, 0xc4, 0xd0));
    painter.setBrush(QColor(0xf5, 0xf7, 0xf9));
    painter.drawRoundedRect(cap, 6, 6);
    painter.setPen(QColor(0x1d, 0x24, 0x33));
    painter.drawText(cap, Qt::AlignCenter, text);
    return x + width + kGap;
}

QImage draw(const CaptionText& text) {
    QImage image(kWidth, kHeight, QImage::Format_RGB32);
    image.fill(QColor(0x1d, 0x24, 0x33));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QFont font("DejaVu Sans");
    font.setPixelSize(17);
    painter.setFont(font);
    int x = kMargin;
    for (const auto& key : text.keys)
        x = drawCap(painter, x, QString::fromStdString(key));
    painter.setPen(Qt::white);
    painter.drawText(QRect(x + kGap, 0, kWidth - x - kGap - kMargin, kHeight),
                     Qt::AlignVCenter | Qt::AlignLeft, QString::fromStdString(text.meaning));
    return image;
}

} // namespace

Caption::Caption(const std::string& display) : display_(display) {
    window_ = xcb_generate_id(display_.get());
    const std::uint32_t values[] = {1};
    const auto& screen = display_.screen();
    xcb_create_window(display_.get(), XCB_COPY_FROM_PARENT, window_, display_.root(),
                      static_cast<std::int16_t>((screen.width_in_pixels - kWidth) / 2),
                      static_cast<std::int16_t>(screen.height_in_pixels - kHeight - 8), kWidth,
                      kHeight, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_OVERRIDE_REDIRECT, values);
    xcb_shape_rectangles(display_.get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT,
                         XCB_CLIP_ORDERING_UNSORTED, window_, 0, 0, 0, nullptr);
}

void Caption::show(const CaptionText& text) {
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_map_window(display_.get(), window_);
    xcb_configure_window(display_.get(), window_, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    const auto image = draw(text);
    // As background too, so that the server itself mends what was covered.
    const auto pixmap = xcb_generate_id(display_.get());
    xcb_create_pixmap(display_.get(), display_.screen().root_depth, pixmap, window_, kWidth,
                      kHeight);
    putImage(display_, pixmap, image);
    xcb_change_window_attributes(display_.get(), window_, XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_free_pixmap(display_.get(), pixmap);
    xcb_clear_area(display_.get(), 0, window_, 0, 0, 0, 0);
    display_.roundTrip();
}

} // namespace klova::demo
