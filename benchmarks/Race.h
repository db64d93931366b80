// Racers that take turns.
#pragma once

#include "Racer.h"
#include "Run.h"

#include <map>
#include <vector>

namespace klova::bench {

/// A racer for each answer, on desktops that are the same but for that. In each round every racer
/// runs once, in an order drawn anew. Microseconds.
std::map<Answer, Samples> race(Run& run, const RacerOptions& options,
                               const std::vector<Answer>& answers);

} // namespace klova::bench
