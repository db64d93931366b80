// Rectangles in whole pixels, as the X server counts them.
#pragma once

#include "geometry/Frame.h"

#include <algorithm>
#include <cmath>

namespace klova::x11 {

/// A rectangle in root pixels, y growing downward.
struct Box {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    constexpr bool operator==(const Box&) const = default;
    constexpr int right() const { return x + width; }
    constexpr int bottom() const { return y + height; }
};

/// Widths of what lies around (or, when negative, inside) the four edges of a box.
struct Edges {
    int left = 0;
    int right = 0;
    int top = 0;
    int bottom = 0;
    constexpr bool operator==(const Edges&) const = default;
};

constexpr Edges operator-(const Edges& a, const Edges& b) {
    return {a.left - b.left, a.right - b.right, a.top - b.top, a.bottom - b.bottom};
}

constexpr Box grown(const Box& box, const Edges& edges) {
    return {box.x - edges.left, box.y - edges.top, box.width + edges.left + edges.right,
            box.height + edges.top + edges.bottom};
}

constexpr Box shrunk(const Box& box, const Edges& edges) { return grown(box, Edges{} - edges); }

/// Of two boxes that overlap.
constexpr Box intersection(const Box& a, const Box& b) {
    const int x = std::max(a.x, b.x), y = std::max(a.y, b.y);
    return {x, y, std::min(a.right(), b.right()) - x, std::min(a.bottom(), b.bottom()) - y};
}

constexpr Frame frameOf(const Box& box) {
    return {{double(box.x), double(box.y)}, {double(box.width), double(box.height)}};
}

constexpr Frame moved(const Frame& frame, const Point& by) {
    return {{frame.origin.x + by.x, frame.origin.y + by.y}, frame.size};
}

constexpr bool contains(const Box& box, const Point& point) {
    return point.x >= box.x && point.x < box.right() && point.y >= box.y && point.y < box.bottom();
}

/// The nearest pixel edge, within what the protocol can say; not a number counts as 0.
inline int pixelEdge(double coordinate) {
    constexpr double limit = 32767;
    return std::isnan(coordinate)
               ? 0
               : static_cast<int>(std::floor(std::clamp(coordinate, -limit, limit) + 0.5));
}

/// Rounds the edges, not the size, so that two halves of an odd width meet without gap or overlap.
inline Box boxOf(const Frame& frame) {
    const int x = pixelEdge(minX(frame));
    const int y = pixelEdge(minY(frame));
    return {x, y, std::max(1, pixelEdge(maxX(frame)) - x), std::max(1, pixelEdge(maxY(frame)) - y)};
}

} // namespace klova::x11
