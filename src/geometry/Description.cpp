#include "geometry/Description.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace klova {

std::string description(double number) {
    constexpr double kLongestWhole = 1e16; // beyond, doubles skip whole numbers
    if (std::abs(number) < kLongestWhole && number == std::trunc(number) && !std::signbit(number))
        return std::to_string(static_cast<std::int64_t>(number)) + ".0";
    const auto format =
        std::abs(number) < kLongestWhole ? std::chars_format::fixed : std::chars_format::scientific;
    std::array<char, 400> buffer{}; // the tiniest number takes 325 places when fixed
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, format).ptr;
    std::string text(buffer.data(), end);
    if (format == std::chars_format::fixed && text.find('.') == std::string::npos)
        text += ".0";
    return text;
}

std::string description(const Point& point) {
    return "(" + description(point.x) + ", " + description(point.y) + ")";
}

std::string description(const Frame& frame) {
    return "(" + description(frame.origin.x) + ", " + description(frame.origin.y) + ", " +
           description(frame.size.width) + ", " + description(frame.size.height) + ")";
}

std::string description(const std::optional<Point>& point) {
    return point ? "Optional(" + description(*point) + ")" : "nil";
}

} // namespace klova
