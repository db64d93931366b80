// What stands below the pages of the tour: where one is, and the button that leads on.
#pragma once

#include "ui/ButtonKeys.h"

#include <QPushButton>
#include <QWidget>

namespace klova {

/// A round-ended button in the accent colour; Enter and Space press it.
class TourButton final : public QPushButton {
public:
    explicit TourButton(const QString& text);

    QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (!answerKey(*this, *event))
            QPushButton::keyPressEvent(event);
    }
    void paintEvent(QPaintEvent* event) override;

private:
    int iconSide() const;
    int leading() const;
};

/// A dot for each page, that of the current one drawn out.
class PageDots final : public QWidget {
public:
    explicit PageDots(int count) : count_(count) {}

    void setPage(int page); ///< from 1

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int count_;
    int page_ = 1;
};

} // namespace klova
