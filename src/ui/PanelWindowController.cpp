#include "ui/PanelWindowController.h"

#include "input/ShellState.h"
#include "ui/PanelDelegate.h"

namespace klova {

PanelWindowController::PanelWindowController(const QRect& closeButtonFrame,
                                             const QColor& closeButtonColor)
    : closeButton_(new WindowButton(closeButtonFrame, closeButtonColor)) {
    QObject::connect(closeButton_, &WindowButton::clicked, closeButton_, [this] { close(); });
}

PanelWindowController::~PanelWindowController() {
    closeButton_->setParent(nullptr);
    delete closeButton_;
}

void PanelWindowController::windowDidLoad() {
    closeButton_->setParent(&window_->contentView());
    closeButton_->raise();
    closeButton_->show();
}

void PanelWindowController::close() {
    panelOpen = false;
    if (window_ != nullptr)
        window_->close();
    panelDelegate().toggleShowMenuItems(true);
}

void PanelWindowController::setWindow(std::unique_ptr<PanelWindow> window) {
    closeButton_->setParent(nullptr);
    window_ = std::move(window);
    window_->setCloseRequested([this] { close(); });
}

void PanelWindowController::showWindow(ViewController& content) {
    window_->setContentView(content.view());
    windowDidLoad();
    content.viewWillAppear();
    window_->setupContentView();
    showWindow();
    window_->invalidateShadow();
}

void PanelWindowController::showWindow() {
    if (window_ != nullptr)
        window_->showInFront();
}

} // namespace klova
