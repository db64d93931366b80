// The way of the pointer in a drag: a round trip that fills an area.
#pragma once

#include <cstddef>
#include <vector>

namespace klova::bench {

struct Offset {
    int x = 0;
    int y = 0;
    bool operator==(const Offset&) const = default;
};

/// Where the pointer is after each step, from where it began; each step is one pixel, and no
/// place is on the way twice but the first, which is the last. Klova's first step in a drag repeats
/// the last one of the drag before: both are one pixel to the right here.
class DragPath {
public:
    /// `rows` have to be even.
    DragPath(int rows, int width);

    std::size_t steps() const { return points_.size() - 1; }
    const Offset& after(std::size_t step) const { return points_[step]; }

    /// The step that leads nearest to a place, no earlier than `from`.
    std::size_t stepNear(const Offset& place, std::size_t from) const;

private:
    void go(int x, int y, int steps);

    std::vector<Offset> points_;
};

} // namespace klova::bench
