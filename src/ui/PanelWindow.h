// The window of a panel: frameless, rounded, shadowed, moved by its background.
#pragma once

#include "ui/PanelShadow.h"
#include "ui/WindowAttributes.h"

#include <QDataStream>
#include <QPixmap>
#include <QPoint>
#include <QWidget>
#include <functional>
#include <optional>

namespace klova {

class PanelWindow : public QWidget {
public:
    /// Hidden, centred on the screen where the pointer is.
    explicit PanelWindow(const WindowAttributes& attributes);

    /// Panels are not made from archives: a fatal error.
    [[noreturn]] explicit PanelWindow(QDataStream& coder);

    const WindowAttributes& attributes() const { return attributes_; }

    /// The area inside the shadow, of the attributes' size; owned by the window.
    QWidget& contentView() { return *contentView_; }

    /// Fills the content view with `view`, below what is there, and takes ownership of it.
    void setContentView(QWidget& view);

    /// Rounds the content's corners; nothing of it is drawn outside of them.
    virtual void setupContentView();

    /// Moves the window to the middle of the screen where the pointer is.
    void center();

    /// Shows the window in front of all others, with the keyboard's focus.
    void showInFront();

    /// Draws the shadow anew and tells the desktop of the panel's shape.
    void invalidateShadow();

    /// Called instead of closing where the person closes the window by means of the desktop.
    void setCloseRequested(std::function<void()> requested) {
        closeRequested_ = std::move(requested);
    }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    bool shadowed() const;
    void activateWhenShown();
    void takeScale();

    WindowAttributes attributes_;
    QWidget* contentView_ = nullptr; ///< a child
    double scale_ = 1;               ///< pixels a point, of the window as it was made
    PanelEdge* edge_ = nullptr;      ///< the content view's, once it is rounded
    QPixmap shadow_;                 ///< null where none is shown
    bool activating_ = false;        ///< until the window is on the screen
    std::function<void()> closeRequested_;
    std::optional<QPoint> pressed_; ///< where a drag began, in the window's coordinates
};

} // namespace klova
