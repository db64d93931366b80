#include "Race.h"

#include "Wakefulness.h"

#include <algorithm>
#include <thread>

namespace klova::bench {
namespace {

/// What follows a move is done by then.
constexpr std::chrono::milliseconds kPause{15};

} // namespace

Racers makeRacers(const Run& run, const RacerOptions& options, const std::vector<Answer>& answers) {
    Racers racers;
    for (const auto answer : answers) {
        auto own = options;
        own.answer = answer;
        racers.push_back(std::make_unique<Racer>(own, run.programs));
    }
    return racers;
}

std::map<Answer, Samples> race(Run& run, const Racers& racers, int rounds) {
    std::map<Answer, Samples> results;
    std::vector<Racer*> order;
    for (const auto& racer : racers)
        order.push_back(racer.get());
    const Wakefulness awake;
    for (int round = 0; round < rounds; ++round) {
        std::ranges::shuffle(order, run.random);
        for (auto* racer : order) {
            results[racer->answer()].push_back(racer->run());
            std::this_thread::sleep_for(kPause);
        }
    }
    return results;
}

} // namespace klova::bench
