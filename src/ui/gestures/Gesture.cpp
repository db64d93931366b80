#include "ui/gestures/Gesture.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace klova {
namespace {

constexpr double kLightSeconds = 0.12;
constexpr double kCurtainSeconds = 0.3;

/// Slow at both ends.
double eased(double share) { return share * share * (3 - 2 * share); }

double share(double part, double whole) { return std::clamp(part / whole, 0.0, 1.0); }

Point mix(const Point& from, const Point& to, double share) {
    return {std::lerp(from.x, to.x, share), std::lerp(from.y, to.y, share)};
}

Frame mix(const Frame& from, const Frame& to, double share) {
    return {mix(from.origin, to.origin, share),
            {std::lerp(from.size.width, to.size.width, share),
             std::lerp(from.size.height, to.size.height, share)}};
}

struct Playing {
    std::size_t beat;
    double elapsed; ///< seconds since that beat began
};

Playing playingAt(const Gesture& gesture, double seconds) {
    double elapsed = std::fmod(seconds, duration(gesture));
    std::size_t beat = 0;
    while (beat + 1 < gesture.beats.size() && elapsed >= gesture.beats[beat].seconds)
        elapsed -= gesture.beats[beat++].seconds;
    return {beat, elapsed};
}

std::array<double, kControlCount> lightsOf(unsigned before, unsigned now, double share) {
    std::array<double, kControlCount> lights{};
    for (std::size_t index = 0; index < kControlCount; ++index) {
        const auto lit = [index](unsigned pressed) {
            return (pressed >> index & 1) != 0 ? 1.0 : 0;
        };
        lights.at(index) = std::lerp(lit(before), lit(now), share);
    }
    return lights;
}

Picture pictureOf(const Gesture& gesture, const Playing& playing) {
    const Beat& to = gesture.beats[playing.beat];
    const Beat& from = gesture.beats[playing.beat == 0 ? 0 : playing.beat - 1];
    const double travelled = eased(share(playing.elapsed, to.seconds));
    return {.window = mix(from.window, to.window, travelled),
            .pointer = mix(from.pointer, to.pointer, travelled),
            .held = std::lerp(from.held, to.held, travelled),
            .shown = 1 - std::lerp(from.minimized ? 1.0 : 0, to.minimized ? 1.0 : 0, travelled),
            .lights = lightsOf(from.pressed, to.pressed, share(playing.elapsed, kLightSeconds)),
            .caption = to.caption};
}

} // namespace

double Picture::light(Control control) const {
    return lights.at(static_cast<std::size_t>(std::countr_zero(static_cast<unsigned>(control))));
}

double duration(const Gesture& gesture) {
    double seconds = 0;
    for (const Beat& beat : gesture.beats)
        seconds += beat.seconds;
    return seconds;
}

unsigned controlsOf(const Gesture& gesture) {
    unsigned controls = kNothing;
    for (const Beat& beat : gesture.beats)
        controls |= beat.pressed;
    return controls;
}

Picture pictureAt(const Gesture& gesture, double seconds) {
    Picture picture = pictureOf(gesture, playingAt(gesture, seconds));
    if (gesture.beats.front().window == gesture.beats.back().window)
        return picture;
    const double whole = duration(gesture);
    const double played = std::fmod(seconds, whole);
    picture.curtain = eased(share(std::min(played, whole - played), kCurtainSeconds));
    return picture;
}

Picture pictureAfter(const Gesture& gesture, std::size_t beat) {
    return pictureOf(gesture, {beat, gesture.beats[beat].seconds});
}

double restOfBeat(const Gesture& gesture, double seconds) {
    const auto [beat, elapsed] = playingAt(gesture, seconds);
    return gesture.beats[beat].seconds - elapsed;
}

} // namespace klova
