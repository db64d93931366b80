// A rectangle in root pixels, y growing downward, that prints itself.
#pragma once

#include <ostream>
#include <string>

namespace klova::rig {

struct Rect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    int right() const { return x + width; }
    int bottom() const { return y + height; }
    bool operator==(const Rect&) const = default;
};

inline std::string toText(const Rect& rect) {
    return std::to_string(rect.width) + "x" + std::to_string(rect.height) + "+" +
           std::to_string(rect.x) + "+" + std::to_string(rect.y);
}

inline std::ostream& operator<<(std::ostream& stream, const Rect& rect) {
    return stream << toText(rect);
}

} // namespace klova::rig
