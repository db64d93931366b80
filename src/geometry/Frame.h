// Points, sizes and frames: plain values in points, 64-bit.
#pragma once

namespace klova {

struct Point {
    double x = 0;
    double y = 0;
    constexpr bool operator==(const Point&) const = default;
};

struct Size {
    double width = 0;
    double height = 0;
    constexpr bool operator==(const Size&) const = default;
};

/// A rectangle. Whether y grows downward (windows, screens) or upward (the pointer) is said where
/// a frame is used; the edges named "min" are those with the smaller coordinate.
struct Frame {
    Point origin;
    Size size;
    constexpr bool operator==(const Frame&) const = default;
};

constexpr double minX(const Frame& frame) { return frame.origin.x; }
constexpr double minY(const Frame& frame) { return frame.origin.y; }
constexpr double midX(const Frame& frame) { return frame.origin.x + frame.size.width * 0.5; }
constexpr double midY(const Frame& frame) { return frame.origin.y + frame.size.height * 0.5; }
constexpr double maxX(const Frame& frame) { return frame.origin.x + frame.size.width; }
constexpr double maxY(const Frame& frame) { return frame.origin.y + frame.size.height; }

} // namespace klova
