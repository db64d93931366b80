// The icon in the desktop's status bar.
#pragma once

#include <string_view>

namespace klova {

class StatusButton {
public:
    virtual ~StatusButton() = default;

    virtual bool hasImage() const = 0;

    /// Shows the program's image of that name. Queued: never waits for a tray.
    virtual void setImage(std::string_view name) = 0;

    virtual void setNeedsDisplay() = 0;
};

class StatusItem {
public:
    virtual ~StatusItem() = default;

    /// Borrowed, lives as long as the item. Null only where the item has no button at all; a
    /// desktop without a tray still has one.
    virtual StatusButton* button() = 0;
};

} // namespace klova
