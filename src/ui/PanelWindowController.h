// Opens and closes the window of a panel.
#pragma once

#include "ui/Controller.h"
#include "ui/Palette.h"
#include "ui/PanelWindow.h"
#include "ui/WindowButton.h"

#include <QPointer>
#include <memory>

namespace klova {

/// Outlives its closed window; both go when the panel's document goes.
class PanelWindowController : public Controller {
public:
    ~PanelWindowController() override;

    /// Null until the panel was opened.
    PanelWindow* window() const { return window_.get(); }

    virtual WindowButton& closeButton() { return *closeButton_; }

    /// Puts the close button into the window.
    virtual void windowDidLoad();

    /// Closes the panel and says so to the shell; harmless when it is closed. Without a shell that
    /// knows panels a fatal error.
    virtual void close();

    /// Brings the open panel to the front.
    void showWindow();

protected:
    PanelWindowController(const QRect& closeButtonFrame,
                          const QColor& closeButtonColor = palette::kGray);

    /// Makes `window` this controller's window, in place of an earlier one.
    void setWindow(std::unique_ptr<PanelWindow> window);

    /// Fills the window with the controller's view and shows it in front of all others.
    void showWindow(ViewController& content);

private:
    QPointer<WindowButton> closeButton_; ///< the window's once it is in one
    std::unique_ptr<PanelWindow> window_;
};

} // namespace klova
