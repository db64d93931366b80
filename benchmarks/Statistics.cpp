#include "Statistics.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace klova::bench {
namespace {

constexpr int kResamplings = 400;

} // namespace

double percentile(Samples samples, double share) {
    if (samples.empty())
        return std::numeric_limits<double>::quiet_NaN();
    const auto rank = std::ceil(share * static_cast<double>(samples.size())) - 1;
    const auto place = samples.begin() + std::max(0L, std::lround(rank));
    std::nth_element(samples.begin(), place, samples.end());
    return *place;
}

Ratio ratioOf(const Samples& value, const Samples& reference, double share) {
    const std::size_t rounds = std::min(value.size(), reference.size());
    std::mt19937 random(1);
    std::uniform_int_distribution<std::size_t> pick(0, rounds - 1);
    Samples ratios;
    Samples drawnValue(rounds), drawnReference(rounds);
    for (int i = 0; i < kResamplings; ++i) {
        for (std::size_t round = 0; round < rounds; ++round) {
            const auto drawn = pick(random);
            drawnValue[round] = value[drawn];
            drawnReference[round] = reference[drawn];
        }
        ratios.push_back(percentile(drawnValue, share) / percentile(drawnReference, share));
    }
    return {percentile(value, share) / percentile(reference, share),
            {percentile(ratios, 0.05), percentile(ratios, 0.95)}};
}

} // namespace klova::bench
