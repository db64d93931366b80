// A line of text with one highlighted word, which fades in and out.
#pragma once

#include "ui/Layer.h"

#include <QColor>
#include <QLabel>
#include <QString>

namespace klova {

struct AttributedString {
    QString string;
    double fontSize = 0; ///< points
    QColor foreground;
    int location = 0; ///< of the highlighted range, in characters
    int length = 0;
    QColor highlight;
};

/// The attributed string that `marked` stands for: its highlighted range is between asterisks.
AttributedString attributed(const QString& marked, double fontSize, const QColor& foreground,
                            const QColor& highlight);

class HintLabel final : public QLabel {
public:
    HintLabel();

    Layer& layer() { return layer_; }

    const AttributedString& attributedStringValue() const { return value_; }
    void setAttributedStringValue(const AttributedString& value);

    /// Makes the label as high, and keeps it so, as `value` needs at this width.
    void reserveRoomFor(const AttributedString& value, int width);

    /// Each takes effect on the layer's opacity at once; what is shown follows.
    void fadeIn();
    void fadeOut();

private:
    Layer& layer_;
    AttributedString value_;
};

} // namespace klova
