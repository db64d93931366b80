#include "DragPath.h"

#include <algorithm>
#include <cstdlib>

namespace klova::bench {
namespace {

constexpr int kRowHeight = 4;

} // namespace

DragPath::DragPath(int rows, int width) : points_{{0, 0}} {
    for (int row = 0; row < rows; ++row) {
        go(row % 2 == 0 ? 1 : -1, 0, width);
        if (row + 1 < rows)
            go(0, 1, kRowHeight);
    }
    go(-1, 0, kRowHeight);
    go(0, -1, (rows - 1) * kRowHeight);
    go(1, 0, kRowHeight);
}

void DragPath::go(int x, int y, int steps) {
    for (int step = 0; step < steps; ++step)
        points_.push_back({points_.back().x + x, points_.back().y + y});
}

std::size_t DragPath::stepNear(const Offset& place, std::size_t from) const {
    std::size_t nearest = from;
    int shortest = -1;
    for (std::size_t step = from; step < points_.size(); ++step) {
        const auto& point = points_[step];
        const int distance = std::abs(point.x - place.x) + std::abs(point.y - place.y);
        if (shortest >= 0 && distance >= shortest)
            continue;
        nearest = step;
        shortest = distance;
        if (distance == 0)
            break;
    }
    return nearest;
}

} // namespace klova::bench
