// The round button that closes a panel.
#pragma once

#include "ui/ButtonKeys.h"
#include "ui/Palette.h"

#include <QAbstractButton>
#include <QColor>

namespace klova {

/// As large as the panel, whatever is under it gets the clicks beside its round mark.
class WindowButton : public QAbstractButton {
public:
    explicit WindowButton(const QRect& frame, const QColor& color = palette::kGray);

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (!answerKey(*this, *event))
            QAbstractButton::keyPressEvent(event);
    }
    void paintEvent(QPaintEvent* event) override;

private:
    QColor color_;
};

} // namespace klova
