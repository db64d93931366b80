// How Klova's own panels fit into the desktop.
#pragma once

#include <cstdint>
#include <functional>

namespace klova {

/// The part of a window that a person takes for the panel, in the screen's pixels; around it is
/// room for a shadow.
struct PanelFrame {
    int left = 0; ///< room beside the panel
    int right = 0;
    int top = 0;
    int bottom = 0;
    int width = 0; ///< of the whole window
    int height = 0;
    double cornerRadius = 0;

    bool operator==(const PanelFrame&) const = default;
};

class Panels {
public:
    /// A window of this process as the desktop numbers it.
    using Window = std::uint64_t;

    virtual ~Panels() = default;

    /// Whether what is translucent in a window is shown as such.
    virtual bool composited() const = 0;

    /// False where the person asked for less motion.
    virtual bool animationsEnabled() const = 0;

    /// Lets clicks beside the frame go to what is there and, where the desktop is not composited,
    /// cuts the window out along the frame. Does nothing to a window that is gone.
    virtual void setFrame(Window window, const PanelFrame& frame) = 0;

    /// Gives a shown window the keyboard's focus and puts it in front.
    virtual void activate(Window window) = 0;

    /// `changed` is called when `composited` has changed.
    virtual void setCompositedChanged(std::function<void()> changed) = 0;
};

/// The desktop's; borrowed from the program's start. Null where panels are on their own.
inline Panels* panels = nullptr;

} // namespace klova
