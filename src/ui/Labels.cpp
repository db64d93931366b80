#include "ui/Labels.h"

namespace klova {

QLabel* makeLabel(const QString& text, const QFont& font, const QColor& color,
                  Qt::Alignment alignment) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setFont(font);
    label->setAlignment(alignment);
    label->setWordWrap(true);
    QPalette colors = label->palette();
    colors.setColor(QPalette::WindowText, color);
    label->setPalette(colors);
    return label;
}

} // namespace klova
