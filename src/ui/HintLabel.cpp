#include "ui/HintLabel.h"

#include "ui/Palette.h"

#include <QAccessible>
#include <algorithm>

namespace klova {

AttributedString attributed(const QString& marked, double fontSize, const QColor& foreground,
                            const QColor& highlight) {
    const QStringList parts = marked.split('*');
    AttributedString result{parts.join(""), fontSize, foreground, 0, 0, highlight};
    if (parts.size() == 3) {
        result.location = static_cast<int>(parts[0].size());
        result.length = static_cast<int>(parts[1].size());
    }
    return result;
}

HintLabel::HintLabel() : layer_(*new Layer(*this)) {
    setTextFormat(Qt::RichText);
    setWordWrap(true);
    setAlignment(Qt::AlignCenter);
    QSizePolicy room = sizePolicy();
    room.setRetainSizeWhenHidden(true);
    setSizePolicy(room);
    hide(); // or a screen reader would read what nobody sees
}

void HintLabel::setAttributedStringValue(const AttributedString& value) {
    value_ = value;
    const auto part = [&](int from, int length) {
        return value.string.mid(from, length).toHtmlEscaped();
    };
    const int end = value.location + value.length;
    setFont(palette::font(value.fontSize));
    setText(QString("<span style='color:%1'>%2<span style='color:%3'>%4</span>%5</span>")
                .arg(value.foreground.name(), part(0, value.location), value.highlight.name(),
                     part(value.location, value.length), part(end, -1)));
    setAccessibleName(value.string);
}

void HintLabel::reserveRoomFor(const AttributedString& value, int width) {
    setAttributedStringValue(value);
    setMinimumHeight(std::max(minimumHeight(), heightForWidth(width)));
}

void HintLabel::fadeIn() {
    show();
    layer_.setOpacity(1);
    layer_.animateOpacity(0, 1);
    QAccessibleEvent shown(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&shown);
}

void HintLabel::fadeOut() {
    layer_.setOpacity(0);
    layer_.animateOpacity(1, 0, kDefaultFade, [this] { hide(); });
}

} // namespace klova
