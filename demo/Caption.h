// A strip at the bottom of the screen that tells which keys are held and what they do.
#pragma once

#include "desktop/Display.h"

#include <QImage>
#include <string>
#include <vector>

namespace klova::demo {

struct CaptionText {
    std::vector<std::string> keys; // drawn as key caps
    std::string meaning;
};

class Caption {
public:
    explicit Caption(const std::string& display);

    /// Above all windows. Takes no input: clicks on it go to what lies below.
    void show(const CaptionText& text);

private:
    rig::Display display_;
    xcb_window_t window_ = XCB_NONE;
};

} // namespace klova::demo
