#pragma once

#include <cstdint>

namespace runsieve {

/// The probability of at least `successes` in `trials` independent trials that succeed with probability `p`
/// each: the regularised incomplete beta function I_p(k, n - k + 1) (Abramowitz and Stegun, Handbook of
/// Mathematical Functions, 1964, 26.5.24). Small tails keep their relative precision.
/// \param p in [0, 1] \return 1 for no successes, 0 for more successes than trials
[[nodiscard]] double binomialUpperTail(std::uint64_t successes, std::uint64_t trials, double p);

} // namespace runsieve
