#include "Run.h"

#include "Composer.h"
#include "Trial.h"

#include <chrono>
#include <iostream>

namespace klova::stress {
namespace {

using Clock = std::chrono::steady_clock;

/// What a start leaves to be done at first use has been done by then.
constexpr std::uint32_t kWarmUp = 20;

Stream composeStream(const Options& options, std::uint32_t number, const std::string& manager) {
    Random random(options.seed, number);
    Temper temper;
    // Mutter lets no click through to what is above its own picture of the windows.
    temper.pad = manager != "mutter" && !random.oneIn(4);
    if (temper.pad) {
        temper.guests = random.oneIn(2);
        temper.grabs = random.oneIn(2);
        temper.monitors = random.oneIn(8);
        temper.upheaval = random.oneIn(20);
    }
    temper.superIsHeldBack = manager == "mutter" || manager == "icewm";
    const int layout = random.oneIn(6) ? 1 + random.below(2) : 0;
    return Composer(random, temper, layout).compose();
}

void report(const Options& options, const std::string& manager, std::uint32_t number,
            const Stream& stream, const std::string& fault) {
    std::cout << "FAULT under " << manager << ", seed " << options.seed << ", stream " << number
              << " (" << description(stream.temper) << ", layout " << stream.layout << ")\n"
              << fault << "\nsteps since the released state:\n";
    for (std::size_t i = 0; i < stream.steps.size(); ++i)
        std::cout << "  " << i << ": " << stream.steps[i] << '\n';
    std::cout << "again: klova-stress --manager " << manager << " --seed " << options.seed
              << " --first " << number << " --streams 1\n";
}

/// What has been done so far, and whether it is enough.
struct Progress {
    Clock::time_point began = Clock::now();
    int streams = 0;
    int gestures = 0;

    double minutes() const {
        return std::chrono::duration<double, std::ratio<60>>(Clock::now() - began).count();
    }
    bool reaches(const Options& options) const {
        return (options.streams && streams >= *options.streams) ||
               (options.gestures && gestures >= *options.gestures) ||
               (options.minutes && minutes() >= *options.minutes);
    }
};

bool sumUp(const std::string& manager, const Progress& progress, const Usage& atFirst,
           const Usage& atLast) {
    const bool leak = progress.streams > static_cast<int>(kWarmUp) && isLeak(atLast - atFirst);
    std::cout << manager << ": " << progress.streams << " streams, " << progress.gestures
              << " gestures, " << progress.minutes() << " minutes; " << atLast << ", grown by "
              << atLast - atFirst << (leak ? ": LEAK" : "") << std::endl;
    return !leak;
}

} // namespace

bool run(const Options& options, const std::string& manager, const std::filesystem::path& klova) {
    Trial trial(manager, klova);
    Progress progress;
    Usage atFirst = trial.usage();
    for (std::uint32_t number = options.first; !progress.reaches(options); ++number) {
        const Stream stream = composeStream(options, number, manager);
        const auto fault = trial.play(stream);
        if (!fault.empty()) {
            report(options, manager, number, stream, fault);
            return false;
        }
        ++progress.streams;
        progress.gestures += stream.gestures;
        if (progress.streams == kWarmUp)
            atFirst = trial.usage();
    }
    const bool whole = sumUp(manager, progress, atFirst, trial.usage());
    const auto fault = trial.restart();
    if (!fault.empty())
        std::cout << "FAULT under " << manager << ": " << fault << '\n';
    return whole && fault.empty();
}

} // namespace klova::stress
