// The switch at the end of a line of text.
#pragma once

#include "ui/ButtonKeys.h"

#include <QCheckBox>

namespace klova {

/// Its icon is what it shows, whatever its state.
class LaunchButton final : public QCheckBox {
public:
    explicit LaunchButton(const QString& text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool hitButton(const QPoint& point) const override { return rect().contains(point); }
    void keyPressEvent(QKeyEvent* event) override {
        if (!answerKey(*this, *event))
            QCheckBox::keyPressEvent(event);
    }
    void paintEvent(QPaintEvent* event) override;
};

} // namespace klova
