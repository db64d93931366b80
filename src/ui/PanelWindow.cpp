#include "ui/PanelWindow.h"

#include "platform/FatalError.h"
#include "platform/Panels.h"
#include "ui/Images.h"
#include "ui/ScaleWatch.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QCloseEvent>
#include <QCursor>
#include <QMouseEvent>
#include <QScreen>
#include <QWindow>
#include <utility>

namespace klova {
namespace {

PanelFrame frameOf(const QWindow& window, double cornerRadius) {
    const double scale = window.devicePixelRatio();
    const auto pixels = [scale](int points) { return qRound(points * scale); };
    return {.left = pixels(kShadowMargins.left()),
            .right = pixels(kShadowMargins.right()),
            .top = pixels(kShadowMargins.top()),
            .bottom = pixels(kShadowMargins.bottom()),
            .width = pixels(window.width()),
            .height = pixels(window.height()),
            .cornerRadius = cornerRadius * scale};
}

/// Qt knows only its own class of dialogs for such.
QAccessibleInterface* accessiblePanel(const QString& /*className*/, QObject* object) {
    auto* panel = dynamic_cast<PanelWindow*>(object);
    return panel != nullptr ? new QAccessibleWidget(panel, QAccessible::Dialog) : nullptr;
}

void invalidateShadows() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (auto* panel = dynamic_cast<PanelWindow*>(window))
            panel->invalidateShadow();
}

} // namespace

PanelWindow::PanelWindow(const WindowAttributes& attributes)
    : QWidget(nullptr, Qt::Dialog | Qt::FramelessWindowHint), attributes_(attributes),
      contentView_(new QWidget(this)) {
    QAccessible::installFactory(accessiblePanel); // only the first time counts
    setAttribute(Qt::WA_TranslucentBackground, !attributes_.opaque);
    setAttribute(Qt::WA_TransparentForMouseEvents, attributes_.ignoresMouseEvents);
    const QSize size = attributes_.contentRect.size();
    setFixedSize(size.grownBy(kShadowMargins));
    contentView_->setGeometry(QRect({kShadowMargins.left(), kShadowMargins.top()}, size));
    if (panels != nullptr)
        panels->setCompositedChanged(invalidateShadows);
    setWindowIcon(imageNamed("klova"));
    watchScale(*this, [this] { takeScale(); });
    winId();
    scale_ = devicePixelRatio();
    center(); // which asks the server for the pointer: the window is known there from now on
}

PanelWindow::PanelWindow(QDataStream&) { fatalError("init(coder:) has not been implemented"); }

void PanelWindow::setContentView(QWidget& view) {
    view.setParent(contentView_);
    view.setGeometry(contentView_->rect());
    view.lower();
    view.show();
}

void PanelWindow::setupContentView() {
    if (edge_ != nullptr)
        return;
    edge_ = new PanelEdge(*contentView_, attributes_.cornerRadius);
    edge_->raise();
    edge_->show();
}

void PanelWindow::center() {
    const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    if (screen == nullptr)
        screen = QGuiApplication::primaryScreen();
    QRect frame = contentView_->rect();
    frame.moveCenter(screen->geometry().center());
    move(frame.marginsAdded(kShadowMargins).topLeft());
}

bool PanelWindow::shadowed() const {
    return attributes_.hasShadow && (panels == nullptr || panels->composited());
}

void PanelWindow::invalidateShadow() {
    shadow_ = shadowed() ? shadowOf(contentView_->size(), devicePixelRatio()) : QPixmap();
    if (edge_ != nullptr)
        edge_->setShadow(shadow_);
    if (panels != nullptr)
        panels->setFrame(winId(), frameOf(*windowHandle(), attributes_.cornerRadius));
    update();
}

void PanelWindow::showInFront() {
    activating_ = true;
    if (isVisible())
        activateWhenShown();
    show();
    raise();
    activateWindow();
}

/// Managers ignore a request for a window that they do not know yet.
void PanelWindow::activateWhenShown() {
    if (std::exchange(activating_, false) && panels != nullptr)
        panels->activate(winId());
}

/// A window keeps its pixels when the scale changes, so that its content no longer fits: the panel
/// goes on in a window of the new scale.
void PanelWindow::takeScale() {
    const double before = std::exchange(scale_, screen()->devicePixelRatio());
    if (before == scale_)
        return;
    const bool shown = isVisible();
    hide();
    destroy();
    create();
    center();
    if (shown)
        showInFront();
}

bool PanelWindow::event(QEvent* event) {
    if (event->type() == QEvent::Show || event->type() == QEvent::ScreenChangeInternal)
        invalidateShadow();
    return QWidget::event(event);
}

void PanelWindow::paintEvent(QPaintEvent*) {
    activateWhenShown();
    if (!shadow_.isNull())
        QPainter(this).drawPixmap(0, 0, shadow_);
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
    if (!pressed_)
        return;
    if (windowHandle()->startSystemMove())
        pressed_.reset();
    else
        move(pos() + event->position().toPoint() - *pressed_);
}

void PanelWindow::mouseReleaseEvent(QMouseEvent*) { pressed_.reset(); }

} // namespace klova
