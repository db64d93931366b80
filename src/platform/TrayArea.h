// The place in a panel where other programs' icons are embedded as windows.
#pragma once

#include <cstdint>
#include <functional>

namespace klova {

class TrayArea {
public:
    /// A window of this process as the desktop numbers it.
    using Window = std::uint64_t;

    virtual ~TrayArea() = default;

    /// Whether there is such a place now.
    virtual bool present() const = 0;

    /// Whether the panel is seen behind what is translucent in an embedded window.
    virtual bool blends() const = 0;

    /// Asks for a window that was not shown yet to be embedded, and calls `embedded` when it has
    /// been, which is when it may be shown. Nothing happens where there is no place.
    virtual void embed(Window icon, std::function<void()> embedded) = 0;

    /// `changed` is called when the place has come, gone, or moved into another panel; what was
    /// embedded is lost then.
    virtual void setChanged(std::function<void()> changed) = 0;
};

} // namespace klova
