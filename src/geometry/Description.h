// How numbers, points and frames read in a diagnostic line.
#pragma once

#include "geometry/Frame.h"

#include <optional>
#include <string>

namespace klova {

/// The shortest text that reads back as the same number, with ".0" behind a whole one.
std::string description(double number);

/// "(x, y)"
std::string description(const Point& point);

/// "(x, y, width, height)"
std::string description(const Frame& frame);

/// "Optional((x, y))", or "nil" where there is none.
std::string description(const std::optional<Point>& point);

} // namespace klova
