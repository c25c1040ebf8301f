#pragma once

#include <cstdint>
#include <vector>

namespace runsieve {

/// How a p-value was found.
enum class PMethod
{
  Exact,
  Asymptotic
};

/// The p-value of the two-sided two-sample Kolmogorov-Smirnov test.
struct TwoSampleP
{
  static constexpr double LEAST = 1e-300;

  /// In [LEAST, 1]; NaN if a sample is empty.
  double p;
  bool below; ///< the p-value is less than LEAST, at which p stands
  PMethod method;
};

/// The probability that two samples differ at least as much if each split of the pooled runs into samples of
/// these sizes is equally likely: exact wherever that takes at most 10,000,000 steps, otherwise asymptotic.
/// It takes some 5 ms, and 0.1 s for a few runs among millions.
///
/// A split is a path from (0, 0) to (passing, others), and differs at least as much if it leaves the band
/// |i * others - j * passing| < |difference| at the last run of a group of equal values (Hodges, Ark. Mat. 3,
/// 1958; with ties: Schroeer and Trenkler, Comput. Stat. Data Anal. 20, 1995). u(i, j), the probability that
/// a path to (i, j) has left it by then, is 1 where it leaves, 0 at the start, and otherwise
///     u(i, j) = i / (i + j) u(i - 1, j) + j / (i + j) u(i, j - 1).
/// Whether a cell is outside is decided in integers. Nothing is ever subtracted, so that a tiny p keeps its
/// digits: each step rounds by at most 4 units of 2^-53, which leaves p within 5e-16 per run in the very
/// worst case and, since rounding goes either way, within about 1e-12 for any number of runs.
///
/// \param groupEnds of the pooled sample, as in OrderedValues; the last is passing + others
/// \param difference that of SampleComparison; its sign doesn't matter
/// \throws std::invalid_argument if groupEnds are not those of a sample of this size
[[nodiscard]] TwoSampleP twoSampleP(std::vector<std::uint32_t> const& groupEnds, std::uint32_t passing,
                                    std::uint32_t others, std::int64_t difference);

/// The limit for large samples: the probability that Kolmogorov's distribution exceeds
/// sqrt(passing * others / (passing + others)) * d (Smirnov, Bull. Moscow Univ. 2, 1939). It takes no notice
/// of ties, with which it is too large.
[[nodiscard]] TwoSampleP asymptoticP(std::uint32_t passing, std::uint32_t others, std::int64_t difference);

} // namespace runsieve
