// Racers that take turns.
#pragma once

#include "Racer.h"
#include "Run.h"

#include <map>
#include <memory>
#include <vector>

namespace klova::bench {

using Racers = std::vector<std::unique_ptr<Racer>>;

/// One for each answer, on desktops that are the same but for that.
Racers makeRacers(const Run& run, const RacerOptions& options, const std::vector<Answer>& answers);

/// In each round every racer runs once, in an order drawn anew. Microseconds.
std::map<Answer, Samples> race(Run& run, const Racers& racers, int rounds);

} // namespace klova::bench
