// A plain window of the rig's own that keeps a record of every key and button event it gets.
#pragma once

#include "desktop/Display.h"
#include "desktop/Rect.h"
#include "desktop/Windows.h"

#include <optional>
#include <ostream>
#include <string>
#include <sys/types.h>
#include <vector>

namespace klova::rig {

struct TestWindowOptions {
    std::string title = "Test window";
    std::string windowClass = "TestWindow";
    Rect area{100, 100, 400, 300}; // of the client
    int stepX = 1;                 // size increments
    int stepY = 1;
    int minWidth = 1;
    int minHeight = 1;
    /// Asks to be as large as it is at first, always.
    bool fixedSize = false;
    /// Shadows that the window pretends to draw round itself, and so decorations of its own.
    std::optional<Extents> shadow = {};
    /// What the window says about its owner; this process where it is not set.
    std::optional<pid_t> process = {};
    bool inputHint = true;
    /// Where not, keys and clicks go on to whoever is beneath.
    bool listens = true;
    /// No window manager concerns itself with such a window (override-redirect).
    bool unmanaged = false;
};

/// `detail` is a keycode or a button number; `type` is XCB_KEY_PRESS to XCB_BUTTON_RELEASE.
struct InputRecord {
    std::uint8_t type = 0;
    std::uint8_t detail = 0;
    std::uint16_t state = 0;
    bool operator==(const InputRecord&) const = default;
};
std::ostream& operator<<(std::ostream& stream, const InputRecord& record);

class TestWindow {
public:
    /// Returns once the window is under management (at once where no manager runs). Throws
    /// std::runtime_error where that does not happen.
    explicit TestWindow(const std::string& display, const TestWindowOptions& options = {});

    xcb_window_t id() const { return id_; }

    /// The connection that the window's events come on, for who waits for them.
    Display& connection() { return display_; }

    /// Everything received since the last call, in order.
    std::vector<InputRecord> takeInput();

    /// Sets the keyboard focus on the window, without asking the window manager.
    void takeFocus();

    void unmap();
    /// The same, and tells the manager, which does not see that of an iconic window (ICCCM).
    void withdraw();
    void map();
    void destroy();

private:
    void create(const TestWindowOptions& options);
    void describe(const TestWindowOptions& options);

    Display display_;
    xcb_window_t id_ = XCB_NONE;
};

} // namespace klova::rig
