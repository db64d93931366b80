#include "desktop/Placement.h"

#include <algorithm>
#include <cstdlib>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace klova::rig {
namespace {

/// Which part of the screen a place takes along one axis.
enum class Part { first, last, all, middle };

struct Parts {
    Part across;
    Part down;
};

Parts partsOf(Place place) {
    switch (place) {
    case Place::left:
        return {Part::first, Part::all};
    case Place::right:
        return {Part::last, Part::all};
    case Place::top:
        return {Part::all, Part::first};
    case Place::bottom:
        return {Part::all, Part::last};
    case Place::topLeft:
        return {Part::first, Part::first};
    case Place::topRight:
        return {Part::last, Part::first};
    case Place::bottomLeft:
        return {Part::first, Part::last};
    case Place::bottomRight:
        return {Part::last, Part::last};
    case Place::wholeScreen:
        return {Part::all, Part::all};
    case Place::centre:
        return {Part::middle, Part::middle};
    }
    std::abort();
}

struct Span {
    int start;
    int length;
    int end() const { return start + length; }
};

Span take(Part part, Span screen) {
    const int half = screen.length / 2;
    switch (part) {
    case Part::first:
        return {screen.start, half};
    case Part::last:
        return {screen.start + half, half};
    case Part::all:
        return screen;
    case Part::middle:
        return {screen.start + half / 2, half};
    }
    std::abort();
}

struct Limits {
    int step;
    int minimum;
    int maximum;
};

bool fits(Part part, Span wanted, Span actual, Limits limits) {
    const int possible = std::max(std::min(wanted.length, limits.maximum), limits.minimum);
    // Not every manager heeds the limits, so the wanted size is right in any case.
    const bool sizeFits = actual.length == wanted.length || actual.length == possible ||
                          (possible == wanted.length && actual.length < wanted.length &&
                           actual.length > wanted.length - limits.step);
    const int slack = std::abs(wanted.length - actual.length);
    switch (part) {
    case Part::first:
    case Part::all:
        return sizeFits && actual.start == wanted.start;
    case Part::last:
        return sizeFits && actual.end() == wanted.end();
    case Part::middle:
        return sizeFits && std::abs(actual.start - wanted.start) <= slack;
    }
    std::abort();
}

} // namespace

Rect target(Place place, const Rect& screen) {
    const auto parts = partsOf(place);
    const auto across = take(parts.across, {screen.x, screen.width});
    const auto down = take(parts.down, {screen.y, screen.height});
    return {across.start, down.start, across.length, down.length};
}

std::string misplacement(Place place, const Rect& screen, const SizeLimits& limits,
                         const Rect& actual) {
    const auto parts = partsOf(place);
    const auto wanted = target(place, screen);
    if (fits(parts.across, {wanted.x, wanted.width}, {actual.x, actual.width},
             {limits.stepX, limits.minWidth, limits.maxWidth}) &&
        fits(parts.down, {wanted.y, wanted.height}, {actual.y, actual.height},
             {limits.stepY, limits.minHeight, limits.maxHeight}))
        return {};
    auto text = "expected " + toText(wanted);
    if (limits.stepX > 1 || limits.stepY > 1)
        text += " in steps of " + std::to_string(limits.stepX) + "x" + std::to_string(limits.stepY);
    return text + ", is " + toText(actual);
}

const std::vector<SnapGesture>& snapGestures() {
    static const std::vector<SnapGesture> table = {
        {"Left", {XKB_KEY_Left}, Place::left},
        {"Right", {XKB_KEY_Right}, Place::right},
        {"Up", {XKB_KEY_Up}, Place::top},
        {"Down", {XKB_KEY_Down}, Place::bottom},
        {"A", {XKB_KEY_a}, Place::left},
        {"D", {XKB_KEY_d}, Place::right},
        {"W", {XKB_KEY_w}, Place::top},
        {"S", {XKB_KEY_s}, Place::bottom},
        {"Left + Up", {XKB_KEY_Left, XKB_KEY_Up}, Place::topLeft},
        {"Right + Up", {XKB_KEY_Right, XKB_KEY_Up}, Place::topRight},
        {"Left + Down", {XKB_KEY_Left, XKB_KEY_Down}, Place::bottomLeft},
        {"Right + Down", {XKB_KEY_Right, XKB_KEY_Down}, Place::bottomRight},
        {"A + W", {XKB_KEY_a, XKB_KEY_w}, Place::topLeft},
        {"W + D", {XKB_KEY_w, XKB_KEY_d}, Place::topRight},
        {"A + S", {XKB_KEY_a, XKB_KEY_s}, Place::bottomLeft},
        {"S + D", {XKB_KEY_s, XKB_KEY_d}, Place::bottomRight},
    };
    return table;
}

} // namespace klova::rig
