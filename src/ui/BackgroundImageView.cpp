#include "ui/BackgroundImageView.h"

#include "ui/Images.h"

#include <QPainter>

namespace klova {

BackgroundImageView::BackgroundImageView(const QRect& frame, const QString& type)
    : image_(imageNamed(type + "Bg")) {
    setGeometry(frame);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void BackgroundImageView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    image_.paint(&painter, rect().adjusted(-1, -1, 1, 1)); // no seam where a scale is fractional
}

} // namespace klova
