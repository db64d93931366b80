// Medians, percentiles and ratios of paired samples, with how far chance moves them.
#pragma once

#include <vector>

namespace klova::bench {

using Samples = std::vector<double>;

/// The smallest sample that `share` (0 to 1) of all samples do not exceed; NaN where there is none.
double percentile(Samples samples, double share);
inline double median(const Samples& samples) { return percentile(samples, 0.5); }

struct Spread {
    double low = 0;
    double high = 0;
};

struct Ratio {
    double ratio = 0;
    Spread spread; // 90 % of what resampling the rounds gives
};

/// Ratio of the same percentile of two series. Sample i of both comes from the same round, and
/// rounds are drawn together, so that what slows a whole round down does not count as spread.
Ratio ratioOf(const Samples& value, const Samples& reference, double share);

} // namespace klova::bench
