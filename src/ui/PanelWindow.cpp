#include "ui/PanelWindow.h"

#include <QCloseEvent>
#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QWindow>

namespace klova {

PanelWindow::PanelWindow(const WindowAttributes& attributes)
    : QWidget(nullptr, Qt::Dialog | Qt::FramelessWindowHint), attributes_(attributes),
      contentView_(new QWidget(this)) {
    setAttribute(Qt::WA_TranslucentBackground, !attributes_.opaque);
    setFixedSize(attributes_.contentRect.size());
    contentView_->setGeometry(QRect(QPoint(), attributes_.contentRect.size()));
}

void PanelWindow::setContentView(QWidget& view) {
    view.setParent(contentView_);
    view.setGeometry(contentView_->rect());
    view.lower();
    view.show();
}

void PanelWindow::setupContentView() {}

void PanelWindow::center() {
    const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    if (screen == nullptr)
        screen = QGuiApplication::primaryScreen();
    QRect frame = rect();
    frame.moveCenter(screen->availableGeometry().center());
    move(frame.topLeft());
}

void PanelWindow::showInFront() {
    show();
    raise();
    activateWindow();
}

void PanelWindow::closeEvent(QCloseEvent* event) {
    if (!event->spontaneous() || !closeRequested_)
        return;
    event->ignore();
    closeRequested_();
}

void PanelWindow::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && attributes_.movableByWindowBackground)
        pressed_ = event->position().toPoint();
}

void PanelWindow::mouseMoveEvent(QMouseEvent* event) {
    if (pressed_ && !windowHandle()->startSystemMove())
        move(event->globalPosition().toPoint() - *pressed_);
}

} // namespace klova
