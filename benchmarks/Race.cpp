#include "Race.h"

#include "Wakefulness.h"

#include <algorithm>
#include <memory>
#include <thread>

namespace klova::bench {
namespace {

constexpr int kHeats = 2; // each on new desktops: no two of them are alike in all
constexpr int kRounds = 250;

/// What follows a move is done by then.
constexpr std::chrono::milliseconds kPause{15};

using Racers = std::vector<std::unique_ptr<Racer>>;

Racers makeRacers(const Run& run, const RacerOptions& options, const std::vector<Answer>& answers) {
    Racers racers;
    for (const auto answer : answers) {
        auto own = options;
        own.answer = answer;
        racers.push_back(std::make_unique<Racer>(own, run.programs));
    }
    return racers;
}

void runHeat(Run& run, Racers racers, std::map<Answer, Samples>& results) {
    const Wakefulness awake;
    for (int round = 0; round < run.rounds(kRounds); ++round) {
        std::ranges::shuffle(racers, run.random);
        for (const auto& racer : racers) {
            results[racer->answer()].push_back(racer->run());
            std::this_thread::sleep_for(kPause);
        }
    }
}

} // namespace

std::map<Answer, Samples> race(Run& run, const RacerOptions& options,
                               const std::vector<Answer>& answers) {
    std::map<Answer, Samples> results;
    for (int heat = 0; heat < kHeats; ++heat)
        runHeat(run, makeRacers(run, options, answers), results);
    return results;
}

} // namespace klova::bench
